#include "imaging/xisf/XisfImage.h"

#include "common/numbers.h"
#include "common/text.h"
#include "common/utf8.h"
#include "imaging/fits/FitsWords.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <map>

#include <pugixml.hpp>

namespace tarn {

namespace {

constexpr std::ptrdiff_t kMostElements = 1'000'000; // of a header; each takes memory
constexpr std::uint64_t kLongestSide = 1U << 30;
constexpr std::uint64_t kMostChannels = 1U << 16;
constexpr std::uint64_t kMostBytes = std::uint64_t(1) << 46;
constexpr int kByteBits = 8;

// How many times smaller a codec can make what it packs.
constexpr std::uint64_t kMostOfZlib = 1032;
constexpr std::uint64_t kMostOfLz4 = 255;
constexpr std::uint64_t kMostOfZstd = 1U << 16;
constexpr std::uint64_t kSlack = 1U << 18; // for the least packed block

std::optional<std::uint64_t> WholeNumber(std::string_view text) {
    text = Trim(text);
    std::uint64_t number = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    if (text.empty() || result.ec != std::errc() || result.ptr != text.data() + text.size())
        return std::nullopt;
    return number;
}

std::optional<std::vector<std::uint64_t>> WholeNumbers(std::string_view text, char separator) {
    std::vector<std::uint64_t> numbers;
    for (const std::string& each : Split(text, separator)) {
        const auto number = WholeNumber(each);
        if (!number) return std::nullopt;
        numbers.push_back(*number);
    }
    return numbers;
}

// As a line of the panel can show it.
std::string Shown(std::string_view written) {
    std::string text(Trim(written));
    const bool utf8 = IsUtf8(text);
    for (char& c : text)
        if ((c >= 0 && c < ' ') || c == '\x7F' || (c < 0 && !utf8)) c = '?';
    return text;
}

// "'O''Hara 80 '" is O'Hara 80.
std::string WithoutQuotes(std::string_view written) {
    std::string_view value = Trim(written);
    if (!value.starts_with('\'')) return Shown(value);
    std::string text;
    for (std::size_t i = 1; i < value.size(); ++i) {
        if (value[i] == '\'' && (i + 1 == value.size() || value[i + 1] != '\'')) break;
        if (value[i] == '\'') ++i;
        text += value[i];
    }
    return Shown(text);
}

// What the format's own properties say under other names than FITS words.
struct Synonym {
    const char* property;
    const char* word;
    double factor = 1;
};
constexpr Synonym kSynonyms[] = {
    {"Observation:Object:Name", "OBJECT"},
    {"Observation:Time:Start", "DATE-OBS"},
    {"Observation:Center:RA", "RA"},
    {"Observation:CelestialReferenceSystem", "RADESYS"},
    {"Observation:Equinox", "EQUINOX"},
    {"Observation:Center:Dec", "DEC"},
    {"Observation:Location:Latitude", "SITELAT"},
    {"Observation:Location:Longitude", "SITELONG"},
    {"Observation:Location:Elevation", "SITEELEV"},
    {"Instrument:ExposureTime", "EXPTIME"},
    {"Instrument:Camera:Name", "INSTRUME"},
    {"Instrument:Camera:Gain", "GAIN"},
    {"Instrument:Camera:ISOSpeed", "ISOSPEED"},
    {"Instrument:Camera:XBinning", "XBINNING"},
    {"Instrument:Camera:YBinning", "YBINNING"},
    {"Instrument:Sensor:Temperature", "CCD-TEMP"},
    {"Instrument:Sensor:TargetTemperature", "SET-TEMP"},
    {"Instrument:Filter:Name", "FILTER"},
    {"Instrument:Focuser:Position", "FOCUSPOS"},
    {"Instrument:Telescope:Name", "TELESCOP"},
    {"Instrument:Telescope:FocalLength", "FOCALLEN", 1000}, // of metres
};

using Words = std::map<std::string, std::string, std::less<>>;

// Numbers and texts; what stands in a block of its own says nothing to a person.
std::string ValueOf(const pugi::xml_node& property, double factor) {
    if (property.attribute("location")) return {};
    const pugi::xml_attribute value = property.attribute("value");
    std::string text = Shown(value ? value.value() : property.text().get());
    const auto number = factor == 1 ? std::optional<double>() : ParseNumber(text);
    return number ? ShortestSingle(float(*number * factor)) : text;
}

Words WordsOf(const pugi::xml_node& image) {
    Words words;
    const auto add = [&](const std::string& name, const std::string& value) {
        if (!value.empty()) words.try_emplace(name, value);
    };
    for (const pugi::xml_node& keyword : image.children("FITSKeyword"))
        add(ToUpper(keyword.attribute("name").value()),
            WithoutQuotes(keyword.attribute("value").value()));
    for (const pugi::xml_node& unit : {image, image.parent()})
        for (const pugi::xml_node& property : unit.children("Property"))
            for (const Synonym& each : kSynonyms)
                if (std::strcmp(property.attribute("id").value(), each.property) == 0)
                    add(each.word, ValueOf(property, each.factor));
    add("IMAGETYP", Shown(image.attribute("imageType").value()));
    add("PEDESTAL", Shown(image.attribute("offset").value()));
    return words;
}

std::string TakeGeometry(const pugi::xml_node& image, XisfImage& to) {
    const auto sizes = WholeNumbers(image.attribute("geometry").value(), ':');
    if (!sizes || sizes->size() < 2) return "its geometry is no list of sizes";
    if (sizes->size() != 3) return "it is not of two dimensions";
    const auto [width, height, channels] = std::array{(*sizes)[0], (*sizes)[1], (*sizes)[2]};
    if (width == 0 || height == 0 || channels == 0) return "it has no pixels";
    if (width > kLongestSide || height > kLongestSide || channels > kMostChannels)
        return "it is too large";
    to.header.width = int(width);
    to.header.height = int(height);
    to.channels = int(channels);
    return {};
}

std::string TakeKind(const pugi::xml_node& image, XisfImage& to) {
    static constexpr std::pair<std::string_view, int> kFormats[] = {
        {"UInt8", 8},   {"UInt16", 16},   {"UInt32", 32},
        {"UInt64", 64}, {"Float32", -32}, {"Float64", -64}};
    const std::string_view format = image.attribute("sampleFormat").value();
    if (format.starts_with("Complex")) return "its samples are complex numbers";
    const auto* found = std::find_if(std::begin(kFormats), std::end(kFormats),
                                     [&](const auto& each) { return each.first == format; });
    if (found == std::end(kFormats)) return "its samples are of an unknown format";
    to.header.bits = found->second;
    const std::string_view space = image.attribute("colorSpace").as_string("Gray");
    if (space != "Gray" && space != "RGB") return "its color space is unknown";
    if (space == "RGB" && to.channels < 3) return "it has too few channels";
    to.header.planes = space == "RGB" ? 3 : 1;
    const std::string_view storage = image.attribute("pixelStorage").as_string("Planar");
    if (storage != "Planar" && storage != "Normal") return "its pixel storage is unknown";
    to.interleaved = storage == "Normal";
    return {};
}

// Black and white: what the file says, else what whole numbers can hold.
void TakeRange(const pugi::xml_node& image, XisfImage& to) {
    const auto bounds = Split(image.attribute("bounds").value(), ':');
    if (to.header.bits > 0) to.range = ValueRange{0, std::ldexp(1.0, to.header.bits) - 1};
    if (bounds.size() != 2) return;
    const auto low = ParseNumber(bounds[0]);
    const auto high = ParseNumber(bounds[1]);
    if (low && high && *low < *high && std::isfinite(*high - *low))
        to.range = ValueRange{*low, *high};
}

std::string TakePacking(std::string_view packing, std::string_view pieces, XisfBlock& to) {
    if (packing.empty()) return {};
    static constexpr std::pair<std::string_view, XisfCodec> kCodecs[] = {{"zlib", XisfCodec::Zlib},
                                                                         {"lz4", XisfCodec::Lz4},
                                                                         {"lz4hc", XisfCodec::Lz4},
                                                                         {"zstd", XisfCodec::Zstd}};
    const auto parts = Split(packing, ':');
    const std::string_view name = parts[0];
    const bool shuffled = name.ends_with("+sh");
    const std::string_view codec = name.substr(0, name.size() - (shuffled ? 3 : 0));
    const auto* found = std::find_if(std::begin(kCodecs), std::end(kCodecs),
                                     [&](const auto& each) { return each.first == codec; });
    if (found == std::end(kCodecs)) return "is packed in an unknown way";
    to.codec = found->second;
    const auto unpacked = parts.size() > 1 ? WholeNumber(parts[1]) : std::nullopt;
    const std::uint64_t item = parts.size() > 2 ? WholeNumber(parts[2]).value_or(0) : 0;
    if (!unpacked || (shuffled && (item < 1 || item > *unpacked)))
        return "does not say how it is packed";
    to.unpacked = *unpacked;
    to.shuffled = shuffled ? std::size_t(item) : 0;
    if (pieces.empty()) return {};
    for (const std::string& piece : Split(pieces, ':')) {
        const auto sizes = WholeNumbers(piece, ',');
        if (!sizes || sizes->size() != 2) return "does not say how it is packed";
        to.pieces.push_back({(*sizes)[0], (*sizes)[1]});
    }
    return {};
}

void TakeDigest(std::string_view checksum, XisfBlock& to) {
    static constexpr std::pair<std::string_view, const char*> kDigests[] = {
        {"sha-1", "SHA-1"},       {"sha1", "SHA-1"},       {"sha-256", "SHA-256"},
        {"sha256", "SHA-256"},    {"sha-512", "SHA-512"},  {"sha512", "SHA-512"},
        {"sha3-256", "SHA3-256"}, {"sha3-512", "SHA3-512"}};
    for (const auto& [written, name] : kDigests) {
        if (!checksum.starts_with(std::string(written) + ":")) continue;
        to.digest = name;
        to.expected = ToUpper(checksum.substr(written.size() + 1));
    }
}

std::string TakeBlock(const pugi::xml_node& image, XisfImage& to) {
    const pugi::xml_node data = image.child("Data");
    const auto attribute = [&](const char* name) {
        const pugi::xml_attribute own = data.attribute(name);
        return own ? own.value() : image.attribute(name).value();
    };
    const auto location = Split(image.attribute("location").value(), ':');
    XisfBlock& block = to.block;
    if (location[0] == "attachment" && location.size() == 3) {
        const auto offset = WholeNumber(location[1]);
        const auto size = WholeNumber(location[2]);
        if (!offset || !size) return "has no place in the file";
        block.offset = *offset;
        block.size = *size;
    } else if (location[0] == "inline" && location.size() == 2) {
        block.encoding = location[1];
        block.text = image.text().get();
    } else if (location[0] == "embedded") {
        block.encoding = data.attribute("encoding").as_string("base64");
        block.text = data.text().get();
    } else {
        return "lies outside of the file";
    }
    if (!block.encoding.empty() && block.encoding != "base64" && block.encoding != "hex")
        return "is written in an unknown way";
    to.highFirst = std::strcmp(attribute("byteOrder"), "big") == 0;
    TakeDigest(attribute("checksum"), block);
    return TakePacking(attribute("compression"), attribute("subblocks"), block);
}

// Nothing is reserved for what such a file cannot hold.
std::string Weigh(const XisfImage& image, std::uint64_t fileBytes) {
    const XisfBlock& block = image.block;
    const std::uint64_t held = block.encoding.empty() ? block.size : block.text.size();
    const std::uint64_t wanted = image.Bytes();
    if (block.codec == XisfCodec::None)
        return held < wanted ? "is smaller than its picture" : std::string();
    if (block.unpacked != wanted) return "is not of the size of its picture";
    const std::uint64_t most = block.codec == XisfCodec::Zlib  ? kMostOfZlib
                               : block.codec == XisfCodec::Lz4 ? kMostOfLz4
                                                               : kMostOfZstd;
    const std::uint64_t there = std::min(held, fileBytes);
    return wanted > kSlack && (wanted - kSlack) / most > there ? "is smaller than its picture"
                                                               : std::string();
}

std::string Parse(const pugi::xml_node& image, std::uint64_t fileBytes, XisfImage& to) {
    const std::string name = "image " + std::to_string(to.header.image + 1);
    to.block.name = "block of " + name;
    std::string fault = TakeGeometry(image, to);
    if (fault.empty()) fault = TakeKind(image, to);
    if (fault.empty() && to.Bytes() > kMostBytes) fault = "it is too large";
    if (!fault.empty()) return name + ": " + fault;
    TakeRange(image, to);
    fault = TakeBlock(image, to);
    if (fault.empty()) fault = Weigh(to, fileBytes);
    if (!fault.empty()) return to.block.name + " " + fault;
    const Words words = WordsOf(image);
    TakeWords(to.header, [&](std::initializer_list<const char*> names) {
        for (const char* each : names)
            if (const auto found = words.find(each); found != words.end()) return found->second;
        return std::string();
    });
    const pugi::xml_node filters = image.child("ColorFilterArray");
    TakePattern(to.header, filters.attribute("pattern").value(), 0, 0);
    to.header.topDown = true;
    to.turn = XisfTurnOf(Trim(image.attribute("orientation").value()));
    TurnHeader(to.header, to.turn);
    return {};
}

} // namespace

std::uint64_t XisfImage::Bytes() const {
    const std::uint64_t pixels = std::uint64_t(header.width) * std::uint64_t(header.height);
    const std::uint64_t each =
        std::uint64_t(channels) * std::uint64_t(std::abs(header.bits)) / kByteBits;
    return pixels > kMostBytes / each ? std::numeric_limits<std::uint64_t>::max() : pixels * each;
}

std::optional<XisfImage> ParseXisfImage(std::string& header, int image, std::uint64_t fileBytes,
                                        std::string& error) {
    if (std::count(header.begin(), header.end(), '<') > kMostElements) {
        error = "its header has too many elements";
        return std::nullopt;
    }
    pugi::xml_document document;
    const auto parsed = document.load_buffer_inplace(header.data(), header.size(),
                                                     pugi::parse_default, pugi::encoding_utf8);
    if (!parsed) {
        error = "its header is broken at byte " + std::to_string(parsed.offset);
        return std::nullopt;
    }
    const auto images = document.child("xisf").children("Image");
    const auto count = std::distance(images.begin(), images.end());
    if (count == 0) {
        error = "there is no picture in it";
        return std::nullopt;
    }
    XisfImage found;
    found.header.image = image < count ? image : 0;
    found.header.images = int(count);
    error = Parse(*std::next(images.begin(), found.header.image), fileBytes, found);
    if (!error.empty()) return std::nullopt;
    return found;
}

} // namespace tarn
