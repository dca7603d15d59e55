#include "history/Rehearsal.h"

#include "common/paths.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <map>
#include <set>

namespace tarn {

namespace {

constexpr auto kFirstPretended = decltype(FileLook::inode)(1) << 62U; // no disk has as many
constexpr const char* kSomewhere = "?";                               // in the wastebasket

bool Refuse(std::string* error, int why) {
    if (error) *error = std::strerror(why);
    return false;
}

// A real disk on which some paths are not what they are.
class PretendedDisk : public Files {
public:
    explicit PretendedDisk(const Files& real) : m_real(real) {}

    bool Exists(const std::string& path) const override {
        const auto at = m_now.find(path);
        return at == m_now.end() ? m_real.Exists(path) : at->second.stands;
    }
    bool IsFolder(const std::string& path) const override {
        const auto at = m_now.find(path);
        return at == m_now.end() ? m_real.IsFolder(path) : at->second.isFolder;
    }
    bool IsSameFile(const std::string& a, const std::string& b) const override {
        const auto one = Look(a, nullptr);
        const auto other = Look(b, nullptr);
        return one && other && one->device == other->device && one->inode == other->inode;
    }
    bool IsWritable(const std::string& path) const override { return m_real.IsWritable(path); }
    bool LeadsOut(const std::string& path) const override { return m_real.LeadsOut(path); }
    std::int64_t Volume(const std::string& path) const override {
        return m_real.Volume(m_now.contains(path) ? FolderOf(path) : path);
    }
    std::optional<FileLook> Look(const std::string& path, std::string* error) const override {
        const auto at = m_now.find(path);
        if (at == m_now.end()) return m_real.Look(path, error);
        if (at->second.stands) return at->second.look;
        Refuse(error, ENOENT);
        return {};
    }
    std::optional<std::vector<std::string>> FileNames(const std::string& folder,
                                                      std::string* error) const override {
        const auto known = m_names.find(folder);
        if (known != m_names.end()) return std::vector(known->second.begin(), known->second.end());
        auto names = m_real.FileNames(folder, error);
        if (!names) return names;
        auto& all = m_names[folder];
        all.insert(names->begin(), names->end());
        for (const auto& [path, now] : m_now)
            if (FolderOf(path) == folder) Amend(path, now);
        return std::vector(all.begin(), all.end());
    }
    std::vector<std::string> FolderNames(const std::string& folder) const override {
        return m_real.FolderNames(folder);
    }
    std::optional<std::string> FindAnyCase(const std::string& path) const override {
        if (const auto at = m_now.find(path); at != m_now.end() && at->second.stands) return path;
        auto found = m_real.FindAnyCase(path);
        return found && Exists(*found) ? found : std::nullopt;
    }
    std::optional<std::string> Read(const std::string& path, std::size_t most, std::string* error,
                                    std::size_t from) const override {
        const auto at = m_now.find(path);
        return m_real.Read(at == m_now.end() ? path : at->second.bytesOf, most, error, from);
    }
    std::string FindThrown(const std::string&, const FileLook&) const override { return {}; }
    std::string Absolute(const std::string& path) const override { return m_real.Absolute(path); }
    std::string HomeFolder() const override { return m_real.HomeFolder(); }
    std::string PicturesFolder() const override { return m_real.PicturesFolder(); }
    std::string StateFolder() const override { return m_real.StateFolder(); }

