// Takes the input for a sidecar and for the marks that an earlier run kept.
#include "Demand.h"
#include "Input.h"

#include "marks/MarksAside.h"
#include "marks/Sidecar.h"

using namespace tarn;
using namespace tarn::fuzz;

namespace {

// What is set is read again, and setting it once more changes nothing.
void TrySidecar(const std::string& bytes) {
    std::string error;
    const auto mark = MarkOfXmp(bytes, &error);
    Demand(mark.has_value() == error.empty());
    for (const Mark& wished : {Mark{Decision::Reject, 3}, Mark{Decision::Keep, 0}}) {
        const auto set = XmpWithMark(bytes, SetTo(wished), nullptr);
        Demand(mark || bytes.empty() || !set);
        if (!set) continue;
        Demand(MarkOfXmp(*set, nullptr) == wished);
        Demand(XmpWithMark(*set, SetTo(wished), nullptr) == set);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes = Input(data, size).Rest();
    TrySidecar(bytes);
    const auto kept = UnpackMarks(bytes);
    Demand(UnpackMarks(PackMarks(kept)) == kept);
    return 0;
}
