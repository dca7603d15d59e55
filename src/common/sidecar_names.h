// Sidecars by their names alone: "M31.CR2.xmp" belongs to "M31.CR2", "M31.xmp" to every picture
// whose name is "M31" before its ending. A new one is written in the first form, which belongs to
// one picture alone.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tarn {

bool IsSidecarName(std::string_view name);

std::string OwnSidecarName(std::string_view picture);    // "M31.CR2.xmp"
std::string SharedSidecarName(std::string_view picture); // "M31.xmp"

// The sidecars of a folder, found in any case, without a further look at the disk.
class SidecarNames {
public:
    SidecarNames() = default;
    explicit SidecarNames(const std::vector<std::string>& folder); // names of all its files

    // As it is spelt in the folder, the picture's own before the shared one; empty: none.
    std::string Of(std::string_view picture) const;
    std::string OwnOf(std::string_view picture) const;
    std::string SharedOf(std::string_view picture) const;
    bool AreNone() const { return m_names.empty(); }

private:
    std::string Find(const std::string& name) const;

    std::unordered_map<std::string, std::string> m_names; // by folded name
};

} // namespace tarn
