#include "platform/Staging.h"

#include "common/paths.h"
#include "platform/Descriptors.h"
#include "platform/FreeNames.h"
#include "platform/RunToken.h"
#include "platform/Wastebasket.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <ctime>
#include <filesystem>
#include <unordered_set>
#include <utility>

namespace tarn {

namespace {

constexpr std::string_view kHidden = ".tarn-staging-"; // a token and six letters follow
constexpr std::time_t kLeft = 3600;                    // seconds without a change
constexpr int kLeadsOut = -1;                          // beside the system's numbers
constexpr int kIsNoFile = -2;

bool Tell(std::string* error, int why) {
    if (why != kLeadsOut && why != kIsNoFile) return Fail(error, why);
    if (error) *error = why == kIsNoFile ? kNoFile : "it is a link that leads out of the folder";
    return false;
}

int OpenFolder(const std::string& path, int how = 0) {
    return ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | how);
}

// False where another run holds it.
bool Lock(const Handle& folder) {
    return folder && ::flock(folder.Number(), LOCK_EX | LOCK_NB) == 0;
}

// Whether a run that was killed has left this folder. Other machines' locks may not be seen here.
bool IsLeft(const Handle& folder, const std::string& path) {
    struct stat info {};
    return Lock(folder) && ::fstat(folder.Number(), &info) == 0 && info.st_uid == ::geteuid() &&
           (IsOfEndedRun(LastPart(path).substr(kHidden.size())) ||
            info.st_mtime + kLeft < std::time(nullptr));
}

std::vector<std::string> HiddenIn(const std::string& folder) {
    std::vector<std::string> hidden;
    std::error_code code;
    for (std::filesystem::directory_iterator at(folder, code), end; !code && at != end;
         at.increment(code))
        if (at->path().filename().string().starts_with(kHidden))
            hidden.push_back(at->path().string());
    return hidden;
}

class Staging : public StagedFiles {
public:
    Staging(std::string folder, std::string hidden)
        : m_folder(std::move(folder)), m_hidden(std::move(hidden)), m_open(OpenFolder(m_hidden)) {
        Lock(m_open); // as long as it is held, the hidden folder is someone's
    }
    explicit operator bool() const { return bool(m_open); }
    ~Staging() override {
        for (const std::string& name : m_names) ::unlink(Hidden(name).c_str());
        ::rmdir(m_hidden.c_str());
    }

