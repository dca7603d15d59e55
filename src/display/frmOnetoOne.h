// The 1:1 window: one pixel of the screen for each pixel of the picture. A reduced copy in its
// corner is the navigator: a press there shows the part round that point, also of every picture
// that follows.
#pragma once

#include "common/keys.h"
#include "desk/Context.h"
#include "desk/places/KeptPlace.h"
#include "display/WindowFit.h"
#include "display/WindowSteps.h"
#include "widgets/WheelNotches.h"

#include <QWidget>

#include <functional>
#include <optional>
#include <vector>

class QLabel;

namespace tarn {

class frmOnetoOne : public QWidget {
public:
    // The navigator's box in logical pixels.
    static constexpr int kNavWidth = 200;
    static constexpr int kNavHeight = 150;
    static constexpr const char* kCaption = "Tarn View - 1:1  ";

    explicit frmOnetoOne(Context& context);

    // Brings the window up to the current picture: turned so, and behind that by the camera's
    // orientation, which the turns of a picture that has just come do not tell.
    void OnePicture(const PreviewTurns& turns, int orientation = 1);

    // Shows the part round a point of the navigator's copy, in device pixels of that.
    void MoveView(float x, float y);

    void ToggleInfo();

    void ShowRings(const PictureRings& rings);

    void Form_Load();
    void Form_Activate(); // above the other windows or not

    static std::vector<keys::KeyLine> KeyLines(); // as they are read

    // The navigator's box in device pixels.
    PixelSize Navigator() const;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // A key of this window.
    struct KeyRow {
        int keycode;
        const char* says;
        void (*act)(frmOnetoOne&);
    };
    static const KeyRow kKeys[];

    void Form_KeyUp(int keycode);
    bool Mouse(QObject* watched, QEvent* event);
    void PressNavigator(const QMouseEvent& event);
    void DragView(const QMouseEvent& event);
    void ReleaseView(const QMouseEvent& event);
    void Copy();
    void Delete();
    void SwapPlaces();
    void ShowNavigator();
    void PutRings();
    void ShowInfo(const std::string& text);
    void Layout();

    PixelSize View() const;
    PixelSize Full() const { return {m_full.Width(), m_full.Height()}; }

    Context& m;
    KeptPlace m_place;
    PictureBox* m_picture2; // the viewport
    PictureBox* m_picture3; // the navigator
    QLabel* m_infoText;
    PictureRings m_rings;
    Turn m_turn;                     // of m_full
    std::optional<QPoint> m_begin;   // of what is seen of it
    ImgX m_full;                     // OnePicFull
    ImgX m_nav;                      // OnePicNav
    ImgX m_view;                     // OnePicView
    std::optional<NavPoint> m_last;  // none before the first showing
    std::optional<NavPoint> m_other; // the second place remembered
    HeldKeys m_keys;
    WheelNotches m_wheel;
    QObject* m_pressedIn = nullptr;
    QPointF m_pressedAt;
    bool m_dragged = false;
    bool m_loading = false;
    bool m_painted = true;
    bool m_followsScreen = false;
};

} // namespace tarn
