#include "fileops/UndoLog.h"

#include "common/paths.h"

#include <algorithm>
#include <set>

namespace tarn {

namespace {

bool Refuse(std::string* error, const char* why) {
    if (error) *error = why;
    return false;
}

// A copy has the time of its original unless one of them was dated since; then the bytes tell, a
// block at a time: they may be clips of many gigabytes.
bool IsStillCopy(const Done& done, const Files& files) {
    if (files.ModifiedTime(done.to) == files.ModifiedTime(done.from)) return true;
    constexpr std::size_t kBlock = 4U << 20U;
    for (std::size_t from = 0;; from += kBlock) {
        const auto copy = files.Read(done.to, kBlock, nullptr, from);
        if (!copy || copy != files.Read(done.from, kBlock, nullptr, from)) return false;
        if (copy->size() < kBlock) return true;
    }
}

bool TakeBackCopy(const Done& done, Files& files, std::string* error) {
    if (!files.Exists(done.to)) return true;
    if (!files.Exists(done.from)) return Refuse(error, "what it is a copy of is not back");
    if (!IsStillCopy(done, files)) return Refuse(error, "it has been changed since");
    return files.Trash(done.to, error);
}

bool TakeBackOne(const Done& done, Files& files, std::string* error) {
    switch (done.kind) {
    case Done::Kind::ThrownAway:
        return files.Restore(done.to, done.from, error);
    case Done::Kind::Renamed:
        return files.Rename(done.to, done.from, error);
    case Done::Kind::Made:
        return TakeBackCopy(done, files, error);
    }
    return true;
}

// The first few by name.
std::string ListOf(const std::vector<std::string>& paths) {
    constexpr std::size_t kNamed = 3;
    std::string text;
    for (std::size_t i = 0; i < std::min(paths.size(), kNamed); ++i)
        text += (i > 0 ? ", '" : "'") + LastPart(paths[i]) + "'";
    if (paths.size() > kNamed) text += " and " + std::to_string(paths.size() - kNamed) + " more";
    return text;
}

} // namespace

Changes::~Changes() {
    for (const std::string& folder : m_touched) m_files.Flush(folder);
}

void Changes::Touch(const std::string& path) {
    const std::string_view folder = std::string_view(path).substr(0, path.rfind(kSeparator));
    if (std::find(m_touched.begin(), m_touched.end(), folder) == m_touched.end())
        m_touched.emplace_back(folder);
}

bool Changes::ThrowAway(const std::string& path, std::string* error) {
    std::string where;
    if (!m_files.Trash(path, error, &where)) return false;
    Note({Done::Kind::ThrownAway, path, where});
    return true;
}

bool Changes::Rename(const std::string& from, const std::string& to, std::string* error) {
    if (!m_files.Rename(from, to, error)) return false;
    Touch(from);
    Touch(to);
    Note({Done::Kind::Renamed, from, to});
    return true;
}

bool Changes::Copy(const std::string& from, const std::string& to, std::string* error,
                   Standing standing) {
    std::string replaced;
    if (!m_files.Copy(from, to, error, standing == Standing::Refuse ? nullptr : &replaced))
        return false;
    if (!replaced.empty()) Note({Done::Kind::ThrownAway, to, replaced});
    Note({Done::Kind::Made, from, to});
    return true;
}

bool Changes::Move(const std::string& from, const std::string& to, std::string* error,
                   Standing standing) {
    const auto before = m_files.Look(from);
    std::string replaced;
    const Moved moved =
        m_files.Move(from, to, error, standing == Standing::Refuse ? nullptr : &replaced);
    if (moved == Moved::No) return false;
    if (!replaced.empty()) Note({Done::Kind::ThrownAway, to, replaced});
    Note({moved == Moved::Renamed ? Done::Kind::Renamed : Done::Kind::Made, from, to});
    if (moved == Moved::Copied) {
        m_moving[from] = before;
        return true;
    }
    Touch(from);
    Touch(to);
    return true;
}

bool Changes::EndMove(const std::string& from, std::string* error) {
    const auto moving = m_moving.find(from);
    if (moving == m_moving.end()) return true;
    const auto before = moving->second;
    const auto now = m_files.Look(from);
    m_moving.erase(moving);
    if (!before || !now || !now->IsSameContent(*before))
        return Refuse(error, "it has changed since it was copied");
    return ThrowAway(from, error);
}

bool Changes::EndRename(const std::string& from, const std::string& to, std::string* error) {
    const auto made = std::find_if(m_done.begin(), m_done.end(), [&](const Done& done) {
        return done.kind == Done::Kind::Made && done.from == from && done.to == to;
    });
    const auto old = m_files.Look(from);
    const auto copy = m_files.Look(to);
    // No rename leads back from another disk, nor to what stood there before.
    const bool elsewhere = old && copy && old->device != copy->device;
    if (made == m_done.end() || elsewhere) return ThrowAway(from, error);
    if (!m_files.Remove(from, error)) return false;
    Touch(from);
    made->kind = Done::Kind::Renamed;
    return true;
}

void Changes::TakeBack(std::size_t kept, std::string* error) {
    std::vector<Done> left;
    while (m_done.size() > kept) {
        std::string why;
        if (!TakeBackOne(m_done.back(), m_files, &why)) {
            left.push_back(m_done.back());
            if (error && error->empty()) *error = why;
        }
        m_done.pop_back();
    }
    m_done.insert(m_done.end(), left.rbegin(), left.rend());
}

void UndoLog::Push(UndoEntry entry) {
    if (!entry.done.empty() || !entry.marks.empty()) m_entries.push_back(std::move(entry));
}

UndoResult UndoLog::Undo(Files& files, const std::function<bool(std::size_t)>& goOn) {
    UndoResult result;
    if (m_entries.empty()) return result;
    UndoEntry entry = std::move(m_entries.back());
    m_entries.pop_back();
    std::vector<Done> left;
    std::string why;
    std::size_t undone = 0;
    bool stopped = false;
    std::set<std::string> touched;
    for (auto done = entry.done.rbegin(); done != entry.done.rend(); ++done) {
        std::string error = "cancelled";
        stopped = stopped || !goOn(undone + left.size() + 1);
        if (!stopped && TakeBackOne(*done, files, &error)) {
            ++undone;
            if (done->kind == Done::Kind::Renamed)
                touched.insert({FolderOf(done->from), FolderOf(done->to)});
            if (done->kind != Done::Kind::Made) result.back.push_back(done->from);
            continue;
        }
        left.push_back(*done);
        if (why.empty())
            why = LastPart(done->kind == Done::Kind::Made ? done->to : done->from) + " - " + error;
    }
    for (const std::string& folder : touched) files.Flush(folder);
    std::reverse(result.back.begin(), result.back.end());
    std::reverse(left.begin(), left.end());
    result.marks = std::move(entry.marks);
    result.text = (undone > 0 || !result.marks.empty() ? "Undone: " : "NOT undone: ") + entry.what;
    if (!result.back.empty()) result.text += "; back again: " + ListOf(result.back);
    if (!left.empty())
        result.text += "; " + std::to_string(left.size()) + " not taken back, first " + why;
    // What was cancelled is the next to be taken back; what cannot be waits behind all others.
    if (!left.empty())
        m_entries.insert(stopped ? m_entries.end() : m_entries.begin(),
                         {entry.what, std::move(left)});
    return result;
}

} // namespace tarn
