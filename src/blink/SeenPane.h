// A pane in which frames laid over each other are seen, zoomed and panned: what is seen stands
// still while frames change. Beside the frame its difference from the series, by a split.
#pragma once

#include "blink/FrameMaker.h"
#include "widgets/MarkPainting.h"
#include "widgets/WheelNotches.h"

#include <QImage>
#include <QWidget>

#include <array>
#include <functional>
#include <memory>

namespace tarn {

class SeenPane : public QWidget {
public:
    SeenPane();

    // None: nothing can be shown. A grid of another size is seen whole, else what is seen stays.
    void SetGround(std::shared_ptr<const BlinkGround> ground);
    const std::shared_ptr<const BlinkGround>& Ground() const { return m_ground; }
    void SetFrame(std::shared_ptr<const SeenFrame> frame);
    void SetMedian(std::shared_ptr<const SeenFrame> median); // null: no difference
    void SetSplit(bool split);
    void SetCorner(const QString& text, const ShownMark& mark);
    void SetHint(const QString& hint); // in the middle, while there is no frame

    GridView View() const;
    double Scale() const; // pixels of the screen for one of the picture; 0 without a picture
    void Zoom(int steps);
    void Fit();
    void FullSize();
    // A place of the grid in samples comes into the middle, so many times enlarged.
    void GoTo(double x, double y, int times);

    std::function<void()> onView;     // another one
    std::function<void(int)> onWheel; // notches, above 0 away from the user

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    ZoomPane PaneForZoom() const;
    void Zoom(int steps, QPointF at);
    void ViewChanged();
    bool IsOnSplit(QPointF at) const;
    bool HasDifference() const;
    void ShowPointer(QPointF at);
    void MakePicture();
    void MakeDifference();
    void PaintPicture(QPainter& painter, const QImage& picture, const QRectF& part) const;
    void PaintCorner(QPainter& painter) const;
    void PaintSplit(QPainter& painter) const;
    QRectF TargetOf(const GridView& seen) const; // logical pixels

    std::shared_ptr<const BlinkGround> m_ground;
    std::vector<LightOfCodes> m_lights;
    std::array<QRgb, 256> m_greys{}; // of the theme
    std::shared_ptr<const SeenFrame> m_frame;
    std::shared_ptr<const SeenFrame> m_median;
    std::optional<DifferenceLight> m_differenceLight; // one for all frames of a median
    bool m_isSplit = false;
    double m_splitAt = 0.5; // of the width
    QImage m_picture;
    QImage m_difference;
    bool m_isStale = true; // both are made when they are painted
    QString m_corner;
    ShownMark m_mark;
    QString m_hint;
    ZoomView m_zoom;
    WheelNotches m_steps;
    WheelNotches m_notches; // of the zoom
    QPointF m_dragged;
    enum class Drag { None, Picture, Split } m_drag = Drag::None;
};

} // namespace tarn
