// The desktop's wastebasket by its common rules (freedesktop.org): a folder "files" with what was
// thrown away and a folder "info" that says where it came from. Names are bytes.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tarn {

// Into the wastebasket of the user's home, or that of the file's own mount where the home is on
// another. `where` gets its path there. False with the system's text: the file stands where it
// stood.
bool ThrowAway(const std::string& path, std::string* where, std::string* error);

// The same for what stood at `stood`, by whose name and place it comes back.
bool ThrowAwayAs(const std::string& path, const std::string& stood, std::string* where,
                 std::string* error);

struct Thrown {
    std::string path;
    std::string stood; // as above
    std::string where; // empty: it stays
};

// Many, which are flushed together: one after the other they take milliseconds each.
void ThrowAllAway(std::vector<Thrown>& all);

// Where the file of this inode lies that stood at `stood`; empty when it is in no basket.
std::string FindInBaskets(const std::string& stood, std::int64_t inode);

// Back from `where`; refused when something stands at `path`.
bool TakeBack(const std::string& where, const std::string& path, std::string* error);

} // namespace tarn
