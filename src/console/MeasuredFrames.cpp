#include "console/MeasuredFrames.h"

#include "console/NamedFrames.h"

namespace tarn {

MeasuredFrames MeasureOperands(const std::vector<std::string>& operands,
                               const FrameMeasurer& measure, const std::string& without) {
    MeasuredFrames frames;
    std::vector<std::string> files;
    const std::vector<NamedFrame> named = FramesOf(operands, without);
    for (const NamedFrame& frame : named)
        if (frame.fault.empty()) files.push_back(frame.path);
    std::vector<FrameMeasures> measured = measure(files);
    std::size_t next = 0;
    for (const NamedFrame& frame : named) {
        FrameMeasures row;
        if (frame.fault.empty())
            row = std::move(measured[next++]);
        else
            row.fault = frame.fault;
        frames.paths.push_back(frame.path);
        frames.measures.push_back(std::move(row));
    }
    return frames;
}

} // namespace tarn
