#include "imaging/fits/PackedFits.h"

#include "common/file_look.h"
#include "platform/DecodeBudget.h"
#include "platform/OpenRegular.h"

#include <algorithm>
#include <cstdlib>
#include <list>
#include <mutex>
#include <string_view>
#include <vector>

#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zlib.h>

namespace tarn {

// A file in memory that has a name.
class UnpackedFile {
public:
    explicit UnpackedFile(const FileLook& look)
        : m_look(look), m_file(::memfd_create("fits", MFD_CLOEXEC)) {}
    ~UnpackedFile() {
        if (m_file >= 0) ::close(m_file);
    }
    UnpackedFile(const UnpackedFile&) = delete;
    UnpackedFile& operator=(const UnpackedFile&) = delete;

    // What was unpacked before a file broke off stays.
    std::string Fill(const std::string& path);

    const FileLook& Look() const { return m_look; }
    long long Bytes() const { return m_bytes; }
    std::string Path() const { return "/proc/self/fd/" + std::to_string(m_file); }

private:
    FileLook m_look; // at the packed file
    int m_file;
    long long m_bytes = 0;
};

namespace {

constexpr std::size_t kChunk = 256 * 1024;
constexpr long long kMostUnpacked = 2LL << 30U; // bytes
constexpr long long kMostKept = 256LL << 20U;
constexpr const char* kTooLarge = "The FITS file cannot be read: it is too large when unpacked";
constexpr const char* kNoMemory = "Not enough memory";

using Unpacked = std::shared_ptr<const UnpackedFile>;

// A quarter of the machine's memory at most.
long long MostUnpacked() {
    static const long long most =
        std::min(kMostUnpacked, 1LL * ::sysconf(_SC_PHYS_PAGES) * ::sysconf(_SC_PAGESIZE) / 4);
    return most;
}

bool Append(int file, const char* bytes, std::size_t count) {
    while (count > 0) {
        const ssize_t written = ::write(file, bytes, count);
        if (written <= 0) return false;
        bytes += written;
        count -= std::size_t(written);
    }
    return true;
}

std::mutex& Guard() {
    static std::mutex mutex;
    return mutex;
}

// The last used first.
std::list<Unpacked>& Kept() {
    static std::list<Unpacked> kept;
    return kept;
}

Unpacked FindKept(const FileLook& look) {
    const std::lock_guard lock(Guard());
    auto& kept = Kept();
    const auto found = std::find_if(kept.begin(), kept.end(),
                                    [&](const Unpacked& each) { return each->Look() == look; });
    if (found == kept.end()) return nullptr;
    kept.splice(kept.begin(), kept, found);
    return kept.front();
}

void Keep(const Unpacked& file) {
    const std::lock_guard lock(Guard());
    auto& kept = Kept();
    kept.push_front(file);
    long long bytes = 0;
    for (auto each = kept.begin(); each != kept.end();) {
        bytes += (*each)->Bytes();
        each = bytes > kMostKept && each != kept.begin() ? kept.erase(each) : std::next(each);
    }
}

// A whole number among the cards; 0 where it does not stand there.
long long CardNumber(std::string_view cards, std::string_view name) {
    constexpr std::size_t kCard = 80;
    constexpr std::size_t kValue = 10; // where it begins
    for (; cards.size() >= kCard; cards.remove_prefix(kCard)) {
        if (cards.starts_with("END ")) break;
        if (cards.starts_with(name))
            return std::atoll(std::string(cards.substr(kValue, kCard - kValue)).c_str());
    }
    return 0;
}

// Whether what the first header says will not be shown anyway: it need not be unpacked then.
bool IsBeyondMemory(std::string_view cards) {
    constexpr double kPixelBytes = 28; // of work
    const double pixels =
        double(CardNumber(cards, "NAXIS1  =")) * double(CardNumber(cards, "NAXIS2  ="));
    return pixels * kPixelBytes > double(TheDecodeBudget().Bytes());
}

bool IsPacked(const std::string& path) {
    std::string start(kPackedStart, '\0');
    std::string error;
    const FileHandle file = OpenRegular(path, error);
    start.resize(file ? std::fread(start.data(), 1, start.size(), file.get()) : 0);
    return IsPackedFits(start);
}

} // namespace

std::string UnpackedFile::Fill(const std::string& path) {
    if (m_file < 0) return kNoMemory;
    std::string error;
    OpenFile source(path, error);
    if (!source) return error;
    const gzFile packed = ::gzdopen(source.Number(), "rb");
    if (!packed) return kNoMemory;
    source.Release();
    ::gzbuffer(packed, kChunk);
    std::vector<char> chunk(kChunk);
    for (int count = 0; error.empty() && (count = ::gzread(packed, chunk.data(), kChunk)) > 0;) {
        if (m_bytes == 0 && IsBeyondMemory({chunk.data(), std::size_t(count)})) error = kTooLarge;
        m_bytes += count;
        if (m_bytes > MostUnpacked())
            error = kTooLarge;
        else if (!Append(m_file, chunk.data(), std::size_t(count)))
            error = kNoMemory;
    }
    ::gzclose(packed);
    return error;
}

PlainFits::PlainFits(const std::string& path, std::string& error) : m_path(path) {
    struct stat facts {};
    const int number = NumberInName(path);
    if (!IsPacked(path) ||
        (number < 0 ? ::stat(path.c_str(), &facts) : ::fstat(number, &facts)) != 0)
        return;
    const FileLook look = LookOf(facts);
    m_unpacked = FindKept(look);
    if (!m_unpacked) {
        const auto made = std::make_shared<UnpackedFile>(look);
        error = made->Fill(path);
        if (!error.empty()) return;
        Keep(made);
        m_unpacked = made;
    }
    m_path = m_unpacked->Path();
}

} // namespace tarn
