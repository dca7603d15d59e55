#include "sky/stars/FrameKind.h"

#include "common/text.h"

#include <string>

namespace tarn {

FrameKind KindOf(std::string_view imageType) {
    const std::string type = FoldCase(imageType);
    const auto has = [&](std::string_view word) {
        return type.find(FoldCase(word)) != std::string::npos;
    };
    if (has("dark")) return FrameKind::Dark; // also "flat dark"
    if (has("flat")) return FrameKind::Flat;
    const bool bias = has("bias") || has("offset") || has("zero");
    return bias ? FrameKind::Bias : FrameKind::Light;
}

const char* CalibrationText(FrameKind kind) {
    constexpr const char* kTexts[] = {"", "a flat frame", "a dark frame", "a bias frame"};
    return kTexts[int(kind)];
}

} // namespace tarn
