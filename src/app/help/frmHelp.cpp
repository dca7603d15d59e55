#include "app/help/frmHelp.h"

#include "app/help/HelpPages.h"
#include "app/help/HelpText.h"
#include "platform/ProgramFiles.h"
#include "platform/QtText.h"

#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSplitter>
#include <QUrl>
#include <QVBoxLayout>

#include <utility>

namespace tarn {

namespace {

// Text alone, without the mark-up, of a page that need not be on show.
QString PlainText(const QString& html) {
    QTextDocument document;
    document.setHtml(html);
    return document.toPlainText();
}

QString ReadPage(const char* file) {
    QFile page(ToQt(ProgramFile(file)));
    return page.open(QIODevice::ReadOnly) ? QString::fromUtf8(page.readAll()) : QString();
}

} // namespace

const WindowKey<frmHelp> frmHelp::kKeys[] = {
    {Qt::CTRL | Qt::Key_F, "find a text", &frmHelp::GoToFind},
    {Qt::Key_F3, "next place of the text", &frmHelp::FindNext},
    {Qt::Key_Escape, "close the window", &frmHelp::Close},
};

std::vector<keys::KeyLine> frmHelp::KeyLines() {
    return LinesOf(kKeys);
}

frmHelp::frmHelp(WindowPlace& place, std::function<QString()> keysPage)
    : m_keysPage(keysPage), m_pages(new QListWidget()), m_page(new HelpText(std::move(keysPage))),
      m_find(new QLineEdit()), m_found(new QLabel()), m_place(*this, place) {
    setObjectName(QStringLiteral("frmHelp"));
    setWindowTitle(QStringLiteral("Tarn_View - Help"));
    MakeContents();
    ConnectKeys(*this, kKeys);
    for (const HelpPageRow& page : HelpPages()) m_pages->addItem(QString::fromLatin1(page.title));
    const int em = fontMetrics().horizontalAdvance(QLatin1Char('0'));
    m_pages->setMinimumWidth(m_pages->sizeHintForColumn(0) + 2 * em);
    connect(m_pages, &QListWidget::currentRowChanged, this, &frmHelp::ShowRow);
    // A link leads to another page, which is then the one chosen.
    connect(m_page, &HelpText::sourceChanged, this, [this](const QUrl& source) {
        for (int row = 0; row < m_pages->count(); ++row)
            if (QLatin1String(HelpPages()[static_cast<std::size_t>(row)].file)
                    .endsWith(QLatin1Char('/') + source.fileName()))
                m_pages->setCurrentRow(row);
    });
    m_pages->setCurrentRow(0);
    m_place.Restore(QSize(100 * em, 36 * fontMetrics().height()));
}

void frmHelp::MakeContents() {
    m_pages->setObjectName(QStringLiteral("HelpList"));
    m_pages->setAccessibleName(QStringLiteral("Pages"));
    m_page->setObjectName(QStringLiteral("HelpText"));
    m_page->setAccessibleName(QStringLiteral("Page"));
    m_find->setObjectName(QStringLiteral("HelpFind"));
    m_find->setAccessibleName(QStringLiteral("Find in all pages"));
    m_find->setPlaceholderText(m_find->accessibleName());
    m_find->setClearButtonEnabled(true);
    m_found->setObjectName(QStringLiteral("HelpFound"));
    auto* next = new QPushButton(QStringLiteral("Find Next"));
    next->setObjectName(QStringLiteral("HelpFindButton"));
    next->setToolTip(QStringLiteral("Next place of the text  [F3]"));
    auto* bar = new QHBoxLayout();
    bar->addWidget(m_find, 1);
    bar->addWidget(next);
    bar->addWidget(m_found, 1);
    auto* halves = new QSplitter();
    halves->addWidget(m_pages);
    halves->addWidget(m_page);
    halves->setStretchFactor(1, 1);
    halves->setChildrenCollapsible(false);
    auto* all = new QVBoxLayout(this);
    all->addLayout(bar);
    all->addWidget(halves, 1);
    connect(next, &QPushButton::clicked, this, &frmHelp::FindNext);
    connect(m_find, &QLineEdit::returnPressed, this, &frmHelp::FindNext);
    connect(m_find, &QLineEdit::textChanged, m_found, &QLabel::clear);
}

void frmHelp::GoToFind() {
    m_find->setFocus(Qt::ShortcutFocusReason);
    m_find->selectAll();
}

void frmHelp::ShowPage(int page) {
    const auto& pages = HelpPages();
    for (std::size_t row = 0; row < pages.size(); ++row)
        if (pages[row].page == page) m_pages->setCurrentRow(static_cast<int>(row));
    if (page == kHelpKeys) m_page->reload(); // as the keys are now
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
    m_page->setFocus();
}

void frmHelp::ShowRow(int row) {
    if (row < 0) return;
    const HelpPageRow& page = HelpPages()[static_cast<std::size_t>(row)];
    if (page.page == kHelpKeys) return m_page->setSource(HelpText::KeysPage());
    const QString path = ToQt(ProgramFile(page.file));
    if (QFileInfo::exists(path))
        m_page->setSource(QUrl::fromLocalFile(path));
    else
        m_page->setPlainText(QStringLiteral("The page '%1' is missing.").arg(path));
}

void frmHelp::FindNext() {
    const QString text = m_find->text();
    m_found->clear();
    if (text.isEmpty()) {
        m_find->setFocus();
        return;
    }
    if (m_page->find(text)) return;
    const int count = m_pages->count();
    for (int step = 1; step <= count; ++step)
        if (FindFromStart(text, (m_pages->currentRow() + step) % count)) return;
    m_found->setText(QStringLiteral("Not in the help: %1").arg(text));
}

QString frmHelp::HtmlOf(int row) const {
    const HelpPageRow& page = HelpPages()[static_cast<std::size_t>(row)];
    return page.page == kHelpKeys ? m_keysPage() : ReadPage(page.file);
}

bool frmHelp::FindFromStart(const QString& text, int row) {
    if (!PlainText(HtmlOf(row)).contains(text, Qt::CaseInsensitive)) return false;
    m_pages->setCurrentRow(row);
    m_page->moveCursor(QTextCursor::Start);
    return m_page->find(text);
}

} // namespace tarn
