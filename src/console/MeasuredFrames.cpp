#include "console/MeasuredFrames.h"

namespace tarn {

MeasuredFrames Measure(const std::vector<NamedFrame>& named, const FrameMeasurer& measure) {
    std::vector<std::string> files;
    for (const NamedFrame& frame : named)
        if (frame.fault.empty()) files.push_back(frame.path);
    std::vector<FrameMeasures> measured = measure(files);
    MeasuredFrames frames;
    std::size_t next = 0;
    for (const NamedFrame& frame : named) {
        frames.paths.push_back(frame.path);
        FrameMeasures& row = frames.measures.emplace_back();
        if (frame.fault.empty())
            row = std::move(measured[next++]);
        else
            row.fault = frame.fault;
    }
    return frames;
}

} // namespace tarn
