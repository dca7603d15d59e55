#include "night/NightRoom.h"

#include "desk/batch/BatchRun.h"
#include "night/NightChoice.h"
#include "night/NightPictures.h"
#include "night/NightWords.h"
#include "night/StarCircles.h"
#include "night/frmCorners.h"
#include "night/frmNight.h"
#include "night/frmNightReport.h"
#include "night/frmSites.h"
#include "platform/EventPump.h"
#include "widgets/FileListBox.h"

#include <QAction>

namespace tarn {

namespace {

constexpr int kRest = 200;      // milliseconds
constexpr int kLooksAgain = 20; // milliseconds

} // namespace

NightRoom::NightRoom(Context& context) : m(context), m_sky(context) {
    m_rest.setSingleShot(true);
    m_rest.setInterval(kRest);
    QObject::connect(&m_rest, &QTimer::timeout, &m_here, [this] { AskForStars(); });
}

NightRoom::~NightRoom() = default;

void NightRoom::ConnectControls() {
    const MainControls& c = m.controls;
    Connect(c.NightButton, [this] { NightButton_Click(); });
    Connect(c.NightReportButton, [this] { NightReportButton_Click(); });
    Connect(c.SkyPanelButton, [this] { m_sky.Switched(); });
    Connect(c.SitesButton, [this] { SitesButton_Click(); });
    Connect(c.StarCirclesButton, [this] { StarCirclesButton_Click(); });
    Connect(c.CornersButton, [this] { CornersButton_Click(); });
    Connect(c.BurstButton, [this] { m.shell.Tell(BurstButton_Click()); });
    QObject::connect(c.FileListBox, &FileListBox::folderRead, &m_here, [this] {
        // A show changes the list a while.
        if (!m_wanting.empty() && !m.state.SlideViewing) ShowFrames();
    });
    m.marks.Follow([this] {
        if (m_wanting.empty()) return;
        TakeMarks();
        if (IsNightUp()) m_night->Refresh();
    });
    m.current.Follow([this] { FollowCurrent(); });
}

void NightRoom::ShowSettings() {
    m.controls.StarCirclesButton->setChecked(m.state.StarCircles);
    m_sky.ShowSettings();
}

// Windows and threads go while the desk still stands.
void NightRoom::BreakOff() {
    m_followers.clear();
    m_wanting.clear();
    if (m_folder) m_folder->Show({});
    if (m_night) m_night->FramesShown(); // its table shows what stood there
    m_rest.stop();
    m_sky.BreakOff();
}

NightFolder& NightRoom::Folder() {
    if (!m_folder) m_folder = std::make_unique<NightFolder>();
    return *m_folder;
}

bool NightRoom::IsNightUp() const {
    return m_night && m_night->isVisible();
}

bool NightRoom::AreCornersUp() const {
    return m_corners && m_corners->isVisible();
}

bool NightRoom::WantsStars() const {
    return m.state.StarCircles || AreCornersUp();
}

void NightRoom::NightButton_Click() {
    if (!m_night) {
        m_night = std::make_unique<frmNight>(m, Folder());
        m_night->onClosed = [this] { WantFrames(m_night.get(), false); };
    }
    const bool opens = !IsNightUp();
    m_night->Form_Load();
    if (!opens) return;
    WantFrames(m_night.get(), true);
    m_night->FramesShown();
}

void NightRoom::WantFrames(const void* by, bool wanted) {
    const bool any = !m_wanting.empty();
    if (wanted)
        m_wanting.insert(by);
    else
        m_wanting.erase(by);
    if (any == m_wanting.empty())
        ShowFrames();
    else if (wanted && Folder().Progress().cancelled) // who asks anew waits for them
        Folder().Resume();
}

// Nobody waits for them any more: none. The window's table shows what stands here.
void NightRoom::ShowFrames() {
    NightFolder& folder = Folder();
    folder.onChanged = nullptr;
    folder.Show(m_wanting.empty() ? std::vector<std::string>() : NightPictures(m));
    folder.Prefer(m.state.Filename);
    TakeMarks();
    if (m_night) m_night->FramesShown();
    folder.onChanged = [this] { FramesChanged(); };
    for (const auto& follower : m_followers) follower();
}

void NightRoom::FramesChanged() {
    if (m_wanting.empty()) return;
    if (IsNightUp()) m_night->Refresh();
    for (const auto& follower : m_followers) follower();
}

const JudgedFrame* NightRoom::FrameOf(const std::string& path) {
    const int index = m_folder ? m_folder->IndexOf(path) : -1;
    if (index < 0) return nullptr;
    const NightFrame& frame = m_folder->Frames()[std::size_t(index)];
    return frame.isMeasured ? &frame : nullptr;
}

bool NightRoom::AllMeasured() {
    return !m_wanting.empty() && m_folder && m_folder->IsSettled();
}

std::string NightRoom::MeasuringSaid() {
    if (m_wanting.empty() || !m_folder) return {};
    const MeasuringProgress progress = m_folder->Progress();
    if (progress.IsDone()) return {};
    return std::to_string(progress.done) + " of " + std::to_string(progress.total) + " measured";
}

void NightRoom::FollowFrames(std::function<void()> follower) {
    m_followers.push_back(std::move(follower));
}

void NightRoom::TakeMarks() {
    const auto& frames = Folder().Frames();
    for (std::size_t i = 0; i < frames.size(); ++i)
        Folder().SetMark(i, m.marks.MarkOf(frames[i].path).value_or(Mark()));
}

void NightRoom::FollowCurrent() {
    if (!m_wanting.empty()) Folder().Prefer(m.state.Filename);
    if (IsNightUp()) m_night->FollowCurrent();
    if (AreCornersUp()) m_corners->Follow();
    if (WantsStars()) m_rest.start();
    m_sky.Follow();
}

void NightRoom::NightReportButton_Click() {
    if (!m_report) m_report = std::make_unique<frmNightReport>(m);
    m_report->Form_Load();
}

void NightRoom::SitesButton_Click() {
    if (!m_sites) {
        m_sites = std::make_unique<frmSites>(m);
        m_sites->onKept = [this] { m_sky.Follow(); };
    }
    m_sites->ShowSites();
}

void NightRoom::AskForStars() {
    const ProgramState& s = m.state;
    if (!WantsStars() || s.SlideViewing || s.BatchRuns) return;
    if (!m_stars)
        m_stars = std::make_unique<LateStars>([this] {
            QMetaObject::invokeMethod(
                &m_here, [this] { TakeStars(); }, Qt::QueuedConnection);
        });
    m_stars->Ask(s.Kind == FileKind::Picture ? s.Filename : std::string());
}

void NightRoom::TakeStars() {
    const auto stars = m_stars->Take();
    if (!stars || stars->path != m.state.Filename) return; // another picture is shown by now
    if (m.state.StarCircles) {
        const PictureRings rings = RingsOf(*stars);
        m.display.ShowRings(rings);
        m.shell.ShowIfNoMessage(rings.rings.empty() && !stars->listed.fault.empty()
                                    ? "No stars measured: " + stars->listed.fault
                                    : std::to_string(rings.rings.size()) + " stars measured");
    }
    if (AreCornersUp()) m_corners->ShowStars(*stars);
}

void NightRoom::StarCirclesButton_Click() {
    m.state.StarCircles = m.controls.StarCirclesButton->isChecked();
    if (m.state.StarCircles)
        AskForStars();
    else
        m.display.ShowRings({});
}

void NightRoom::CornersButton_Click() {
    if (!m_corners) m_corners = std::make_unique<frmCorners>(m);
    m_corners->Form_Load();
    AskForStars();
}

// False when it was cancelled.
bool NightRoom::MeasureAll() {
    const BatchRun batch(m);
    for (;;) {
        const MeasuringProgress progress = Folder().Progress();
        if (progress.IsDone() && Folder().IsSettled()) return true;
        if (!batch.Step("Measuring " + std::to_string(progress.done) + " of " +
                        std::to_string(progress.total)))
            return false;
        m.events.Sleep(kLooksAgain);
    }
}

Outcome NightRoom::BurstButton_Click() {
    if (m.state.BatchRuns || m.state.SlideViewing) return Outcome::Refused();
    const std::vector<std::string> pictures = NightPictures(m);
    if (pictures.empty()) return Outcome::Refused("This folder lists no pictures");
    WantFrames(&m_here, true);
    Folder().Resume();
    Outcome told = Outcome::Refused("Cancelled");
    if (MeasureAll()) {
        const auto& frames = Folder().Frames();
        const std::vector<FrameIndices> all = BurstsOf(frames);
        const FrameIndices sharpest = SharpestOfBursts(frames);
        // Of some none tells its sharpness.
        const auto bursts = std::count_if(all.begin(), all.end(), [&](const FrameIndices& burst) {
            return std::any_of(burst.begin(), burst.end(), [&](std::size_t frame) {
                return std::binary_search(sharpest.begin(), sharpest.end(), frame);
            });
        });
        std::vector<MarkWish> wishes;
        for (const std::size_t frame : sharpest)
            wishes.push_back({frames[frame].path, Decide(Decision::Keep)});
        const std::string kept = "Sharpest of " + std::to_string(bursts) +
                                 (bursts == 1 ? " burst" : " bursts") + " kept";
        if (!wishes.empty()) m.marks.MarkFiles(kept, wishes);
        told = all.empty()
                   ? Outcome::Refused("No pictures here were taken within 2 seconds of each other")
                   : Outcome::Did(kept + ", of " + CountedFrames(frames.size()));
    }
    WantFrames(&m_here, false);
    return told;
}

} // namespace tarn
