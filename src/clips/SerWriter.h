// A SER clip put together: its header, frames in any order, and their times behind them. Whoever
// makes one says where its bytes go. No toolkit.
#pragma once

#include "clips/SerFile.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tarn {

// A header for frames of another kind of clip: the fields of `header`, nothing of when.
std::string SerHeaderBytes(const SerHeader& header);

class SerWriter {
public:
    // Bytes from a place on, which is at most where the file ends by then. False ends the writing.
    using Put = std::function<bool(std::size_t place, std::string_view bytes)>;

    // The header is that of another clip but for the count.
    SerWriter(std::string header, std::size_t frameBytes, std::size_t frames, Put put);

    // The frame at a place among them, as stored.
    bool Add(std::size_t place, std::span<const std::uint8_t> bytes);

    // All have come; `stamps` has the time of each, or none.
    bool Close(const std::vector<std::int64_t>& stamps);

private:
    std::size_t PlaceOf(std::size_t frame) const;
    bool Flush();

    std::string m_header;
    std::size_t m_frameBytes;
    std::size_t m_frames;
    Put m_put;
    std::string m_run;     // frames that follow each other and are not put yet
    std::size_t m_at = 0;  // where it belongs
    std::size_t m_end = 0; // of what is there, the run counted
};

} // namespace tarn
