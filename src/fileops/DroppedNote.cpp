#include "fileops/DroppedNote.h"

#include "common/text.h"

namespace tarn {

DroppedNote::DroppedNote(Context& context)
    : m(context), m_text(context.notes.UnsavedText()), m_of(context.state.FileNameOnly) {}

std::string DroppedNote::Word() const {
    ProgramState& s = m.state;
    if (!m_text.empty() && s.NoteText != m_text) {
        s.NotesSave = m_text;
        return "; Unsaved note of '" + m_of + "' is in the restore buffer";
    }
    // What an earlier run could not save, come up with its picture.
    return StartsWith(s.MessageText, "Unsaved note") ? "; " + s.MessageText : std::string();
}

} // namespace tarn
