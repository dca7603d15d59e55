// The room of the shows with real list, files and windows; a pump that plays keys and clicks, one
// a round of the wait, and other rooms that do no more than a show needs.
#pragma once

#include "PictureFiles.h"
#include "support/RoomDesk.h"

#include "common/keys.h"
#include "common/paths.h"
#include "platform/QtText.h"
#include "slides/ShowSignals.h"
#include "slides/SlideRoom.h"
#include "slides/frmSlideShow.h"

#include <QAction>
#include <QLabel>

#include <gtest/gtest.h>

#include <deque>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace tarn::testing {

// One entry is played at each round in which the show waits; when none is left, the show is ended.
class PlayedPump : public EventPump {
public:
    std::deque<std::function<void()>> script;
    std::function<void()> whenOver;
    std::function<bool()> waits;
    int pumped = 0;
    int slept = 0; // milliseconds
    bool ends = false;

    void Pump() override {
        if (++pumped > 2000) FAIL() << "the show does not end";
        if (!waits()) return;
        if (script.empty()) return whenOver();
        const auto act = script.front();
        script.pop_front();
        act();
    }
    void Sleep(int milliseconds) override { slept += milliseconds; }
    bool ProgramEnds() const override { return ends; }
    void EndProgram() override { ends = true; }
    void Later(std::function<void()>) override {}
};

// Loads the selected file, as the preview does, and counts.
struct LoadingDisplay : RecordingDisplay {
    LoadingDisplay(Calls& written, ProgramState& s, SlideCommands& show)
        : RecordingDisplay(written), state(s), slides(show) {}
    void DisplayPicture(const PictureRequest& request) override {
        RecordingDisplay::DisplayPicture(request);
        ++decoded[LastPart(state.Filename)];
        state.FileNameOnly = LastPart(state.Filename);
        state.ImageRotatedRight = turnedRight == state.FileNameOnly;
        state.ImageTurnedHalf = upsideDown == state.FileNameOnly;
        state.ImgXfull.LoadFile(state.Filename, QSize(state.PreviewWidth, state.PreviewHeight));
        state.ImageLoaded = state.ImgXfull.HasImage();
        if (whenLoaded) whenLoaded();
    }
    void SetBrightness(int value) override {
        RecordingDisplay::SetBrightness(value);
        state.BrightnessValue = value;
        slides.ShowSlideAgain(); // it follows the slider
    }
    ProgramState& state;
    SlideCommands& slides;
    std::map<std::string, int> decoded;
    std::string turnedRight;
    std::string upsideDown;
    std::function<void()> whenLoaded;
};

// Steps and selects in the list.
struct SteppingNavigation : RecordingNavigation {
    SteppingNavigation(Calls& written, ProgramState& s, MainControls& c, DisplayCommands& d)
        : RecordingNavigation(written), state(s), controls(c), display(d) {}
    void SelectRow(int row, const PictureRequest& request) override {
        asked = request;
        controls.FileListBox->Select(row);
        asked = {};
    }
    void FileListBox_Click() override {
        const FileListBox& list = *controls.FileListBox;
        state.Filename = JoinPath(list.Path(), list.Text(list.CurrentRow()));
        if (!std::filesystem::exists(state.Filename)) return; // the picture before stays
        state.FileIndex = list.CurrentRow();
        const bool clip = IsListedType(state.VideoTypes, FileTypeOf(state.Filename));
        state.Kind = clip ? FileKind::Clip : FileKind::Picture;
        if (clip) return;
        display.DisplayPicture(asked);
        controls.Label_error->setText(ToQt("Cannot read " + state.FileNameOnly));
        controls.Label_error->setVisible(!state.ImageLoaded);
    }
    void StepFrom(int row, int by, const PictureRequest& request) override {
        const int count = controls.FileListBox->Count();
        state.FileIndex = (row + by + count) % count;
        SelectRow(state.FileIndex, request);
    }
    void ClearMultiselect() override { controls.FileListBox->UnselectAll(); }
    std::optional<int> MoveThroughViews(bool back) override {
        const int to = view + (back ? -1 : 1);
        if (to < 0 || to >= static_cast<int>(views.size())) return {};
        return views[static_cast<std::size_t>(view = to)];
    }
    std::vector<int> views;
    int view = 0;
    ProgramState& state;
    MainControls& controls;
    DisplayCommands& display;
    PictureRequest asked;
};

