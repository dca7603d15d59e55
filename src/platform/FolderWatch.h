// A folder watched for what comes to it, goes from it or gets another name there.
#pragma once

#include <QSocketNotifier>

#include <functional>
#include <string>

namespace tarn {

class FolderWatch {
public:
    // `changed` gets each name; an empty one where the folder itself has gone, or so much has
    // changed that not all names are known. It comes with the events of this thread.
    explicit FolderWatch(std::function<void(const std::string& name)> changed);
    ~FolderWatch();
    FolderWatch(const FolderWatch&) = delete;
    FolderWatch& operator=(const FolderWatch&) = delete;

    // This one and no other; empty: none. One that was made anew under its name is watched again.
    void Watch(const std::string& folder);

private:
    void TakeEvents();

    const std::function<void(const std::string&)> m_changed;
    const int m_events; // the system's number; below 0 where it has none left: nothing is watched
    int m_watched = -1;
    std::string m_folder;
    QSocketNotifier m_notifier;
};

} // namespace tarn
