#include "imaging/fits/KeptCards.h"

#include "platform/OpenRegular.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <optional>

namespace tarn {

namespace {

constexpr std::size_t kCard = 80;
constexpr long long kBlock = 2880;
constexpr std::size_t kMostCards = 4000; // of a header
constexpr int kMostParts = 100;

// What a sum has of its reference.
constexpr std::string_view kWords[] = {
    "OBJECT",   "OBJNAME",  "RA",       "DEC",      "OBJCTRA",  "OBJCTDEC", "EQUINOX",
    "RADESYS",  "RADECSYS", "EPOCH",    "WCSAXES",  "LONPOLE",  "LATPOLE",  "SCALE",
    "PIXSCALE", "SECPIX",   "SITELAT",  "SITELONG", "SITEELEV", "LAT-OBS",  "LONG-OBS",
    "ALT-OBS",  "OBSERVER", "TELESCOP", "INSTRUME", "CAMERA",   "FILTER",   "FILTER1",
    "FOCALLEN", "APTDIA",   "APERTURE", "XPIXSZ",   "YPIXSZ",   "PIXSIZE1", "PIXSIZE2",
    "XBINNING", "YBINNING", "GAIN",     "ISOSPEED", "OFFSET",   "CCD-TEMP", "SET-TEMP",
    "ROWORDER", "ROTATANG", "OBJCTROT", "IMAGETYP", "FRAME",    "EXPTIME",  "EXPOSURE"};

// With numbers behind them, or the order of a polynomial.
constexpr std::string_view kNumbered[] = {"CTYPE", "CRVAL", "CRPIX", "CUNIT",  "CDELT",
                                          "CROTA", "CD",    "PC",    "PV",     "A_",
                                          "B_",    "AP_",   "BP_",   "OBSGEO-"};

bool IsNumber(std::string_view rest) {
    return !rest.empty() && (rest.find_first_not_of("0123456789_") == std::string_view::npos ||
                             rest == "ORDER" || rest == "X" || rest == "Y" || rest == "Z");
}

bool IsKept(std::string_view card) {
    if (card.substr(8, 2) != "= ") return false;
    std::string_view name = card.substr(0, 8);
    name = name.substr(0, name.find(' '));
    return std::find(std::begin(kWords), std::end(kWords), name) != std::end(kWords) ||
           std::any_of(std::begin(kNumbered), std::end(kNumbered), [&](std::string_view start) {
               return name.starts_with(start) && IsNumber(name.substr(start.size()));
           });
}

std::string_view NameOf(std::string_view card) {
    return card.substr(0, 8);
}

// One header of a file: its lines, and what is behind it.
class Part {
public:
    // None where no header begins.
    static std::optional<Part> Read(std::FILE* file, bool isFirst) {
        Part part;
        const std::string_view start = isFirst ? "SIMPLE  =" : "XTENSION=";
        std::array<char, kCard> bytes{};
        for (std::size_t i = 0; i < kMostCards; ++i) {
            if (std::fread(bytes.data(), 1, kCard, file) != kCard) return std::nullopt;
            const std::string_view card(bytes.data(), kCard);
            if (i == 0 && !card.starts_with(start)) return std::nullopt;
            if (card.starts_with("END     ")) return part;
            part.cards.emplace_back(card);
        }
        return std::nullopt;
    }

    long long NumberOf(const std::string& name, long long other) const {
        for (const std::string& card : cards)
            if (card.starts_with(name + std::string(8 - name.size(), ' ') + "="))
                return std::atoll(card.c_str() + 10);
        return other;
    }

    // Three planes are colours, others pictures of their own.
    long long Pictures() const {
        if (cards.front().starts_with("XTENSION") && !cards.front().starts_with("XTENSION= 'IMAGE"))
            return 0;
        const long long axes = NumberOf("NAXIS", 0);
        if (axes < 2 || NumberOf("NAXIS1", 0) <= 0 || NumberOf("NAXIS2", 0) <= 0) return 0;
        long long pictures = 1;
        for (long long axis = 3; axis <= std::min(axes, 9LL); ++axis) {
            const long long count = NumberOf("NAXIS" + std::to_string(axis), 1);
            if (axis > 3 || count != 3) pictures *= std::clamp(count, 1LL, 100'000LL);
        }
        return pictures;
    }

    // Samples behind it; below 0 where the numbers are no file's.
    double Bytes() const {
        const long long axes = NumberOf("NAXIS", 0);
        double samples = axes > 0 ? 1 : 0;
        for (long long axis = 1; axis <= std::min(axes, 99LL); ++axis)
            samples *= double(NumberOf("NAXIS" + std::to_string(axis), 0));
        return double(std::llabs(NumberOf("BITPIX", 8)) / 8) * double(NumberOf("GCOUNT", 1)) *
               (double(NumberOf("PCOUNT", 0)) + samples);
    }

    std::vector<std::string> cards;
};

// To the next multiple of a block, so many bytes on.
bool MoveOn(std::FILE* file, double bytes) {
    constexpr double kMost = 1e15;
    if (!(bytes >= 0 && bytes < kMost)) return false;
    const auto blocks = [](long long count) { return (count + kBlock - 1) / kBlock * kBlock; };
    const long long begin = blocks(::ftello(file));
    return ::fseeko(file, begin + blocks(static_cast<long long>(bytes)), SEEK_SET) == 0;
}

void TakeKept(const Part& part, std::vector<std::string>& kept) {
    std::vector<std::string> taken;
    for (const std::string& card : part.cards)
        if (IsKept(card)) taken.push_back(card);
    for (const std::string& card : kept)
        if (std::none_of(taken.begin(), taken.end(),
                         [&](const std::string& other) { return NameOf(other) == NameOf(card); }))
            taken.push_back(card);
    kept = std::move(taken);
}

} // namespace

std::vector<std::string> CardsOfFrame(const std::string& path, int image) {
    std::vector<std::string> kept;
    std::string error;
    const FileHandle file = OpenRegular(path, error);
    long long before = 0;
    for (int i = 0; file && i < kMostParts; ++i) {
        const auto part = Part::Read(file.get(), i == 0);
        if (!part) break;
        const long long pictures = part->Pictures();
        const bool isIt = image >= before && image < before + pictures;
        if (i == 0 || isIt) TakeKept(*part, kept);
        before += pictures;
        if (isIt || !MoveOn(file.get(), part->Bytes())) break;
    }
    return kept;
}

bool IsSumOfFrames(const std::string& path) {
    std::string error;
    const FileHandle file = OpenRegular(path, error);
    const auto first = file ? Part::Read(file.get(), true) : std::nullopt;
    if (!first) return false;
    const auto has = [&](const std::string& start) {
        return std::any_of(first->cards.begin(), first->cards.end(),
                           [&](const std::string& card) { return card.starts_with(start); });
    };
    return has("NCOMBINE=") && has("CREATOR = '" + std::string(kCreator) + "'");
}

} // namespace tarn
