// Which files have come into a folder and are whole, told from one look at it to the next. It asks
// no disk and no clock itself.
#pragma once

#include "common/file_look.h"
#include "follow/FinishedFile.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace tarn {

class NewFiles {
public:
    using Names = std::vector<std::string>;

    // What may be asked of a file by its name.
    struct Disk {
        std::function<std::optional<FileLook>(const std::string& name)> look;
        std::function<Finished(const std::string& name, const FileLook& look)> finished;
    };

    // Of another folder, or the same anew: these are known.
    void Begin(const Names& known);

    struct News {
        Names whole; // the newest last; again where one has grown since it was told
        Names gone;  // of those that were known
    };
    // With the names that the folder has now, at a time in milliseconds.
    News Look(const Names& names, std::int64_t now, const Disk& disk);

    bool Waits() const; // for some to be whole soon

private:
    struct Growing {
        FileLook look;
        std::int64_t since = 0; // it has been so
        Finished finished = Finished::Yes;
    };
    static bool IsWhole(const std::string& name, Growing& growing, std::int64_t now,
                        const Disk& disk);
    void LookAtDoubtful(std::int64_t now, const Disk& disk);

    std::unordered_set<std::string> m_known;
    std::unordered_map<std::string, Growing> m_growing;  // some are known: they were told before
    std::unordered_map<std::string, Growing> m_doubtful; // told a while ago, of unknown kind
};

} // namespace tarn
