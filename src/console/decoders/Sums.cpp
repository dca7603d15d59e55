#include "console/decoders/Sums.h"

#include "common/paths.h"
#include "console/decoders/OpenHistory.h"
#include "history/Changes.h"
#include "platform/WriteInPlace.h"
#include "sky/night/MeasuresFile.h"
#include "sky/planes/FramesOfFiles.h"
#include "sky/series/SumCards.h"
#include "sky/series/SumFile.h"

namespace tarn {

namespace {

// Where no file is wanted, only the frames' rows are.
class NoTarget : public SumTarget {
public:
    bool Begin(int, int, int) override { return true; }
    bool Write(int, int, int, const float*) override { return true; }
};

std::string Place(SumFile& sum, const SumOrder& order, const StackResult& result) {
    if (!sum.Close(CardsOfSum(order.paths, order.plan, result))) return sum.Error();
    OpenHistory open;
    std::string error;
    Changes changes(open.history, "Sum of " + std::to_string(CountOfSum(result)) + " frames to '" +
                                      LastPart(order.target) + "'");
    const std::string target = open.files->Absolute(order.target);
    return WriteInPlace(changes, target, sum.Bytes(), &error) ? std::string() : error;
}

} // namespace

StackResult MakeSum(const SumOrder& order) {
    StackOrder how;
    how.sigmas = order.sigmas;
    how.scratch = CacheFolder();
    const auto read = [&](std::size_t number, std::string& error) {
        return ReadFrameColours(order.paths[number], error);
    };
    NoTarget none;
    if (order.target.empty()) return StackSeries(order.plan, read, how, none);
    SumFile sum(how.scratch, order.plan.frames.size());
    StackResult result = StackSeries(order.plan, read, how, sum);
    if (!sum.Error().empty()) result.fault = sum.Error();
    if (result.fault.empty()) result.fault = Place(sum, order, result);
    return result;
}

} // namespace tarn
