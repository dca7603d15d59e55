#include "panel/frmClock.h"

#include "common/paths.h"
#include "desk/batch/BatchRun.h"
#include "history/Changes.h"
#include "pictureinfo/dates/CameraDateText.h"
#include "platform/QtText.h"
#include "widgets/FileListBox.h"
#include "widgets/Named.h"

#include <QFontDatabase>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QVBoxLayout>

namespace tarn {

namespace {

constexpr QSize kDesign(640, 520);
enum Column { kName, kDate, kNewDate, kColumns };

QLineEdit* DateLine(const char* name, const char* spoken) {
    auto* line = Named(new QLineEdit(), name, spoken);
    line->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    line->setMinimumWidth(24 * line->fontMetrics().horizontalAdvance(QLatin1Char('0')));
    return line;
}

QLabel* TextLabel(const char* name) {
    auto* label = Named(new QLabel(), name);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

std::string CountOf(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " picture" : " pictures");
}

} // namespace

frmClock::frmClock(Context& context)
    : QDialog(context.controls.FileListBox->window()), m(context),
      m_place(*this, context.state.ClockPlace), m_file(TextLabel("ClockFileLabel")),
      m_shows(DateLine("ClockShowsText", "What its camera wrote")),
      m_true(DateLine("ClockTrueText", "Its true time")), m_error(TextLabel("ClockErrorLabel")),
      m_table(Named(new QTableWidget(0, kColumns), "ClockTable", "Pictures of this camera")),
      m_said(TextLabel("ClockLabel")) {
    setObjectName(QStringLiteral("frmClock"));
    setWindowTitle(QStringLiteral("Tarn_View - Set the Clock Right"));
    setModal(true);
    auto* all = new QVBoxLayout(this);
    all->addWidget(m_file);
    MakeTimes(*all);
    m_table->setHorizontalHeaderLabels(
        {QStringLiteral("Picture"), QStringLiteral("Date"), QStringLiteral("New date")});
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    m_table->verticalHeader()->hide();
    m_table->setCornerButtonEnabled(false);
    if (auto* corner = m_table->findChild<QAbstractButton*>()) // never seen, yet found by readers
        Named(corner, "ClockCornerButton", "Select all pictures");
    m_table->setTabKeyNavigation(false);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    connect(m_table, &QTableWidget::itemChanged, this, [this] { ShowCount(); });
    all->addWidget(m_table, 1);
    all->addWidget(m_said);
    MakeButtons(*all);
}

void frmClock::MakeTimes(QVBoxLayout& all) {
    auto* times = new QFormLayout();
    m_shows->setReadOnly(true);
    times->addRow(QStringLiteral("Its &camera wrote"), m_shows);
    times->addRow(QStringLiteral("Its &true time"), m_true);
    m_true->setToolTip(
        QStringLiteral("What a clock or a receiver in the picture shows, yyyy:mm:dd hh:mm:ss"));
    connect(m_true, &QLineEdit::textChanged, this, [this] { TrueTimeChanged(); });
    all.addLayout(times);
    all.addWidget(m_error);
}

void frmClock::MakeButtons(QVBoxLayout& all) {
    auto* buttons = new QHBoxLayout();
    m_cancel = NamedButton("ClockCancelButton", "Cance&l");
    m_set = NamedButton("ClockSetButton", "&Set", "Writes the new dates into the pictures ticked");
    m_close = NamedButton("ClockCloseButton", "Close");
    buttons->addStretch(1);
    for (QPushButton* button : {m_cancel, m_set, m_close}) buttons->addWidget(button);
    all.addLayout(buttons);
    connect(m_set, &QPushButton::clicked, this, [this] { SetButton_Click(); });
    connect(m_close, &QPushButton::clicked, this, &QDialog::reject);
    m_cancel->hide();
}

Outcome frmClock::ShowCurrent() {
    const std::string path = m.state.Filename;
    if (m.state.Kind != FileKind::Picture || path.empty())
        return Outcome::Refused("Show a picture first whose true time is known");
    m_picture = ReadClockPicture(m.files, path);
    if (!m_picture.fault.empty())
        return Outcome::Refused("'" + LastPart(path) + "' tells no clock: " + m_picture.fault);
    if (!ReadFolder()) return Outcome::Refused("Cancelled");
    const std::string camera =
        m_picture.camera.empty() ? "a camera without a name" : m_picture.camera;
    m_file->setText(ToQt(LastPart(path) + ", " + camera));
    m_shows->setText(ToQt(m_picture.date));
    {
        const QSignalBlocker quiet(m_true);
        m_true->setText(ToQt(m_picture.date));
    }
    ShowPictures();
    TrueTimeChanged();
    m_true->setFocus();
    m.shell.ShowMessage({}); // the progress of the reading
    if (!isVisible()) m_place.Restore(kDesign);
    show();
    return Outcome::Did();
}

// All of the folder that its boxes list, also what is left out in the list by a search.
bool frmClock::ReadFolder() {
    const FileListBox& list = *m.controls.FileListBox;
    std::vector<std::string> paths;
    for (const std::string& name : list.Listed()) paths.push_back(JoinPath(list.Path(), name));
    m_pictures.clear();
    m_others = 0;
    const BatchRun batch(m);
    for (std::size_t i = 0; i < paths.size(); ++i) {
        if (!batch.Step("Reading dates, " + std::to_string(i + 1) + " of " +
                        std::to_string(paths.size())))
            return false;
        ClockPicture picture = ReadClockPicture(m.files, paths[i]);
        if (picture.fault.empty() && picture.camera == m_picture.camera)
            m_pictures.push_back(std::move(picture));
        else
            ++m_others;
    }
    return true;
}

void frmClock::ShowPictures() {
    const QSignalBlocker quiet(m_table);
    m_table->setRowCount(int(m_pictures.size()));
    for (int row = 0; row < int(m_pictures.size()); ++row) {
        const ClockPicture& picture = m_pictures[std::size_t(row)];
        auto* name = new QTableWidgetItem(ToQt(LastPart(picture.path)));
        name->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        name->setCheckState(Qt::Checked);
        m_table->setItem(row, kName, name);
        m_table->setItem(row, kDate, new QTableWidgetItem(ToQt(picture.date)));
        m_table->setItem(row, kNewDate, new QTableWidgetItem());
    }
}

std::string frmClock::TrueTime() const {
    return FromQt(m_true->text().trimmed());
}

void frmClock::TrueTimeChanged() {
    m_seconds = SecondsBetween(m_picture.date, TrueTime());
    if (!m_seconds) {
        m_error->setText(QStringLiteral("The true time must be yyyy:mm:dd hh:mm:ss"));
    } else {
        const std::string cause = UsualCauseOf(*m_seconds);
        const std::string error = ClockErrorText(*m_seconds);
        m_error->setText(ToQt("The clock was " + error + (cause.empty() ? cause : ": " + cause)));
    }
    const QSignalBlocker quiet(m_table);
    for (int row = 0; row < m_table->rowCount(); ++row) {
        const std::string& date = m_pictures[std::size_t(row)].date;
        const auto moved = m_seconds ? WithSeconds(date, *m_seconds) : std::nullopt;
        m_table->item(row, kNewDate)->setText(ToQt(moved.value_or(m_seconds ? "none" : "")));
    }
    ShowCount();
}

std::vector<ClockPicture> frmClock::Ticked() const {
    std::vector<ClockPicture> ticked;
    for (int row = 0; row < m_table->rowCount(); ++row)
        if (m_table->item(row, kName)->checkState() == Qt::Checked)
            ticked.push_back(m_pictures[std::size_t(row)]);
    return ticked;
}

void frmClock::ShowCount() {
    const std::size_t count = Ticked().size();
    m_set->setText(ToQt("&Set " + CountOf(count)));
    m_set->setEnabled(count > 0 && m_seconds && *m_seconds != 0);
    std::string said = CountOf(m_pictures.size()) + " of this camera";
    if (m_others > 0)
        said += "; " + std::to_string(m_others) +
                " of other cameras or without a date that can be changed";
    m_said->setText(ToQt(said));
}

void frmClock::SetRuns(bool runs) {
    m_cancel->setVisible(runs);
    for (QWidget* part : std::initializer_list<QWidget*>{m_set, m_close, m_true, m_table})
        part->setEnabled(!runs);
}

void frmClock::SetButton_Click() {
    if (!m_seconds || *m_seconds == 0) return;
    const std::vector<ClockPicture> pictures = Ticked();
    const std::string count = std::to_string(pictures.size());
    std::vector<ClockFault> failed;
    std::size_t passed = 0;
    SetRuns(true);
    {
        const BatchRun batch(m, m_cancel);
        Changes changes(m.history, "Set the clock of " + CountOf(pictures.size()) + " right");
        passed = SetClockRight(
            changes, pictures, *m_seconds,
            [&](std::size_t so) {
                const std::string said =
                    "Setting dates, " + std::to_string(so + 1) + " of " + count;
                m_said->setText(ToQt(said));
                return batch.Step(said);
            },
            failed);
    }
    SetRuns(false);
    const bool cancelled = passed < pictures.size();
    const std::size_t done = passed - failed.size();
    std::vector<FileFault> faults;
    for (ClockFault& each : failed) faults.push_back({each.path, std::move(each.why)});
    accept();
    if (m.state.Closing) return;
    m.display.DisplayPicture(); // its date is another one
    m.shell.Tell({!cancelled && faults.empty(),
                  "The dates of " + CountOf(done) + " were set" +
                      (cancelled ? ", cancelled before the others" : ""),
                  {},
                  std::move(faults)});
}

void frmClock::closeEvent(QCloseEvent* event) {
    if (!CancelsBatch(m.state, *event)) QDialog::closeEvent(event);
}

void frmClock::reject() {
    if (m.state.BatchRuns)
        m.state.BatchCancelled = true;
    else
        QDialog::reject();
}

} // namespace tarn
