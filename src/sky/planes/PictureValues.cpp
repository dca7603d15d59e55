#include "sky/planes/PictureValues.h"

#include "clips/SerFile.h"
#include "imaging/FormatOf.h"
#include "imaging/PictureLoader.h"
#include "imaging/SamplePlanes.h"
#include "platform/DecodeBudget.h"
#include "platform/OpenRegular.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tarn {

namespace {

constexpr char kEndsEarly[] = "The file ends too early";
constexpr double kFull = 65535;
constexpr std::size_t kStart = 16; // bytes that tell a clip

enum class Kind { Sky, Raw, Clip, Display };
enum class Colours { Mixed, Apart };

std::optional<Kind> KindOf(const std::string& path, std::string& error) {
    const FileHandle file = OpenRegular(path, error);
    if (!file) return std::nullopt;
    std::string start(kStart, '\0');
    start.resize(std::fread(start.data(), 1, start.size(), file.get()));
    if (IsSer(start)) return Kind::Clip;
    std::rewind(file.get());
    const PictureFormat& format = FormatOf(file.get());
    return &format == &kFitsFormat ? Kind::Sky : &format == &kRawFormat ? Kind::Raw : Kind::Display;
}

// Means over cells of two by two; a last odd row or column has none.
template <typename Sample>
bool TakeCells(const Sample* from, int width, int height, double zero, double scale,
               PictureValues& values) {
    values.width = width;
    values.height = height;
    if (width < 2 || height < 2) return false;
    ValuePlane& plane = values.plane;
    plane.width = width / 2;
    plane.height = height / 2;
    plane.cell = 2;
    values.floats.resize(plane.Samples());
    const auto quarter = float(scale / 4);
    float* to = values.floats.data();
    for (int y = 0; y < plane.height; ++y) {
        const Sample* upper = from + 2 * std::size_t(y) * std::size_t(width);
        const Sample* lower = upper + width;
        for (int x = 0; x < 2 * plane.width; x += 2)
            *to++ = float(zero) + quarter * (float(upper[x]) + float(upper[x + 1]) +
                                             float(lower[x]) + float(lower[x + 1]));
    }
    plane.floats = values.floats.data();
    return true;
}

// Of three samples a pixel, or of three planes, where the next colour is `apart` samples on.
template <typename Sample>
void TakeColours(const Sample* from, int width, int height, std::size_t step, std::size_t apart,
                 double zero, double scale, PictureValues& values) {
    ValuePlane& plane = values.plane;
    plane.width = width;
    plane.height = height;
    values.floats.resize(plane.Samples());
    const auto quarter = float(scale / 4);
    for (float& value : values.floats) {
        value = float(zero) +
                quarter * (float(from[0]) + 2 * float(from[apart]) + float(from[2 * apart]));
        from += step;
    }
    plane.floats = values.floats.data();
}

template <typename Sample>
bool TakeSamples(const Sample* from, double zero, double scale, PictureValues& values) {
    const FitsHeader& header = values.samples.header;
    if (header.mosaic) return TakeCells(from, header.width, header.height, zero, scale, values);
    if (header.planes == 3)
        TakeColours(from, header.width, header.height, 1, values.samples.PerPlane(), zero, scale,
                    values);
    return true;
}

// Packed files grow to about this.
long long SensorCost(const std::string& path) {
    constexpr long long kTimes = 3;
    return kTimes * PictureLoader::LookAt(path).bytes;
}

bool TakeOfSensor(const std::string& path, bool isRaw, Colours colours, PictureValues& values,
                  std::string& error) {
    const DecodeShare share(SensorCost(path));
    if (!share) return false;
    auto samples = ReadSamplePlanes(path, error);
    if (!samples) return false;
    if (samples->count < samples->All() && error.empty()) error = kEndsEarly;
    if (!error.empty()) return false;
    values.samples = std::move(*samples);
    const FitsSamples& read = values.samples;
    values.imageType = read.header.imageType;
    values.filter = read.header.filter;
    values.exposure = read.header.exposure;
    values.bottomUp = !read.header.topDown;
    ValuePlane& plane = values.plane;
    plane.width = read.header.width;
    plane.height = read.header.height;
    plane.words = read.words.get();
    plane.floats = read.floats.get();
    const double black = isRaw && read.range ? read.range->low : 0;
    plane.zero = read.zero - black;
    plane.scale = read.scale;
    if (isRaw && read.range)
        plane.white = read.range->high - black;
    else if (read.words) // of what can be stored
        plane.white = read.zero + read.scale * (read.header.bits == 8 ? 255 : kFull);
    if (colours == Colours::Apart) return true;
    const bool taken = read.words ? TakeSamples(read.words.get(), plane.zero, plane.scale, values)
                                  : TakeSamples(read.floats.get(), 0, 1, values);
    if (!taken) error = "The picture is too small";
    return taken;
}

std::array<int, 4> PatternOf(const SerHeader& header) {
    switch (header.color) {
    case SerHeader::Grbg:
        return {1, 0, 2, 1};
    case SerHeader::Gbrg:
        return {1, 2, 0, 1};
    case SerHeader::Bggr:
        return {2, 1, 1, 0};
    default:
        return {0, 1, 1, 2};
    }
}

bool TakeOfClip(const std::string& path, Colours colours, PictureValues& values,
                std::string& error) {
    SerFile clip;
    error = clip.Open(path);
    if (error.empty()) error = clip.ReadFrame(0, values.words);
    if (!error.empty()) return false;
    const SerHeader& header = clip.Header();
    ValuePlane& plane = values.plane;
    plane.white = kFull;
    plane.coarse = header.SampleBytes() == 1;
    if (header.IsBayer() && colours == Colours::Apart) {
        FitsHeader& mosaic = values.samples.header;
        mosaic.width = header.width;
        mosaic.height = header.height;
        mosaic.topDown = true;
        mosaic.mosaic = true;
        mosaic.pattern = PatternOf(header);
    } else if (header.IsBayer())
        return TakeCells(values.words.data(), header.width, header.height, 0, 1, values) ||
               (error = "The picture is too small", false);
    if (header.Samples() == 3) {
        TakeColours(values.words.data(), header.width, header.height, 3, 1, 0, 1, values);
        return true;
    }
    plane.width = header.width;
    plane.height = header.height;
    plane.words = values.words.data();
    return true;
}

// The light of each of the 256 values of a colour on the screen, 0 to 65535 times `part`.
std::array<float, 256> LightOf(float part) {
    std::array<float, 256> light{};
    for (std::size_t i = 0; i < light.size(); ++i) {
        const double value = double(i) / 255;
        const double linear =
            value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
        light[i] = float(kFull * linear) * part;
    }
    return light;
}

bool TakeOfDisplay(const std::string& path, PictureValues& values, std::string& error) {
    const auto source = PictureLoader::Open(path, error);
    if (!source) return false;
    const QImage picture = source->Decode({}, error);
    if (picture.isNull() && error.empty()) error = "Not a picture that can be read";
    if (!error.empty()) return false;
    static const std::array<float, 256> kQuarter = LightOf(0.25F);
    static const std::array<float, 256> kHalf = LightOf(0.5F);
    ValuePlane& plane = values.plane;
    plane.width = picture.width();
    plane.height = picture.height();
    plane.white = kFull;
    plane.coarse = true;
    values.words.resize(plane.Samples());
    std::uint16_t* to = values.words.data();
    for (int y = 0; y < plane.height; ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        for (int x = 0; x < plane.width; ++x)
            *to++ = std::uint16_t(kQuarter[std::size_t(qRed(row[x]))] +
                                  kHalf[std::size_t(qGreen(row[x]))] +
                                  kQuarter[std::size_t(qBlue(row[x]))] + 0.5F);
    }
    plane.words = values.words.data();
    return true;
}

std::optional<PictureValues> Read(const std::string& path, Colours colours, std::string& error) {
    const auto kind = KindOf(path, error);
    if (!kind) return std::nullopt;
    PictureValues values;
    const bool taken = *kind == Kind::Clip ? TakeOfClip(path, colours, values, error)
                       : *kind == Kind::Display
                           ? TakeOfDisplay(path, values, error)
                           : TakeOfSensor(path, *kind == Kind::Raw, colours, values, error);
    if (!taken) return std::nullopt;
    if (values.width == 0) { // each sample is a pixel
        values.width = values.plane.width;
        values.height = values.plane.height;
    }
    return values;
}

} // namespace

std::optional<PictureValues> ReadPictureValues(const std::string& path, std::string& error) {
    return Read(path, Colours::Mixed, error);
}

std::optional<PictureValues> ReadPictureColours(const std::string& path, std::string& error) {
    return Read(path, Colours::Apart, error);
}

} // namespace tarn
