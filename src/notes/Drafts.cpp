#include "notes/Drafts.h"

#include "common/paths.h"

#include <algorithm>
#include <charconv>

namespace tarn {

namespace {

constexpr std::size_t kMost = 16U << 20U; // bytes of a file that can be ours
constexpr std::size_t kMostDropped = 100; // the oldest go first
constexpr std::string_view kHead = "draft ";

bool Has(const std::vector<Draft>& drafts, const Draft& draft) {
    return std::find(drafts.begin(), drafts.end(), draft) != drafts.end();
}

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
    std::string why;
    const auto bytes = m_files.Read(FilePath(), kMost, &why);
    m_written = bytes.value_or("");
    m_takenUp = UnpackDrafts(m_written);
    // A file that cannot be read whole is put aside, not written over.
    if (PackDrafts(m_takenUp) != m_written || (!bytes && m_files.Exists(FilePath()))) {
        std::string taken;
        for (int i = 1; i < 100; ++i)
            if (m_files.Rename(FilePath(), FilePath() + "." + std::to_string(i), &taken)) break;
        m_written.clear();
    }
    return m_takenUp;
}

const Draft* Drafts::TakenUpFor(const std::string& fileName) const {
    const auto at = std::find_if(m_takenUp.rbegin(), m_takenUp.rend(),
                                 [&](const Draft& each) { return each.fileName == fileName; });
    return at == m_takenUp.rend() ? nullptr : &*at;
}

void Drafts::Set(DraftPlace place, Draft draft) {
    m_places[static_cast<std::size_t>(place)] = std::move(draft);
}

void Drafts::Forget(DraftPlace place) {
    m_places[static_cast<std::size_t>(place)].reset();
}

void Drafts::Drop(const Draft& draft) {
    if (std::find(m_dropped.begin(), m_dropped.end(), draft) != m_dropped.end()) return;
    m_dropped.push_back(draft);
    if (m_dropped.size() > kMostDropped) m_dropped.erase(m_dropped.begin());
}

// Texts equal to this one need no keeping any more.
void Drafts::Settle(const std::string& text) {
    if (text.empty()) return;
    const auto is = [&](const Draft& each) { return each.text == text; };
    std::erase_if(m_takenUp, is);
    std::erase_if(m_dropped, is);
    for (auto& place : m_places)
        if (place && place->text == text) place.reset();
}

void Drafts::Saved(const std::string& text) {
    Settle(text);
    Settle(m_restored);
    m_restored.clear();
}

// What another window has put into the file since it was written or read here stays there; what
// that has taken out, because it is saved by now, goes here, too.
void Drafts::TakeInOthers() {
    const auto now = m_files.Read(FilePath(), kMost);
    if (!now || *now == m_written) return;
    const std::vector<Draft> before = UnpackDrafts(m_written);
    const std::vector<Draft> standing = UnpackDrafts(*now);
    const auto isGone = [&](const Draft& each) { return !Has(standing, each); };
    std::erase_if(m_takenUp, isGone);
    std::erase_if(m_others, isGone);
    for (const Draft& each : standing)
        if (!Has(before, each)) m_others.push_back(each);
    m_written = *now;
}

bool Drafts::Write(std::string* error) {
    TakeInOthers();
    std::vector<Draft> all = m_takenUp;
    const auto add = [&all](const Draft& draft) {
        if (!Has(all, draft)) all.push_back(draft);
    };
    for (const Draft& each : m_others) add(each);
    for (const Draft& each : m_dropped) add(each);
    for (const auto& place : m_places)
        if (place) add(*place);
    std::string bytes = PackDrafts(all);
    if (bytes == m_written) return true;
    if (!m_files.Write(FilePath(), bytes, error)) return false;
    m_written = std::move(bytes);
    return true;
}

bool Drafts::EndRun(std::string* error) {
    // Unless it still stands in the box, unsaved.
    const auto box = m_places[static_cast<std::size_t>(DraftPlace::Box)];
    Settle(m_restored);
    m_places[static_cast<std::size_t>(DraftPlace::Box)] = box;
    return Write(error);
}

} // namespace tarn
