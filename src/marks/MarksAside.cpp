#include "marks/MarksAside.h"

#include "common/paths.h"

#include <charconv>

namespace tarn {

namespace {

constexpr std::size_t kMost = 16U << 20U; // bytes of a file that can be ours
constexpr std::string_view kHead = "mark ";
constexpr char kNone = '-';
constexpr std::string_view kDecisions = "nkr"; // in the order of Decision

char Letter(const std::optional<Decision>& decision) {
    return decision ? kDecisions[static_cast<std::size_t>(*decision)] : kNone;
}

char Digit(const std::optional<int>& stars) {
    return stars ? static_cast<char>('0' + *stars) : kNone;
}

// "k3 ": a decision, stars and a blank; none when it is no such thing.
std::optional<MarkChange> ChangeOf(std::string_view text) {
    if (text.size() < 3 || text[2] != ' ') return {};
    MarkChange change;
    const auto decision = kDecisions.find(text[0]);
    if (decision != std::string_view::npos)
        change.decision = static_cast<Decision>(decision);
    else if (text[0] != kNone)
        return {};
    const int stars = text[1] - '0';
    if (stars >= 0 && stars <= kMostStars)
        change.stars = stars;
    else if (text[1] != kNone)
        return {};
    return change;
}

} // namespace

std::string PackMarks(const KeptMarks& marks) {
    std::string bytes;
    for (const auto& [path, change] : marks)
        bytes += std::string(kHead) + Letter(change.decision) + Digit(change.stars) + ' ' +
                 std::to_string(path.size()) + ' ' + path + '\n';
    return bytes;
}

KeptMarks UnpackMarks(std::string_view bytes) {
    KeptMarks marks;
    while (bytes.starts_with(kHead)) {
        bytes.remove_prefix(kHead.size());
        const auto change = ChangeOf(bytes);
        if (!change) break;
        bytes.remove_prefix(3);
        std::size_t length = 0;
        const auto [end, code] = std::from_chars(bytes.begin(), bytes.end(), length);
        if (code != std::errc() || end == bytes.end() || *end != ' ') break;
        bytes.remove_prefix(static_cast<std::size_t>(end - bytes.begin()) + 1);
        if (length >= bytes.size() || bytes[length] != '\n') break;
        marks[std::string(bytes.substr(0, length))] = *change;
        bytes.remove_prefix(length + 1);
    }
    return marks;
}

std::string MarksAside::FilePath() const {
    return JoinPath(m_files.StateFolder(), "unwritten_marks");
}

KeptMarks MarksAside::Read() const {
    return UnpackMarks(m_files.Read(FilePath(), kMost).value_or(""));
}

bool MarksAside::Keep(const std::map<std::string, std::optional<MarkChange>>& changes,
                      std::string* error) {
    const KeptMarks before = Read();
    KeptMarks marks = before;
    for (const auto& [path, change] : changes) {
        if (change)
            marks[path] = *change;
        else
            marks.erase(path);
    }
    return marks == before || m_files.Write(FilePath(), PackMarks(marks), error);
}

} // namespace tarn
