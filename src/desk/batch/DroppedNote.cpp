#include "desk/batch/DroppedNote.h"

namespace tarn {

DroppedNote::DroppedNote(Context& context)
    : m(context), m_text(context.notes.UnsavedText()), m_of(context.state.FileNameOnly),
      m_loadBefore(context.notes.LastLoad().number) {}

std::string DroppedNote::Word() const {
    ProgramState& s = m.state;
    if (!m_text.empty() && s.NoteText != m_text) {
        s.NotesSave = m_text;
        return "; Unsaved note of '" + m_of + "' is in the restore buffer";
    }
    // What an earlier run could not save, come up with its picture.
    const NoteLoad load = m.notes.LastLoad();
    return load.number == m_loadBefore || load.word.empty() ? std::string() : "; " + load.word;
}

} // namespace tarn
