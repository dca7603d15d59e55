// What the user has: every content that was ever seen in the folders must be somewhere, in whatever
// file, or in the wastebasket, unless the other program took it or the user had it changed.
#pragma once

#include "World.h"

#include <map>
#include <set>
#include <string>

namespace tarn::testing {

class Inventory {
public:
    explicit Inventory(World& world) : m(world) { Look(); }

    // The folders as they are now; what has vanished without reason, or nothing.
    std::string Check();

    // The other program took this file's content away.
    void Taken(const std::string& path);

    // The user has read this note as it stands: the next save may replace it.
    void Seen(const std::string& notePath);

    void EmptyWastebasket(); // when it has grown too large

private:
    struct Known {
        std::string stamp;
        std::size_t content;
    };
    Known LookAt(const std::string& path) const;
    void Look();
    bool MayChange(const std::string& path, std::size_t before) const;

    World& m;
    std::map<std::string, Known> m_files;          // by path, at the last look
    std::map<std::size_t, std::string> m_contents; // that the user has, each where it was last seen
    std::map<std::size_t, std::string> m_bytes;    // of those that may be dated in place
    std::set<std::size_t> m_seen;
};

} // namespace tarn::testing
