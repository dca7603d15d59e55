// One window a user: a second start hands its path to the running window and ends. A lock that ends
// with its holder tells a window that is busy from one that has crashed; beside one that stays busy
// a second window opens, which takes nothing over.
#pragma once

#include <functional>
#include <memory>
#include <string>

class QLocalServer;

namespace tarn {

class FileLock;

class SecondStart {
public:
    SecondStart();
    ~SecondStart();

    // True when a running window took the path (which may be empty: it is then only raised).
    bool HandOver(const std::string& path);

    // From now on this is the running window, unless one that is busy holds the place.
    void Listen(std::function<void(const std::string& path)> open);

private:
    std::unique_ptr<FileLock> m_lock;
    std::unique_ptr<QLocalServer> m_server;
};

} // namespace tarn
