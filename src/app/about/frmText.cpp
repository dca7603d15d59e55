#include "app/about/frmText.h"

#include "platform/Clipboard.h"
#include "platform/QtText.h"

#include <QFontDatabase>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>

#include <algorithm>

namespace tarn {

frmText::frmText(const char* name, const char* title, Clipboard& clipboard)
    : m_clipboard(clipboard), m_heading(new QLabel()), m_text(new QPlainTextEdit()),
      m_say(new QLabel()) {
    setObjectName(QString::fromLatin1(name));
    setWindowTitle(QString::fromLatin1(title));
    m_heading->setTextFormat(Qt::PlainText);
    m_heading->setWordWrap(true);
    m_text->setObjectName(QStringLiteral("TextBox"));
    m_text->setAccessibleName(windowTitle());
    m_text->setReadOnly(true);
    m_text->setTabChangesFocus(true);
    m_text->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    auto* copy = new QPushButton(QStringLiteral("&Copy"));
    copy->setObjectName(QStringLiteral("TextCopyButton"));
    copy->setToolTip(QStringLiteral("Copy the whole text to the clipboard"));
    auto* close = new QPushButton(QStringLiteral("Close"));
    close->setObjectName(QStringLiteral("TextCloseButton"));
    auto* bar = new QHBoxLayout();
    bar->addWidget(copy);
    bar->addWidget(m_say, 1);
    bar->addWidget(close);
    auto* all = new QVBoxLayout(this);
    all->addWidget(m_heading);
    all->addWidget(m_text, 1);
    all->addLayout(bar);
    connect(copy, &QPushButton::clicked, this, [this] { Copy(); });
    connect(close, &QPushButton::clicked, this, &QWidget::close);
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);
}

void frmText::ShowText(const std::string& heading, const std::string& text) {
    constexpr int kMostLines = 40;
    m_heading->setText(ToQt(heading));
    m_text->setPlainText(ToQt(text));
    m_say->clear();
    if (!isVisible()) {
        const QFontMetrics metrics(m_text->font());
        const int lines = std::clamp(m_text->blockCount() + 2, 10, kMostLines);
        const QSize wanted(86 * metrics.horizontalAdvance(QLatin1Char('0')),
                           sizeHint().height() - m_text->sizeHint().height() +
                               lines * metrics.lineSpacing());
        constexpr int kAround = 40; // title and frame
        resize(wanted.boundedTo(screen()->availableSize() - QSize(kAround, kAround)));
    }
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
    m_text->setFocus();
}

void frmText::Copy() {
    m_clipboard.SetText(FromQt(m_text->toPlainText()));
    m_say->setText(QStringLiteral("Copied"));
}

} // namespace tarn
