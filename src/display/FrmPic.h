// The size window: the whole picture fitted into a window of any size and place, which stays open
// beside the main window and follows the selection.
#pragma once

#include "common/keys.h"
#include "desk/Context.h"
#include "desk/places/KeptPlace.h"
#include "display/WindowFit.h"
#include "display/WindowSteps.h"
#include "widgets/WheelNotches.h"

#include <QImage>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <vector>

namespace tarn {

class FrmPic : public QWidget {
public:
    explicit FrmPic(Context& context);

    // Shows the window and paints the current picture.
    void ViewFull();

    // Paints a new current picture, if the window is up.
    void Follow();

    // A part is shown larger than the whole would fit.
    bool IsZoomed() const { return m_zoom > 1; }

    static std::vector<keys::KeyLine> KeyLines(); // as they are read

    // The inside in device pixels.
    PixelSize Inside() const;

    std::function<void()> onRest; // its size has come to rest

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void Form_Load();
    // A key of this window.
    struct KeyRow {
        int keycode;
        const char* says;
        void (*act)(FrmPic&);
    };
    static const KeyRow kKeys[];

    void Form_KeyUp(int keycode);
    void Copy();
    void ToggleTop();
    void Zoom(int notches, QPointF at);
    void PaintPicture();
    void FitPicture(PixelSize inside);

    Context& m;
    KeptPlace m_place;
    ImgX m_work;      // the whole picture, turned, fitted and brightened
    QImage m_picture; // as painted, device pixels
    QTimer m_rest;
    HeldKeys m_keys;
    WheelNotches m_wheel;
    PixelSize m_fit;   // of the whole picture
    double m_zoom = 1; // times the fit
    double m_zoomX = 0.5;
    double m_zoomY = 0.5;
    bool m_loading = false;
    bool m_pressed = false;
    bool m_painted = true;
    bool m_followsScreen = false;
};

} // namespace tarn
