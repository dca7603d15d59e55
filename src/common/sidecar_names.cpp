#include "common/sidecar_names.h"

#include "common/text.h"

namespace tarn {

namespace {

constexpr std::string_view kEnding = ".xmp";

} // namespace

bool IsSidecarName(std::string_view name) {
    return name.size() > kEnding.size() &&
           FoldCase(name.substr(name.size() - kEnding.size())) == FoldCase(kEnding);
}

std::string OwnSidecarName(std::string_view picture) {
    return std::string(picture) + std::string(kEnding);
}

std::string SharedSidecarName(std::string_view picture) {
    const auto dot = picture.rfind('.');
    const bool ends = dot != std::string_view::npos && dot > 0;
    return OwnSidecarName(ends ? picture.substr(0, dot) : picture);
}

SidecarNames::SidecarNames(const std::vector<std::string>& folder) {
    for (const std::string& name : folder)
        if (IsSidecarName(name)) m_names.try_emplace(FoldCase(name), name);
}

std::string SidecarNames::Find(const std::string& name) const {
    if (m_names.empty()) return {};
    const auto at = m_names.find(FoldCase(name));
    return at == m_names.end() ? std::string() : at->second;
}

std::string SidecarNames::OwnOf(std::string_view picture) const {
    return Find(OwnSidecarName(picture));
}

std::string SidecarNames::SharedOf(std::string_view picture) const {
    return Find(SharedSidecarName(picture));
}

std::string SidecarNames::Of(std::string_view picture) const {
    std::string own = OwnOf(picture);
    return own.empty() ? SharedOf(picture) : own;
}

} // namespace tarn
