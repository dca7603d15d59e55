#include "app/logs/frmLogs.h"

#include "common/paths.h"
#include "platform/QtText.h"
#include "widgets/FileListBox.h"
#include "widgets/TextPane.h"

#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSplitter>
#include <QVBoxLayout>

namespace tarn {

const WindowKey<frmLogs> frmLogs::kKeys[] = {
    {Qt::CTRL | Qt::Key_F, "find a text", &frmLogs::GoToFind},
    {Qt::Key_F3, "next place of the text", &frmLogs::FindNext},
    {Qt::Key_F5, "read folder and file again", &frmLogs::RefreshFolder},
    {Qt::Key_Escape, "close the window", &frmLogs::Close},
};

std::vector<keys::KeyLine> frmLogs::KeyLines() {
    return LinesOf(kKeys);
}

frmLogs::frmLogs(Context& context)
    : m(context), m_file(context.files), m_list(new QListWidget()), m_text(new QPlainTextEdit()),
      m_find(new QLineEdit()), m_more(new QPushButton(QStringLiteral("More"))), m_say(new QLabel()),
      m_place(*this, context.state.LogsPlace) {
    setObjectName(QStringLiteral("frmLogs"));
    setWindowTitle(QStringLiteral("Tarn_View - Log files"));
    MakeContents();
    ConnectKeys(*this, kKeys);
    connect(m_list, &QListWidget::currentRowChanged, this, [this] { ShowChosen(); });
    connect(m_more, &QPushButton::clicked, this, [this] { ShowMore(); });
    const int em = fontMetrics().horizontalAdvance(QLatin1Char('0'));
    m_place.Restore(QSize(110 * em, 36 * fontMetrics().height()));
}

void frmLogs::MakeContents() {
    m_list->setObjectName(QStringLiteral("LogsList"));
    m_list->setAccessibleName(QStringLiteral("Log and text files"));
    m_list->setUniformItemSizes(true);
    m_list->setMinimumWidth(24 * fontMetrics().horizontalAdvance(QLatin1Char('0')));
    m_text->setObjectName(QStringLiteral("LogsText"));
    m_text->setAccessibleName(QStringLiteral("Text of the file"));
    m_text->setReadOnly(true);
    m_text->setFont(m.controls.LogText->font());
    m_text->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_find->setObjectName(QStringLiteral("LogsFind"));
    m_find->setAccessibleName(QStringLiteral("Find"));
    m_find->setPlaceholderText(QStringLiteral("Find"));
    m_find->setClearButtonEnabled(true);
    m_more->setObjectName(QStringLiteral("LogsMoreButton"));
    m_more->setToolTip(QStringLiteral("Show twice as much of this file"));
    m_say->setObjectName(QStringLiteral("LogsLabel"));
    m_say->setTextFormat(Qt::PlainText);
    auto* next = new QPushButton(QStringLiteral("Find Next"));
    next->setObjectName(QStringLiteral("LogsFindButton"));
    next->setToolTip(QStringLiteral("Next place of the text  [F3]"));
    auto* refresh = new QPushButton(QStringLiteral("Refresh"));
    refresh->setObjectName(QStringLiteral("LogsRefreshButton"));
    refresh->setToolTip(QStringLiteral("Read folder and file again  [F5]"));
    auto* bar = new QHBoxLayout();
    bar->addWidget(m_find, 1);
    for (QPushButton* button : {next, refresh, m_more}) {
        button->setAutoDefault(false);
        bar->addWidget(button);
    }
    auto* halves = new QSplitter();
    halves->addWidget(m_list);
    halves->addWidget(m_text);
    halves->setStretchFactor(1, 1);
    halves->setChildrenCollapsible(false);
    auto* all = new QVBoxLayout(this);
    all->addLayout(bar);
    all->addWidget(halves, 1);
    all->addWidget(m_say);
    connect(next, &QPushButton::clicked, this, &frmLogs::FindNext);
    connect(m_find, &QLineEdit::returnPressed, this, &frmLogs::FindNext);
    connect(refresh, &QPushButton::clicked, this, [this] { RefreshFolder(); });
}

void frmLogs::GoToFind() {
    m_find->setFocus(Qt::ShortcutFocusReason);
    m_find->selectAll();
}

void frmLogs::ShowFolder() {
    FillList(m.state.FileNameOnly);
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
    m_list->setFocus();
}

void frmLogs::FillList(const std::string& wanted) {
    m_folder = m.controls.FileListBox->Path();
    const std::vector<std::string> names = LogNames(m.files, m_folder);
    {
        const QSignalBlocker silent(m_list);
        m_list->clear();
        int row = names.empty() ? -1 : 0;
        for (std::size_t i = 0; i < names.size(); ++i) {
            m_list->addItem(ToQt(names[i]));
            m_list->item(static_cast<int>(i))
                ->setData(Qt::UserRole, QByteArray::fromStdString(names[i]));
            if (names[i] == wanted) row = static_cast<int>(i);
        }
        m_list->setCurrentRow(row);
    }
    ShowChosen();
}

void frmLogs::RefreshFolder() {
    QScrollBar& bar = *m_text->verticalScrollBar();
    const int place = bar.value();
    const bool atEnd = place > 0 && place == bar.maximum();
    const std::string before = m_file.Path();
    FillList(LastPart(before));
    if (m_file.Path() == before) bar.setValue(atEnd ? bar.maximum() : place); // what has grown
}

void frmLogs::ShowChosen() {
    const QListWidgetItem* chosen = m_list->currentItem();
    m_text->clear();
    if (!chosen) {
        m_more->hide();
        m_say->setText(ToQt("No log or text files in " + m_folder));
        return;
    }
    const std::string name = chosen->data(Qt::UserRole).toByteArray().toStdString();
    m_file.Read(JoinPath(m_folder, name));
    m_text->setPlainText(ToQt(m_file.Text()));
    Say();
}

void frmLogs::ShowMore() {
    const int place = m_text->verticalScrollBar()->value();
    if (m_file.ReadMore()) AppendText(*m_text, m_file.Text());
    m_text->verticalScrollBar()->setValue(place);
    Say();
}

void frmLogs::Say() {
    m_more->setVisible(m_file.HasMore());
    const std::string& path = m_file.Path();
    if (!m_file.Error().empty())
        m_say->setText(ToQt(m_file.Error() + " - " + path));
    else
        m_say->setText(ToQt(m_file.HasMore() ? path + ", not yet to its end" : path));
}

void frmLogs::FindNext() {
    const QString text = m_find->text();
    if (text.isEmpty()) {
        m_find->setFocus();
        return;
    }
    if (m_text->document()->isEmpty()) return; // no file is shown
    Say();
    if (m_text->find(text)) return;
    const QTextCursor before = m_text->textCursor();
    m_text->moveCursor(QTextCursor::Start);
    if (m_text->find(text)) return;
    m_text->setTextCursor(before);
    m_say->setText(
        QStringLiteral("Not in %1: %2")
            .arg(m_file.HasMore() ? QStringLiteral("the part shown") : QStringLiteral("this file"),
                 text));
}

// Coming back to the window shows the folder that the program shows now.
void frmLogs::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow() &&
        m_folder != m.controls.FileListBox->Path())
        FillList(m.state.FileNameOnly);
}

} // namespace tarn
