#include "widgets/webpane/WebView.h"

#include <QApplication>
#include <QFileInfo>
#include <QKeyEvent>
#include <QOpenGLContext>
#include <QQuickWindow>
#include <QVBoxLayout>
#include <QWebEnginePage>
#include <QWebEngineProfile>
#include <QWebEngineRegisterProtocolHandlerRequest>
#include <QWebEngineSettings>
#include <QWebEngineUrlRequestInterceptor>
#include <QWebEngineView>

#include <string>

#include <fcntl.h>
#include <sched.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tarn {

namespace {

// No way to the network, whatever a script tries.
constexpr char kFlags[] = "--force-webrtc-ip-handling-policy=disable_non_proxied_udp "
                          "--proxy-server=127.0.0.1:9 --proxy-bypass-list=<-loopback> "
                          "--host-resolver-rules='MAP * ~NOTFOUND' --disable-background-networking";

// Whether the page's process can be locked up; without that the library ends the whole program.
bool CanLockUp() {
    const pid_t child = ::fork();
    if (child == 0) {
        // Some systems allow the first step and refuse the second.
        const std::string map = "0 " + std::to_string(::geteuid()) + " 1";
        const bool apart = ::unshare(CLONE_NEWUSER) == 0;
        const int file = apart ? ::open("/proc/self/uid_map", O_WRONLY | O_CLOEXEC) : -1;
        ::_exit(file >= 0 && ::write(file, map.data(), map.size()) == ssize_t(map.size()) ? 0 : 1);
    }
    int status = 1;
    return child > 0 && ::waitpid(child, &status, 0) == child && WIFEXITED(status) &&
           WEXITSTATUS(status) == 0;
}

bool IsShown(const QUrl& url) {
    const QString scheme = url.scheme();
    return scheme == QLatin1String("file") || scheme == QLatin1String("data") ||
           scheme == QLatin1String("about");
}

// The library reads these flags from the environment, once, as it starts; programs that are started
// later must not come upon them.
class FlagsForTheStart {
public:
    FlagsForTheStart() : m_before(qgetenv(kName)), m_had(qEnvironmentVariableIsSet(kName)) {
        qputenv(kName, kFlags);
    }
    ~FlagsForTheStart() {
        if (m_had)
            qputenv(kName, m_before);
        else
            qunsetenv(kName);
    }
    FlagsForTheStart(const FlagsForTheStart&) = delete;
    FlagsForTheStart& operator=(const FlagsForTheStart&) = delete;

private:
    static constexpr char kName[] = "QTWEBENGINE_CHROMIUM_FLAGS";
    QByteArray m_before;
    bool m_had;
};

class FolderOnly : public QWebEngineUrlRequestInterceptor {
public:
    QString folder; // as it really is

    void interceptRequest(QWebEngineUrlRequestInfo& info) override {
        const QUrl url = info.requestUrl();
        if (url.scheme() == QLatin1String("data") || url.scheme() == QLatin1String("about")) return;
        const QString path = QFileInfo(url.toLocalFile()).canonicalFilePath();
        info.block(folder.isEmpty() || !url.isLocalFile() ||
                   !path.startsWith(folder + QLatin1Char('/')));
    }
};

class StayingPage : public QWebEnginePage {
public:
    using QWebEnginePage::QWebEnginePage;
    QUrl page;

protected:
    // Pictures and frames of the page are no navigation of its own. What has another scheme would
    // be handed to whatever program is registered for it.
    bool acceptNavigationRequest(const QUrl& url, NavigationType, bool isMainFrame) override {
        return IsShown(url) && (!isMainFrame || url.matches(page, QUrl::RemoveFragment));
    }
    QWebEnginePage* createWindow(WebWindowType) override { return nullptr; }
    void javaScriptAlert(const QUrl&, const QString&) override {}
    bool javaScriptConfirm(const QUrl&, const QString&) override { return false; }
    bool javaScriptPrompt(const QUrl&, const QString&, const QString&, QString*) override {
        return false;
    }
};

// Keys that the page has no use for come back to what holds it: there they end.
class Holder : public QWidget {
public:
    using QWidget::QWidget;

protected:
    void keyPressEvent(QKeyEvent* event) override { event->accept(); }
    void keyReleaseEvent(QKeyEvent* event) override { event->accept(); }
};

class WebEngineView : public WebView {
public:
    explicit WebEngineView(QWidget* pane)
        : m_holder(new Holder(pane)), m_view(new QWebEngineView(m_holder)),
          m_page(new StayingPage(&m_profile, m_view)) {
        m_profile.setUrlRequestInterceptor(&m_folderOnly);
        QObject::connect(
            m_page, &QWebEnginePage::registerProtocolHandlerRequested, m_page,
            [](QWebEngineRegisterProtocolHandlerRequest request) { request.reject(); });
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
        settings.setUnknownUrlSchemePolicy(QWebEngineSettings::DisallowUnknownUrlSchemes);
        auto* whole = new QVBoxLayout(m_holder);
        whole->setContentsMargins({});
        whole->addWidget(m_view);
        m_view->setPage(m_page);
        m_view->setFocusPolicy(Qt::NoFocus);
        m_view->setContextMenuPolicy(Qt::NoContextMenu);
    }
    ~WebEngineView() override {
        delete m_page; // before its profile
        delete m_holder;
    }

    QWidget* Widget() override { return m_holder; }

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
    QWidget* m_holder;
    QWebEngineView* m_view;
    StayingPage* m_page;
};

WebView* MakeView(QWidget* pane) {
    // Without a shared context the library ends the program.
    if (!QOpenGLContext::globalShareContext() || !CanLockUp()) return nullptr;
    const FlagsForTheStart flags;
    QQuickWindow::setGraphicsApi(QSGRendererInterface::OpenGLRhi);
    return new WebEngineView(pane);
}

} // namespace

extern "C" const WebPaneModule TarnModule{MakeView};

} // namespace tarn
