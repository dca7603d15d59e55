#include "navigation/CurrentRow.h"

#include "common/paths.h"
#include "widgets/FileListBox.h"

namespace tarn {

void TakeCurrentRow(Context& m) {
    FileListBox& list = *m.controls.FileListBox;
    // While a folder is entered the current file is still one of the folder before.
    const bool isHere = JoinPath(list.Path(), m.state.FileNameOnly) == m.state.Filename;
    const int row = isHere ? list.RowOf(m.state.FileNameOnly) : -1;
    m.state.FileIndex = row; // none: a step begins at the first one that is listed
    if (row >= 0) {
        if (row != list.CurrentRow()) list.setCurrentIndex(list.model()->index(row, 0));
        if (m.state.HistRow()) *m.state.HistRow() = row;
    }
    m.navigation.ResetFileHistory(list.CurrentRow() >= 0);
    m.navigation.Update_Num_Files(0);
    m.notes.SetSaveCommands();
}

} // namespace tarn
