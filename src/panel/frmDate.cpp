#include "panel/frmDate.h"

#include "common/codepage.h"
#include "history/Changes.h"
#include "pictureinfo/dates/CameraDateWriting.h"
#include "platform/QtText.h"
#include "widgets/Dialogs.h"
#include "widgets/FileListBox.h"
#include "widgets/WindowPlaces.h"

#include <QCheckBox>
#include <QFontDatabase>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace tarn {

namespace {

constexpr QPoint kFromMain(60, 80); // logical pixels from the main window's corner
constexpr char kTitle[] = "Tarn_View - Modify Picture Date taken";

QLineEdit* AddDate(QHBoxLayout& to, const char* name, const char* frame) {
    auto* box = new QGroupBox(QString::fromLatin1(frame));
    auto* text = new QLineEdit();
    text->setObjectName(QString::fromLatin1(name));
    text->setAccessibleName(QString::fromLatin1(frame));
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setFamilies({QStringLiteral("Courier New"), font.family()});
    text->setFont(font);
    text->setMinimumWidth(24 * text->fontMetrics().horizontalAdvance(QLatin1Char('0')));
    (new QVBoxLayout(box))->addWidget(text);
    to.addWidget(box);
    return text;
}

QPushButton* AddButton(QHBoxLayout& to, const char* name, const char* caption, const char* tip) {
    auto* button = new QPushButton(QString::fromUtf8(caption));
    button->setObjectName(QString::fromLatin1(name));
    button->setToolTip(QString::fromLatin1(tip));
    button->setAutoDefault(false); // Return belongs to the date that is being typed
    to.addWidget(button);
    return button;
}

} // namespace

frmDate::frmDate(Context& context, std::function<Outcome()> setFileDates)
    : QDialog(context.controls.FileListBox->window()), m(context),
      m_setFileDates(std::move(setFileDates)), m_file(new QLabel()) {
    setObjectName(QStringLiteral("frmDate"));
    setWindowTitle(QString::fromLatin1(kTitle));
    setModal(true);
    auto* all = new QVBoxLayout(this);
    m_file->setObjectName(QStringLiteral("FileLabel"));
    m_file->setTextFormat(Qt::PlainText);
    m_file->setWordWrap(true);
    all->addWidget(m_file);
    MakeDates(*all);
    MakeButtons(*all);
}

void frmDate::MakeDates(QVBoxLayout& all) {
    auto* dates = new QHBoxLayout();
    m_current = AddDate(*dates, "CurrentDateText", "Current Picture Date");
    m_current->setReadOnly(true);
    m_new = AddDate(*dates, "SetDateText", "New Picture Date");
    all.addLayout(dates);
    auto* change = new QHBoxLayout();
    QPushButton* copy = AddButton(*change, "CopyButton", "Copy", "Copy current date to new date");
    change->addStretch();
    QPushButton* minus = AddButton(*change, "HourMinusButton", "\u2212 1 hour", "One hour less");
    QPushButton* plus = AddButton(*change, "HourPlusButton", "+ 1 hour", "One hour more");
    QPushButton* second = AddButton(*change, "AddButton", "+ 1 second", "One second more");
    all.addLayout(change);
    m_crosses = new QLabel(QStringLiteral("Cannot auto adjust hour, crosses day."));
    m_crosses->setObjectName(QStringLiteral("AutoErrorLabel"));
    QSizePolicy kept = m_crosses->sizePolicy();
    kept.setRetainSizeWhenHidden(true);
    m_crosses->setSizePolicy(kept);
    all.addWidget(m_crosses);
    connect(copy, &QPushButton::clicked, this, [this] { CopyButton_Click(); });
    connect(minus, &QPushButton::clicked, this, [this] { HourMinusButton_Click(); });
    connect(plus, &QPushButton::clicked, this, [this] { HourPlusButton_Click(); });
    connect(second, &QPushButton::clicked, this, [this] { AddButton_Click(); });
}

void frmDate::MakeButtons(QVBoxLayout& all) {
    m_advance = new QCheckBox(QStringLiteral("Advance to next image after Set"));
    m_advance->setObjectName(QStringLiteral("CheckAdvance"));
    all.addWidget(m_advance);
    auto* buttons = new QHBoxLayout();
    QPushButton* prev = AddButton(*buttons, "PrevButton", "Prev.", "Get previous picture");
    QPushButton* next = AddButton(*buttons, "NextButton", "Next", "Get next picture");
    buttons->addStretch();
    m_set = AddButton(*buttons, "SetButton", "Set", "Update picture date");
    m_set->setDefault(true);
    QPushButton* close = AddButton(*buttons, "CancelButton", "Close", "");
    all.addLayout(buttons);
    connect(prev, &QPushButton::clicked, this, [this] { PrevButton_Click(); });
    connect(next, &QPushButton::clicked, this, [this] { NextButton_Click(); });
    connect(m_set, &QPushButton::clicked, this, [this] { SetButton_Click(); });
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
}

