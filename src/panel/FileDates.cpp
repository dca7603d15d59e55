// File dates made equal to picture dates. The files' contents are not touched.
#include "common/paths.h"
#include "desk/batch/BatchRun.h"
#include "panel/PictureInfoRoom.h"
#include "pictureinfo/dates/CameraDateText.h"
#include "platform/Files.h"
#include "widgets/Dialogs.h"
#include "widgets/FileListBox.h"

namespace tarn {

namespace {

constexpr const char* kCannotSet = "ERROR - Cannot set File Date, may be Read Only";

} // namespace

Outcome PictureInfoRoom::SetFileDates(bool dateChanged) {
    const ProgramState& s = m.state;
    if (s.NoExif) return Outcome::Refused();
    const auto time = FileTimeOf(s.CameraDate);
    std::string error;
    const bool may =
        time ? m.files.SetTimes(s.Filename, *time, &error) : m.files.IsWritable(s.Filename);
    if (!may) return Outcome::Refused(kCannotSet);
    if (!time)
        return Outcome::Refused((dateChanged ? "UPDATED - Picture date changed, file" : "File") +
                                std::string(" date not set: the picture's is no date"));
    return Outcome::Did(dateChanged ? std::string()
                                    : "UPDATED - File Date set to Picture Date " + s.PictureDate);
}

bool PictureInfoRoom::AskForRange(int first, int last) {
    const FileListBox& list = *m.controls.FileListBox;
    return m.dialogs.Confirm(Dialogs::Icon::Exclamation, "Confirm Synchronize",
                             "Synchronize file date with picture Date taken\nbeginning with " +
                                 list.Text(first) + "\nand ending with " + list.Text(last) +
                                 "\nfor " + std::to_string(last - first + 1) + " files.");
}

void PictureInfoRoom::SyncDatesButton_Click() {
    ProgramState& s = m.state;
    const int first = s.FileIndex;
    const int last = m.controls.FileListBox->Count() - 1;
    if (first < 0 || first > last || !AskForRange(first, last)) return;
    const std::string shown = s.BatchFilename = s.Filename;
    s.BatchRow = s.HistFileIndex[std::size_t(s.HistCur)];
    const int done = SyncRange(first, last);
    s.Filename = shown;
    s.BatchFilename.clear();
    m.shell.ShowStatus(shown);
    m.display.DisplayPicture();
    std::string said = "File dates synchronized to picture dates";
    if (s.MoveAllCancel)
        said += ", cancelled after " + std::to_string(done) + " of " +
                std::to_string(last - first + 1) + " files";
    m.shell.ShowMessage(said);
}

// A picture without a date tag of its own takes the date of the one before it, as pictures of a
// burst or a roll do. The number of files passed.
int PictureInfoRoom::SyncRange(int first, int last) {
    ProgramState& s = m.state;
    const std::string folder = m.controls.FileListBox->Path();
    std::vector<std::string> names; // the list may change while events come in
    for (int row = first; row <= last; ++row) names.push_back(m.controls.FileListBox->Text(row));
    const BatchRun batch(m);
    s.MoveAllCancel = false;
    int passed = 0;
    for (const std::string& name : names) {
        s.Filename = JoinPath(folder, name);
        s.MoveAllCancel = !batch.Step("Files remaining " +
                                      std::to_string(static_cast<int>(names.size()) - 1 - passed));
        if (s.MoveAllCancel) break;
        m.shell.ShowStatus(s.Filename);
        m_reader.ReadCameraDate(s);
        if (m_reader.FileWasRead())
            m.shell.Tell(SetFileDatesButton_Click());
        else // what it found is the file's before
            m.shell.ShowMessage(kCannotSet);
        ++passed;
    }
    return passed;
}

} // namespace tarn
