#include "platform/webpane/WebView.h"

#include <QApplication>
#include <QFileInfo>
#include <QKeyEvent>
#include <QWebEnginePage>
#include <QWebEngineProfile>
#include <QWebEngineSettings>
#include <QWebEngineUrlRequestInterceptor>
#include <QWebEngineView>

#include <sched.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tarn {

namespace {

// Whether the page's process can be locked up; without that the library ends the whole program.
bool CanLockUp() {
    const pid_t child = ::fork();
    if (child == 0) ::_exit(::unshare(CLONE_NEWUSER) == 0 ? 0 : 1);
    int status = 1;
    return child > 0 && ::waitpid(child, &status, 0) == child && WIFEXITED(status) &&
           WEXITSTATUS(status) == 0;
}

class FolderOnly : public QWebEngineUrlRequestInterceptor {
public:
    QString folder; // as it really is

    void interceptRequest(QWebEngineUrlRequestInfo& info) override {
        const QUrl url = info.requestUrl();
        if (url.scheme() == QLatin1String("data") || url.scheme() == QLatin1String("about")) return;
        const QString path = QFileInfo(url.toLocalFile()).canonicalFilePath();
        info.block(!url.isLocalFile() || !path.startsWith(folder + QLatin1Char('/')));
    }
};

class StayingPage : public QWebEnginePage {
public:
    using QWebEnginePage::QWebEnginePage;
    QUrl page;

protected:
    // Pictures and frames of the page are no navigation of its own.
    bool acceptNavigationRequest(const QUrl& url, NavigationType, bool isMainFrame) override {
        return !isMainFrame || url.matches(page, QUrl::RemoveFragment);
    }
    QWebEnginePage* createWindow(WebWindowType) override { return nullptr; }
    void javaScriptAlert(const QUrl&, const QString&) override {}
    bool javaScriptConfirm(const QUrl&, const QString&) override { return false; }
    bool javaScriptPrompt(const QUrl&, const QString&, const QString&, QString*) override {
        return false;
    }
};

class WebEngineView : public WebView {
public:
    explicit WebEngineView(QWidget* pane)
        : m_view(new QWebEngineView(pane)), m_page(new StayingPage(&m_profile, m_view)) {
        m_profile.setUrlRequestInterceptor(&m_folderOnly);
        m_profile.setHttpCacheType(QWebEngineProfile::NoCache);
        QObject::connect(&m_profile, &QWebEngineProfile::downloadRequested, m_view, [] {});
        QWebEngineSettings& settings = *m_page->settings();
        for (const auto attribute :
             {QWebEngineSettings::LocalContentCanAccessRemoteUrls,
              QWebEngineSettings::DnsPrefetchEnabled, QWebEngineSettings::PluginsEnabled,
              QWebEngineSettings::JavascriptCanOpenWindows,
              QWebEngineSettings::JavascriptCanAccessClipboard,
              QWebEngineSettings::LocalStorageEnabled})
            settings.setAttribute(attribute, false);
        m_view->setPage(m_page);
        m_view->setFocusPolicy(Qt::NoFocus);
        m_view->setContextMenuPolicy(Qt::NoContextMenu);
    }
    ~WebEngineView() override {
        delete m_page; // before its profile
        delete m_view;
    }

    QWidget* Widget() override { return m_view; }

    void Show(const QUrl& page) override {
        m_folderOnly.folder = QFileInfo(page.toLocalFile()).canonicalPath();
        m_page->page = page;
        m_view->load(page);
        if (QWidget* inner = m_view->focusProxy()) inner->setFocusPolicy(Qt::NoFocus);
    }

    void SendKey(const QKeyEvent& key) override {
        if (!m_view->focusProxy()) return;
        for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent copy(type, key.key(), key.modifiers(), key.text());
            QApplication::sendEvent(m_view->focusProxy(), &copy);
        }
    }

private:
    QWebEngineProfile m_profile; // of no name: nothing is written
    FolderOnly m_folderOnly;
    QWebEngineView* m_view;
    StayingPage* m_page;
};

} // namespace

} // namespace tarn

extern "C" tarn::WebView* TarnMakeWebView(QWidget* pane) {
    return tarn::CanLockUp() ? new tarn::WebEngineView(pane) : nullptr;
}
