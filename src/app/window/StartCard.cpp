#include "app/window/StartCard.h"

#include "widgets/FileListBox.h"
#include "widgets/PictureBox.h"

#include <QAbstractButton>
#include <QEvent>
#include <QLayout>
#include <QLineEdit>
#include <QPushButton>

#include <algorithm>

namespace tarn {

namespace {

constexpr int kAround = 12;     // logical pixels to the edges of the pane
constexpr int kMostDigits = 84; // width

} // namespace

StartCard::StartCard(Context& context)
    : m(context), m_steps(new FirstSteps(context)),
      m_card(new QScrollArea(context.controls.Picture1->parentWidget())) {
    PictureBox& pane = *m.controls.Picture1;
    m_card->setObjectName(QStringLiteral("StartCard"));
    m_card->setFocusPolicy(Qt::NoFocus);
    m_card->setFrameShape(QFrame::StyledPanel);
    m_card->setWidgetResizable(true);
    m_card->setWidget(m_steps);
    m_card->stackUnder(m.controls.DeletePicButton); // which may have to be pressed meanwhile
    m_card->hide();
    QWidget* before = &pane;
    for (auto* button : m_steps->findChildren<QAbstractButton*>()) {
        QWidget::setTabOrder(before, button);
        before = button;
    }
    m_steps->onClose = [this] {
        m_welcomes = false;
        Follow();
    };
    m_steps->onAnswer = [this] {
        if (onAnswer) onAnswer();
    };
    pane.installEventFilter(this);
    connect(&pane, &PictureBox::emptyChanged, this, [this] { Follow(); });
    m.current.Follow([this] {
        m_welcomes = m_welcomes && m.state.Filename == m_welcomeFile;
        Follow();
    });
}

void StartCard::Welcome() {
    m_welcomes = true;
    m_welcomeFile = m.state.Filename;
    Follow();
}

// Not while the list is narrowed for a moment.
bool StartCard::IsPaneEmpty() const {
    const MainControls& c = m.controls;
    return c.Picture1->Picture().isNull() && c.FileListBox->Count() < 1 && !m.state.FilterActive &&
           c.FindLine->isHidden();
}

void StartCard::Follow() {
    if (m.state.BatchRuns) return;
    PictureBox& pane = *m.controls.Picture1;
    const bool empty = IsPaneEmpty();
    const bool shown = m.state.FormLoadDone && !m.state.SlideViewing && !pane.isHidden() &&
                       m.state.Kind == FileKind::Picture && (empty || m_welcomes);
    const QWidget* focus = pane.window()->focusWidget();
    if (!shown && focus && m_card->isAncestorOf(focus)) m.shell.FocusPane();
    pane.SetHintCovered(shown);
    m_steps->SetHint(empty ? pane.Hint() : QString());
    m_steps->SetClosable(!empty);
    m_card->setVisible(shown);
    if (shown) Place();
}

// In the middle of the pane, as large as it wants to be there.
void StartCard::Place() {
    const QRect pane = m.controls.Picture1->geometry();
    const int digit = m_card->fontMetrics().horizontalAdvance(QLatin1Char('0'));
    const int frame = 2 * m_card->frameWidth();
    QRect place(0, 0, std::min(pane.width() - 2 * kAround, kMostDigits * digit), 0);
    const int wanted = m_steps->layout()->totalHeightForWidth(place.width() - frame) + frame;
    place.setHeight(std::min(pane.height() - 2 * kAround, wanted));
    place.moveCenter(pane.center());
    m_card->setGeometry(place);
}

bool StartCard::eventFilter(QObject*, QEvent* event) {
    switch (event->type()) {
    case QEvent::Resize:
    case QEvent::Move:
    case QEvent::Show:
    case QEvent::Hide:
        Follow();
        break;
    default:
        break;
    }
    return false;
}

} // namespace tarn
