// When pictures were taken, by the fast pass over their dates.
#pragma once

#include "pictureinfo/PictureInfoReader.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tarn {

class CaptureTimes {
public:
    // Seconds since 1970, as the camera's clock had it; none where the file does not say.
    std::optional<std::int64_t> Of(const std::string& path);

private:
    PictureInfoReader m_reader;
    PictureInfo m_info;
};

} // namespace tarn
