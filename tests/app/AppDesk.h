// The whole program on a folder of the test's own: real files, pictures and settings; people and
// time are scripted.
#pragma once

#include "PictureFiles.h"
#include "support/ExifBuilder.h"
#include "support/ForwardingFiles.h"
#include "support/ForwardingSettings.h"
#include "support/RecordingRooms.h"
#include "support/TestFolder.h"

#include "platform/Clipboard.h"
#include "platform/Files.h"
#include "platform/SettingsStore.h"
#include "shell/House.h"

#include "platform/FileListBox.h"
#include "platform/PictureBox.h"

#include <QApplication>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QStatusBar>
#include <QTest>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

namespace tarn::testing {

// A picture with camera data in front.
inline std::string Photo(const ExifBuilder& data, const QImage& picture = TellTale(60, 40)) {
    const std::string head = data.Jpeg();
    return head.substr(0, head.size() - 2) + JpegBytes(picture).substr(2);
}

// The test's own home, and a look on at the moment when a file is asked for its date.
class WatchedFiles : public ForwardingFiles {
public:
    std::function<void(const std::string&)> onModifiedTime;
    std::string unreadable; // a folder that cannot be read
    std::string home;

    std::optional<std::int64_t> ModifiedTime(const std::string& p, std::string* e) const override {
        if (onModifiedTime) onModifiedTime(p);
        return ForwardingFiles::ModifiedTime(p, e);
    }
    std::optional<std::vector<std::string>> FileNames(const std::string& f,
                                                      std::string* e) const override {
        if (f == unreadable) return {};
        return ForwardingFiles::FileNames(f, e);
    }
    std::string HomeFolder() const override { return home; }
    std::string PicturesFolder() const override { return {}; }
    std::string StateFolder() const override { return home; }
};

class QuickPump : public EventPump {
public:
    std::function<void()> onPump; // beside the toolkit's events
    void Pump() override {
        QCoreApplication::processEvents();
        if (onPump) onPump();
    }
    void Sleep(int) override {}
    bool ProgramEnds() const override { return m_ends; }
    void EndProgram() override { m_ends = true; }
    void Later(std::function<void()> action) override { action(); }

private:
    bool m_ends = false;
};

struct AppDesk {
    Calls calls;
    TestFolder folder;
    TestFolder settingsFolder;
    std::string settingsFile = settingsFolder.Path() + "/settings.ini";
    WatchedFiles files;
    std::unique_ptr<ForwardingSettings> settings =
        std::make_unique<ForwardingSettings>(MakeSettingsStore(settingsFile));
    QuickPump events;
    ScriptedDialogs dialogs;
    RecordingSound sound{calls};
    RecordingDesktop desktop{calls};
    std::unique_ptr<Clipboard> clipboard = MakeClipboard();
    RecordingPrinting printing{files};
    House house{Platform{files, *settings, events, dialogs, sound, desktop, *clipboard, printing}};

    std::string AddPicture(const std::string& name, int width = 60, int height = 40) {
        return folder.Write(name, JpegBytes(TellTale(width, height)));
    }
    void Start(const std::string& path) { ASSERT_TRUE(house.Start(path, {})); }
    void Start() { Start(folder.Path()); }

    std::string Row(int row) const {
        const auto* item = house.controls.List1->item(row);
        return item ? item->text().toStdString() : "none";
    }
    AppDesk() { files.home = settingsFolder.Path(); }

    // What the window shows of one file in all places, when it agrees; else the places.
    std::string Current() const {
        const ProgramState& s = house.state;
        std::string row =
            house.controls.FileListBox->Text(std::max(0, house.controls.FileListBox->CurrentRow()));
        const std::string panel = Row(0).substr(14);
        const auto* label = house.window.statusBar()->findChild<QLabel*>();
        const std::string status = label ? label->text().toStdString() : "";
        if (row == s.FileNameOnly && panel == row && s.Filename == folder.Path() + "/" + row &&
            status.starts_with(s.Filename))
            return row;
        return "row " + row + ", name " + s.FileNameOnly + ", panel " + panel + ", status " + status;
    }
    // Press and release in the picture pane, as events of our own: they act at once.
    void Key(int key) {
        for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, key, Qt::NoModifier);
            QApplication::sendEvent(house.controls.Picture1, &event);
        }
    }
};

} // namespace tarn::testing