struct ReadingInfo : RecordingInfo {
    ReadingInfo(Calls& written, ProgramState& s) : RecordingInfo(written), state(s) {}
    void ReadPictureInfo(const PictureFacts&) override {
        const auto found = orientation.find(state.FileNameOnly);
        if (found != orientation.end()) state.ExpOrientation = std::int16_t(found->second);
        if (state.FileNameOnly == named) state.CameraDataLines[12] = "Camera: EOS";
    }
    ProgramState& state;
    std::map<std::string, int> orientation;
    std::string named; // the file that tells its camera
};

// Deletes the current file, as the user says.
struct DeletingFiles : RecordingFileCommands {
    DeletingFiles(Calls& written, ProgramState& s, MainControls& c)
        : RecordingFileCommands(written), state(s), controls(c) {}
    Outcome DeleteButton_Click() override {
        if (!declines) std::filesystem::remove(state.Filename);
        controls.FileListBox->Refresh();
        return {!declines, {}, {}};
    }
    ProgramState& state;
    MainControls& controls;
    bool declines = false;
};

struct SlideDesk : RoomDesk {
    PlayedPump pump;
    SlideRoom room{context};
    LoadingDisplay display{calls, state, room};
    SteppingNavigation navigation{calls, state, controls, display};
    ReadingInfo info{calls, state};
    DeletingFiles deletes{calls, state, controls};
    Context context =
        Join(navigation, display, info, {.slides = &room, .fileops = &deletes, .events = &pump});
    std::string lastTitle;         // as the last act found it
    std::vector<std::string> seen; // slides, one a round of the wait

    SlideDesk() {
        room.ConnectControls();
        controls.FileListBox->onClick = [this] { navigation.FileListBox_Click(); };
        pump.waits = [this] { return room.Signals() && room.Signals()->Slideloop; };
        pump.whenOver = [this] { room.SlideDone(); };
        state.VideoTypes = "*.avi";
        state.WebTypes = "*.html";
        state.SlideFont = "Arial";
        state.SlideFontSize = "10";
        state.SlideBackground = 0x808080;
        controls.FileListBox->SetPattern("*.*");
    }

    // Files of these names: small pictures, and whatever for other endings.
    void Fill(const std::vector<std::string>& names) {
        for (const std::string& name : names) {
            const std::string type = FileTypeOf(name);
            folder.Write(name, type == ".JPG" ? JpegBytes(TellTale(60, 40)) : "no picture");
        }
        controls.FileListBox->SetPath(folder.Path());
        controls.FileListBox->Refresh();
        controls.FileListBox->Select(0);
        controls.FileListBox->UnselectAll();
        calls.clear();
        display.decoded.clear();
    }

    // Keys by their letters or numbers; each round first notes what is seen.
    void Play(const std::vector<int>& keycodes) {
        for (const int key : keycodes) Do([this, key] { room.SlideKeyUp(key); });
    }
    void Do(std::function<void()> act) {
        pump.script.push_back([this, act = std::move(act)] {
            seen.push_back(state.SlideNameOnly);
            lastTitle = Title();
            act();
        });
    }
    // Everything seen in a full show with these keys, from row `start` on: "a b c".
    std::string Show(const std::vector<int>& keycodes, int start = 0) {
        controls.FileListBox->Select(start);
        controls.FileListBox->UnselectAll();
        Play(keycodes);
        return Run();
    }
    std::string Run() {
        seen.clear();
        room.SlideButton_Click();
        return Joined(seen);
    }
    static std::string Joined(const std::vector<std::string>& names) {
        std::string all;
        for (const std::string& name : names) all += (all.empty() ? "" : " ") + name.substr(0, 1);
        return all;
    }
    bool Called(const std::string& call) const {
        return std::find(calls.begin(), calls.end(), call) != calls.end();
    }
    auto Times(const std::string& call) const {
        return std::count(calls.begin(), calls.end(), call);
    }
    std::string Current() const { return LastPart(state.Filename); }
    std::string Title() const {
        const auto& lines = room.Window()->Lines();
        return lines.empty() ? std::string() : lines.front().text;
    }
    // The letters of the tell-tale at this place of the slide window.
    std::string QuartersAt(int left, int top, int width = 60, int height = 40) {
        return Quarters(room.Window()->Backing().copy(left, top, width, height));
    }
};

} // namespace tarn::testing
