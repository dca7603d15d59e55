// The marks of the files of the list, for all who show or set them.
#pragma once

#include "desk/Context.h"
#include "desk/Room.h"
#include "marks/MarkControls.h"
#include "marks/MarkStore.h"

#include <QObject>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
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
    std::vector<Mark> MarksOnDisk(const std::vector<std::string>& paths) override;
    bool AllRead() override;
    bool AnyMarked() override;
    std::optional<MarkChange> KeptAside(const std::string& path) override;
    using MarkCommands::MarkFiles;
    void MarkFiles(const std::string& what, const std::vector<MarkWish>& wishes) override;
    std::string CommandToCome() override { return m_store->CommandToCome(); }
    using MarkCommands::SetMarks;
    void SetMarks(const std::vector<MarkWish>& wishes) override;
    Outcome Flush() override;
    void SidecarsChanged() override { ShowList(); }
    void Follow(std::function<void()> follower) override;

private:
    void ShowList();
    bool AwaitWritten(const char* inQuestion, std::optional<std::chrono::seconds> atMost);
    void TellFollowers();
    void PostChanged();

    Context& m;
    QObject m_here; // what comes from the store's threads is done in its thread
    MarkControls m_controls;
    std::vector<std::function<void()>> m_followers;
    std::atomic<bool> m_isPosted = false;
    bool m_isGivenUp = false;           // the disk did not answer, and the program ends
    std::unique_ptr<MarkStore> m_store; // last: its threads end first
};

} // namespace tarn