    bool Write(const std::string& path, std::string_view, std::string*) override {
        return Appear(path, path);
    }
    bool Trash(const std::string& path, std::string* error, std::string* where) override {
        if (!Remove(path, error)) return false;
        if (where) *where = kSomewhere;
        return true;
    }
    std::vector<std::string> TrashAll(const std::vector<std::string>& paths) override {
        std::vector<std::string> where(paths.size());
        for (std::size_t i = 0; i < paths.size(); ++i) Trash(paths[i], nullptr, &where[i]);
        return where;
    }
    bool Restore(const std::string&, const std::string& path, std::string*) override {
        return Appear(path, path);
    }
    bool Remove(const std::string& path, std::string* error) override {
        if (!Exists(path)) return Refuse(error, ENOENT);
        Set(path, {});
        return true;
    }
    bool Rename(const std::string& from, const std::string& to, std::string* error) override {
        const auto look = Look(from, error);
        if (!look) return false;
        if (Exists(to) && !IsSameFile(from, to)) return Refuse(error, EEXIST);
        const Now moved{true, m_now.contains(from) && m_now[from].isFolder, *look, BytesOf(from)};
        Set(from, {});
        Set(to, moved);
        return true;
    }
    bool Copy(const std::string& from, const std::string& to, std::string* error,
              std::string* replaced) override {
        if (!Look(from, error)) return false;
        const bool stands = Exists(to); // asked once: the disk may answer otherwise
        if (stands && (!replaced || IsFolder(to) || IsSameFile(from, to)))
            return Refuse(error, EEXIST);
        if (stands) *replaced = kSomewhere;
        return Appear(to, from);
    }
    Moved Move(const std::string& from, const std::string& to, std::string* error,
               std::string* replaced) override {
        if (Volume(from) != Volume(FolderOf(to)))
            return Copy(from, to, error, replaced) ? Moved::Copied : Moved::No;
        if (Exists(to) && replaced && !IsFolder(to) && !IsSameFile(from, to)) {
            *replaced = kSomewhere;
            Set(to, {});
        }
        return Rename(from, to, error) ? Moved::Renamed : Moved::No;
    }
    void Flush(const std::string&) override {}
    void Sweep(const std::string&) override {}
    bool WriteAt(const std::string& path, std::size_t, std::string_view, std::string*) override {
        return Exists(path);
    }
    bool Extend(const std::string& path, std::size_t, std::string_view, std::string*) override {
        return Exists(path);
    }
    std::unique_ptr<StagedFiles> Stage(const std::string&, std::string* error) override {
        Refuse(error, ENOTSUP);
        return nullptr;
    }
    bool SetTimes(const std::string& path, std::int64_t when, std::string* error) override {
        FileLook then;
        then.seconds = when;
        return PutTimeBack(path, then, error);
    }
    bool PutTimeBack(const std::string& path, const FileLook& then, std::string* error) override {
        auto look = Look(path, error);
        if (!look) return false;
        look->seconds = then.seconds;
        look->nanoseconds = then.nanoseconds;
        Set(path, {true, IsFolder(path), *look, BytesOf(path)});
        return true;
    }
    bool MakeFolder(const std::string& path, std::string* error) override {
        if (Exists(path)) return Refuse(error, EEXIST);
        return Appear(path, path, true);
    }
    int RemoveFolder(const std::string& path, std::string*) override {
        Set(path, {});
        return 0;
    }

private:
    struct Now {
        bool stands = false;
        bool isFolder = false;
        FileLook look;
        std::string bytesOf; // a path of the real disk
    };

    std::string BytesOf(const std::string& path) const {
        const auto at = m_now.find(path);
        return at == m_now.end() ? path : at->second.bytesOf;
    }
    // A new file that is like another one.
    bool Appear(const std::string& path, const std::string& like, bool isFolder = false) {
        FileLook look = Look(like, nullptr).value_or(FileLook());
        look.inode = m_next++;
        if (const auto folder = m_real.Look(FolderOf(path))) look.device = folder->device;
        Set(path, {true, isFolder, look, BytesOf(like)});
        return true;
    }
    void Set(const std::string& path, const Now& now) {
        m_now[path] = now;
        Amend(path, now);
    }
    void Amend(const std::string& path, const Now& now) const {
        const auto names = m_names.find(FolderOf(path));
        if (names == m_names.end()) return;
        if (now.stands && !now.isFolder)
            names->second.insert(LastPart(path));
        else
            names->second.erase(LastPart(path));
    }

    const Files& m_real;
    std::map<std::string, Now> m_now;                             // by path
    mutable std::map<std::string, std::set<std::string>> m_names; // of folders that were read
    decltype(FileLook::inode) m_next = kFirstPretended;
};

void ForgetPretended(FileLook& look) {
    if (look.inode >= kFirstPretended) look = {};
}

} // namespace

Rehearsal::Rehearsal(const Files& real)
    : m_disk(std::make_unique<PretendedDisk>(real)), m_history(*m_disk, {}),
      m_command(m_history, {}) {}

Rehearsal::~Rehearsal() = default;

std::vector<Step> Rehearsal::Steps() const {
    std::vector<Step> steps = m_command.Done();
    for (Step& step : steps) {
        step.state = StepState::Planned;
        if (step.kind == StepKind::ThrownAway) step.to.clear();
        ForgetPretended(step.before);
        ForgetPretended(step.after);
        if (step.kind == StepKind::Written || step.kind == StepKind::WrittenAt) step.after = {};
    }
    return steps;
}

} // namespace tarn
