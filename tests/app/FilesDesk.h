// The whole window on pictures of the test's own with a notes folder and an empty wastebasket.
#pragma once

#include "AppDesk.h"

namespace tarn::testing {

struct FilesDesk : AppDesk {
    TestFolder notes;

    explicit FilesDesk(const std::vector<std::string>& pictures = {"a.jpg", "b.jpg", "c.jpg"}) {
        std::filesystem::remove_all(Wastebasket());
        int width = 60;
        for (const std::string& name : pictures) AddPicture(name, width++);
        settings->Write("notes_folder", notes.Path());
        settings->Write("delete_confirm", "False");
    }
    Tree Pictures() const { return ReadTree(folder.Path()); }
    Tree Notes() const { return ReadTree(notes.Path()); }
    static std::string NamesOf(const Tree& tree) {
        std::string names;
        for (const auto& [name, bytes] : tree) names += name + " ";
        return names;
    }
    std::string Names() const { return NamesOf(Pictures()); }
    // Presses the entry and answers the dialog that asks for a name.
    void NewName(QAction* entry, const char* form, const char* box, const char* name) {
        entry->trigger();
        ASSERT_TRUE(Form(form));
        In<QLineEdit>(form, box)->setText(QString::fromUtf8(name));
        for (QPushButton* button : Form(form)->findChildren<QPushButton*>())
            if (button->isDefault()) button->click();
    }
    void Rename(const char* name) { NewName(c.RenameButton, "frmRename", "RenameText", name); }
    void Duplicate(const char* name) {
        NewName(c.DuplicateButton, "frmDuplicate", "DupText", name);
    }
};

} // namespace tarn::testing
