#include "app/window/ShellRoom.h"

#include "app/help/frmHelp.h"
#include "desk/controls/SlideButtons.h"
#include "platform/ProgramFiles.h"
#include "platform/QtText.h"
#include "widgets/PictureBox.h"
#include "widgets/webpane/PageBrowser.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
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

constexpr Pane kPanes[] = {Pane::Picture1, Pane::Picture2, Pane::WebBrowser1, Pane::LogText};

} // namespace

ShellRoom::ShellRoom(Context& context, QMainWindow& window)
    : m(context), m_window(window), m_status(new StatusLabel()) {
    window.statusBar()->addWidget(m_status, 1);
}

ShellRoom::~ShellRoom() {
    while (!m_pointers.empty()) SetBusy(false);
}

QWidget* ShellRoom::PaneWidget(Pane pane) const {
    switch (pane) {
    case Pane::Picture1:
        return m.controls.Picture1;
    case Pane::Picture2:
        return m.controls.Picture2;
    case Pane::WebBrowser1:
        return m.controls.WebBrowser1;
    case Pane::LogText:
        return m.controls.LogText;
    }
    return m.controls.Picture1;
}

void ShellRoom::ShowPane(Pane pane) {
    m.controls.VideoFrame->hide(); // the video room shows it with a clip
    if (pane == m.state.CurrentPane) return;
    if (m.state.CurrentPane == Pane::WebBrowser1) m.controls.WebBrowser1->ClearPage();
    QWidget* shown = PaneWidget(pane);
    const bool hadFocus = PaneWidget(m.state.CurrentPane)->hasFocus();
    m.state.CurrentPane = pane;
    shown->show();
    // Before the old pane goes: hiding it would hand the focus to whatever comes next.
    if (hadFocus) shown->setFocus();
    for (const Pane other : kPanes)
        if (other != pane) PaneWidget(other)->hide();
}

void ShellRoom::FocusPane() {
    PaneWidget(m.state.CurrentPane)->setFocus();
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
    if (!m_help) m_help = std::make_unique<frmHelp>(m.state.HelpPlace);
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
