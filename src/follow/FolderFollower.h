// A folder looked at again and again on a thread of its own, of low priority: its names are read,
// and nothing but new files is asked for more.
#pragma once

#include "common/worker.h"
#include "follow/NewFiles.h"
#include "platform/Files.h"

#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <string>

namespace tarn {

class FolderFollower {
public:
    // `told` is called on the thread of this one, when there is news.
    FolderFollower(const Files& files, std::function<void()> told);
    ~FolderFollower();
    FolderFollower(const FolderFollower&) = delete;
    FolderFollower& operator=(const FolderFollower&) = delete;

    void Follow(const std::string& folder, NewFiles::Names known); // empty: none
    void Wake();                                                   // something happens there

    struct News : NewFiles::News {
        std::string folder;
    };
    std::optional<News> Take();

private:
    void Work();
    void Look(std::unique_lock<std::mutex>& lock);

    const Files& m_files;
    const std::function<void()> m_told;
    std::mutex m_mutex; // of all below
    std::condition_variable m_changed;
    bool m_ends = false;
    bool m_isNew = false;   // the folder
    bool m_isAwake = false; // it is to be looked at soon
    std::string m_folder;
    NewFiles::Names m_known;
    std::optional<News> m_news;

    NewFiles m_there; // of the thread alone
    Worker m_worker;  // last: it uses all above
};

} // namespace tarn
