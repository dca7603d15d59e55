// A batch goes from file to file, and the note that was in hand when it began is passed over. This
// keeps what was in hand, and tells the end of the program, if it comes first, which picture was on
// screen.
#pragma once

#include "desk/Context.h"

#include <string>

namespace tarn {

class KeptNote {
public:
    explicit KeptNote(Context& context);

    // Of a file that the batch comes to: the one that is shown has what is being written until
    // another was passed, then all have what is saved.
    std::string NoteOf(const std::string& path);

    // At the end, with the former picture shown: a text that was being written and was passed over
    // goes into the restore buffer, else what was there comes back. Gives what is to be said of it,
    // or nothing.
    std::string Settle();

private:
    Context& m;
    std::string m_unsaved;
    std::string m_of; // the picture's name
    std::string m_shown;
    std::string m_buffer;
    bool m_restores;
    bool m_passedOthers = false;
};

} // namespace tarn
