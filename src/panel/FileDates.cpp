// File dates made equal to picture dates. The files' contents are not touched.
#include "common/paths.h"
#include "desk/batch/BatchRun.h"
#include "history/Changes.h"
#include "panel/PictureInfoRoom.h"
#include "pictureinfo/dates/CameraDateText.h"
#include "platform/Files.h"
#include "widgets/Dialogs.h"
#include "widgets/FileListBox.h"

namespace tarn {

namespace {

constexpr const char* kCannotSet = "ERROR - Cannot set File Date, may be Read Only";

// The file's own times become its camera date. `dateChanged`: that date itself was changed, and
// this is told already.
Outcome SetTimesOf(const PictureInfo& info, Files& files, bool dateChanged) {
    if (info.NoExif) return Outcome::Refused();
    const auto time = FileTimeOf(info.CameraDate);
    std::string error;
    const bool may =
        time ? files.SetTimes(info.Filename, *time, &error) : files.IsWritable(info.Filename);
    if (!may) return Outcome::Refused(kCannotSet);
    if (!time)
        return Outcome::Refused((dateChanged ? "UPDATED - Picture date changed, file" : "File") +
                                std::string(" date not set: the picture's is no date"));
    return Outcome::Did(dateChanged
                            ? std::string()
                            : "UPDATED - File Date set to Picture Date " + info.PictureDate);
}

} // namespace

Outcome PictureInfoRoom::SetFileDates(bool dateChanged) {
    Changes changes(m.history, "File date of '" + m.state.FileNameOnly + "'");
    // Of a picture that is only looked at; by key there is nothing left to set then.
    if (m.state.AutoSetFileDates && !dateChanged) changes.SetUnasked();
    return SetTimesOf(m.state, changes, dateChanged);
}

bool PictureInfoRoom::AskForRange(int first, int last) {
    const FileListBox& list = *m.controls.FileListBox;
    return m.dialogs.Confirm(Dialogs::Icon::Exclamation, "Confirm Synchronize",
                             "Synchronize file date with picture Date taken\nbeginning with " +
                                 list.Text(first) + "\nand ending with " + list.Text(last) +
                                 "\nfor " + std::to_string(last - first + 1) + " files.");
}

void PictureInfoRoom::SyncDatesButton_Click() {
    const int first = m.state.FileIndex;
    const int last = m.controls.FileListBox->Count() - 1;
    if (first < 0 || first > last || !AskForRange(first, last)) return;
    const int count = last - first + 1;
    std::vector<FileFault> faults;
    const int done = SyncRange(first, last, faults);
    m.shell.ShowStatus(m.state.Filename);
    m.display.DisplayPicture();
    std::string said = "File dates synchronized to picture dates";
    if (done < count)
        said +=
            ", cancelled after " + std::to_string(done) + " of " + std::to_string(count) + " files";
    m.shell.Tell({done == count, said, {}, std::move(faults)});
}

// A picture without a date tag of its own takes the date of the one before it, as pictures of a
// burst or a roll do. The number of files passed.
int PictureInfoRoom::SyncRange(int first, int last, std::vector<FileFault>& faults) {
    const std::string folder = m.controls.FileListBox->Path();
    std::vector<std::string> names; // the list may change while events come in
    for (int row = first; row <= last; ++row) names.push_back(m.controls.FileListBox->Text(row));
    const BatchRun batch(m);
    Changes changes(m.history, "Synchronize file dates in '" + folder + "'");
    PictureInfo info = m.state;
    int passed = 0;
    for (const std::string& name : names) {
        info.Filename = JoinPath(folder, name);
        const int remaining = static_cast<int>(names.size()) - 1 - passed;
        if (!batch.Step("Files remaining " + std::to_string(remaining))) break;
        m.shell.ShowStatus(info.Filename);
        m_reader.ReadCameraDate(info);
        // What it found in a file that cannot be read is the file's before.
        const Outcome set = m_reader.FileWasRead() ? SetTimesOf(info, changes, false)
                                                   : Outcome::Refused(kCannotSet);
        m.shell.Tell(set);
        if (!set && !set.text.empty()) faults.push_back({info.Filename, set.text});
        if (set) m.state.DateWasAskedFor(info.Filename);
        ++passed;
    }
    return passed;
}

} // namespace tarn
