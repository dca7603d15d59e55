// The whole window on pictures of the test's own with a notes folder; its panel is used as a user
// does, by buttons and keys.
#pragma once

#include "NoteFolder.h"
#include "app/AppDesk.h"

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>

namespace tarn::testing {

struct NotesDesk : AppDesk {
    TestFolder notes;

    explicit NotesDesk(const std::vector<std::string>& pictures = {"a.jpg", "b.jpg", "c.jpg"}) {
        for (const std::string& name : pictures) AddPicture(name);
        settings->Write("notes_folder", notes.Path());
    }
    std::string At(const std::string& name) const { return notes.Path() + "/" + name; }
    std::string Bytes(const std::string& name) const { return BytesOf(At(name)); }

    void Type(const std::string& text) {
        QTest::keyClicks(c.NotesBox, QString::fromStdString(text));
    }
    // As typed or pasted over whatever stood there.
    void Write(const std::string& text) {
        c.NotesBox->selectAll();
        c.NotesBox->insertPlainText(QString::fromStdString(text));
    }
    std::string Caption() const { return c.NotesFrame->text().toStdString(); }
    std::string Message() const { return c.FileDateText->text().toStdString(); }
    void Fail(const std::string& verb, const std::string& why) {
        files.onChange = [this, verb, why](const std::string& asked, const std::string& path) {
            return asked == verb && path.starts_with(notes.Path()) ? why : std::string();
        };
    }
};

// A window of the program by its name.
inline QWidget* Window(const char* name) {
    for (QWidget* each : QApplication::topLevelWidgets())
        if (each->objectName() == QLatin1String(name)) return each;
    return nullptr;
}

// Its control by name.
template <typename Widget> Widget* Control(const char* window, const char* name) {
    QWidget* found = Window(window);
    return found ? found->findChild<Widget*>(QString::fromLatin1(name)) : nullptr;
}

inline void ClickOn(const char* window, const char* name) {
    Control<QPushButton>(window, name)->click();
}

} // namespace tarn::testing
