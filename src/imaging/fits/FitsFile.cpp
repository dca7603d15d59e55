#include "imaging/fits/FitsFile.h"

#include "imaging/fits/FitsCards.h"
#include "imaging/fits/TwoThreads.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <mutex>
#include <new>
#include <vector>

#include <sys/stat.h>

#include <fitsio.h>

namespace tarn {

namespace {

constexpr int kMostAxes = 3; // what is behind the third is left out
constexpr long kLongestSide = 1L << 30;
constexpr std::size_t kChunk = std::size_t(1) << 20; // samples a call
constexpr long long kBlock = 2880;                   // bytes
constexpr int kByteBits = 8;
constexpr int kWordBits = 16;
constexpr int kMostByte = 255;
constexpr int kMostWord = 65535;
constexpr int kSignBit = 0x8000;
constexpr const char* kCutShort = "The file ends too early";

// A library built without support for threads is called by one at a time.
std::unique_lock<std::mutex> MyTurn() {
    static std::mutex mutex;
    return fits_is_reentrant() ? std::unique_lock<std::mutex>()
                               : std::unique_lock<std::mutex>(mutex);
}

std::string TextOf(int status) {
    std::array<char, FLEN_STATUS> text{};
    fits_get_errstatus(status, text.data());
    fits_clear_errmsg();
    return std::string("The FITS file cannot be read: ") + text.data();
}

// Headers are ASCII; what other bytes programs write is not known.
std::string Printable(std::string text) {
    for (char& c : text)
        if (c < ' ' || c > '~') c = '?';
    const auto first = text.find_first_not_of(' ');
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

class Handle {
public:
    explicit Handle(const std::string& path) : m_path(path) {
        fits_open_diskfile(&m_file, path.c_str(), READONLY, &status);
        struct stat facts {};
        if (::stat(path.c_str(), &facts) == 0) m_bytes = facts.st_size;
    }
    ~Handle() {
        int ignored = 0;
        if (m_file) fits_close_file(m_file, &ignored);
        fits_clear_errmsg();
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    bool FindPicture(std::string& error);
    FitsHeader Header();
    bool MoveTo(int part) { return fits_movabs_hdu(m_file, part, nullptr, &status) == 0; }
    std::string Word(std::initializer_list<const char*> names);
    bool Has(const char* name);
    double Number(const char* name, double otherwise);
    std::size_t SamplesInFile(std::size_t all, int bits);

    operator fitsfile*() { return m_file; }
    int Part() const { return m_part; }

    int status = 0; // of the library; 0 while all is well

private:
    bool IsPicture(bool& empty);
    void MoveOn();
    std::string WordHere(const char* name);

    const std::string& m_path;
    bool m_refused = false; // by a look at its cards
    std::unique_lock<std::mutex> m_turn = MyTurn();
    fitsfile* m_file = nullptr;
    long long m_bytes = 0;
    int m_part = 1; // of the file, in which the picture is
    std::array<long, kMostAxes> m_axes{1, 1, 1};
    int m_bits = kWordBits;
};

bool Handle::IsPicture(bool& empty) {
    int type = ANY_HDU;
    int axes = 0;
    m_axes = {1, 1, 1};
    fits_get_hdu_type(m_file, &type, &status);
    if (status != 0 || type != IMAGE_HDU) return false;
    fits_get_img_param(m_file, kMostAxes, &m_bits, &axes, m_axes.data(), &status);
    if (status != 0 || axes < 2) return false;
    const auto isSide = [](long axis) { return axis >= 1 && axis <= kLongestSide; };
    if (std::all_of(m_axes.begin(), m_axes.end(), isSide)) return true;
    empty = true;
    return false;
}

void Handle::MoveOn() {
    LONGLONG end = 0; // of this part, where the next one begins
    fits_get_hduaddrll(m_file, nullptr, nullptr, &end, &status);
    m_refused = status == 0 && !HasReadableCards(m_path, end);
    if (m_refused) status = BAD_INTKEY;
    fits_movrel_hdu(m_file, 1, nullptr, &status);
}

bool Handle::FindPicture(std::string& error) {
    bool empty = false;
    while (status == 0) {
        if (IsPicture(empty)) return true;
        MoveOn();
        ++m_part;
    }
    const bool atEnd = m_part > 1 && (status == END_OF_FILE || status == READ_ERROR);
    if (m_refused)
        error = "The FITS file cannot be read: a number in its header is wrong";
    else if (empty)
        error = "The picture has no pixels";
    else
        error = atEnd ? "There is no picture in the FITS file" : TextOf(status);
    return false;
}

std::string Handle::WordHere(const char* name) {
    std::array<char, FLEN_VALUE> text{};
    int found = 0;
    if (fits_read_key(m_file, TSTRING, name, text.data(), nullptr, &found) == 0)
        return Printable(text.data());
    fits_clear_errmsg();
    return {};
}

// Of a picture that is not the first part of its file, some words stand in front of the file.
std::string Handle::Word(std::initializer_list<const char*> names) {
    for (const int part : {m_part, 1}) {
        if (!MoveTo(part)) return {};
        for (const char* name : names) {
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

bool Handle::Has(const char* name) {
    return !WordHere(name).empty();
}

double Handle::Number(const char* name, double otherwise) {
    double value = 0;
    int found = 0;
    if (fits_read_key(m_file, TDOUBLE, name, &value, nullptr, &found) == 0) return value;
    fits_clear_errmsg();
    return otherwise;
}

// Places of the letters in "RGB", moved by the offsets; false for a pattern of another kind.
bool TakePattern(const std::string& letters, int right, int down, std::array<int, 4>& pattern) {
    if (letters.size() != pattern.size()) return false;
    std::array<int, 3> seen{};
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const std::size_t x = (i % 2 + std::size_t(right & 1)) % 2;
        const std::size_t y = (i / 2 + std::size_t(down & 1)) % 2;
        const auto colour = std::string_view("RGB").find(letters[y * 2 + x]);
        if (colour == std::string_view::npos) return false;
        pattern[i] = int(colour);
        ++seen[colour];
    }
    return seen == std::array<int, 3>{1, 2, 1};
}

FitsHeader Handle::Header() {
    FitsHeader header;
    header.width = int(m_axes[0]);
    header.height = int(m_axes[1]);
    header.planes = m_axes[2] == 3 ? 3 : 1;
    header.bits = m_bits;
    header.object = Word({"OBJECT"});
    header.date = Word({"DATE-OBS", "DATE-BEG"});
    header.timeSystem = Word({"TIMESYS"});
    header.exposure = Word({"EXPTIME", "EXPOSURE"});
    header.gain = Word({"GAIN", "ISOSPEED"});
    header.temperature = Word({"CCD-TEMP", "DET-TEMP", "SET-TEMP"});
    header.filter = Word({"FILTER", "FILTER1"});
    header.telescope = Word({"TELESCOP"});
    header.camera = Word({"INSTRUME", "CAMERA"});
    std::string order = Word({"ROWORDER"});
    for (char& c : order)
        if (c >= 'a' && c <= 'z') c = char(c - 'a' + 'A');
    header.topDown = order == "TOP-DOWN";
    const int right = std::atoi(Word({"XBAYROFF"}).c_str());
    const int down = std::atoi(Word({"YBAYROFF"}).c_str());
    header.mosaic = header.planes == 1 && header.width > 1 && header.height > 1 &&
                    TakePattern(Word({"BAYERPAT", "COLORTYP"}), right, down, header.pattern);
    return header;
}

// The library makes up what a file that is cut short does not have, and refuses a part of a block.
std::size_t Handle::SamplesInFile(std::size_t all, int bits) {
    if (fits_is_compressed_image(m_file, &status)) return all;
    LONGLONG begin = 0;
    fits_get_hduaddrll(m_file, nullptr, &begin, nullptr, &status);
    const long long bytes = std::max(0LL, m_bytes / kBlock * kBlock - begin);
    return std::min(all, std::size_t(bytes) / std::size_t(std::abs(bits) / kByteBits));
}

template <typename Sample> std::unique_ptr<Sample[]> Room(std::size_t count) {
    return std::unique_ptr<Sample[]>(new (std::nothrow) Sample[count]);
}

// How the samples lie in the file, found once and used by both threads.
struct Reading {
    const std::string& path;
    int part;
    bool blanks; // some values mean that there is none
    FitsSamples& to;

    int Read(Handle& file, std::size_t first, std::size_t count) const;
    std::size_t ReadPart(std::size_t begin, std::size_t end, std::string& error) const;
};

int Reading::Read(Handle& file, std::size_t first, std::size_t count) const {
    const auto at = static_cast<LONGLONG>(first) + 1;
    const auto length = static_cast<LONGLONG>(count);
    int anyBlank = 0; // the library writes it without looking
    if (to.floats) {
        float none = std::numeric_limits<float>::quiet_NaN();
        const bool whole = to.header.bits > 0 && blanks;
        return fits_read_img(file, TFLOAT, at, length, whole ? &none : nullptr,
                             to.floats.get() + first, &anyBlank, &file.status);
    }
    std::uint16_t* words = to.words.get() + first;
    fits_set_bscale(file, 1, 0, &file.status); // as stored; the scale is applied by who looks
    if (to.header.bits == kByteBits) {
        std::vector<unsigned char> bytes(count);
        fits_read_img(file, TBYTE, at, length, nullptr, bytes.data(), &anyBlank, &file.status);
        std::copy(bytes.begin(), bytes.end(), words);
    } else {
        fits_read_img(file, TSHORT, at, length, nullptr, words, &anyBlank, &file.status);
        std::for_each(words, words + count, [](std::uint16_t& word) { word ^= kSignBit; });
    }
    return file.status;
}

// How many from `begin` on could be read.
std::size_t Reading::ReadPart(std::size_t begin, std::size_t end, std::string& error) const {
    Handle file(path);
    if (file.status == 0) file.MoveTo(part);
    std::size_t at = begin;
    while (file.status == 0 && at < end) {
        const std::size_t count = std::min(kChunk, end - at);
        if (Read(file, at, count) == 0) at += count;
    }
    if (file.status != 0) error = TextOf(file.status);
    return at - begin;
}

bool MakeRoom(FitsSamples& samples, bool blanks) {
    const bool words =
        !blanks && (samples.header.bits == kByteBits || samples.header.bits == kWordBits);
    if (words)
        samples.words = Room<std::uint16_t>(samples.All());
    else
        samples.floats = Room<float>(samples.All());
    return samples.words || samples.floats;
}

void TakeScale(Handle& file, FitsSamples& samples) {
    const double zero = file.Number("BZERO", 0);
    samples.scale = file.Number("BSCALE", 1);
    const bool word = samples.header.bits == kWordBits;
    samples.zero = word ? zero - samples.scale * kSignBit : zero;
    if (samples.scale == 1 && samples.zero == 0) samples.most = word ? kMostWord : kMostByte;
}

} // namespace

std::optional<FitsHeader> ReadFitsHeader(const std::string& path, std::string& error) {
    Handle file(path);
    if (!file.FindPicture(error)) return std::nullopt;
    return file.Header();
}

std::optional<FitsSamples> ReadFitsSamples(const std::string& path, std::string& error) {
    FitsSamples samples;
    Reading reading{path, 1, false, samples};
    std::size_t there = 0;
    {
        Handle file(path);
        if (!file.FindPicture(error)) return std::nullopt;
        samples.header = file.Header();
        reading.part = file.Part();
        reading.blanks = file.Has("BLANK") || file.Has("ZBLANK");
        there = file.SamplesInFile(samples.All(), samples.header.bits);
        if (there == 0)
            error = kCutShort;
        else if (!MakeRoom(samples, reading.blanks))
            error = "Not enough memory";
        if (!error.empty()) return std::nullopt;
        if (samples.words) TakeScale(file, samples);
    }
    std::array<std::size_t, 2> read{};
    std::array<std::string, 2> errors;
    const std::size_t middle = there / 2;
    InTwoThreads(there, [&](std::size_t begin, std::size_t end) {
        const std::size_t half = begin == 0 ? 0 : 1;
        read[half] = reading.ReadPart(begin, end, errors[half]);
    });
    samples.count = read[0] == middle || read[1] == 0 ? read[0] + read[1] : read[0];
    error = errors[0].empty() ? errors[1] : errors[0];
    if (error.empty() && there < samples.All()) error = kCutShort;
    if (samples.count == 0) return std::nullopt;
    return samples;
}

} // namespace tarn
