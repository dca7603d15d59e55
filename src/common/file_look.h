// What one look at a file tells without opening it. Two looks are equal when the same file stands
// there in the same state.
#pragma once

#include <cstdint>

#include <sys/stat.h>

namespace tarn {

// The first bytes in which picture files tell of themselves.
inline constexpr int kFileFront = 20041;

struct FileLook {
    std::int64_t device = 0;
    std::int64_t inode = 0; // 0: nothing stands there
    std::int64_t bytes = 0;
    std::int64_t seconds = 0; // last change of its contents, since 1970
    std::int64_t nanoseconds = 0;
    std::int64_t changed = 0; // nanoseconds: also of its name, its mode or its times

    bool operator==(const FileLook&) const = default;

    // The same but for its times, which the program sets itself.
    bool IsSameFile(const FileLook& other) const {
        return device == other.device && inode == other.inode && bytes == other.bytes;
    }

    // The same file, not written since.
    bool IsSameContent(const FileLook& other) const {
        return IsSameFile(other) && seconds == other.seconds && nanoseconds == other.nanoseconds;
    }
};

inline FileLook LookOf(const struct stat& status) {
    return {static_cast<std::int64_t>(status.st_dev),
            static_cast<std::int64_t>(status.st_ino),
            status.st_size,
            status.st_mtim.tv_sec,
            status.st_mtim.tv_nsec,
            std::int64_t(status.st_ctim.tv_sec) * 1'000'000'000 + status.st_ctim.tv_nsec};
}

} // namespace tarn
