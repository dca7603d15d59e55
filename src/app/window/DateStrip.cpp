#include "app/window/DateStrip.h"

#include "app/window/frmMain.h"
#include "common/paths.h"
#include "history/Changes.h"
#include "imaging/PicturesAhead.h"
#include "platform/Files.h"
#include "widgets/ElidedLabel.h"
#include "widgets/Named.h"

#include <QAction>
#include <QHBoxLayout>
#include <QKeyEvent>

namespace tarn {

namespace {

constexpr int kRest = 300; // milliseconds until a show or a batch is looked at again
constexpr int kSide = 6;   // logical pixels

// What another program has dated since keeps that date.
bool PutBackOne(const DateChange& change, tarn::Files& files, std::string* error) {
    const auto now = files.Look(change.path, error);
    if (!now) return false;
    if (!now->IsSameFile(change.after) || now->seconds != change.after.seconds ||
        now->nanoseconds != change.after.nanoseconds) {
        *error = "it has been changed since";
        return false;
    }
    return files.PutTimeBack(change.path, change.before, error);
}

} // namespace

DateStrip::DateStrip(Context& context, frmMain& window)
    : m(context), m_window(window), m_text(Named(new ElidedLabel(), "DateStripText")) {
    setObjectName(QStringLiteral("DateStrip"));
    auto* undo = NamedButton("DateStripUndoButton", "Undo", "Gives the file its date back");
    auto* never = NamedButton("DateStripNeverButton", "Never do this",
                              "Turns the switch off and gives the file its date back");
    auto* close =
        Named(NamedButton("DateStripCloseButton", "\u2715", "Go on so, and close this line"),
              "DateStripCloseButton", "Close");
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(kSide, 0, 0, 0);
    row->addWidget(m_text, 1);
    for (QPushButton* button : {undo, never, close}) row->addWidget(button);
    close->setMaximumWidth(close->sizeHint().height());
    m_window.SetNotice(*this);
    m_later.setSingleShot(true);
    m_later.setInterval(kRest);
    connect(&m_later, &QTimer::timeout, this, [this] { Follow(); });
    QAction* entry = m.controls.AutoSetFileDatesButton;
    connect(undo, &QPushButton::clicked, this, [this] { Undo(); });
    connect(never, &QPushButton::clicked, entry, &QAction::trigger);
    connect(close, &QPushButton::clicked, this, [this] { Close(); });
    connect(entry, &QAction::triggered, this, [this] { Follow(); });
    m.current.Follow([this] { Follow(); });
}

void DateStrip::Follow() {
    ProgramState& s = m.state;
    if (s.FileDatesAnswered) s.DatesTakenBack.clear();
    if (s.DatesSet.empty()) return Hide();
    if (s.BatchRuns || s.SlideViewing || !s.FormLoadDone) return m_later.start();
    if (!s.FileDatesAnswered && !m_notNow) return Show();
    // Turned off: what was done unasked is taken back.
    if (!s.AutoSetFileDates) m.shell.ShowMessage("Auto Synchronize is off; " + PutBack());
    s.DatesSet.clear();
    Hide();
}

std::string DateStrip::WhichFiles() const {
    const auto& set = m.state.DatesSet;
    const std::string more = set.size() < 2 ? ""
                             : set.size() == 2
                                 ? " and one more file"
                                 : " and " + std::to_string(set.size() - 1) + " more files";
    return "'" + LastPart(set.front().path) + "'" + more;
}

void DateStrip::Show() {
    m_text->SetText(
        m.state.DatesSet.size() == 1
            ? "The date of " + WhichFiles() +
                  " was set to its picture date, as Control > Auto Synchronize says"
            : "The dates of " + WhichFiles() +
                  " were set to their picture dates, as Control > Auto Synchronize says");
    m_window.ShowNotice(true);
}

void DateStrip::Hide() {
    const QWidget* focus = m_window.focusWidget();
    if (focus && isAncestorOf(focus)) m.shell.FocusPane();
    m_window.ShowNotice(false);
}

std::string DateStrip::PutBack() {
    auto& set = m.state.DatesSet;
    const std::string files = WhichFiles();
    std::string failed;
    std::size_t done = 0;
    Changes changes(m.history,
                    set.size() == 1
                        ? "File date of '" + LastPart(set.front().path) + "' given back"
                        : "File dates of " + std::to_string(set.size()) + " files given back");
    std::vector<Step> plan;
    for (const DateChange& change : set) {
        plan.push_back(changes.PlanTimes(change.path, change.before.seconds));
        plan.back().after.nanoseconds = change.before.nanoseconds;
    }
    changes.PlanWhole(std::move(plan));
    for (const DateChange& change : set) {
        std::string error;
        if (PutBackOne(change, changes, &error)) {
            m.ahead.TimesWereSet(change.path);
            ++done;
        } else {
            failed += (failed.empty() ? "'" : ", '") + LastPart(change.path) + "' - " + error;
        }
    }
    if (!failed.empty())
        return (done > 0 ? std::to_string(done) + " of " + std::to_string(set.size()) + " undone, "
                         : std::string()) +
               "NOT undone: " + failed;
    return set.size() == 1 ? "the date of " + files + " is what it was"
                           : "the dates of " + files + " are what they were";
}

void DateStrip::Undo() {
    if (m.state.DatesSet.empty()) return Hide();
    const std::string said = PutBack();
    // Or the next look at them would set it once more.
    for (const DateChange& change : m.state.DatesSet) m.state.DatesTakenBack.push_back(change.path);
    m.state.DatesSet.clear();
    Hide();
    m.shell.ShowMessage(said.find("NOT undone") != std::string::npos ? said : "Undone: " + said);
}

void DateStrip::Close() {
    m.state.FileDatesAnswered = true;
    m.state.DatesSet.clear();
    Hide();
}

void DateStrip::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Escape) return QWidget::keyPressEvent(event);
    m_notNow = true; // the question comes again with the next start
    m.state.DatesSet.clear();
    Hide();
}

} // namespace tarn
