// A note that was being written when a command goes to another file: it drops into the restore
// buffer, and what the command says at its end must not cover that.
#pragma once

#include "desk/Context.h"

#include <string>

namespace tarn {

class DroppedNote {
public:
    // Ahead of the first selection of the command.
    explicit DroppedNote(Context& context);

    // What the message line adds at the end, or nothing. The note is in the restore buffer then,
    // also where the command passed another file with a note on its way.
    std::string Word() const;

private:
    Context& m;
    std::string m_text;
    std::string m_of; // the picture's name
    int m_loadBefore;
};

} // namespace tarn
