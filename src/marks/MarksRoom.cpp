#include "marks/MarksRoom.h"

#include "widgets/FileListBox.h"

namespace tarn {

MarksRoom::MarksRoom(Context& context) : m(context), m_controls(context) {
    m_store = std::make_unique<MarkStore>(
        context.files, MarkStore::Answers{.changed = [this] { PostChanged(); },
                                          .told =
                                              [this](const std::string& text) {
                                                  QMetaObject::invokeMethod(
                                                      &m_here,
                                                      [this, text] { m.shell.ShowMessage(text); },
                                                      Qt::QueuedConnection);
                                              }});
}

MarksRoom::~MarksRoom() = default;

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

bool MarksRoom::AllRead() {
    return m_store->AllRead();
}

bool MarksRoom::IsKeptAside(const std::string& path) {
    return m_store->IsKeptAside(path);
}

void MarksRoom::SetMarks(const std::vector<MarkWish>& wishes) {
    for (const MarkWish& wish : wishes) m_store->Set(wish.path, wish.change);
    TellFollowers();
}

void MarksRoom::Flush() {
    m_store->Flush();
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

void MarksRoom::BreakOff() {
    Flush();
}

} // namespace tarn
