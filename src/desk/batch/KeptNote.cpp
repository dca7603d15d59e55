#include "desk/batch/KeptNote.h"

#include "common/text.h"

#include <QPushButton>

namespace tarn {

KeptNote::KeptNote(Context& context)
    : m(context), m_unsaved(context.notes.UnsavedText()), m_of(context.state.FileNameOnly),
      m_shown(context.state.Filename), m_buffer(context.state.NotesSave),
      m_restores(context.controls.RestoreNotesButton->isEnabled()) {
    m.state.BatchFilename = m.state.Filename;
    if (const auto* row = m.state.HistRow()) m.state.BatchRow = *row;
}

std::string KeptNote::NoteOf(const std::string& path) {
    if (path != m_shown) m_passedOthers = true;
    return m_passedOthers ? WithBoxLineEnds(m.notes.SavedNoteOf(path)) : m.notes.NoteTextOf(path);
}

std::string KeptNote::Settle() {
    m.state.BatchFilename.clear();
    if (m_passedOthers && !m_unsaved.empty() && m.state.NoteText == m_unsaved) m.notes.ReloadNote();
    const bool passedOver = !m_unsaved.empty() && m.state.NoteText != m_unsaved;
    m.state.NotesSave = passedOver ? m_unsaved : m_buffer;
    SetEnabled(m.controls.RestoreNotesButton, passedOver || m_restores);
    return passedOver ? "; Unsaved note of '" + m_of + "' is in the restore buffer" : "";
}

} // namespace tarn
