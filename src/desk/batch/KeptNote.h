// A batch selects one picture after the other, and each note on the way passes through the restore
// buffer. This keeps what was in hand when the batch began, and tells the end of the program, if it
// comes first, which picture was on screen.
#pragma once

#include "desk/Context.h"

#include <string>

namespace tarn {

class KeptNote {
public:
    explicit KeptNote(Context& context);

    // At the end, with the former picture shown: a text that was being written and was passed over
    // goes into the restore buffer, else what was there comes back. Gives what is to be said of it,
    // or nothing.
    std::string Settle();

private:
    Context& m;
    std::string m_unsaved;
    std::string m_of; // the picture's name
    std::string m_buffer;
    bool m_restores;
};

} // namespace tarn
