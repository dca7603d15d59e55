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

    QImage m_picture;
    QString m_hint;
    bool m_hintCovered = false;
};

} // namespace tarn
