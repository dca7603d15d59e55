#include "app/window/FirstSteps.h"

#include "platform/QtText.h"
#include "widgets/ElidedLabel.h"
#include "widgets/FileListBox.h"
#include "widgets/Named.h"

#include <QAction>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

namespace tarn {

namespace {

constexpr char kIntroduction[] = "Tarn View goes through a folder of pictures with one key for "
                                 "each, shows what the camera wrote "
                                 "into them, and keeps a note beside each one.";

QLabel* WrappedLabel(const char* name) {
    auto* label = Named(new QLabel(), name);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

} // namespace

FirstSteps::FirstSteps(Context& context)
    : m(context), m_hint(WrappedLabel("FirstStepsHint")),
      m_close(NamedButton("FirstStepsCloseButton", "Close")) {
    auto* introduction = WrappedLabel("FirstStepsText");
    introduction->setText(QString::fromLatin1(kIntroduction));
    auto* lines = new QGridLayout();
    lines->setColumnStretch(1, 1);
    const MainControls& c = m.controls;
    m_pictures = AddFolder(*lines, "Pictures", "FirstStepsPictures", c.OpenFolderButton);
    m_notes = AddFolder(*lines, "Notes", "FirstStepsNotes", c.SetNotesButton);
    m_copies = AddFolder(*lines, "Copies", "FirstStepsCopies", c.SetImageCopyButton);
    AddDates(*lines);
    auto* all = new QVBoxLayout(this);
    all->addWidget(m_hint);
    all->addWidget(introduction);
    all->addLayout(lines);
    all->addWidget(m_close, 0, Qt::AlignRight);
    all->addStretch(1);
    m_hint->hide();
    m_close->hide();
    connect(m_close, &QPushButton::clicked, this, [this] {
        if (onClose) onClose();
    });
    // Behind the commands themselves, which were connected before.
    for (const QAction* entry : {c.OpenFolderButton, c.SetNotesButton, c.ClearNotesFolderButton,
                                 c.SetImageCopyButton, c.AutoSetFileDatesButton})
        connect(entry, &QAction::triggered, this, [this] { Refresh(); });
    connect(c.FileListBox, &FileListBox::leftOutChanged, this, [this] { Refresh(); });
}

ElidedLabel* FirstSteps::AddFolder(QGridLayout& to, const char* caption, const char* name,
                                   QAction* command) {
    const int row = to.rowCount();
    auto* path = Named(new ElidedLabel(), name);
    auto* button = NamedButton(QString::fromLatin1(name) + QStringLiteral("Button"),
                               QStringLiteral("Choose..."));
    button->setAccessibleName(QStringLiteral("Choose the folder: %1").arg(caption));
    to.addWidget(new QLabel(QString::fromLatin1(caption)), row, 0);
    to.addWidget(path, row, 1);
    to.addWidget(button, row, 2);
    connect(button, &QPushButton::clicked, command, &QAction::trigger);
    return path;
}

void FirstSteps::AddDates(QGridLayout& to) {
    const int row = to.rowCount();
    auto* question = WrappedLabel("FirstStepsDates");
    question->setText(QStringLiteral("File dates follow the pictures' dates"));
    m_yes = Named(new QRadioButton(QStringLiteral("Yes")), "FirstStepsDatesYes",
                  "File dates follow the pictures' dates: yes");
    m_no = Named(new QRadioButton(QStringLiteral("No")), "FirstStepsDatesNo",
                 "File dates follow the pictures' dates: no");
    auto* answers = new QHBoxLayout();
    answers->addWidget(m_yes);
    answers->addWidget(m_no);
    to.addWidget(question, row, 0, 1, 2);
    to.addLayout(answers, row, 2);
    connect(m_yes, &QRadioButton::clicked, this, [this] { AnswerDates(true); });
    connect(m_no, &QRadioButton::clicked, this, [this] { AnswerDates(false); });
}

// The answer that holds already is one, too.
void FirstSteps::AnswerDates(bool follow) {
    QAction& entry = *m.controls.AutoSetFileDatesButton;
    if (m.state.AutoSetFileDates != follow) return entry.trigger();
    m.state.FileDatesAnswered = true;
    if (onAnswer) onAnswer();
}

void FirstSteps::SetHint(const QString& text) {
    m_hint->setText(text);
    m_hint->setVisible(!text.isEmpty());
}

void FirstSteps::SetClosable(bool closable) {
    m_close->setVisible(closable);
}

void FirstSteps::Refresh() {
    const auto show = [](ElidedLabel& label, const std::string& folder) {
        label.SetText(folder.empty() ? "not set" : folder);
        label.setEnabled(!folder.empty());
    };
    show(*m_pictures, m.controls.FileListBox->Path());
    show(*m_notes, m.state.NotesFolder);
    show(*m_copies, m.state.CopyImageFolder);
    (m.state.AutoSetFileDates ? m_yes : m_no)->setChecked(true);
}

void FirstSteps::showEvent(QShowEvent* event) {
    Refresh();
    QWidget::showEvent(event);
}

void FirstSteps::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && onClose && !m_close->isHidden())
        onClose();
    else
        QWidget::keyPressEvent(event);
}

} // namespace tarn
