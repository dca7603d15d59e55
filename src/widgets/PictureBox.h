// Shows one picture in the middle of a plain pane, one picture pixel to one pixel of the screen, or
// a line of text while there is none.
#pragma once

#include <QColor>
#include <QImage>
#include <QPointF>
#include <QSize>
#include <QString>
#include <QWidget>

#include <string>
#include <vector>

namespace tarn {

// A ring upon the picture, from its corner, in its pixels.
struct SeenRing {
    QPointF centre;
    double radius = 0;
    QColor colour;
};

class PictureBox : public QWidget {
    Q_OBJECT

public:
    explicit PictureBox(QWidget* parent = nullptr);

    void SetPicture(const QImage& picture); // a null image shows the hint
    const QImage& Picture() const { return m_picture; }

    // Upon the picture that is set, until the next call.
    void SetRings(std::vector<SeenRing> rings);
    const std::vector<SeenRing>& Rings() const { return m_rings; }

    // What to say while there is no picture.
    void SetHint(const std::string& text);
    const QString& Hint() const { return m_hint; }

    // Something that lies over the pane says it there.
    void SetHintCovered(bool covered);

    // The pane in pixels of the screen, which are smaller than the toolkit's on fine screens.
    QSize PixelSize() const;

signals:
    void emptyChanged(); // there is no picture any more or again, or another hint

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void PaintPicture(QPainter& painter) const;
    void PaintRings(QPainter& painter, QPointF corner) const;

    QImage m_picture;
    std::vector<SeenRing> m_rings;
    QString m_hint;
    bool m_hintCovered = false;
};

} // namespace tarn
