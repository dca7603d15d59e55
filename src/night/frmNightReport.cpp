#include "night/frmNightReport.h"

#include "common/dates.h"
#include "common/paths.h"
#include "common/worker.h"
#include "desk/batch/BatchRun.h"
#include "history/Changes.h"
#include "night/NightPictures.h"
#include "platform/EventPump.h"
#include "platform/QtText.h"
#include "sky/night/ReportReading.h"
#include "sky/place/SiteList.h"
#include "widgets/Dialogs.h"
#include "widgets/FileListBox.h"
#include "widgets/Named.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include <atomic>

namespace tarn {

namespace {

constexpr QSize kDesign(560, 420);
constexpr int kLooksAgain = 20; // milliseconds

struct Included {
    const char* name;
    const char* caption;
    bool NightState::*field;
    bool ReportChoice::*choice;
};
constexpr Included kIncluded[] = {
    {"ReportGraphsCheck", "&Graphs of the measures", &NightState::ReportGraphs,
     &ReportChoice::graphs},
    {"ReportPicturesCheck", "&Best and worst frame", &NightState::ReportPictures,
     &ReportChoice::pictures},
    {"ReportRejectedCheck", "Re&jected frames", &NightState::ReportRejected,
     &ReportChoice::rejected},
    {"ReportGapsCheck", "G&aps", &NightState::ReportGaps, &ReportChoice::gaps},
    {"ReportEquipmentCheck", "E&quipment", &NightState::ReportEquipment, &ReportChoice::equipment},
    {"ReportNotesCheck", "&Notes", &NightState::ReportNotes, &ReportChoice::notes},
};

struct Destination {
    ReportKind kind;
    const char* name;
    const char* caption;
    const char* ending;
    const char* filter;
};
constexpr Destination kTargets[] = {
    {ReportKind::Page, "ReportPageButton", "Save as &HTML...", ".html", "Pages (*.html)"},
    {ReportKind::Pdf, "ReportPdfButton", "Save as &PDF...", ".pdf", "PDF (*.pdf)"},
    {ReportKind::Table, "ReportTableButton", "Save &Table as CSV...", ".csv", "Tables (*.csv)"},
};

} // namespace

frmNightReport::frmNightReport(Context& context)
    : m(context), m_place(*this, context.state.ReportPlace),
      m_folders(Named(new QListWidget(), "ReportFolders", "Folders of the report")),
      m_said(Named(new QLabel(), "ReportLabel")),
      m_cancel(NamedButton("ReportCancelButton", "Cance&l")) {
    setObjectName(QStringLiteral("frmNightReport"));
    setWindowTitle(QStringLiteral("Tarn_View - Night Report"));
    auto* all = new QVBoxLayout(this);
    MakeFolders(*all);
    MakeChoices(*all);
    m_said->setTextFormat(Qt::PlainText);
    m_said->setWordWrap(true);
    all->addWidget(m_said);
    MakeCommands(*all);
}

void frmNightReport::MakeFolders(QVBoxLayout& all) {
    auto* row = new QHBoxLayout();
    row->addWidget(m_folders, 1);
    auto* buttons = new QVBoxLayout();
    auto* add = NamedButton("ReportAddButton", "Add &Folder...");
    auto* remove = NamedButton("ReportRemoveButton", "&Remove");
    buttons->addWidget(add);
    buttons->addWidget(remove);
    buttons->addStretch(1);
    row->addLayout(buttons);
    all.addLayout(row, 1);
    connect(add, &QPushButton::clicked, this, [this] {
        const std::string folder =
            m.dialogs.ChooseFolder("Folder of a night", m.controls.FileListBox->Path());
        if (!folder.empty()) AddFolder(folder);
    });
    connect(remove, &QPushButton::clicked, this,
            [this] { delete m_folders->takeItem(m_folders->currentRow()); });
    m_commands = {add, remove};
}

void frmNightReport::MakeChoices(QVBoxLayout& all) {
    auto* box = new QGroupBox(QStringLiteral("In the report, beside the exposures"));
    auto* grid = new QGridLayout(box);
    int place = 0;
    for (const Included& each : kIncluded) {
        auto* check = Named(new QCheckBox(QString::fromLatin1(each.caption)), each.name);
        check->setChecked(m.state.*each.field);
        connect(check, &QCheckBox::toggled, this,
                [this, field = each.field](bool on) { m.state.*field = on; });
        grid->addWidget(check, place / 2, place % 2);
        ++place;
    }
    all.addWidget(box);
}

void frmNightReport::MakeCommands(QVBoxLayout& all) {
    auto* row = new QHBoxLayout();
    for (const Destination& each : kTargets) {
        auto* button = NamedButton(each.name, each.caption);
        connect(button, &QPushButton::clicked, this,
                [this, kind = each.kind] { SaveButton_Click(kind); });
        row->addWidget(button);
        m_commands.push_back(button);
    }
    row->addStretch(1);
    row->addWidget(m_cancel);
    m_cancel->setEnabled(false);
    all.addLayout(row);
}

void frmNightReport::Form_Load() {
    if (!isVisible()) {
        if (m_folders->count() <= 1) { // several are the user's choice
            m_folders->clear();
            AddFolder(m.controls.FileListBox->Path());
        }
        Say({});
        m_place.Restore(kDesign);
    }
    show();
    raise();
    activateWindow();
}

void frmNightReport::closeEvent(QCloseEvent* event) {
    if (!CancelsBatch(m.state, *event)) QDialog::closeEvent(event);
}

void frmNightReport::AddFolder(const std::string& folder) {
    if (folder.empty() || !m_folders->findItems(ToQt(folder), Qt::MatchExactly).empty()) return;
    m_folders->addItem(ToQt(folder));
    m_folders->setCurrentRow(m_folders->count() - 1);
}

ReportChoice frmNightReport::Choice() const {
    ReportChoice choice;
    for (const Included& each : kIncluded) choice.*each.choice = m.state.*each.field;
    return choice;
}

void frmNightReport::Say(const std::string& text) {
    m_said->setText(ToQt(text));
}

// Marks that are being written count as they will stand.
void frmNightReport::TakeMarksAndNotes(std::vector<ReportFrame>& frames) {
    std::vector<std::string> paths;
    for (const ReportFrame& frame : frames) paths.push_back(frame.path);
    const std::vector<Mark> onDisk = m.marks.MarksOnDisk(paths);
    for (std::size_t i = 0; i < frames.size(); ++i) {
        frames[i].mark = m.marks.MarkOf(frames[i].path).value_or(onDisk[i]);
        if (m.state.ReportNotes) frames[i].note = m.notes.NoteTextOf(frames[i].path);
    }
}

// Headers are read and frames judged on a thread; none, and why, when there is no report.
std::optional<ReportDocument> frmNightReport::Read(std::string& fault) {
    NightSources sources;
    for (int row = 0; row < m_folders->count(); ++row) {
        const std::string folder = FromQt(m_folders->item(row)->text());
        std::string error;
        const auto pictures = NightPicturesOf(m, folder, error);
        if (!pictures) {
            fault = folder + ": " + error;
            return std::nullopt;
        }
        sources.paths.insert(sources.paths.end(), pictures->begin(), pictures->end());
    }
    const auto sites = ParseSites(m.state.SkySites);
    if (const NamedSite* site = SiteNamed(sites, m.state.SkySite)) {
        sources.site = site->site;
        sources.zoneMinutes = site->zoneMinutes;
    }
    const double zone = sources.zoneMinutes ? *sources.zoneMinutes / 60.0 : SystemZoneHours();
    const std::string foot = "Tarn View " + m.state.Version + ", " + NowText();
    std::atomic<std::size_t> done = 0;
    std::atomic<bool> goesOn = true;
    std::atomic<bool> isRead = false;
    ReadNights read;
    const BatchRun batch(m, m_cancel);
    {
        Worker worker([&] {
            read = Guarded(fault, [&] {
                return ReadFramesOfNights(sources, [&](std::size_t so, std::size_t) {
                    done = so;
                    return goesOn.load();
                });
            });
            isRead = true;
        });
        while (!isRead) {
            const std::string said =
                "Reading " + std::to_string(done) + " of " + std::to_string(sources.paths.size());
            Say(said);
            if (!batch.Step(said)) goesOn = false;
            m.events.Sleep(kLooksAgain);
        }
    }
    if (fault.empty() && (!goesOn || read.cancelled)) fault = "Cancelled";
    if (!fault.empty()) return std::nullopt;
    ReportDocument document;
    document.frames = std::move(read.frames);
    document.longitudes = std::move(read.longitudes);
    TakeMarksAndNotes(document.frames);
    Compose(document, Choice(), zone, foot);
    return document;
}

void frmNightReport::SaveButton_Click(ReportKind kind) {
    if (m.state.BatchRuns || m.state.SlideViewing || m_folders->count() == 0) return;
    const Destination& target = kTargets[int(kind)];
    const std::string folder = FromQt(m_folders->item(0)->text());
    const std::string path = m.dialogs.SaveFile(
        "Night report", JoinPath(folder, std::string("night") + target.ending), target.filter);
    if (path.empty()) return;
    for (QPushButton* button : m_commands) button->setEnabled(false);
    m_cancel->setEnabled(true);
    std::string error;
    const auto document = Read(error);
    m_cancel->setEnabled(false);
    for (QPushButton* button : m_commands) button->setEnabled(true);
    if (m.state.Closing) return;
    if (!document) return Say(error);
    if (document->frames.empty()) return Say("There are no pictures in these folders");
    Changes changes(m.history, "Night report '" + LastPart(path) + "'");
    if (!SaveReport(changes, *document, kind, path, m.state.PrintPaper, &error))
        return Say(path + ": " + error);
    std::string said = "Saved " + path + ", " + std::to_string(document->frames.size()) +
                       (document->frames.size() == 1 ? " frame" : " frames");
    for (const std::string& longitudes : document->longitudes) said += "\n" + longitudes;
    Say(said);
}

} // namespace tarn
