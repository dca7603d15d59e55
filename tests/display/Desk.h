// Everything the display room is given: the real controls and files, and other rooms that write
// down what they are asked.
#pragma once

#include "PictureFiles.h"
#include "support/RoomDesk.h"

#include "common/paths.h"
#include "display/DisplayRoom.h"

#include <QApplication>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

namespace tarn::testing {

// Its reader finds what the test says.
struct ReadingInfo : RecordingInfo {
    using RecordingInfo::RecordingInfo;
    void ReadPictureInfo(const PictureFacts& facts) override {
        RecordingInfo::ReadPictureInfo(facts);
        if (whenRead) whenRead();
    }
    std::function<void()> whenRead;
};

// The room itself, writing down what it asks of itself by its interface.
struct WatchedRoom : DisplayRoom {
    WatchedRoom(Context& context, Calls& written) : DisplayRoom(context), calls(written) {}
    void SetPictureCommands(bool enabled) override {
        calls.push_back(enabled ? "commands on" : "commands off");
        DisplayRoom::SetPictureCommands(enabled);
    }
    Calls& calls;
};

// Every pixel another colour than its neighbours, so that a cut shows where it was taken.
inline QImage Ramp(int width, int height) {
    QImage picture(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            picture.setPixel(x, y, qRgb(x % 256, y % 256, x / 256 * 16 + y / 256));
    return picture;
}

// A window beside the main one, and a part of it by its name.
inline QWidget* Window(const char* name) {
    for (QWidget* each : QApplication::topLevelWidgets())
        if (each->objectName() == QLatin1String(name)) return each;
    return nullptr;
}
template <typename Widget = QWidget> Widget* Part(const char* window, const char* name) {
    return Window(window)->findChild<Widget*>(QLatin1String(name));
}

struct Desk : RoomDesk {
    RecordingNavigation navigation{calls};
    ReadingInfo info{calls};
    WatchedRoom room{context, calls};
    Context context = Join(navigation, room, info);

    Desk() {
        // So that what the room shows stands out.
        for (QWidget* each : window.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
            each->hide();
        room.ConnectControls();
        state.PreviewWidth = 80;
        state.PreviewHeight = 50;
        current.Follow([this] { shownWhenTold = Shown(); });
    }

    // Writes the file, makes it the current row of the list and shows it.
    void Show(const std::string& name, const std::string& bytes) {
        Choose(name, bytes);
        calls.clear();
        room.DisplayPicture();
    }

    void Choose(const std::string& name, const std::string& bytes) {
        state.Filename = folder.Write(name, bytes);
        state.FileType = FileTypeOf(name);
        controls.FileListBox->SetPath(folder.Path());
        controls.FileListBox->Refresh();
        controls.FileListBox->Select(controls.FileListBox->RowOf(name));
    }

    std::string LastCall() const { return calls.empty() ? "none" : calls.back(); }
    auto Times(const std::string& call) const {
        return std::count(calls.begin(), calls.end(), call);
    }

    // The last error that was shown.
    std::string Error() const {
        std::string last = "none";
        for (const std::string& call : calls)
            if (call.rfind("error ", 0) == 0) last = call.substr(6);
        return last;
    }

    // Size and quarters of what the pane shows: "80x50 rgby".
    std::string Shown() const {
        const QImage& picture = controls.Picture1->Picture();
        if (picture.isNull()) return "nothing";
        return std::to_string(picture.width()) + "x" + std::to_string(picture.height()) + " " +
               Quarters(picture);
    }

    std::string shownWhenTold; // what stood in the pane when those who follow were told
};

} // namespace tarn::testing
