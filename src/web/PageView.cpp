#include "web/PageView.h"

#include "common/paths.h"
#include "platform/QtText.h"

#include <QDialog>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

namespace tarn {

namespace {

constexpr QSize kDesign(900, 650); // logical pixels

// Only what lies on the disk, and pages alone as targets.
class PageBrowser : public QTextBrowser {
protected:
    QVariant loadResource(int type, const QUrl& name) override {
        return name.isLocalFile() || name.isRelative() ? QTextBrowser::loadResource(type, name)
                                                       : QVariant();
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
