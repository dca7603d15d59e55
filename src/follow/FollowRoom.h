// The folder that is shown is followed: files that another program adds are listed once they are
// whole, and the newest is shown where that is wanted.
#pragma once

#include "desk/Context.h"
#include "desk/Room.h"
#include "follow/FolderFollower.h"
#include "platform/FolderWatch.h"

#include <QObject>
#include <QTimer>

#include <memory>
#include <set>
#include <string>

namespace tarn {

class FollowRoom : public Room {
public:
    explicit FollowRoom(Context& context);

    void ConnectControls() override;
    void ShowSettings() override;
    void BreakOff() override;

private:
    void FollowFolderButton_Click();
    void Begin();
    void TakeNews();
    bool MayNotNow() const;
    void Add(const NewFiles::Names& whole);
    void ShowNewest(const NewFiles::Names& whole);
    void TellWorse();

    Context& m;
    QObject m_here;                             // what comes from the thread is done in its thread
    QTimer m_later;                             // news that may not be shown now
    FolderWatch m_watch;                        // wakes the follower
    bool m_adds = false;                        // the list is read no further than by this room
    std::set<std::string> m_new;                // frames that are not measured yet
    std::unique_ptr<FolderFollower> m_follower; // made at first need; goes first
};

} // namespace tarn
