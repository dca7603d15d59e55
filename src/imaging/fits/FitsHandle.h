// A FITS file that is open in its library, and the pictures in it. For one thread.
#pragma once

#include "imaging/fits/FitsHeader.h"

#include <array>
#include <initializer_list>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include <fitsio.h>
#include <sys/mman.h>

namespace tarn {

// One of the file's pictures: a plane of a part, or three that are its colours.
struct FitsPlace {
    int part = 1;             // of the file, from 1
    long plane = 0;           // which picture of the part, from 0
    bool interleaved = false; // the colours of a pixel lie together

    FitsHeader header; // of its size and kind alone
};

class FitsHandle {
public:
    explicit FitsHandle(const std::string& path);
    ~FitsHandle();
    FitsHandle(const FitsHandle&) = delete;
    FitsHandle& operator=(const FitsHandle&) = delete;

    // The first stands for one that is not there. The file stands at its part then.
    std::optional<FitsPlace> FindPicture(int image, std::string& error);

    bool MoveTo(int part) { return fits_movabs_hdu(m_file, part, nullptr, &status) == 0; }

    // Of the part at which it stands; what a picture behind the first part does not say itself may
    // stand in front of the file. Empty for none.
    std::string Word(std::initializer_list<const char*> names);
    bool Has(const char* name) { return !WordHere(name).empty(); }
    double Number(const char* name, double otherwise);

    // How many of the part's samples are there, from its start; at most `all`.
    std::size_t SamplesInFile(std::size_t all, int bits);

    operator fitsfile*() { return m_file; }

    int status = 0; // of the library; 0 while all is well

private:
    static constexpr int kMostAxes = 6;
    struct Part {
        int number = 1;
        long pictures = 0;
        FitsPlace first;
    };

    std::vector<Part> Parts(std::string& error);
    std::optional<Part> PartHere(bool& empty);
    void OpenMapped(int file);
    void MoveOn();
    std::string WordHere(const char* name);
    const std::set<std::string, std::less<>>& NamesHere();

    const std::string& m_path;
    bool m_refused = false; // by a look at its cards
    std::unique_lock<std::mutex> m_turn;
    void* m_mapped = MAP_FAILED; // which the library is told by their places
    std::size_t m_mappedBytes = 0;
    fitsfile* m_file = nullptr;
    long long m_bytes = 0;
    int m_part = 1; // of the file, at which it stands
    // Names of the words of a part: the library goes through all of them to find that one is not
    // there.
    std::map<int, std::set<std::string, std::less<>>> m_names;
};

// What the library says of it.
std::string FitsFaultText(int status);

} // namespace tarn
