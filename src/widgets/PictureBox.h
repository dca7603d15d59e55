// Shows one picture in the middle of a plain pane, one picture pixel to one pixel of the screen, or
// a line of text while there is none.
#pragma once

#include <QImage>
#include <QSize>
#include <QString>
#include <QWidget>

#include <string>

namespace tarn {

class PictureBox : public QWidget {
    Q_OBJECT

public:
    explicit PictureBox(QWidget* parent = nullptr);

    void SetPicture(const QImage& picture); // a null image shows the hint
    const QImage& Picture() const { return m_picture; }

    // What to say while there is no picture.
    void SetHint(const std::string& text);

    // The pane in pixels of the screen, which are smaller than the toolkit's on fine screens.
    QSize PixelSize() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void PaintPicture(QPainter& painter) const;

    QImage m_picture;
    QString m_hint;
};

} // namespace tarn
