#include "app/window/ShellRoom.h"

#include "app/help/frmHelp.h"
#include "app/window/FaultList.h"
#include "app/window/KeysPage.h"
#include "common/paths.h"
#include "desk/controls/SlideButtons.h"
#include "platform/ProgramFiles.h"
#include "platform/QtText.h"
#include "widgets/PictureBox.h"
#include "widgets/webpane/PageBrowser.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStatusBar>

namespace tarn {

namespace {

// Takes what room there is; of a path that is too long the end is shown, the name.
class StatusLabel : public QLabel {
public:
    StatusLabel() {
        setTextFormat(Qt::PlainText);
        setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        setObjectName(QStringLiteral("StatusBar1_Text"));
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        const QRect inside = contentsRect();
        painter.drawText(inside, Qt::AlignLeft | Qt::AlignVCenter,
                         fontMetrics().elidedText(text(), Qt::ElideLeft, inside.width()));
    }
};

} // namespace

ShellRoom::ShellRoom(Context& context, QMainWindow& window)
    : m(context), m_window(window), m_status(new StatusLabel()) {
    window.statusBar()->addWidget(m_status, 1);
    m.current.onKind = [this](FileKind before) { ShowPane(before); };
}

ShellRoom::~ShellRoom() {
    while (!m_pointers.empty()) SetBusy(false);
}

QWidget* ShellRoom::PaneOf(FileKind kind) const {
    switch (kind) {
    case FileKind::Picture:
        return m.controls.Picture1;
    case FileKind::Clip:
        return m.controls.Picture2;
    case FileKind::Page:
        return m.controls.WebBrowser1;
    case FileKind::Log:
    case FileKind::Text:
        return m.controls.LogText;
    }
    return m.controls.Picture1;
}

void ShellRoom::ShowPane(FileKind before) {
    m.controls.VideoFrame->hide(); // the video room shows it with a clip
    QWidget* left = PaneOf(before);
    QWidget* shown = PaneOf(m.state.Kind);
    if (shown == left) return;
    if (before == FileKind::Page) m.controls.WebBrowser1->ClearPage();
    shown->show();
    // Before the old pane goes: hiding it would hand the focus to whatever comes next.
    if (left->hasFocus()) shown->setFocus();
    left->hide();
}

void ShellRoom::FocusPane() {
    if (!m.state.SlideViewing && !m.state.BatchRuns) PaneOf(m.state.Kind)->setFocus();
}

void ShellRoom::ShowFileTexts() {
    const ProgramState& s = m.state;
    const MainControls& c = m.controls;
    c.MpixelText->setText(ToQt(s.MpixelText));
    c.FileSizeText->setText(ToQt(s.FileSizeText));
    c.SizeText->setText(ToQt(s.SizeText));
    c.ZoomText->setText(s.Kind == FileKind::Picture ? ToQt(s.ZoomText) : QString());
    c.EditButton2->setText(ToQt(s.EditCaption));
    if (s.HistoryListed) return; // the folder history stands in the panel
    const auto isShown = [&](int row, const std::string& text) {
        return c.List1->item(row)->text() == ToQt(text);
    };
    bool same = c.List1->count() == static_cast<int>(s.PanelRows.size());
    for (int row = 0; same && row < c.List1->count(); ++row)
        same = isShown(row, s.PanelRows[static_cast<std::size_t>(row)]);
    if (same) return;
    c.List1->clear();
    for (const std::string& row : s.PanelRows) c.List1->addItem(ToQt(row));
}

// A show has a pointer of its own, which hides.
void ShellRoom::SetBusy(bool busy) {
    PushPointer(busy, Qt::WaitCursor);
}

void ShellRoom::PushPointer(bool push, const QCursor& pointer) {
    if (push) {
        m_pointers.push_back(!m.state.SlideViewing);
        if (m_pointers.back()) QApplication::setOverrideCursor(pointer);
    } else if (!m_pointers.empty()) {
        if (m_pointers.back()) QApplication::restoreOverrideCursor();
        m_pointers.pop_back();
    }
}

void ShellRoom::SetDeletePointer(bool deletes) {
    if (m_deletePointer.isNull()) m_deletePointer = QPixmap(ToQt(ProgramFile("delete.ico")));
    PushPointer(deletes,
                m_deletePointer.isNull() ? QCursor(Qt::WaitCursor) : QCursor(m_deletePointer));
}

void ShellRoom::ShowMessage(const std::string& text) {
    m.controls.FileDateText->setText(ToQt(text));
    m.controls.FileDateText->setCursorPosition(0);
}

void ShellRoom::ShowIfNoMessage(const std::string& text) {
    if (m.controls.FileDateText->text().isEmpty()) ShowMessage(text);
}

// One file that the message itself names needs no list.
void ShellRoom::ShowFaults(const std::string& text, const std::vector<FileFault>& faults) {
    if (m_faults) m_faults->close(); // of the batch before
    if (faults.empty()) return;
    if (faults.size() == 1 && text.find(LastPart(faults[0].path)) != std::string::npos) return;
    if (!m_faults) m_faults = std::make_unique<FaultList>(m_window, m.clipboard);
    m_faults->ShowFaults(text, faults);
}

void ShellRoom::ShowStatus(const std::string& text) {
    m_status->setText(ToQt(text));
    m_status->setToolTip(ToToolTip(text));
}

void ShellRoom::ShowError(const std::string& text) {
    QLabel& label = *m.controls.Label_error;
    label.setText(ToQt(text));
    label.setToolTip(ToToolTip(text)); // a long name may not fit the pane
    label.setVisible(!text.empty());
    const int width = std::max(0, label.parentWidget()->width() - 20);
    label.setGeometry(10, 10, width, std::max(0, label.heightForWidth(width)));
    label.raise();
}

void ShellRoom::SetListCommands(bool enabled) {
    EnableSlideButtons(m.controls, enabled);
    m.notes.SetSaveCommands();
}

void ShellRoom::ShowHelpPage(int page) {
    if (!m_help)
        m_help = std::make_unique<frmHelp>(m.state.HelpPlace, [this] { return KeysPage(m); });
    m_help->ShowPage(page);
}

void ShellRoom::SetMainShown(bool shown) {
    if (m.state.Closing) return; // the end hides it for good
    m_window.setVisible(shown);
    if (!shown) return;
    m_window.raise();
    m_window.activateWindow();
}

bool ShellRoom::MainMinimised() {
    return m_window.isMinimized();
}

void ShellRoom::SetMainMinimised(bool minimised) {
    if (m.state.Closing || minimised == m_window.isMinimized()) return;
    if (minimised)
        m_window.showMinimized();
    else
        m_window.setWindowState(m_window.windowState() & ~Qt::WindowMinimized);
}

} // namespace tarn
