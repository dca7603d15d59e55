// The marks of the files of the list, for all who show or set them.
#pragma once

#include "desk/Context.h"
#include "desk/Room.h"
#include "marks/MarkControls.h"
#include "marks/MarkStore.h"

#include <QObject>

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tarn {

class MarksRoom : public MarkCommands, public Room {
public:
    explicit MarksRoom(Context& context);
    ~MarksRoom() override;

    void ConnectControls() override;
    void BreakOff() override;

    std::optional<Mark> MarkOf(const std::string& path) override;
    bool AllRead() override;
    bool IsKeptAside(const std::string& path) override;
    using MarkCommands::SetMarks;
    void SetMarks(const std::vector<MarkWish>& wishes) override;
    void Flush() override;
    void SidecarsChanged() override { ShowList(); }
    void Follow(std::function<void()> follower) override;

private:
    void ShowList();
    void TellFollowers();
    void PostChanged();

    Context& m;
    QObject m_here; // what comes from the store's threads is done in its thread
    MarkControls m_controls;
    std::vector<std::function<void()>> m_followers;
    std::atomic<bool> m_isPosted = false;
    std::unique_ptr<MarkStore> m_store; // last: its threads end first
};

} // namespace tarn
