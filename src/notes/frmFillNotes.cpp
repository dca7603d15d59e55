#include "notes/frmFillNotes.h"

#include "common/paths.h"
#include "common/worker.h"
#include "desk/batch/BatchRun.h"
#include "history/Changes.h"
#include "platform/EventPump.h"
#include "platform/QtText.h"
#include "sky/night/KeptMeasures.h"
#include "widgets/FileListBox.h"
#include "widgets/Named.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <atomic>

namespace tarn {

namespace {

constexpr QSize kDesign(640, 420);
constexpr int kLooksAgain = 20; // milliseconds

std::string CountOf(std::size_t count, const char* what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

} // namespace

frmFillNotes::frmFillNotes(Context& context)
    : QDialog(context.controls.FileListBox->window()), m(context),
      m_place(*this, context.state.FillNotesPlace),
      m_list(Named(new QListWidget(), "FillNotesList", "Pictures that get a note")),
      m_text(Named(new QPlainTextEdit(), "FillNotesText", "The note that it gets")),
      m_said(Named(new QLabel(), "FillNotesLabel")),
      m_write(NamedButton("FillNotesWriteButton", "&Write")),
      m_cancel(NamedButton("FillNotesCancelButton", "Cance&l")),
      m_close(NamedButton("FillNotesCloseButton", "Close")) {
    setObjectName(QStringLiteral("frmFillNotes"));
    setWindowTitle(QStringLiteral("Tarn_View - Fill Notes of the Night"));
    setModal(true);
    m_text->setReadOnly(true);
    m_text->setTabChangesFocus(true);
    m_said->setTextFormat(Qt::PlainText);
    m_said->setWordWrap(true);
    auto* all = new QVBoxLayout(this);
    auto* parts = new QHBoxLayout();
    parts->addWidget(m_list, 1);
    parts->addWidget(m_text, 1);
    all->addLayout(parts, 1);
    all->addWidget(m_said);
    auto* buttons = new QHBoxLayout();
    buttons->addStretch(1);
    for (QPushButton* button : {m_cancel, m_write, m_close}) buttons->addWidget(button);
    all->addLayout(buttons);
    m_cancel->hide();
    connect(m_list, &QListWidget::currentRowChanged, this, [this](int row) { ShowNote(row); });
    connect(m_list, &QListWidget::itemChanged, this, [this] { ShowCount(); });
    connect(m_write, &QPushButton::clicked, this, [this] { WriteButton_Click(); });
    connect(m_close, &QPushButton::clicked, this, &QDialog::reject);
}

Outcome frmFillNotes::ShowNotes(const FactLists& lists) {
    if (m.state.NotesFolder.empty()) return Outcome::Refused("Notes folder has not been set");
    std::string fault;
    if (!Plan(lists, fault)) return Outcome::Refused(fault);
    if (m_plan.notes.empty())
        return Outcome::Refused("No note to fill in: " + CountOf(m_plan.withNote, "picture") +
                                " with a note, " + std::to_string(m_plan.left) +
                                " without anything to tell");
    {
        const QSignalBlocker quiet(m_list);
        m_list->clear();
        for (const NightNote& note : m_plan.notes) {
            auto* item = new QListWidgetItem(ToQt(LastPart(note.picture)), m_list);
            item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
            item->setCheckState(Qt::Checked);
        }
    }
    m_list->setCurrentRow(0);
    ShowNote(0);
    ShowCount();
    m.shell.ShowMessage({}); // the progress of the reading
    if (!isVisible()) m_place.Restore(kDesign);
    show();
    return Outcome::Did();
}

// Headers are read on a thread.
bool frmFillNotes::Plan(const FactLists& lists, std::string& fault) {
    const FileListBox& list = *m.controls.FileListBox;
    std::vector<std::string> pictures;
    for (int row = 0; row < list.Count(); ++row)
        pictures.push_back(JoinPath(list.Path(), list.Text(row)));
    std::atomic<std::size_t> done = 0;
    std::atomic<bool> goesOn = true;
    std::atomic<bool> isRead = false;
    const BatchRun batch(m);
    Worker worker([&] {
        m_plan = Guarded(fault, [&] {
            KeptMeasures measures;
            return PlanNightNotes(
                m.files, m.state.NotesFolder, pictures, lists,
                [&](const std::string& path) { return measures.HfrOf(path); },
                [&](std::size_t so) {
                    done = so;
                    return goesOn.load();
                });
        });
        isRead = true;
    });
    while (!isRead) {
        if (!batch.Step("Reading headers, " + std::to_string(done) + " of " +
                        std::to_string(pictures.size())))
            goesOn = false;
        m.events.Sleep(kLooksAgain);
    }
    worker.Join();
    if (fault.empty() && !goesOn) fault = "Cancelled";
    return fault.empty();
}

std::vector<NightNote> frmFillNotes::Ticked() const {
    std::vector<NightNote> ticked;
    for (int row = 0; row < m_list->count(); ++row)
        if (m_list->item(row)->checkState() == Qt::Checked)
            ticked.push_back(m_plan.notes[std::size_t(row)]);
    return ticked;
}

void frmFillNotes::ShowNote(int row) {
    m_text->setPlainText(row < 0 ? QString() : ToQt(m_plan.notes[std::size_t(row)].text));
}

void frmFillNotes::ShowCount() {
    const std::size_t count = Ticked().size();
    m_write->setText(ToQt("&Write " + CountOf(count, "Note")));
    m_write->setEnabled(count > 0);
    m_said->setText(ToQt(
        CountOf(m_plan.notes.size(), "picture") + " without a note get one; " +
        std::to_string(m_plan.withNote) + " have one, " + std::to_string(m_plan.left) +
        " tell nothing or are no light frames" +
        (m_plan.sharing > 0 ? ", " + std::to_string(m_plan.sharing) + " share one of these" : "")));
}

void frmFillNotes::WriteButton_Click() {
    const std::vector<NightNote> notes = Ticked();
    // What is being written for the current picture is its note.
    if (const Outcome saved = m.notes.SaveIfUnsaved(); !saved) return m.shell.Tell(saved);
    std::vector<NightNoteFault> failed;
    std::size_t written = 0;
    m_cancel->show();
    for (QWidget* part : std::initializer_list<QWidget*>{m_write, m_close, m_list})
        part->setEnabled(false);
    {
        const BatchRun batch(m, m_cancel);
        Changes changes(m.history, "Fill notes of " + CountOf(notes.size(), "picture"));
        written = WriteNightNotes(
            changes, notes,
            [&](std::size_t done) {
                return batch.Step("Writing notes, " + std::to_string(done + 1) + " of " +
                                  std::to_string(notes.size()));
            },
            failed);
    }
    m_cancel->hide();
    for (QWidget* part : std::initializer_list<QWidget*>{m_write, m_close, m_list})
        part->setEnabled(true);
    const bool cancelled = written + failed.size() < notes.size();
    std::vector<FileFault> faults;
    for (NightNoteFault& each : failed) faults.push_back({each.path, std::move(each.why)});
    accept();
    if (m.state.Closing) return;
    m.notes.NoteFilesChanged();
    m.shell.Tell(
        {!cancelled && faults.empty(),
         CountOf(written, "note") + " written" + (cancelled ? ", cancelled before the others" : ""),
         {},
         std::move(faults)});
}

void frmFillNotes::closeEvent(QCloseEvent* event) {
    if (!CancelsBatch(m.state, *event)) QDialog::closeEvent(event);
}

void frmFillNotes::reject() {
    if (m.state.BatchRuns)
        m.state.BatchCancelled = true;
    else
        QDialog::reject();
}

} // namespace tarn