void frmDate::ShowCurrent() {
    RefreshCurrent();
    m_crosses->hide();
    m_new->setFocus();
    if (!std::exchange(m_placed, true)) {
        adjustSize();
        PlaceOnScreen(*this, QRect(parentWidget()->pos() + kFromMain, size()));
    }
    show();
}

std::size_t frmDate::Position() const {
    return static_cast<std::size_t>(m.state.CameraDateOffset + m.state.PictureDataOffset);
}

// The record keeps the date of the picture before when a file has none: only what stands in this
// very file is its date.
void frmDate::RefreshCurrent() {
    const ProgramState& s = m.state;
    m_shownFile = s.Filename;
    m_file->setText(ToQt(s.Filename));
    m_shownDate = s.CameraDate;
    m_current->setText(ToQt(s.CameraDate));
    m_set->setEnabled(!s.NoExif && !s.CameraDate.empty() &&
                      DateAt(m.files, s.Filename, Position()) == s.CameraDate);
}

std::string frmDate::NewDate() const {
    return FromQt(m_new->text());
}

void frmDate::MoveHour(int by) {
    const auto moved = WithHourMoved(NewDate(), by);
    m_crosses->setVisible(!moved);
    if (moved) m_new->setText(ToQt(*moved));
}

void frmDate::AddButton_Click() {
    m_new->setText(ToQt(WithSecondAdded(NewDate())));
}

void frmDate::CopyButton_Click() {
    m_new->setText(m_current->text());
}

void frmDate::PrevButton_Click() {
    m.navigation.PrevButton_Click();
    RefreshCurrent();
}

void frmDate::NextButton_Click() {
    m.navigation.NextButton_Click();
    RefreshCurrent();
}

void frmDate::Say(const std::string& text, bool critical) {
    m.dialogs.Message(critical ? Dialogs::Icon::Critical : Dialogs::Icon::Exclamation, kTitle,
                      text);
}

void frmDate::SetButton_Click() {
    m_crosses->hide();
    if (m.state.Filename != m_shownFile) { // another was opened from outside
        RefreshCurrent();
        return;
    }
    const std::string date = NewDate();
    const auto bytes = ToCodePage(date); // one byte a character
    if (!bytes || bytes->size() != kCameraDateLength) {
        Say("New Picture Date must be 19 characters 'yyyy:mm:dd hh:mm:ss'");
        return;
    }
    const auto shown = TextsOf(date);
    if (!shown) {
        Say("New Picture Date has invalid format");
        return;
    }
    const DateWritten done = [&] {
        Changes changes(m.history, "Picture date of '" + m.state.FileNameOnly + "'");
        return WriteDate(changes, m.state.Filename, Position(), m_shownDate, *bytes);
    }();
    switch (done.result) {
    case DateWriting::Written:
        TakeOver(date, *shown);
        break;
    case DateWriting::Differs:
        Say("Current Picture Date Verification Error\n" + done.found, true);
        reject();
        break;
    case DateWriting::OutOfReach:
        Say("The picture date lies behind the first " + std::to_string(kDateReach) +
            " bytes of the file and cannot be changed");
        break;
    case DateWriting::Failed:
        Say("The picture date cannot be changed: " + done.error);
        break;
    }
}

void frmDate::TakeOver(const std::string& date, const PictureDateText& shown) {
    m.state.CameraDate = date;
    m.state.PictureDate = shown.date;
    ShowInPanel("* Picture date: " + shown.date + "  " + shown.weekday);
    m.shell.ShowMessage("UPDATED - Picture date changed and file date synchronized");
    m.shell.Tell(m_setFileDates()); // which says so when it cannot
    RefreshCurrent();
    if (m_advance->isChecked()) NextButton_Click();
}

void frmDate::ShowInPanel(const std::string& line) {
    ProgramState& s = m.state;
    constexpr int kDateRow = 1; // also where the old date was none that could be shown
    const int row = s.CameraDateIndex > 0 ? s.CameraDateIndex : kDateRow;
    if (row < static_cast<int>(s.PanelRows.size()))
        s.PanelRows[static_cast<std::size_t>(row)] = line;
    m.shell.ShowFileTexts();
}

} // namespace tarn
