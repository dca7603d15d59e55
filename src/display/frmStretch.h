// How the shown picture of a telescope is stretched for the screen: shadows, midtones and
// highlights under its histogram. What is set holds for this picture, and locked for all that
// follow; decoders are told by StretchChoice. While a slider moves, the preview is made from values
// kept here.
#pragma once

#include "desk/Context.h"
#include "desk/places/KeptPlace.h"
#include "imaging/fits/FitsPixels.h"

#include <QDialog>
#include <QTimer>

#include <array>
#include <functional>
#include <memory>

class QCheckBox;
class QGridLayout;
class QImage;
class QLabel;
class QPushButton;
class QSlider;

namespace tarn {

class Histogram;

class frmStretch : public QDialog {
public:
    explicit frmStretch(Context& context);

    // At its place, with the stretch of the shown picture.
    void Form_Load();

    // Another picture is shown. Its values are read when stepping rests.
    void Follow();

    void ResetButton_Click();
    void LockCheck_Click();
    void LinearCheck_Click();

    std::function<QSize()> wanted;              // the box for which the preview was decoded
    std::function<void(const QImage&)> onMoved; // the same picture as it looks while a slider moves
    std::function<void()> onChosen;             // decoders make it otherwise from now on

private:
    QSlider* AddSlider(QGridLayout& grid, int row, const char* name, const char* caption);
    void ReadPicture();
    bool HasPicture();
    void ShowStretch();
    void ShowMarks();
    void SetSliders(bool enabled);
    void SliderMoved();
    void Choose();

    Context& m;
    Histogram* m_histogram;
    std::array<QSlider*, 3> m_sliders{}; // ShadowsSlider, MidtonesSlider, HighlightsSlider
    std::array<QLabel*, 3> m_values{};
    QPushButton* m_reset;
    QCheckBox* m_lock;
    QCheckBox* m_linear;
    KeptPlace m_place;
    QTimer m_rest;                        // of stepping
    QTimer m_settle;                      // of a slider
    std::unique_ptr<FitsPixels> m_pixels; // of the picture at the size of the preview; or none
    Stretch m_stretch;
    bool m_automatic = true; // m_stretch is the picture's own
    StretchedFile m_file;
};

} // namespace tarn
