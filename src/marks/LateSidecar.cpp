// Sidecars by the module that knows XMP.
#include "marks/Sidecar.h"
#include "marks/XmpModule.h"
#include "platform/Modules.h"

namespace tarn {

namespace {

const XmpModule* Module(std::string* error) {
    const auto* const module = FromModule<XmpModule>();
    if (!module && error) *error = "the part of the program that reads XMP is missing";
    return module;
}

} // namespace

std::optional<Mark> MarkOfXmp(std::string_view bytes, std::string* error) {
    const XmpModule* module = Module(error);
    return module ? module->markOf(bytes, error) : std::nullopt;
}

std::optional<std::string> XmpWithMark(std::string_view bytes, const MarkChange& change,
                                       std::string* error) {
    const XmpModule* module = Module(error);
    return module ? module->withMark(bytes, change, error) : std::nullopt;
}

} // namespace tarn
