// The page of the help that is shown. Pictures wider than the window are scaled to it.
#pragma once

#include <QTextBrowser>
#include <QTimer>
#include <QUrl>

#include <functional>

namespace tarn {

class HelpText : public QTextBrowser {
public:
    explicit HelpText(std::function<QString()> keysPage);

    // The page that is made when it is read.
    static QUrl KeysPage() { return QUrl(QStringLiteral("made:/keys")); }

protected:
    QVariant loadResource(int type, const QUrl& name) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void ReadAgain();

    std::function<QString()> m_keysPage;
    QTimer m_rest;
    int m_widthRead = 0; // of the view, when the page was read
};

} // namespace tarn
