#include "marks/MarksRoom.h"

#include "common/paths.h"
#include "desk/batch/BatchRun.h"
#include "marks/MarkFiles.h"
#include "platform/EventPump.h"
#include "widgets/FileListBox.h"

#include <map>

#include <unistd.h>

namespace tarn {

namespace {

using namespace std::chrono_literals;

constexpr auto kUnsaid = 300ms; // a disk that is well is done by then
constexpr auto kLookEvery = 50ms;
constexpr auto kLongestAtEnd = 10s;

} // namespace

MarksRoom::MarksRoom(Context& context) : m(context), m_controls(context) {
    m_store = std::make_unique<MarkStore>(
        context.history, MarkStore::Answers{.changed = [this] { PostChanged(); },
                                            .told =
                                                [this](const std::string& text) {
                                                    QMetaObject::invokeMethod(
                                                        &m_here,
                                                        [this, text] { m.shell.ShowMessage(text); },
                                                        Qt::QueuedConnection);
                                                }});
}

// A thread that waits for a dead disk can only be ended with the program. All else is over by now.
MarksRoom::~MarksRoom() {
    if (m_isGivenUp && !m_store->Flush(0ms)) ::_exit(EXIT_SUCCESS);
}

void MarksRoom::ConnectControls() {
    m_controls.ConnectControls();
    Follow([this] { m_controls.ShowMarks(); });
    const FileListBox& list = *m.controls.FileListBox;
    QObject::connect(&list, &FileListBox::folderRead, &m_here, [this] { ShowList(); });
}

void MarksRoom::ShowList() {
    const FileListBox& list = *m.controls.FileListBox;
    m_store->Show(list.Path(), list.Listed()); // also those that are not chosen by their marks
}

std::optional<Mark> MarksRoom::MarkOf(const std::string& path) {
    return m_store->MarkOf(path);
}

std::vector<Mark> MarksRoom::MarksOnDisk(const std::vector<std::string>& paths) {
    std::map<std::string, std::optional<SidecarNames>> folders;
    std::vector<Mark> marks;
    for (const std::string& path : paths) {
        const auto [found, isNew] = folders.try_emplace(FolderOf(path));
        if (isNew) found->second = SidecarsIn(m.files, found->first, nullptr);
        marks.push_back(found->second ? ReadMark(m.files, path, *found->second).mark : Mark());
    }
    return marks;
}

bool MarksRoom::AllRead() {
    return m_store->AllRead();
}

bool MarksRoom::AnyMarked() {
    return m_store->AnyMarked(m.controls.FileListBox->Path());
}

std::optional<MarkChange> MarksRoom::KeptAside(const std::string& path) {
    return m_store->KeptAside(path);
}

void MarksRoom::SetMarks(const std::vector<MarkWish>& wishes) {
    MarkFiles({}, wishes);
}

void MarksRoom::MarkFiles(const std::string& what, const std::vector<MarkWish>& wishes) {
    MarksSet set{what, {}};
    for (const MarkWish& wish : wishes) {
        MarkChange& change = set.changes[wish.path];
        change = Joined(change, wish.change);
    }
    m_store->Set(std::move(set));
    TellFollowers();
}

// False where the user would rather not wait, or it has taken too long.
bool MarksRoom::AwaitWritten(const char* inQuestion, std::optional<std::chrono::seconds> atMost) {
    if (m_store->Flush(kUnsaid)) return true;
    const auto began = std::chrono::steady_clock::now();
    std::optional<BatchRun> batch; // one that runs is broken off, and lets only its cancel through
    if (!m.state.BatchRuns) batch.emplace(m);
    m.state.BatchCancelled = false;
    while (!m_store->Flush(kLookEvery)) {
        const MarkStore::Unwritten left = m_store->StillUnwritten();
        m.shell.ShowMessage("Waiting for the disk: " + std::to_string(left.count) +
                            (left.count == 1 ? " mark" : " marks") + " to write, now '" +
                            LastPart(left.now) + "'. Esc: " + inQuestion);
        m.events.Pump();
        if (m.state.BatchCancelled) return false;
        if (atMost && std::chrono::steady_clock::now() - began > *atMost) return false;
    }
    return true;
}

Outcome MarksRoom::Flush() {
    return AwaitWritten("nothing is done", {})
               ? Outcome::Did()
               : Outcome::Refused("Cancelled: marks are still being written");
}

void MarksRoom::Follow(std::function<void()> follower) {
    m_followers.push_back(std::move(follower));
}

void MarksRoom::TellFollowers() {
    for (const auto& follower : m_followers) follower();
}

// Many changes that come at once are told once.
void MarksRoom::PostChanged() {
    if (m_isPosted.exchange(true)) return;
    QMetaObject::invokeMethod(
        &m_here,
        [this] {
            m_isPosted = false;
            TellFollowers();
        },
        Qt::QueuedConnection);
}

// Nothing is lost: what the disk has not taken by then waits in the state folder for the next run.
void MarksRoom::BreakOff() {
    m_isGivenUp = !AwaitWritten("end now, they are kept in the settings", kLongestAtEnd);
    if (m_isGivenUp) m_store->KeepUnwrittenAside();
}

} // namespace tarn