    bool Write(const std::string& name, std::string_view bytes, std::string* error) override {
        const int file =
            ::openat(m_open.Number(), name.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
        if (file < 0) return Fail(error);
        if (m_known.insert(name).second) m_names.push_back(name);
        const bool written = WriteAll(file, bytes);
        const int why = errno;
        // Disks that are far away tell of their fullness late.
        if (::close(file) != 0) return Fail(error, written ? errno : why);
        return written || Fail(error, why);
    }

    bool Place(std::string* error, std::string* failed) override {
        const Handle folder(OpenFolder(m_folder));
        if (!m_names.empty()) *failed = m_names.front();
        if (!folder) return Fail(error);
        std::vector<Placed> placed;
        for (const std::string& name : m_names) {
            const int why = PlaceOne(name, folder.Number(), placed);
            if (why == 0) continue;
            *failed = name;
            for (auto done = placed.rbegin(); done != placed.rend(); ++done)
                if (!TakeBack(*done) && done->exchanged)
                    std::erase(m_names, done->name); // it stays
            return Tell(error, why);
        }
        if (m_flushed) ::fsync(folder.Number());
        m_names.clear();
        ThrowOldAway(placed);
        return true;
    }

private:
    struct Placed {
        std::string name;
        std::string target;
        bool exchanged;     // what stood there is in the hidden folder now
        std::string thrown; // or in the wastebasket, as this
    };

    std::string Hidden(const std::string& name) const { return JoinPath(m_hidden, name); }

    // 0, or the system's number of the fault.
    int PlaceOne(const std::string& name, int folder, std::vector<Placed>& placed) {
        std::string target = JoinPath(m_folder, name);
        if (::renameat2(m_open.Number(), name.c_str(), folder, name.c_str(), RENAME_NOREPLACE) ==
            0) {
            placed.push_back({name, target, false, {}});
            return 0;
        }
        const bool taken = errno == EEXIST;
        if (!taken && !KnowsNoSuchRenaming()) return errno;
        struct stat info {};
        if (::stat(target.c_str(), &info) == 0) {
            if (S_ISDIR(info.st_mode)) return EISDIR;
            if (IsLinkOut(target)) return kLeadsOut;
            if (IsPipeOrDevice(target)) return kIsNoFile;
            return PlaceOver(name, BehindLinks(target), folder, placed);
        }
        if (taken) return EEXIST; // by a link that leads nowhere
        return RenameInto(name, target, {}, placed);
    }

    int PlaceOver(const std::string& name, const std::string& target, int folder,
                  std::vector<Placed>& placed) {
        if (::access(target.c_str(), W_OK) != 0 || !Flush(folder) ||
            ::chmod(Hidden(name).c_str(), ModeOf(target)) != 0)
            return errno;
        if (Exchange(name, target)) {
            placed.push_back({name, target, true, {}});
            return 0;
        }
        if (!KnowsNoSuchRenaming()) return errno;
        std::string thrown;
        std::string error;
        if (ThrowAway(target, &thrown, &error)) return RenameInto(name, target, thrown, placed);
        if (::rename(Hidden(name).c_str(), target.c_str()) != 0) return errno; // over the old
        return 0;
    }

    // To a name that is free, or was until `thrown` went.
    int RenameInto(const std::string& name, const std::string& target, const std::string& thrown,
                   std::vector<Placed>& placed) const {
        if (RenameToFree(Hidden(name), target)) {
            placed.push_back({name, target, false, thrown});
            return 0;
        }
        const int why = errno;
        std::string stays;
        if (!thrown.empty()) tarn::TakeBack(thrown, target, &stays);
        return why;
    }

    // The user has said that it may be written over: where there is no wastebasket it goes.
    void ThrowOldAway(const std::vector<Placed>& placed) {
        std::vector<Thrown> old;
        for (const Placed& done : placed)
            if (done.exchanged) {
                old.push_back({Hidden(done.name), done.target, {}});
                m_names.push_back(
                    done.name); // goes with the hidden folder if it still stands there
            }
        ThrowAllAway(old);
    }

    // What takes the place of something must outlast a power cut; where nothing stands there is
    // nothing to lose, and a thousand pages are not waited for.
    bool Flush(int folder) {
        m_flushed = m_flushed || ::syncfs(folder) == 0;
        return m_flushed;
    }

    // Of the file system, after a renaming that failed.
    static bool KnowsNoSuchRenaming() { return errno == EINVAL || errno == ENOSYS; }

    bool Exchange(const std::string& name, const std::string& target) const {
        return ::renameat2(m_open.Number(), name.c_str(), AT_FDCWD, target.c_str(),
                           RENAME_EXCHANGE) == 0;
    }

    bool TakeBack(const Placed& done) const {
        if (done.exchanged) return Exchange(done.name, done.target);
        std::string stays;
        return RenameToFree(done.target, Hidden(done.name)) &&
               (done.thrown.empty() || tarn::TakeBack(done.thrown, done.target, &stays));
    }

    std::string m_folder;
    std::string m_hidden;
    Handle m_open; // the hidden folder
    std::vector<std::string> m_names;
    std::unordered_set<std::string> m_known; // the same
    bool m_flushed = false;
};

} // namespace

void SweepStaged(const std::string& folder) {
    for (const std::string& path : HiddenIn(folder)) {
        const Handle held(OpenFolder(path, O_NOFOLLOW));
        std::string where;
        std::string error;
        if (IsLeft(held, path) && ::rmdir(path.c_str()) != 0) ThrowAway(path, &where, &error);
    }
}

std::string FindStaged(const std::string& stood, std::int64_t inode) {
    for (const std::string& hidden : HiddenIn(FolderOf(stood))) {
        std::string path = JoinPath(hidden, LastPart(stood));
        struct stat info {};
        if (::lstat(path.c_str(), &info) == 0 && std::int64_t(info.st_ino) == inode) return path;
    }
    return {};
}

std::unique_ptr<StagedFiles> MakeStaging(const std::string& folder, std::string* error) {
    const std::string place = folder.empty() ? "." : folder;
    SweepStaged(place);
    std::string hidden = JoinPath(place, std::string(kHidden) + RunToken() + "-XXXXXX");
    if (!::mkdtemp(hidden.data())) {
        Fail(error);
        return nullptr;
    }
    auto staging = std::make_unique<Staging>(place, hidden);
    if (*staging) return staging;
    Fail(error);
    return nullptr;
}

} // namespace tarn
