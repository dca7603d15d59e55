// The shown picture as a new JPEG, beside it or in the copy-to folder.
#include "common/colors.h"
#include "common/numbers.h"
#include "common/paths.h"
#include "desk/batch/DroppedNote.h"
#include "fileops/CopyRoom.h"
#include "fileops/PicturePlan.h"
#include "fileops/frmCaption.h"
#include "platform/Files.h"
#include "widgets/FileListBox.h"

namespace tarn {

namespace {

bool LimitsWidth(const FileOpsState& s) {
    return ParseInt32(s.ConvertJpgMaxWidth).value_or(0) != 0;
}

bool LimitsHeight(const FileOpsState& s) {
    return s.ConvertJpgMaxHeight != 0;
}

} // namespace

void CopyRoom::ConvertJpgSetText_Click() {
    if (!m_caption) m_caption = std::make_unique<frmCaption>(m, *this);
    m_caption->OpenForm();
}

void CopyRoom::SetCaptionShown(bool shown) {
    if (m_caption && m_caption->IsOpen()) m_caption->setVisible(shown);
}

void CopyRoom::SetNote() {
    const int lines = ParseInt32(m.state.ConvertJpgLines).value_or(1);
    m_noteCaption = CaptionOfNote(m.notes.NoteTextOf(m.state.Filename), lines);
    if (m_caption) m_caption->ShowCaptionText(m_noteCaption);
}

Outcome CopyRoom::IsConvertible() {
    const ProgramState& s = m.state;
    m.shell.ShowMessage({});
    if (s.SlideViewing || (s.Kind == FileKind::Picture && s.ImageLoaded)) return Outcome::Did();
    return Outcome::Refused("'" + s.FileNameOnly + "' is not valid to convert to JPG");
}

ConvertOptions CopyRoom::Options(const std::string& targetName) const {
    const ProgramState& s = m.state;
    ConvertOptions options;
    options.quality = s.ConvertJpgQuality;
    options.font = s.SlideFont;
    options.rgb = RgbFromLong(s.SlideTextColors[static_cast<std::size_t>(s.SlideTextColorIndex)]);
    if (s.ConvertJpgAddFN && s.ConvertJpgType == kFileName) {
        options.text = targetName;
    } else if (s.ConvertJpgAddFN && s.ConvertJpgType == kNoteLines) {
        options.text = m_noteCaption;
    } else if (s.ConvertJpgAddFN) {
        options.text = s.ConvertJpgText;
    }
    const int limit = ParseInt32(s.ConvertJpgMaxSize).value_or(0);
    if (LimitsWidth(s)) options.maxWidth = limit;
    if (LimitsHeight(s)) options.maxHeight = limit;
    return options;
}

Outcome CopyRoom::Convert(const ConvertTarget& target) {
    ProgramState& s = m.state;
    ImgX slide;
    if (s.SlideViewing) slide.LoadFile(s.Filename, {});
    if (s.SlideViewing && !slide.HasImage()) slide.LoadWithSystemReader(s.Filename);
    ImgX& picture = s.SlideViewing ? slide : s.ImgXfull;
    const int limit = ParseInt32(s.ConvertJpgMaxSize).value_or(0);
    std::string fault;
    if (LimitsWidth(s)) fault = FaultOfLimit(limit, "width");
    if (LimitsHeight(s) && fault.empty()) fault = FaultOfLimit(limit, "height");
    if (!fault.empty()) return Outcome::Refused(fault);
    m.shell.SetBusy(true);
    const QSize before(picture.Width(), picture.Height());
    Outcome written = WriteConverted(picture, target);
    m.shell.SetBusy(false);
    const QSize after(picture.Width(), picture.Height());
    if (!s.SlideViewing && after != before) {
        // The picture itself is not turned, what is shown of it may be.
        const bool onItsSide = (s.ImageWidth > s.ImageHeight) != (before.width() > before.height());
        s.ImageWidth = onItsSide ? after.height() : after.width();
        s.ImageHeight = onItsSide ? after.width() : after.height();
    }
    return written;
}

Outcome CopyRoom::WriteConverted(ImgX& picture, const ConvertTarget& target) {
    if (m.state.ConvertJpgType == kNoteLines) SetNote();
    ConvertOptions options = Options(target.name);
    options.orientation = m.state.SlideViewing ? OrientationOf(picture) : m.state.ExpOrientation;
    Converted converted = ConvertPicture(picture, options);
    Changes changes(m.history, "Convert '" + m.state.FileNameOnly + "' to '" + target.name + "'");
    const bool stands = m.files.Exists(target.path); // it is not lost
    if (converted.error.empty() &&
        (!stands || MakeRoom(m.files, {}, target.path, changes, &converted.error)) &&
        changes.Write(target.path, converted.jpeg, &converted.error)) {
        m.shell.ShowError({});
        return Outcome::Did("'" + target.name + "' file created" + converted.suffix +
                            CopyNote(target, changes));
    }
    std::string ignored; // the first fault is the one to tell
    changes.TakeBack(&ignored);
    if (!picture.LoadError().empty()) converted.error += " - " + m.state.FileNameOnly;
    return Outcome::Refused("ImgX Error - '" + target.name + "' NOT created", converted.error);
}

// A note that stands there is kept. What the message line adds when it could not be copied.
std::string CopyRoom::CopyNote(const ConvertTarget& target, Changes& changes) {
    const std::string& folder = m.state.NotesFolder;
    if (folder.empty()) return {};
    m.notes.SetNotesFilename();
    const std::string note = JoinPath(folder, target.noteName);
    const auto own = m.files.FindAnyCase(m.state.NotesFilename);
    if (!own || m.files.FindAnyCase(note)) return {};
    std::string error;
    const bool copied = changes.CopyTo(*own, note, &error);
    m.notes.NoteFilesChanged();
    return copied ? std::string() : ", its note was not copied: " + error;
}

Outcome CopyRoom::ConvertButton_Click() {
    if (Outcome refused = IsConvertible(); !refused) return refused;
    const ConvertTarget target = TargetBeside(m.files, m.state.Filename);
    if (target.path.empty())
        return Outcome::Refused("'" + target.name + "' already exists, aborted");
    Outcome converted = Convert(target);
    if (!converted || m.state.SlideViewing) return converted;
    const DroppedNote dropped(m);
    m.navigation.RefreshDirButton_Click();
    const int row = m.controls.FileListBox->RowOf(target.name);
    if (row >= 0) {
        m.navigation.ClearMultiselect();
        m.navigation.SelectRow(row);
    }
    converted.text += dropped.Word();
    return converted;
}

Outcome CopyRoom::CJMButton_Click() {
    const ProgramState& s = m.state;
    if (s.CopyImageFolder.empty()) return Outcome::Refused("'Copy to' folder has not been set");
    if (m.controls.FileListBox->Path() == s.CopyImageFolder)
        return Outcome::Refused("'Copy to' folder same as current folder");
    if (Outcome refused = IsConvertible(); !refused) return refused;
    return Convert(TargetIn(m.files, s.CopyImageFolder, s.Filename));
}

} // namespace tarn
