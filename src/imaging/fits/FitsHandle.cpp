#include "imaging/fits/FitsHandle.h"

#include "common/text.h"
#include "imaging/fits/FitsCards.h"
#include "platform/OpenRegular.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

#include <sys/stat.h>

namespace tarn {

namespace {

constexpr long kLongestSide = 1L << 30;
constexpr long kMostPictures = 1'000'000; // of a file
constexpr double kMostSamples = 1e15;
constexpr int kMostParts = 10'000;
constexpr long long kBlock = 2880; // bytes
constexpr int kByteBits = 8;
constexpr long kColours = 3;

// A library built without support for threads is called by one at a time.
std::unique_lock<std::mutex> MyTurn() {
    static std::mutex mutex;
    return fits_is_reentrant() ? std::unique_lock<std::mutex>()
                               : std::unique_lock<std::mutex>(mutex);
}

// Headers are ASCII; what other bytes programs write is not known.
std::string Printable(std::string text) {
    for (char& c : text)
        if (c < ' ' || c > '~') c = '?';
    const auto first = text.find_first_not_of(' ');
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

} // namespace

std::string FitsFaultText(int status) {
    std::array<char, FLEN_STATUS> text{};
    fits_get_errstatus(status, text.data());
    fits_clear_errmsg();
    return std::string("The FITS file cannot be read: ") + text.data();
}

FitsHandle::FitsHandle(const std::string& path) : m_path(path), m_turn(MyTurn()) {
    fits_open_diskfile(&m_file, path.c_str(), READONLY, &status);
    struct stat facts {};
    const int number = NumberInName(path);
    if ((number < 0 ? ::stat(path.c_str(), &facts) : ::fstat(number, &facts)) == 0)
        m_bytes = facts.st_size;
    if (status == FILE_NOT_OPENED && number >= 0) OpenMapped(number);
}

// Where a process may open nothing. Each who reads has a place of his own in the same bytes.
void FitsHandle::OpenMapped(int file) {
    m_mappedBytes = std::size_t(m_bytes);
    m_mapped = ::mmap(nullptr, m_mappedBytes, PROT_READ, MAP_PRIVATE, file, 0);
    if (m_mapped == MAP_FAILED) return;
    status = 0;
    fits_clear_errmsg();
    fits_open_memfile(&m_file, "memory", READONLY, &m_mapped, &m_mappedBytes, 0, nullptr, &status);
}

FitsHandle::~FitsHandle() {
    int ignored = 0;
    if (m_file) fits_close_file(m_file, &ignored);
    fits_clear_errmsg();
    if (m_mapped != MAP_FAILED) ::munmap(m_mapped, m_mappedBytes);
}

// Three planes are the colours of one picture, and so are three samples a pixel in front of two
// sides; all other planes are pictures of their own.
std::optional<FitsHandle::Part> FitsHandle::PartHere(bool& empty) {
    int type = ANY_HDU;
    int count = 0;
    int bits = 0;
    std::array<long, kMostAxes> axes;
    axes.fill(1);
    fits_get_hdu_type(m_file, &type, &status);
    if (status != 0 || type != IMAGE_HDU) return std::nullopt;
    fits_get_img_param(m_file, kMostAxes, &bits, &count, axes.data(), &status);
    if (status != 0 || count < 2) return std::nullopt;
    const auto isSide = [](long axis) { return axis >= 1 && axis <= kLongestSide; };
    if (!std::all_of(axes.begin(), axes.end(), isSide)) {
        empty = true;
        return std::nullopt;
    }
    Part part;
    part.number = m_part;
    FitsPlace& first = part.first;
    first.part = m_part;
    first.interleaved =
        count >= 3 && axes[0] == kColours && axes[1] > kColours && axes[2] > kColours;
    if (first.interleaved) std::rotate(axes.begin(), axes.begin() + 1, axes.begin() + 3);
    first.header.bits = bits;
    first.header.width = int(axes[0]);
    first.header.height = int(axes[1]);
    first.header.planes = axes[2] == kColours ? int(kColours) : 1;
    part.pictures = axes[2] == kColours ? 1 : axes[2];
    // No more than could be counted in bytes.
    const double samples = double(axes[0]) * double(axes[1]) * first.header.planes;
    const long most = std::clamp(long(kMostSamples / samples), 1L, kMostPictures);
    part.pictures = std::min(part.pictures, most);
    for (std::size_t i = 3; i < axes.size(); ++i)
        part.pictures = axes[i] > most / part.pictures ? most : part.pictures * axes[i];
    return part;
}

void FitsHandle::MoveOn() {
    LONGLONG end = 0; // of this part, where the next one begins
    fits_get_hduaddrll(m_file, nullptr, nullptr, &end, &status);
    if (status == 0 && end >= m_bytes) status = END_OF_FILE;
    m_refused = status == 0 && !HasReadableCards(m_path, end);
    if (m_refused) status = BAD_INTKEY;
    fits_movrel_hdu(m_file, 1, nullptr, &status);
    ++m_part;
}

// What is broken behind the first picture hides no more than what stands there.
std::vector<FitsHandle::Part> FitsHandle::Parts(std::string& error) {
    std::vector<Part> parts;
    bool empty = false;
    while (status == 0 && m_part <= kMostParts) {
        if (const auto part = PartHere(empty)) parts.push_back(*part);
        MoveOn();
    }
    const bool atEnd = m_part > 1 && (status == END_OF_FILE || status == READ_ERROR);
    if (!parts.empty()) {
        status = 0;
        fits_clear_errmsg();
    } else if (m_refused) {
        error = "The FITS file cannot be read: a number in its header is wrong";
    } else if (empty) {
        error = "The picture has no pixels";
    } else {
        error = atEnd ? "There is no picture in the FITS file" : FitsFaultText(status);
    }
    return parts;
}

std::optional<FitsPlace> FitsHandle::FindPicture(int image, std::string& error) {
    if (status == 0 && !HasFewCards(m_path)) {
        error = "The FITS file cannot be read: its header has too many lines";
        return std::nullopt;
    }
    const std::vector<Part> parts = Parts(error);
    if (parts.empty()) return std::nullopt;
    FitsPlace found = parts.front().first;
    long before = 0;
    for (const Part& part : parts) {
        if (image >= before && image - before < part.pictures) {
            found = part.first;
            found.plane = image - before;
            found.header.image = image;
        }
        before = std::min(before + part.pictures, kMostPictures);
    }
    found.header.images = int(before);
    m_part = found.part;
    if (MoveTo(found.part)) return found;
    error = FitsFaultText(status);
    return std::nullopt;
}

const std::set<std::string, std::less<>>& FitsHandle::NamesHere() {
    int part = 1;
    fits_get_hdu_num(m_file, &part);
    const auto [found, isNew] = m_names.try_emplace(part);
    if (!isNew) return found->second;
    constexpr std::string_view kLong = "HIERARCH "; // in front of names longer than 8
    int count = 0;
    int fault = 0;
    fits_get_hdrspace(m_file, &count, nullptr, &fault);
    std::array<char, FLEN_CARD> bytes{};
    for (int i = 1; fault == 0 && i <= count; ++i) {
        if (fits_read_record(m_file, i, bytes.data(), &fault) != 0) break;
        std::string_view card(bytes.data());
        if (card.starts_with(kLong)) card.remove_prefix(kLong.size());
        found->second.insert(ToUpper(Printable(std::string(card.substr(0, card.find('='))))));
    }
    fits_clear_errmsg();
    return found->second;
}

std::string FitsHandle::WordHere(const char* name) {
    std::array<char, FLEN_VALUE> text{};
    int found = 0;
    if (fits_read_key(m_file, TSTRING, name, text.data(), nullptr, &found) == 0)
        return Printable(text.data());
    fits_clear_errmsg();
    return {};
}

std::string FitsHandle::Word(std::initializer_list<const char*> names) {
    for (const int part : {m_part, 1}) {
        if (!MoveTo(part)) return {};
        const auto& known = NamesHere();
        for (const char* name : names) {
            if (!known.contains(name)) continue;
            std::string word = WordHere(name);
            if (word.empty()) continue;
            MoveTo(m_part);
            return word;
        }
        if (m_part == 1) break;
    }
    MoveTo(m_part);
    return {};
}

double FitsHandle::Number(const char* name, double otherwise) {
    double value = 0;
    int found = 0;
    if (fits_read_key(m_file, TDOUBLE, name, &value, nullptr, &found) == 0) return value;
    fits_clear_errmsg();
    return otherwise;
}

// The library makes up what a file that is cut short does not have, and refuses a part of a block.
std::size_t FitsHandle::SamplesInFile(std::size_t all, int bits) {
    if (fits_is_compressed_image(m_file, &status)) return all;
    LONGLONG begin = 0;
    fits_get_hduaddrll(m_file, nullptr, &begin, nullptr, &status);
    const long long bytes = std::max(0LL, m_bytes / kBlock * kBlock - begin);
    return std::min(all, std::size_t(bytes) / std::size_t(std::abs(bits) / kByteBits));
}

} // namespace tarn
