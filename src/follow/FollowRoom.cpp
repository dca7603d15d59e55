#include "follow/FollowRoom.h"

#include "common/paths.h"
#include "follow/WorseFrame.h"
#include "widgets/FileListBox.h"

#include <QAction>
#include <QApplication>
#include <QScopedValueRollback>

#include <algorithm>

namespace tarn {

namespace {

constexpr int kLater = 500; // milliseconds

} // namespace

FollowRoom::FollowRoom(Context& context)
    : m(context), m_watch([this](const std::string&) {
          if (m_follower) m_follower->Wake();
      }) {
    m_later.setSingleShot(true);
    m_later.setInterval(kLater);
    QObject::connect(&m_later, &QTimer::timeout, &m_here, [this] { TakeNews(); });
}

void FollowRoom::ConnectControls() {
    const MainControls& c = m.controls;
    Connect(c.FollowFolderButton, [this] { FollowFolderButton_Click(); });
    Connect(c.ShowNewestButton,
            [this] { m.state.ShowNewest = m.controls.ShowNewestButton->isChecked(); });
    QObject::connect(c.FileListBox, &FileListBox::folderRead, &m_here, [this] {
        if (!m_adds) Begin();
    });
    m.night.FollowFrames([this] { TellWorse(); });
}

void FollowRoom::ShowSettings() {
    m.controls.FollowFolderButton->setChecked(m.state.FollowFolder);
    m.controls.ShowNewestButton->setChecked(m.state.ShowNewest);
}

// Its thread may wait for a disk that never answers: it is joined by the destructor alone.
void FollowRoom::BreakOff() {
    m_watch.Watch({});
    if (m_follower) m_follower->Follow({}, {});
}

void FollowRoom::FollowFolderButton_Click() {
    m.state.FollowFolder = m.controls.FollowFolderButton->isChecked();
    Begin();
}

void FollowRoom::Begin() {
    FileListBox& list = *m.controls.FileListBox;
    const bool follows = m.state.FollowFolder && !list.Path().empty();
    list.SetFollowed(follows);
    std::erase_if(m_new, [&](const std::string& path) { return FolderOf(path) != list.Path(); });
    m_watch.Watch(follows ? list.Path() : std::string());
    if (!follows) {
        if (m_follower) m_follower->Follow({}, {});
        return;
    }
    if (!m_follower)
        m_follower = std::make_unique<FolderFollower>(m.files, [this] {
            QMetaObject::invokeMethod(
                &m_here, [this] { TakeNews(); }, Qt::QueuedConnection);
        });
    NewFiles::Names known = list.Listed();
    for (const NewFiles::Names* others : {&list.LeftOut(), &list.NotChosen()})
        known.insert(known.end(), others->begin(), others->end());
    m_follower->Follow(list.Path(), std::move(known));
}

// Shows and batches go by the rows as they are, and so does an open menu or a question.
bool FollowRoom::MayNotNow() const {
    return !m.state.FormLoadDone || m.state.SlideViewing || m.state.BatchRuns ||
           QApplication::activeModalWidget() || QApplication::activePopupWidget();
}

void FollowRoom::TakeNews() {
    if (!m_follower) return;
    if (MayNotNow()) return m_later.start();
    const auto news = m_follower->Take();
    FileListBox& list = *m.controls.FileListBox;
    if (!news || news->folder != list.Path()) return;
    const auto& listed = list.Listed();
    const std::set<std::string> gone(news->gone.begin(), news->gone.end());
    if (std::any_of(listed.begin(), listed.end(),
                    [&](const std::string& name) { return gone.contains(name); }))
        list.SayDiskChanged();
    if (news->whole.empty()) return;
    const bool wasEmpty = list.Count() == 0;
    Add(news->whole);
    if (wasEmpty && list.Count() > 0 && !list.IsNarrowed())
        m.navigation.EnableListCommands();
    else if (m.state.ShowNewest)
        ShowNewest(news->whole);
}

// What was listed before, as what has grown since, is not new; nor is what is not listed now.
void FollowRoom::Add(const NewFiles::Names& whole) {
    FileListBox& list = *m.controls.FileListBox;
    const std::set<std::string> before(list.Listed().begin(), list.Listed().end());
    std::set<std::string> added;
    for (const std::string& name : whole)
        if (!before.contains(name)) added.insert(name);
    const QScopedValueRollback<bool> adds(m_adds, true);
    list.AddFiles(whole);
    for (const std::string& name : list.Listed())
        if (added.contains(name)) m_new.insert(JoinPath(list.Path(), name));
}

// Not while several are selected or a note is being written: what the user is at stays.
void FollowRoom::ShowNewest(const NewFiles::Names& whole) {
    const FileListBox& list = *m.controls.FileListBox;
    if (list.SelectedRows().size() > 1 || !m.notes.UnsavedText().empty()) return;
    for (auto name = whole.rbegin(); name != whole.rend(); ++name) {
        const int row = list.RowOf(*name);
        if (row < 0) continue;
        m.navigation.ClearMultiselect();
        return m.navigation.SelectRow(row, KeepingKeyboard());
    }
}

// Of each new frame once, when it has been measured.
void FollowRoom::TellWorse() {
    if (!m.state.FollowFolder || m.state.BatchRuns) return;
    const FileListBox& list = *m.controls.FileListBox;
    for (auto path = m_new.begin(); path != m_new.end();) {
        const JudgedFrame* frame = m.night.FrameOf(*path);
        if (!frame) {
            ++path;
            continue;
        }
        std::vector<const JudgedFrame*> others;
        for (const std::string& name : list.Listed())
            if (const JudgedFrame* other = m.night.FrameOf(JoinPath(list.Path(), name)))
                others.push_back(other);
        if (const auto usual = UsualWhereWorse(*frame, others))
            m.shell.ShowMessage(WorseSaid(*frame, *usual));
        path = m_new.erase(path);
    }
}

} // namespace tarn
