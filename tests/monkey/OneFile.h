// Whether everything that the window shows is of one file: Filename, the selected row, the count,
// the status line, panel, note, mark, title of the picture windows, and the pixels.
#pragma once

#include "World.h"

#include <map>
#include <string>
#include <vector>

namespace tarn::testing {

class OneFile {
public:
    explicit OneFile(World& world) : m(world) {}

    // What the picture files look like now; before and after anything may change them.
    void Look();

    // Once nothing is under way: what does not belong, or nothing. `carries`: the user has asked
    // for the note of the file before.
    std::string Check(bool carries);

    std::string NotePath() const; // of the current file, as it stands on the disk
    bool NoteIsShown() const;     // its text stands in the box

private:
    struct Look1 {
        bool known = false; // whole, and without colours of its own
        QSize size;
        QColor color;
    };
    struct Pictures {
        std::string stamp;
        std::vector<Look1> looks; // the last ones, newest last
    };
    static Look1 LookAt(const std::string& path);
    std::string Names() const;
    std::string Panel() const;
    std::string Note(bool carries) const;
    std::string Unsaved() const;
    std::string Pixels() const;
    std::string Titles() const;
    std::string Mark() const;

    World& m;
    std::map<std::string, Pictures> m_pictures;
    std::string m_before; // the file of the last check, and its note's text
    std::string m_textBefore;
    std::string m_unsavedBefore;
};

} // namespace tarn::testing
