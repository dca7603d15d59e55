// The picture that stands while the program starts, with its version drawn upon it. A click or the
// release of any key puts it away.
#pragma once

#include <QElapsedTimer>
#include <QPixmap>
#include <QWidget>

#include <string>

namespace tarn {

class frmSplash : public QWidget {
public:
    frmSplash(const std::string& version, const std::string& detail);

    // From now on the main window is over it. Goes when its time is up, a quarter of a second from
    // its coming.
    void LeaveInTime();

    // Comes back, over the main window.
    void ShowOnTop();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;

private:
    QPixmap m_picture; // SplashPicture
    QElapsedTimer m_shown;
};

} // namespace tarn
