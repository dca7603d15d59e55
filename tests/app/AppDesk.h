// The whole program on a folder of the test's own: real files, pictures and settings; people and
// time are scripted.
#pragma once

#include "PictureFiles.h"
#include "support/ExifBuilder.h"
#include "support/ForwardingFiles.h"
#include "support/ForwardingSettings.h"
#include "support/RecordingRooms.h"
#include "support/TestFolder.h"
#include "support/Trees.h"

#include "app/House.h"
#include "platform/Clipboard.h"
#include "platform/Files.h"
#include "platform/SettingsStore.h"
#include "slides/ShowSignals.h"
#include "slides/frmSlideShow.h"
#include "widgets/FileListBox.h"
#include "widgets/PictureBox.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStatusBar>
#include <QTest>

#include <gtest/gtest.h>

#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace tarn::testing {

// Camera data in front, a picture behind.
inline std::string Behind(const std::string& head, const QImage& picture = TellTale(60, 40)) {
    return head.substr(0, head.size() - 2) + JpegBytes(picture).substr(2);
}
inline QImage Decoded(const std::string& bytes) {
    return QImage::fromData(QByteArray::fromStdString(bytes));
}
inline std::string Photo(const ExifBuilder& data, const QImage& picture = TellTale(60, 40)) {
    return Behind(data.Jpeg(), picture);
}

inline std::string Dated(const std::string& date, const QImage& picture = TellTale(60, 40)) {
    return Photo(ExifBuilder(Endian::Little).ExifDirectory().Ascii(36867, date), picture);
}

struct OwnFiles : ForwardingFiles {
    std::string home;
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
    OwnFiles files;
    std::unique_ptr<ForwardingSettings> settings =
        std::make_unique<ForwardingSettings>(MakeSettingsStore(settingsFile));
    QuickPump events;
    ScriptedDialogs dialogs;
    RecordingSound sound{calls};
    RecordingDesktop desktop{calls};
    std::unique_ptr<Clipboard> clipboard = MakeClipboard();
    RecordingPrinting printing{files};
    House house{Platform{files, *settings, events, dialogs, sound, desktop, *clipboard, printing}};
    MainControls& c = house.controls;
    ProgramState& s = house.state;

    AppDesk() { files.home = settingsFolder.Path(); }

    std::string AddPicture(const std::string& name, int width = 60, int height = 40) {
        return folder.Write(name, JpegBytes(TellTale(width, height)));
    }
    void AddPictures(std::initializer_list<const char*> names) {
        for (const char* name : names) AddPicture(name);
    }
    void Start(const std::string& path) { ASSERT_TRUE(house.Start(path, {})); }
    void Start() { Start(folder.Path()); }
    void GoTo(const char* name) { house.navigation.SelectRow(c.FileListBox->RowOf(name)); }

    std::string At(const std::string& name) const { return folder.Path() + "/" + name; }
    std::string Text(const std::string& name) const { return BytesOf(At(name)); }
    std::string Said() const { return c.FileDateText->text().toStdString(); }
    std::string Error() const {
        return c.Label_error->isHidden() ? "" : c.Label_error->text().toStdString();
    }
    std::string Row(int row) const {
        const auto* item = c.List1->item(row);
        return item ? item->text().toStdString() : "none";
    }
    std::string Panel() const {
        std::string rows;
        for (int row = 0; row < c.List1->count(); ++row) rows += Row(row) + "\n";
        return rows;
    }
    std::string Status() const {
        const auto* label =
            house.window.statusBar()->findChild<QLabel*>(QStringLiteral("StatusBar1_Text"));
        return label ? label->text().toStdString() : "";
    }
    // What the window shows of one file in all places, when it agrees; else the places.
    std::string Current() const {
        std::string row = c.FileListBox->Text(std::max(0, c.FileListBox->CurrentRow()));
        const std::string panel = Row(0).substr(14);
        if (row == s.FileNameOnly && panel == row && s.Filename == At(row) &&
            Status().starts_with(s.Filename))
            return row;
        return "row " + row + ", name " + s.FileNameOnly + ", panel " + panel + ", status " +
               Status();
    }
    // Press and release in the picture pane, as events of our own: they act at once.
    void Key(int key) {
        for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, key, Qt::NoModifier);
            QApplication::sendEvent(c.Picture1, &event);
        }
    }

    // Runs a show: at each of its looks for events the next act, then its end.
    using ShowActs = std::deque<std::function<void()>>;
    void RunShow(QPushButton* button, ShowActs acts) {
        events.onPump = [&] {
            if (!house.slides.Signals() || !house.slides.Signals()->Slideloop) return;
            if (acts.empty()) return house.slides.SlideDone();
            const auto act = acts.front();
            acts.pop_front();
            act();
        };
        button->click();
        events.onPump = nullptr;
        EXPECT_EQ(house.slides.Window(), nullptr);
    }
    void RunShow(QPushButton* button, std::initializer_list<Qt::Key> keys) {
        ShowActs acts;
        for (const Qt::Key key : keys)
            acts.emplace_back([this, key] { QTest::keyClick(house.slides.Window(), key); });
        RunShow(button, acts);
    }

    // Uses the entry and answers what it asks.
    void Answer(std::vector<std::string> answers, QAction* entry) {
        dialogs.answers = std::move(answers);
        entry->trigger();
    }

    // A window that is up.
    static QWidget* Up(const std::string& name) {
        for (QWidget* each : QApplication::topLevelWidgets())
            if (each->objectName().toStdString() == name && each->isVisible()) return each;
        return nullptr;
    }
    // A window or a frame of the main window, up or not.
    QWidget* Form(const char* name) const {
        if (QWidget* up = Up(name)) return up;
        return house.window.findChild<QWidget*>(QString::fromLatin1(name));
    }
    template <class Widget> Widget* In(const char* form, const char* name) const {
        QWidget* found = Form(form);
        return found ? found->findChild<Widget*>(QString::fromLatin1(name)) : nullptr;
    }
    void Press(const char* form, const char* button, std::vector<std::string> answers = {}) {
        dialogs.answers = std::move(answers);
        auto* found = In<QPushButton>(form, button);
        ASSERT_TRUE(found) << form << " " << button;
        ASSERT_TRUE(found->isEnabled()) << form << " " << button;
        found->click();
    }
};

} // namespace tarn::testing
