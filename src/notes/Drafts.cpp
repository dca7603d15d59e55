#include "notes/Drafts.h"

#include "common/paths.h"
#include "common/text.h"

#include <algorithm>
#include <charconv>

namespace tarn {

namespace {

constexpr std::size_t kMost = 16U << 20U; // bytes of a file that can be ours
constexpr std::string_view kHead = "draft ";

// A decimal number and the character behind it.
std::optional<std::size_t> TakeNumber(std::string_view& bytes, char end) {
    std::size_t number = 0;
    const auto [after, code] = std::from_chars(bytes.begin(), bytes.end(), number);
    if (code != std::errc() || after == bytes.end() || *after != end) return {};
    bytes.remove_prefix(static_cast<std::size_t>(after - bytes.begin()) + 1);
    return number;
}

} // namespace

std::string PackDrafts(const std::vector<Draft>& drafts) {
    std::string bytes;
    for (const Draft& each : drafts)
        bytes += std::string(kHead) + std::to_string(each.fileName.size()) + ' ' +
                 std::to_string(each.text.size()) + '\n' + each.fileName + '\n' + each.text + '\n';
    return bytes;
}

std::vector<Draft> UnpackDrafts(std::string_view bytes) {
    std::vector<Draft> drafts;
    while (bytes.starts_with(kHead)) {
        bytes.remove_prefix(kHead.size());
        const auto name = TakeNumber(bytes, ' ');
        const auto text = name ? TakeNumber(bytes, '\n') : std::nullopt;
        if (!text || *name > bytes.size() || *text > bytes.size() ||
            *name + *text + 2 > bytes.size())
            break;
        drafts.push_back(
            {std::string(bytes.substr(0, *name)), std::string(bytes.substr(*name + 1, *text))});
        bytes.remove_prefix(*name + *text + 2);
    }
    return drafts;
}

std::string Drafts::FilePath() const {
    return JoinPath(m_files.StateFolder(), "unsaved_notes");
}

const std::vector<Draft>& Drafts::TakeUp() {
    m_written = m_files.Read(FilePath(), kMost).value_or("");
    m_takenUp = UnpackDrafts(m_written);
    return m_takenUp;
}

void Drafts::Set(DraftPlace place, Draft draft) {
    m_places[static_cast<std::size_t>(place)] = std::move(draft);
}

void Drafts::Forget(DraftPlace place) {
    m_places[static_cast<std::size_t>(place)].reset();
}

void Drafts::Saved(const std::string& text) {
    std::erase_if(m_takenUp, [&](const Draft& each) { return Contains(text, each.text); });
    for (auto& place : m_places)
        if (place && place->text == text) place.reset();
}

bool Drafts::Write(std::string* error) {
    std::vector<Draft> all;
    for (const auto& place : m_places)
        if (place) all.push_back(*place);
    for (const Draft& each : m_takenUp)
        if (std::find(all.begin(), all.end(), each) == all.end()) all.push_back(each);
    std::string bytes = PackDrafts(all);
    if (bytes == m_written) return true;
    if (!m_files.Write(FilePath(), bytes, error)) return false;
    m_written = std::move(bytes);
    return true;
}

bool Drafts::EndRun(std::string* error) {
    m_takenUp.clear();
    return Write(error);
}

} // namespace tarn
