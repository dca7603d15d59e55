#include "sky/planes/FramesOfFiles.h"

#include "sky/planes/PictureValues.h"

namespace tarn {

namespace {

FrameSamples PlaneOf(const std::shared_ptr<const PictureValues>& values) {
    FrameSamples frame;
    frame.width = values->plane.width;
    frame.height = values->plane.height;
    frame.words = values->plane.words;
    frame.floats = values->plane.floats;
    frame.zero = values->plane.zero;
    frame.scale = values->plane.scale;
    frame.kept = values;
    return frame;
}

} // namespace

std::optional<FrameSamples> ReadFrameColours(const std::string& path, std::string& error) {
    auto read = ReadPictureColours(path, error);
    if (!read) return std::nullopt;
    const auto values = std::make_shared<const PictureValues>(std::move(*read));
    FrameSamples frame = PlaneOf(values);
    const FitsHeader& header = values->samples.header;
    if (header.width == 0) return frame; // no sensor's
    frame.planes = header.planes;
    frame.mosaic = header.mosaic;
    frame.colours = header.pattern;
    return frame;
}

std::optional<FramePlane> ReadFramePlane(const std::string& path, std::string& error) {
    auto read = ReadPictureValues(path, error);
    if (!read) return std::nullopt;
    const int cell = read->plane.cell;
    const bool bottomUp = read->bottomUp;
    const auto values = std::make_shared<const PictureValues>(std::move(*read));
    return FramePlane{PlaneOf(values), cell, bottomUp};
}

FrameMap InCells(const FrameMap& map, int cell) {
    const double middle = 0.5 * (cell - 1); // of a cell, from its first pixel
    const auto [x, y] = map(middle, middle);
    FrameMap cells = map;
    cells.c = (x - middle) / cell;
    cells.f = (y - middle) / cell;
    return cells;
}

} // namespace tarn
