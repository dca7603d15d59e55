// The whole window on pictures of the test's own with a notes folder and an empty wastebasket.
#pragma once

#include "AppDesk.h"
#include "support/Trees.h"

#include "platform/Clipboard.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>

#include <filesystem>

namespace tarn::testing {

struct FilesDesk : AppDesk {
    TestFolder notes;
    MainControls& c = house.controls;
    ProgramState& s = house.state;

    explicit FilesDesk(const std::vector<std::string>& pictures = {"a.jpg", "b.jpg", "c.jpg"}) {
        std::filesystem::remove_all(std::string(std::getenv("XDG_DATA_HOME")) + "/Trash");
        int width = 60;
        for (const std::string& name : pictures) AddPicture(name, width++);
        settings->Write("notes_folder", notes.Path());
        settings->Write("delete_confirm", "False");
    }
    std::string Said() const { return c.FileDateText->text().toStdString(); }
    std::string Error() const {
        return c.Label_error->isHidden() ? "" : c.Label_error->text().toStdString();
    }
    Tree Pictures() const { return ReadTree(folder.Path()); }
    Tree Notes() const { return ReadTree(notes.Path()); }
    std::string Names() const {
        std::string names;
        for (const auto& [name, bytes] : Pictures()) names += name + " ";
        return names;
    }
    void GoTo(const char* name) { house.navigation.SelectRow(c.FileListBox->RowOf(name)); }
    // Presses the entry and answers the dialog that asks for a name.
    void NewName(QAction* entry, const char* form, const char* box, const char* name) {
        entry->trigger();
        auto* dialog = house.window.findChild<QWidget*>(QString::fromLatin1(form));
        ASSERT_TRUE(dialog);
        dialog->findChild<QLineEdit*>(QString::fromLatin1(box))->setText(QString::fromUtf8(name));
        for (QPushButton* button : dialog->findChildren<QPushButton*>())
            if (button->isDefault()) button->click();
    }
    void Rename(const char* name) { NewName(c.RenameButton, "frmRename", "RenameText", name); }
    void Duplicate(const char* name) {
        NewName(c.DuplicateButton, "frmDuplicate", "DupText", name);
    }
};

} // namespace tarn::testing
