#include "fileops/UndoLog.h"

#include "common/paths.h"

#include <algorithm>
#include <set>

namespace tarn {

namespace {

bool TakeBackOne(const Done& done, Files& files, std::string* error) {
    switch (done.kind) {
    case Done::Kind::ThrownAway:
        return files.Restore(done.to, done.from, error);
    case Done::Kind::Renamed:
        return files.Rename(done.to, done.from, error);
    case Done::Kind::Made:
        return !files.Exists(done.to) || files.Trash(done.to, error);
    }
    return true;
}

// The first few by name.
std::string ListOf(const std::vector<std::string>& names) {
    constexpr std::size_t kNamed = 3;
    std::string text;
    for (std::size_t i = 0; i < std::min(names.size(), kNamed); ++i)
        text += (i > 0 ? ", '" : "'") + names[i] + "'";
    if (names.size() > kNamed) text += " and " + std::to_string(names.size() - kNamed) + " more";
    return text;
}

} // namespace

bool Changes::ThrowAway(const std::string& path, std::string* error) {
    std::string where;
    if (!m_files.Trash(path, error, &where)) return false;
    Note({Done::Kind::ThrownAway, path, where});
    return true;
}

bool Changes::Rename(const std::string& from, const std::string& to, std::string* error) {
    if (!m_files.Rename(from, to, error)) return false;
    Note({Done::Kind::Renamed, from, to});
    return true;
}

bool Changes::Copy(const std::string& from, const std::string& to, std::string* error) {
    if (!m_files.Copy(from, to, error)) return false;
    Note({Done::Kind::Made, from, to});
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
    if (!entry.done.empty()) m_entries.push_back(std::move(entry));
}

UndoResult UndoLog::Undo(Files& files) {
    UndoResult result;
    if (m_entries.empty()) return result;
    UndoEntry entry = std::move(m_entries.back());
    m_entries.pop_back();
    std::vector<std::string> back;
    std::vector<Done> left;
    std::string firstFailure;
    for (auto done = entry.done.rbegin(); done != entry.done.rend(); ++done) {
        std::string error;
        const bool comesBack = done->kind != Done::Kind::Made;
        if (TakeBackOne(*done, files, &error)) {
            if (comesBack) back.push_back(LastPart(done->from));
            continue;
        }
        left.push_back(*done);
        if (firstFailure.empty())
            firstFailure = LastPart(comesBack ? done->from : done->to) + " - " + error;
    }
    std::reverse(back.begin(), back.end());
    std::reverse(left.begin(), left.end());
    result.text = "Undone: " + entry.what;
    if (!back.empty()) result.text += "; back again: " + ListOf(back);
    if (!firstFailure.empty())
        result.text += "; not undone: " + std::to_string(left.size()) + ", first " + firstFailure;
    if (!back.empty()) result.show = back.front();
    if (!left.empty()) m_entries.push_back({entry.what, std::move(left)});
    return result;
}

} // namespace tarn
