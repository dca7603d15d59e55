// The page of the help that is shown. Pictures wider than the window are scaled to it.
#pragma once

#include <QTextBrowser>
#include <QTimer>

namespace tarn {

class HelpText : public QTextBrowser {
public:
    HelpText();

protected:
    QVariant loadResource(int type, const QUrl& name) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void ReadAgain();

    QTimer m_rest;
    int m_widthRead = 0; // of the view, when the page was read
};

} // namespace tarn
