#include "imaging/fits/SkyWire.h"

#include "decoder/Wire.h"
#include "platform/OpenRegular.h"

#include <algorithm>

namespace tarn {

namespace {

constexpr int kMostSide = 1 << 30;
constexpr std::uint32_t kMostWords = 200; // more than are read

constexpr std::string FitsHeader::*kTexts[] = {
    &FitsHeader::object,         &FitsHeader::date,        &FitsHeader::timeSystem,
    &FitsHeader::localDate,      &FitsHeader::exposure,    &FitsHeader::gain,
    &FitsHeader::temperature,    &FitsHeader::filter,      &FitsHeader::telescope,
    &FitsHeader::camera,         &FitsHeader::imageType,   &FitsHeader::offset,
    &FitsHeader::pedestal,       &FitsHeader::binningX,    &FitsHeader::binningY,
    &FitsHeader::focalLength,    &FitsHeader::focus,       &FitsHeader::airMass,
    &FitsHeader::rightAscension, &FitsHeader::declination, &FitsHeader::latitude,
    &FitsHeader::longitude};

constexpr int FitsHeader::*kNumbers[] = {&FitsHeader::image,  &FitsHeader::images,
                                         &FitsHeader::width,  &FitsHeader::height,
                                         &FitsHeader::planes, &FitsHeader::bits};

void Put(WireWriter& to, const FitsHeader& header) {
    for (const auto number : kNumbers) to.Put(header.*number);
    to.Put(header.topDown);
    to.Put(header.mosaic);
    for (const int color : header.pattern) to.Put(color);
    for (const auto text : kTexts) to.PutText(header.*text);
    to.Put(std::uint32_t(header.words.size()));
    for (const auto& [name, value] : header.words) {
        to.PutText(name);
        to.PutText(value);
    }
}

FitsHeader HeaderFrom(WireReader& from) {
    FitsHeader header;
    for (const auto number : kNumbers) header.*number = from.Get<int>();
    header.topDown = from.Get<std::uint8_t>() != 0;
    header.mosaic = from.Get<std::uint8_t>() != 0;
    for (int& color : header.pattern) color = from.Get<int>();
    for (const auto text : kTexts) header.*text = from.GetText();
    const auto words = std::min(from.Get<std::uint32_t>(), kMostWords);
    for (std::uint32_t i = 0; i < words; ++i) {
        std::string name = from.GetText();
        header.words[std::move(name)] = from.GetText();
    }
    return header;
}

bool CanBe(const FitsHeader& header) {
    constexpr int kBits[] = {8, 16, 32, 64, -32, -64};
    const auto isSide = [](int side) { return side >= 1 && side <= kMostSide; };
    const auto isColor = [](int color) { return color >= 0 && color <= 2; };
    return isSide(header.width) && isSide(header.height) &&
           (header.planes == 1 || header.planes == 3) && header.image >= 0 && header.images >= 1 &&
           std::find(std::begin(kBits), std::end(kBits), header.bits) != std::end(kBits) &&
           std::all_of(header.pattern.begin(), header.pattern.end(), isColor);
}

// Without its memory.
std::optional<FitsSamples> SamplesFrom(const std::string& bytes, bool& words) {
    WireReader from(bytes);
    FitsSamples samples;
    samples.header = HeaderFrom(from);
    words = from.Get<std::uint8_t>() != 0;
    samples.zero = from.Get<double>();
    samples.scale = from.Get<double>();
    const bool ranged = from.Get<std::uint8_t>() != 0;
    const double low = from.Get<double>();
    const double high = from.Get<double>();
    if (ranged) samples.range = ValueRange{low, high};
    samples.count = from.Get<std::uint64_t>();
    if (!from.IsRight() || !CanBe(samples.header) || samples.count > samples.All() ||
        (ranged && !(high > low)))
        return std::nullopt;
    return samples;
}

std::optional<DecoderAnswer> Ask(DecoderVerb verb, DecoderFormat format, const std::string& path,
                                 int image, const IsRight& isRight) {
    std::string error; // told by who reads it in this process then
    const OpenFile file(path, error);
    if (!file) return std::nullopt;
    DecoderRequest request;
    request.head.verb = verb;
    request.head.format = format;
    request.head.image = image;
    return AskDecoder(request, file.Number(), isRight);
}

} // namespace

std::string WireOf(const FitsHeader& header) {
    WireWriter to;
    Put(to, header);
    return to.Take();
}

std::string WireOf(const FitsSamples& samples) {
    WireWriter to;
    Put(to, samples.header);
    to.Put(samples.words != nullptr);
    to.Put(samples.zero);
    to.Put(samples.scale);
    to.Put(samples.range.has_value());
    const ValueRange range = samples.range.value_or(ValueRange());
    to.Put(range.low);
    to.Put(range.high);
    to.Put(std::uint64_t(samples.count));
    return to.Take();
}

bool IsSkyHeader(const DecoderAnswer& answer) {
    if (answer.bytes.empty()) return !answer.error.empty();
    WireReader from(answer.bytes);
    return CanBe(HeaderFrom(from)) && from.IsRight();
}

bool AreSkySamples(const DecoderAnswer& answer) {
    if (answer.bytes.empty()) return !answer.error.empty();
    bool words = false;
    const auto samples = SamplesFrom(answer.bytes, words);
    const std::size_t each = words ? sizeof(std::uint16_t) : sizeof(float);
    return samples && answer.memory.Size() / each >= samples->All();
}

std::optional<FitsHeader> SkyHeaderOf(const DecoderAnswer& answer) {
    if (answer.bytes.empty()) return std::nullopt;
    WireReader from(answer.bytes);
    return HeaderFrom(from);
}

std::optional<FitsSamples> TakeSkySamples(DecoderAnswer& answer) {
    bool words = false;
    auto samples = answer.bytes.empty() ? std::nullopt : SamplesFrom(answer.bytes, words);
    if (!samples) return samples;
    const FreeSamples whole{answer.memory.Size()};
    void* const bytes = answer.memory.Release();
    if (words)
        samples->words = {static_cast<std::uint16_t*>(bytes), whole};
    else
        samples->floats = {static_cast<float*>(bytes), whole};
    return samples;
}

bool AskForSkyHeader(DecoderFormat format, const std::string& path, int image,
                     std::optional<FitsHeader>& header, std::string& error) {
    const auto answer = Ask(DecoderVerb::SkyHeader, format, path, image, IsSkyHeader);
    if (!answer) return false;
    error = answer->error;
    header = SkyHeaderOf(*answer);
    return true;
}

bool AskForSkySamples(DecoderFormat format, const std::string& path, int image,
                      std::optional<FitsSamples>& samples, std::string& error) {
    auto answer = Ask(DecoderVerb::SkySamples, format, path, image, AreSkySamples);
    if (!answer) return false;
    error = answer->error;
    samples = TakeSkySamples(*answer);
    return true;
}

} // namespace tarn
