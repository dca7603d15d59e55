// One window a user: a second start hands its path to the running window and ends.
#pragma once

#include <functional>
#include <memory>
#include <string>

class QLocalServer;

namespace tarn {

class SecondStart {
public:
    SecondStart();
    ~SecondStart();

    // True when a running window took the path (which may be empty: it is then only raised).
    bool HandOver(const std::string& path);

    // From now on this is the running window.
    void Listen(std::function<void(const std::string& path)> open);

private:
    std::unique_ptr<QLocalServer> m_server;
};

} // namespace tarn
