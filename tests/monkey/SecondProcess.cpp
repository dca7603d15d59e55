// What another program does in the folders that the window shows: one change, chosen by the number
// given. Prints "gone PATH" for each file whose content it takes away, and what it did.
#include "Dice.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

using tarn::testing::Dice;

void Append(const fs::path& file, int act) {
    std::ofstream(file, std::ios::app | std::ios::binary) << "changed " << act;
}

void Copy(const fs::path& from, const fs::path& to) {
    std::error_code ignored;
    fs::copy_file(from, to, fs::copy_options::overwrite_existing, ignored);
}

void Change(Dice& dice, int act, const std::vector<fs::path>& files) {
    const fs::path& file = dice.Of(files);
    const fs::path& other = dice.Of(files);
    const auto gone = [](const fs::path& path) { std::printf("gone %s\n", path.c_str()); };
    const fs::path fresh =
        file.parent_path() / ("added " + std::to_string(act) + file.extension().string());
    constexpr std::size_t kMany = 60;
    std::error_code ignored;
    switch (files.size() > kMany ? 7 : dice.Below(8)) {
    case 0:
        std::printf("adds %s\n", fresh.c_str());
        return Copy(file, fresh);
    case 1:
        gone(file);
        std::printf("lengthens it\n");
        return Append(file, act);
    case 2:
        gone(file);
        std::printf("cuts it\n");
        return fs::resize_file(file, fs::file_size(file) / 2, ignored);
    case 3:
        std::printf("renames %s to %s\n", file.c_str(), fresh.c_str());
        return fs::rename(file, fresh, ignored);
    case 4:
        gone(file);
        std::printf("puts %s in its place\n", other.c_str());
        return Copy(other, file);
    case 5:
        std::printf("touches %s\n", file.c_str());
        return fs::last_write_time(file, fs::file_time_type::clock::now(), ignored);
    case 6:
        gone(file);
        std::printf("saves it anew\n");
        fs::rename(file, fresh, ignored);
        Append(fresh, act);
        return fs::rename(fresh, file, ignored);
    default:
        gone(file);
        std::printf("removes it\n");
        fs::remove(file, ignored);
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 4) return 2;
    Dice dice;
    const int act = std::atoi(argv[2]);
    dice.Begin(std::strtoull(argv[1], nullptr, 10), static_cast<unsigned>(act));
    std::vector<fs::path> files;
    for (int i = 3; i < argc; ++i)
        for (const auto& entry : fs::directory_iterator(argv[i]))
            if (entry.is_regular_file()) files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    if (!files.empty()) Change(dice, act, files);
    return 0;
}
