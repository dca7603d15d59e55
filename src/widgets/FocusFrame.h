// A frame around the pane that has the keyboard.
#pragma once

#include <QPointer>
#include <QWidget>

#include <vector>

namespace tarn {

// Lies over the panes of its parent, takes no clicks, and follows the keyboard between them.
class FocusFrame : public QWidget {
public:
    FocusFrame(std::vector<QWidget*> panes, QWidget* parent);

    void Place(); // after what holds the panes has moved

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void Follow(const QWidget* focus);

    std::vector<QWidget*> m_panes;
    QPointer<QWidget> m_pane; // that has it
};

} // namespace tarn
