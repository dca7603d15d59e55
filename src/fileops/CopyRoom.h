// Copies of the current picture: into the copy-to folder as it is or converted, a JPEG beside it,
// and its notes and camera data as text on the clipboard.
#pragma once

#include "convert/ConvertPicture.h"
#include "convert/ConvertTarget.h"
#include "desk/Context.h"
#include "desk/Room.h"

#include <memory>
#include <string>
#include <vector>

namespace tarn {

class frmCaption;

// What the text on a converted picture is: ConvertJpgType.
inline constexpr int kFileName = 0;
inline constexpr int kNoteLines = 1;
inline constexpr int kTyped = 2;

class CopyRoom : public CopyCommands, public Room {
public:
    explicit CopyRoom(Context& context);
    ~CopyRoom() override;

    void ConnectControls() override;

    CopyOutcome CopyImage() override;
    CopyOutcome CopyImageIn(Changes& changes) override;
    Outcome CMImage() override;
    void SetCaptionShown(bool shown) override;
    void FolderChanged() override;

    void SetImageCopyButton_Click();
    Outcome ConvertButton_Click();
    Outcome CJMButton_Click();
    void ConvertJpgSetText_Click();

    // The text for the picture from the first lines of the note.
    void SetNote();

    void CopyNotesCameraText(bool withNotes, bool trimmed);
    void CopyNotesButton_Click();
    void CopyExif1LineButton_Click();
    void CopyFilenameButton_Click();
    void CopyPictureButton_Click();

    // For the room's window: how the picture would be converted now, and under which name.
    ConvertOptions Options(const std::string& targetName) const;
    std::string NextName() const { return TargetBeside(m.files, m.state.Filename).name; }

    frmCaption* Caption() const { return m_caption.get(); } // null before its first opening

private:
    void ConnectClipboard();
    std::string CopyName() const;
    void ShowCopyFolder();
    void Advance();
    CopyOutcome Copy(Changes& changes, bool isAll); // `isAll`: of the command
    CopyOutcome Refusal(std::string text, std::string fault = {}) const;
    Outcome Copied(const std::string& verb, const std::string& name);
    void PutText(const std::string& text);

    Outcome IsConvertible();
    Outcome Convert(const ConvertTarget& target);
    Outcome WriteConverted(ImgX& picture, const ConvertTarget& target);
    std::string CopyNote(const ConvertTarget& target, Changes& changes);

    Context& m;
    std::string m_noteCaption; // for the picture, made of lines of the note
    std::string m_copyOk;      // of the last copy that was not refused
    std::unique_ptr<frmCaption> m_caption;
};

} // namespace tarn
