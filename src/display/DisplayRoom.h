// Shows the current file as a picture: loads it, fits or cuts it into the pane, turns it, and walks
// through what each new picture sets off.
#pragma once

#include "common/zoom.h"
#include "desk/Context.h"
#include "desk/Room.h"
#include "display/AwaitedPicture.h"
#include "display/Fit.h"
#include "display/Travel.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>

class QCheckBox;

namespace tarn {

class frmBrightness;
class FrmPic;
class frmStretch;
class frmOnetoOne;

class DisplayRoom : public DisplayCommands, public Room {
public:
    explicit DisplayRoom(Context& context);
    ~DisplayRoom() override;

    // Gives the buttons and boxes of this room their commands.
    void ConnectControls() override;

    // Shows the current file without letting events in. Done when it returns, so that who calls it
    // may use the picture on the next line, unless a patience was set.
    using DisplayCommands::DisplayPicture;
    void DisplayPicture(const PictureRequest& request) override;

    // How long the window may stand still for a picture; what takes longer is shown once it is
    // there, if it still is the current one. Not at the start, in shows and batches.
    void SetPatience(std::chrono::milliseconds patience) { m_patience = patience; }

    // Makes the preview anew from the loaded picture with its turns.
    void ShowPreview() override;
    void ShowNothing() override;

    void Redraw() override;
    void SetPictureCommands(bool enabled) override;

    void RotateRightButton_Click() override;
    void RotateLeftButton_Click() override;
    void MirrorButton_Click() override;
    void FlipButton_Click() override;

    // The windows beside the main window; they follow the selection while they are up.
    void ViewFull() override;
    void OneToOneButton_Click() override;
    void CloseOneToOneButton_Click();
    void OneWindowTopButton_Click();

    // Brightness helps to look: it holds for every later picture and changes no file.
    void AdjustButton_Click() override;
    void ResetBButton_Click() override;
    void SetBrightness(int value) override;
    ImgX ShownPicture() override;
    void ShowRings(const PictureRings& rings) override;

    // How pictures of telescopes are stretched for the screen.
    void StretchButton_Click();

    // Another picture of a file that has several.
    void NextImageButton_Click() { ShowImage(+1); }
    void PrevImageButton_Click() { ShowImage(-1); }

    void OneXcheck_Click();
    void TwoXcheck_Click();

    // The picture larger than it fits, which stays so from one to the next.
    using DisplayCommands::Zoom;
    void Zoom(int steps, std::optional<QPointF> at) override;
    bool MayPan() const override;
    void Pan(QPointF way) override;
    void FitToPaneButton_Click();

private:
    void ShowOrAwait(const PictureRequest& request, const std::optional<FileLook>& look);
    bool IsAtHand(const std::optional<FileLook>& look);
    void Await(const PictureRequest& request, const std::optional<FileLook>& look);
    void ForgetTexts();
    void ShowNow(const PictureRequest& request, const std::optional<FileLook>& look);

    // The three steps of a picture.
    // The reader's error, which a placeholder may stand for.
    std::string LoadCurrent(const std::optional<FileLook>& look);
    void ShowLoaded(const PictureRequest& request, const std::string& error);
    void TellShown(const PictureRequest& request);

    void ForgetLastPicture();
    void BeginPicture();
    std::string LoadPicture(const std::optional<FileLook>& look);
    void ShowPlaceholder(const std::string& error);
    void ShowLoadError(const std::string& error);
    void ReadInfo();
    void SetFileDate();
    bool IsLastRow() const;
    bool IsFits() const; // what is shown is a telescope's picture
    void PlayPictureSound();
    void TellFitsError(const std::string& error);
    void UpdatePictureWindows(); // to the current file; at a clip or page the 1:1 window is blank

    void FollowStretch();
    void EnableImageSteps();
    void ShowImage(int step);
    void ShowStretched(const QImage& pixels);
    void Restretch();

    // The preview.
    void FitIntoPane();
    void CutToPane();
    void PutPicture();
    void PutText(PreviewKind kind, bool cut);
    void PutSize(double scale); // pixels of the screen for one of the picture
    void PutNothing();
    bool IsCutMode() const { return m.state.OneX || m.state.TwoX; }
    int Scale() const { return m.state.TwoX ? 2 : 1; }

    // The zoomed preview.
    bool IsZoomed() const; // the pane shows its picture so
    bool MayZoom() const;
    ZoomPane PaneForZoom() const;
    ZoomPoint FromMiddle(std::optional<QPointF> place) const;
    const ImgX& Whole();
    void PutZoomed();
    void PutRings();

    QSize WantedPixels() const; // empty for all of them
    bool IsSizeWindowUp() const;
    void ExpectNeighbours();

    void TurnRight();
    void TurnLeft();
    void TurnQuarter(bool& flag, float degrees);
    void TurnAsBefore(const PreviewTurns& turns);
    void TurnUprightNow();
    void ShowTurned();
    void MirrorPreview(bool& flag, int axis);
    void ChangeCutMode(QCheckBox& clicked, QCheckBox& other);
    void ReloadShownPicture();

    Context& m;
    ImgX m_turned;  // the loaded picture with its turns, neither fitted nor cut
    ImgX m_preview; // as shown: fitted or cut
    ImgX m_bright;  // its brightened copy
    ImgX m_whole;   // m_turned with all its pixels, while it is zoomed
    ZoomView m_zoom;
    Turn m_turns; // of m_turned since it was loaded
    PictureRings m_rings;
    PreviewTurns m_arrived;     // done before the camera's orientation was
    bool m_placeholder = false; // what is shown stands in for a file without a picture
    bool m_uncheckingOther = false;
    Travel m_travel;
    std::optional<std::chrono::milliseconds> m_patience; // none: without end
    AwaitedPicture m_awaited;
    std::unique_ptr<frmBrightness> m_brightness;
    std::unique_ptr<FrmPic> m_pic;
    std::unique_ptr<frmOnetoOne> m_one;
    std::unique_ptr<frmStretch> m_stretch;
};

} // namespace tarn
