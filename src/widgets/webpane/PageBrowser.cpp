#include "widgets/webpane/PageBrowser.h"

#include "imaging/PictureLoader.h"
#include "platform/Modules.h"
#include "platform/OpenRegular.h"
#include "platform/QtText.h"
#include "widgets/webpane/WebView.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QKeyEvent>

#include <unistd.h>

namespace tarn {

namespace {

constexpr int kPatience = 2000;     // milliseconds for the pictures of a plain page
constexpr int kLargestSide = 1200;  // pixels of one of them
constexpr int kMostBytes = 4 << 20; // of a page or style sheet

// In place of a picture that is not shown.
QImage Blank() {
    constexpr QSize kSize(16, 16);
    QImage blank(kSize, QImage::Format_RGB32);
    blank.fill(Qt::lightGray);
    return blank;
}

} // namespace

void PageBrowser::PrepareProgram() {
    if (!ModulePath(WebPaneModule::kModule).empty())
        QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
}

PageBrowser::PageBrowser(QWidget* parent) : QTextBrowser(parent) {
    setOpenLinks(false);
}

PageBrowser::~PageBrowser() = default;

void PageBrowser::LoadView() {
    m_viewTried = true;
    m_whyPlain = "Plain view of the page: the package tarn-view-webpane shows it as browsers do";
    const auto* module = FromModule<WebPaneModule>();
    if (!module) return;
    // Its library keeps a page locked up by means that it does not have as root.
    m_whyPlain = "Plain view of the page: pages are not shown as browsers do for the superuser";
    if (::geteuid() == 0) return;
    m_whyPlain = "Plain view of the page: this system cannot lock pages up";
    m_view.reset(module->make(this));
    if (!m_view) return;
    m_whyPlain.clear();
    m_view->Widget()->setGeometry(rect());
    m_view->Widget()->show();
}

std::string PageBrowser::ShowPage(const std::string& path) {
    if (!m_viewTried) LoadView();
    const QUrl page = QUrl::fromLocalFile(ToQt(path));
    if (m_view) {
        m_view->Show(page);
        return {};
    }
    m_folder = QFileInfo(page.toLocalFile()).canonicalPath();
    m_loading.start();
    if (source() == page)
        reload(); // it may have changed
    else
        setSource(page, QTextDocument::HtmlResource);
    return m_whyPlain;
}

void PageBrowser::ClearPage() {
    if (m_view) m_view->Show(QUrl(QStringLiteral("about:blank")));
}

QVariant PageBrowser::loadResource(int type, const QUrl& name) {
    const QUrl url = source().isEmpty() ? name : source().resolved(name);
    const QString path = QFileInfo(url.toLocalFile()).canonicalFilePath();
    const bool isOwn =
        url.isLocalFile() && !m_folder.isEmpty() && path.startsWith(m_folder + QLatin1Char('/'));
    if (type != QTextDocument::ImageResource) {
        std::string refused;
        const FileHandle opened = isOwn ? OpenRegular(FromQt(path), refused) : nullptr;
        QFile file;
        return opened && file.open(opened.get(), QIODevice::ReadOnly) ? file.read(kMostBytes)
                                                                      : QByteArray();
    }
    // A page of a thousand photographs is no reason to stand still. What is refused is a blank of
    // its own: for a null picture the painter would look on the disk itself.
    std::string error;
    const auto picture = isOwn && !m_loading.hasExpired(kPatience)
                             ? PictureLoader::Open(FromQt(path), error)
                             : nullptr;
    if (!picture) return Blank();
    QSize wanted = picture->Size();
    if (wanted.width() > kLargestSide || wanted.height() > kLargestSide)
        wanted.scale(kLargestSide, kLargestSide, Qt::KeepAspectRatio);
    const QImage pixels = picture->Decode(wanted, error);
    return pixels.isNull() ? Blank() : pixels;
}

void PageBrowser::keyPressEvent(QKeyEvent* event) {
    if (m_view)
        m_view->SendKey(*event);
    else
        QTextBrowser::keyPressEvent(event);
}

void PageBrowser::resizeEvent(QResizeEvent* event) {
    QTextBrowser::resizeEvent(event);
    if (m_view) m_view->Widget()->setGeometry(rect());
}

} // namespace tarn
