#include "console/decoders/ClipFiles.h"

#include "clips/ClipFrames.h"
#include "common/paths.h"
#include "console/decoders/OpenHistory.h"
#include "history/Changes.h"
#include "imaging/fits/FitsWriter.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <map>

namespace tarn {

namespace {

constexpr std::size_t kBlock = 2880;
constexpr const char* kNotReached = "the clip ends before it";

struct Shift {
    int x = 0;
    int y = 0;
};

// Where a frame goes so that its light stands where that of the first does. The squares of a Bayer
// pattern stay what they are.
Shift ShiftOf(const RatedFrame& frame, const RatedFrame& first, bool isBayer) {
    const double step = isBayer ? 2 : 1;
    const auto whole = [step](double by) { return int(step * std::lround(by / step)); };
    return {whole(first.x - frame.x), whole(first.y - frame.y)};
}

unsigned SampleOf(const ClipImage& image, std::size_t at) {
    const std::vector<std::uint8_t>& bytes = *image.bytes;
    if (image.bits <= 8) return bytes[at];
    const unsigned first = bytes[2 * at];
    const unsigned second = bytes[2 * at + 1];
    return image.highByteFirst ? first << 8U | second : second << 8U | first;
}

// Two bytes a sample, the high one first, 32768 less; what no sample falls on is black.
void AppendPlane(const ClipImage& image, int plane, Shift shift, std::string& bytes) {
    for (int y = 0; y < image.height; ++y)
        for (int x = 0; x < image.width; ++x) {
            const int fromX = x - shift.x;
            const int fromY = y - shift.y;
            unsigned value = 0;
            if (fromX >= 0 && fromX < image.width && fromY >= 0 && fromY < image.height)
                value = SampleOf(
                    image, (std::size_t(fromY) * std::size_t(image.width) + std::size_t(fromX)) *
                                   std::size_t(image.samples) +
                               std::size_t(plane));
            value ^= 0x8000U;
            bytes.push_back(char(value >> 8U));
            bytes.push_back(char(value & 0xffU));
        }
}

void Pad(std::string& bytes, char with) {
    bytes.resize((bytes.size() + kBlock - 1) / kBlock * kBlock, with);
}

void AddWord(FitsCards& cards, const char* word, const std::string& text) {
    if (!text.empty()) cards.Add(word, std::string_view(text));
}

FitsCards CardsOf(const TakeOrder& order, const ClipImage& image, std::size_t rank, Shift shift) {
    const std::size_t number = order.frames[rank];
    FitsCards cards;
    cards.AddWhole("SIMPLE  =                    T");
    cards.Add("BITPIX", 16LL);
    cards.Add("NAXIS", image.samples == 3 ? 3LL : 2LL);
    cards.Add("NAXIS1", static_cast<long long>(image.width));
    cards.Add("NAXIS2", static_cast<long long>(image.height));
    if (image.samples == 3) cards.Add("NAXIS3", 3LL, "red, green, blue");
    cards.Add("BSCALE", 1LL);
    cards.Add("BZERO", 32768LL);
    cards.Add("DATAMAX", static_cast<long long>((1U << unsigned(image.bits)) - 1U),
              "what a sample can hold");
    if (number < order.rated->utc.size()) {
        std::string utc = order.rated->utc[number];
        if (!utc.empty()) utc.pop_back(); // without "Z": dates of such files are UTC
        AddWord(cards, "DATE-OBS", utc);
    }
    AddWord(cards, "BAYERPAT", image.pattern);
    AddWord(cards, "OBSERVER", order.rated->observer);
    AddWord(cards, "TELESCOP", order.rated->telescope);
    AddWord(cards, "INSTRUME", order.rated->instrument);
    AddWord(cards, "ROWORDER", "TOP-DOWN");
    cards.Add("FRAMENUM", static_cast<long long>(number), "in the clip, from 0");
    cards.Add("SHARPNES", order.rated->frames[number].sharpness, "beside frames of this clip");
    cards.AddHistory("Frame " + std::to_string(number) + " of " + LastPart(order.clip) +
                     ", number " + std::to_string(rank + 1) + " by sharpness");
    if (order.align)
        cards.AddHistory("Shifted by " + std::to_string(shift.x) + ", " + std::to_string(shift.y) +
                         " pixels");
    return cards;
}

std::string FitsBytes(const TakeOrder& order, const ClipImage& image, std::size_t rank) {
    Shift shift;
    if (order.align)
        shift = ShiftOf(order.rated->frames[order.frames[rank]],
                        order.rated->frames[order.frames.front()], !image.pattern.empty());
    std::string bytes;
    const FitsCards cards = CardsOf(order, image, rank, shift);
    for (const std::string& card : cards.All()) bytes += card;
    bytes += "END";
    Pad(bytes, ' ');
    for (int plane = 0; plane < image.samples; ++plane) AppendPlane(image, plane, shift, bytes);
    Pad(bytes, '\0');
    return bytes;
}

std::string TargetOf(const TakeOrder& order, const Files& files, std::size_t rank) {
    const std::string name = LastPart(order.clip);
    std::array<char, 40> number{};
    std::snprintf(number.data(), number.size(), "_%04zu.fits", rank + 1);
    return JoinPath(files.Absolute(order.folder), name.substr(0, name.rfind('.')) + number.data());
}

} // namespace

RatedClip RateClip(const std::string& path) {
    RatedClip clip;
    FrameRater rater;
    ClipWords words = WalkFrames(path, [&](const ClipImage& image) {
        clip.frames.push_back(rater.Rate({*image.bytes, image.width, image.height, image.bits,
                                          image.samples, image.highByteFirst}));
        return true;
    });
    clip.utc = std::move(words.utc);
    clip.observer = std::move(words.observer);
    clip.instrument = std::move(words.instrument);
    clip.telescope = std::move(words.telescope);
    clip.fault = std::move(words.fault);
    return clip;
}

std::vector<TakenFrame> TakeFrames(const TakeOrder& order) {
    OpenHistory open;
    Changes changes(open.history, "Best frames of '" + LastPart(order.clip) + "'");
    std::vector<TakenFrame> taken(order.frames.size());
    std::map<std::size_t, std::size_t> ranks; // by number
    for (std::size_t rank = 0; rank < taken.size(); ++rank) {
        taken[rank] = {TargetOf(order, *open.files, rank), kNotReached};
        ranks[order.frames[rank]] = rank;
    }
    std::size_t number = 0;
    std::size_t left = ranks.size();
    const ClipWords words = WalkFrames(order.clip, [&](const ClipImage& image) {
        const auto wanted = ranks.find(number++);
        if (wanted == ranks.end()) return true;
        TakenFrame& file = taken[wanted->second];
        file.error.clear();
        if (open.files->FindAnyCase(file.path))
            file.error = "already exists";
        else
            changes.Write(file.path, FitsBytes(order, image, wanted->second), &file.error);
        return --left > 0;
    });
    for (TakenFrame& file : taken)
        if (file.error == kNotReached && !words.fault.empty()) file.error = words.fault;
    changes.SetWhat(std::to_string(changes.Count()) + " best frames of '" + LastPart(order.clip) +
                    "'");
    return taken;
}

} // namespace tarn
