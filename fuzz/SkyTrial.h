// A file of a telescope as the program reads it: header, lines, pixels at two sizes, light.
#pragma once

#include "Demand.h"

#include "common/utf8.h"
#include "imaging/fits/FitsLines.h"
#include "imaging/fits/FitsPixels.h"
#include "imaging/fits/ImageChoice.h"
#include "imaging/fits/SkyFile.h"
#include "sky/headers/FrameHeader.h"
#include "sky/place/SkyRows.h"

#include <cmath>
#include <set>
#include <string>
#include <vector>

namespace tarn::fuzz {

inline constexpr std::uint64_t kMostSamples = 1 << 16; // so that a run stays short

inline void TryPixels(const std::string& path) {
    std::string error;
    for (const int side : {0, 3}) {
        error.clear();
        const auto pixels = FitsPixels::Read(path, side, side, error);
        if (!pixels) {
            Demand(!error.empty());
            return;
        }
        const auto width = std::size_t(pixels->Width());
        std::vector<std::uint32_t> light(width * std::size_t(pixels->Height()));
        pixels->ToRgb(pixels->Automatic(), light.data(), width);
        pixels->ToRgb(LinearStretch(pixels->Range()), light.data(), width);
        Demand(pixels->Range().low < pixels->Range().high);
    }
}

// What stood in the sky by whatever the header says, as if it were a telescope's or a camera's.
inline void TryHeader(const std::string& path) {
    const std::vector<FrameWhere> frames{ReadFrameHeader(path, 60).where};
    const SkyRow row = SkyOver(frames, Site{48, 11, 500}).rows.front();
    Demand(row.site.has_value());
    Demand(!row.utc || ParseUtc(UtcText(*row.utc)).has_value());
    Demand(!row.utc || std::isfinite(row.sunAltitude));
    for (const double altitude : {row.altitude, row.sunAltitude, row.moonAltitude})
        Demand(std::isnan(altitude) || std::abs(altitude) <= 90.001);
}

inline void TrySkyFile(const std::string& path) {
    const SkyFacts facts = SkyFactsOf(path);
    for (const std::string& line : facts.lines) {
        Demand(IsUtf8(line));
        for (const char c : line) Demand(static_cast<unsigned char>(c) >= ' ');
    }
    if (!IsSkyFile(path)) {
        Demand(facts == SkyFacts());
        return;
    }
    std::string error;
    const auto header = ReadSkyHeader(path, error);
    Demand(header.has_value() == error.empty() && header.has_value() == !facts.lines.empty());
    if (!header) return;
    TryHeader(path);
    Demand(header->width > 0 && header->height > 0);
    for (const int image : std::set{0, header->images - 1}) {
        const ReadsImage one(image);
        const auto each = ReadSkyHeader(path, error);
        const std::uint64_t pixels =
            each ? std::uint64_t(each->width) * std::uint64_t(each->height) : kMostSamples + 1;
        if (pixels <= kMostSamples) TryPixels(path);
    }
}

} // namespace tarn::fuzz
