#include "app/help/HelpText.h"

#include <QImage>
#include <QScrollBar>

#include <algorithm>
#include <utility>

namespace tarn {

namespace {

constexpr int kRest = 200;  // milliseconds after the last change of size
constexpr int kAround = 40; // logical pixels beside a picture
constexpr int kLeast = 200;

} // namespace

HelpText::HelpText(std::function<QString()> keysPage) : m_keysPage(std::move(keysPage)) {
    // Or it would come up after the pictures have been fitted, and take of their room.
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    m_rest.setSingleShot(true);
    m_rest.setInterval(kRest);
    connect(&m_rest, &QTimer::timeout, this, [this] { ReadAgain(); });
}

QVariant HelpText::loadResource(int type, const QUrl& name) {
    if (type == QTextDocument::HtmlResource) m_widthRead = viewport()->width();
    if (name == KeysPage()) return m_keysPage();
    QVariant found = QTextBrowser::loadResource(type, name);
    if (type != QTextDocument::ImageResource) return found;
    QImage picture = QImage::fromData(found.toByteArray());
    const double ratio = devicePixelRatioF();
    const int room = int(std::max(kLeast, viewport()->width() - kAround) * ratio);
    if (picture.width() > room)
        picture = picture.convertToFormat(QImage::Format_RGB32)
                      .scaledToWidth(room, Qt::SmoothTransformation);
    picture.setDevicePixelRatio(ratio);
    return picture;
}

void HelpText::resizeEvent(QResizeEvent* event) {
    QTextBrowser::resizeEvent(event);
    if (viewport()->width() != m_widthRead) m_rest.start();
}

// On the same part of the page.
void HelpText::ReadAgain() {
    if (viewport()->width() == m_widthRead || source().isEmpty()) return;
    QScrollBar& bar = *verticalScrollBar();
    const double part = bar.maximum() > 0 ? double(bar.value()) / bar.maximum() : 0;
    reload();
    bar.setValue(int(part * bar.maximum()));
}

} // namespace tarn
