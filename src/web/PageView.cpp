#include "web/PageView.h"

#include "common/paths.h"
#include "platform/QtText.h"

#include <QDialog>
#include <QImageReader>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

#include <algorithm>

namespace tarn {

namespace {

constexpr QSize kDesign(900, 650); // logical pixels

constexpr int kLargestSide = 1600; // pixels of a picture in memory: pages have many

// Upright, as browsers show it.
QImage ReadPicture(const QString& path) {
    QImageReader reader(path);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    if (std::max(size.width(), size.height()) > kLargestSide)
        reader.setScaledSize(size.scaled(kLargestSide, kLargestSide, Qt::KeepAspectRatio));
    return reader.read();
}

// Only what lies on the disk.
class PageBrowser : public QTextBrowser {
protected:
    QVariant loadResource(int type, const QUrl& name) override {
        if (!name.isLocalFile() && !name.isRelative()) return {};
        if (type != QTextDocument::ImageResource) return QTextBrowser::loadResource(type, name);
        return ReadPicture(source().resolved(name).toLocalFile());
    }
};

} // namespace

void ShowPageWindow(QWidget& parent, const std::string& path) {
    auto* window = new QDialog(&parent);
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->setObjectName(QStringLiteral("frmPageView"));
    window->setWindowTitle(ToQt(LastPart(path)));
    auto* all = new QVBoxLayout(window);
    all->setContentsMargins(0, 0, 0, 0);
    auto* page = new PageBrowser();
    page->setObjectName(QStringLiteral("PageView"));
    page->setSource(QUrl::fromLocalFile(ToQt(path)));
    all->addWidget(page);
    window->resize(kDesign);
    window->show();
}

} // namespace tarn
