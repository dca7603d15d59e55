#include "app/window/FaultList.h"

#include "common/paths.h"
#include "platform/Clipboard.h"
#include "platform/QtText.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

#include <algorithm>

namespace tarn {

namespace {

constexpr std::size_t kMostSeen = 10;
constexpr int kWidth = 70; // characters

} // namespace

FaultList::FaultList(QWidget& window, Clipboard& clipboard)
    : QWidget(&window, Qt::Tool), m_clipboard(clipboard), m_heading(new QLabel()),
      m_list(new QPlainTextEdit()), m_more(new QLabel()) {
    setObjectName(QStringLiteral("frmFaults"));
    setWindowTitle(QStringLiteral("Tarn_View - Files that failed"));
    setAttribute(Qt::WA_ShowWithoutActivating);
    m_heading->setTextFormat(Qt::PlainText);
    m_heading->setWordWrap(true);
    m_list->setObjectName(QStringLiteral("FaultsBox"));
    m_list->setAccessibleName(windowTitle());
    m_list->setReadOnly(true);
    m_list->setTabChangesFocus(true);
    m_list->setLineWrapMode(QPlainTextEdit::NoWrap);
    auto* copy = new QPushButton(QStringLiteral("&Copy list"));
    copy->setObjectName(QStringLiteral("FaultsCopyButton"));
    copy->setToolTip(QStringLiteral("Copy all files with their reasons to the clipboard"));
    auto* close = new QPushButton(QStringLiteral("Close"));
    close->setObjectName(QStringLiteral("FaultsCloseButton"));
    auto* bar = new QHBoxLayout();
    bar->addWidget(copy);
    bar->addWidget(m_more, 1);
    bar->addWidget(close);
    auto* all = new QVBoxLayout(this);
    all->addWidget(m_heading);
    all->addWidget(m_list, 1);
    all->addLayout(bar);
    connect(copy, &QPushButton::clicked, this, [this] { CopyList(); });
    connect(close, &QPushButton::clicked, this, &QWidget::close);
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);
}

void FaultList::ShowFaults(const std::string& text, const std::vector<FileFault>& faults) {
    const std::size_t seen = std::min(kMostSeen, faults.size());
    std::string rows;
    m_all.clear();
    for (std::size_t i = 0; i < faults.size(); ++i) {
        if (i < seen)
            rows += (i > 0 ? "\n" : "") + LastPart(faults[i].path) + " - " + faults[i].why;
        m_all += faults[i].path + "\t" + faults[i].why + "\n";
    }
    m_heading->setText(ToQt(text));
    m_list->setPlainText(ToQt(rows));
    m_more->setText(seen < faults.size() ? QStringLiteral("and %1 more").arg(faults.size() - seen)
                                         : QString());
    const QFontMetrics metrics(m_list->font());
    const int height = int(seen + 2) * metrics.lineSpacing();
    m_list->setMinimumHeight(height);
    if (!isVisible()) {
        const QRect window = parentWidget()->geometry();
        const int width = kWidth * metrics.averageCharWidth();
        resize(std::min(width, window.width() * 3 / 4), sizeHint().height());
        move(window.center() - rect().center());
    }
    show();
    raise();
}

void FaultList::CopyList() {
    m_clipboard.SetText(m_all);
    m_more->setText(QStringLiteral("Copied"));
}

} // namespace tarn
