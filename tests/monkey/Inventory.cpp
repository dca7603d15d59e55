#include "Inventory.h"

#include "thumbnails/ThumbNames.h"

namespace tarn::testing {

namespace {

constexpr std::size_t kReadOfNote = 8000; // what the box shows

bool IsOneOf(const std::string& text, std::initializer_list<const char*> list) {
    for (const char* each : list)
        if (text == each) return true;
    return false;
}

// What the program makes anew without regret: thumbnails, pages, sidecars, and what is saved under
// the names that the random answers give.
bool IsMadeAnew(const fs::path& path) {
    const std::string name = path.filename().string();
    return IsThumbnailName(name) || name.starts_with("made-") || name.starts_with(".") ||
           (IsOneOf(path.extension().string(), {".html", ".htm", ".css", ".js", ".xmp"}) &&
            name != "own page.html");
}

// The same file with other digits where a date stood.
bool IsRedated(const std::string& before, const std::string& now) {
    constexpr int kThreeDates = 60;
    if (before.size() != now.size()) return false;
    int different = 0;
    for (std::size_t i = 0; i < now.size(); ++i) {
        if (before[i] == now[i]) continue;
        if (now[i] != ' ' && now[i] != ':' && (now[i] < '0' || now[i] > '9')) return false;
        ++different;
    }
    return different <= kThreeDates;
}

} // namespace

Inventory::Known Inventory::LookAt(const std::string& path) const {
    const std::string stamp = StampOf(path);
    const auto known = m_files.find(path);
    if (known != m_files.end() && known->second.stamp == stamp) return known->second;
    return {stamp, std::hash<std::string>()(BytesOf(path))};
}

void Inventory::Look() {
    std::map<std::string, Known> now;
    for (const std::string& top :
         {m.Folder("pictures"), m.Folder("copies"), m.Folder("notes"), Wastebasket() + "/files"}) {
        std::error_code none;
        for (const auto& entry : fs::recursive_directory_iterator(top, none)) {
            if (!entry.is_regular_file(none)) continue;
            const std::string path = entry.path().string();
            now[path] = LookAt(path);
            if (IsMadeAnew(entry.path())) continue;
            const std::size_t content = now[path].content;
            if (m_contents.insert_or_assign(content, path).second) m_bytes[content] = BytesOf(path);
        }
    }
    m_files = std::move(now);
}

bool Inventory::MayChange(const std::string& path, std::size_t before) const {
    if (m.dialogs.deletedForGood || m_seen.contains(before)) return true;
    return fs::exists(path) && IsRedated(m_bytes.at(before), BytesOf(path));
}

std::string Inventory::Check() {
    Look();
    std::set<std::size_t> present;
    for (const auto& [path, known] : m_files) present.insert(known.content);
    std::string vanished;
    for (auto each = m_contents.begin(); each != m_contents.end();) {
        const auto& [content, path] = *each;
        if (present.contains(content)) {
            ++each;
            continue;
        }
        if (!MayChange(path, content)) vanished += "lost: a content of " + path + "; ";
        m_bytes.erase(content);
        each = m_contents.erase(each);
    }
    m.dialogs.deletedForGood = false;
    return vanished;
}

void Inventory::Taken(const std::string& path) {
    if (const auto file = m_files.find(path); file != m_files.end()) {
        m_contents.erase(file->second.content);
        m_bytes.erase(file->second.content);
    }
}

void Inventory::Seen(const std::string& notePath) {
    std::error_code none;
    if (fs::file_size(notePath, none) <= kReadOfNote) m_seen.insert(LookAt(notePath).content);
}

void Inventory::EmptyWastebasket() {
    constexpr std::size_t kMany = 300;
    std::size_t count = 0;
    for (const auto& [path, known] : m_files)
        if (path.starts_with(Wastebasket())) ++count;
    if (count < kMany) return;
    fs::remove_all(Wastebasket());
    m_contents.clear();
    m_bytes.clear();
    Look();
}

} // namespace tarn::testing
