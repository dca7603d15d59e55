// The pane of pages: as browsers show them where the module for it is installed, else as plain rich
// text.
#pragma once

#include <QElapsedTimer>
#include <QTextBrowser>

#include <memory>
#include <string>

namespace tarn {

class WebView;

class PageBrowser : public QTextBrowser {
public:
    // Before the application object: what the module needs from it, where there is one.
    static void PrepareProgram();

    explicit PageBrowser(QWidget* parent = nullptr);
    ~PageBrowser() override;

    // Only files of the page's own folder and below are read; links are not followed. What is to
    // be said about the way that it is shown, empty when there is nothing.
    std::string ShowPage(const std::string& path);

    // Nothing goes on behind a pane that is not seen.
    void ClearPage();

protected:
    QVariant loadResource(int type, const QUrl& name) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void LoadView();

    std::unique_ptr<WebView> m_view;
    bool m_viewTried = false;
    std::string m_whyPlain;
    QString m_folder; // the page's, as it really is
    QElapsedTimer m_loading;
};

} // namespace tarn
