// What parts two panes and is dragged to share their room out anew.
#pragma once

#include <QWidget>

#include <functional>

namespace tarn {

class PaneHandle : public QWidget {
public:
    // `moves` is the way it goes: sideways between two panes beside each other.
    PaneHandle(Qt::Orientation moves, const char* name, QWidget* parent);

    std::function<int()> place;      // where it stands, in logical pixels of whoever asks
    std::function<void(int)> moveTo; // dragged to there
    std::function<void()> reset;     // double clicked: back to where it stood at first

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    int Along(const QMouseEvent& event) const;

    Qt::Orientation m_moves;
    bool m_drags = false;
    int m_from = 0; // pointer and place at the press
    int m_start = 0;
};

} // namespace tarn
