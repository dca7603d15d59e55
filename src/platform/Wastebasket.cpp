#include "platform/Wastebasket.h"

#include "common/paths.h"
#include "platform/Descriptors.h"
#include "platform/FreeNames.h"
#include "platform/PrivateFolders.h"

#include <QByteArray>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <map>
#include <memory>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

namespace tarn {

namespace {

constexpr std::string_view kInfo = ".trashinfo";
constexpr int kMostTries = 10000;

struct Basket {
    std::string folder;
    std::string top; // of the mount; empty for the home's, whose entries are absolute
};

std::string HomeBasket() {
    const char* chosen = std::getenv("XDG_DATA_HOME");
    if (chosen && *chosen == '/') return std::string(chosen) + "/Trash";
    const char* home = std::getenv("HOME");
    return std::string(home ? home : "") + "/.local/share/Trash";
}

// Two mounts may show one device, one mount several; nothing is renamed from one to the other.
struct Mount {
    std::uint64_t number = 0;
    std::uint64_t device = 0;
    bool operator==(const Mount&) const = default;
};

bool MountOf(const std::string& path, Mount& mount) {
    struct statx info {};
    if (::statx(AT_FDCWD, path.c_str(), 0, STATX_MNT_ID, &info) != 0) return false;
    mount.number = (info.stx_mask & STATX_MNT_ID) != 0 ? info.stx_mnt_id : 0;
    mount.device = ::makedev(info.stx_dev_major, info.stx_dev_minor);
    return true;
}

std::string ParentOf(const std::string& path) {
    const std::string parent = FolderOf(path);
    return parent.empty() ? "/" : parent;
}

// The highest folder on the same mount.
std::string TopOf(std::string folder) {
    Mount own{};
    Mount above{};
    MountOf(folder, own);
    while (folder != "/" && MountOf(ParentOf(folder), above) && above == own)
        folder = ParentOf(folder);
    return folder;
}

// A basket that another user made, or a link, could lead files away.
bool IsOwnOrFree(const std::string& folder) {
    struct stat info {};
    if (::lstat(folder.c_str(), &info) != 0) return errno == ENOENT;
    return S_ISDIR(info.st_mode) && info.st_uid == ::getuid();
}

// In the order of trust: the common one, when it is guarded, then the user's own.
std::vector<std::string> MountBaskets(const std::string& top) {
    const std::string user = std::to_string(::getuid());
    std::vector<std::string> baskets;
    struct stat info {};
    const std::string common = JoinPath(top, ".Trash");
    const bool guarded =
        ::lstat(common.c_str(), &info) == 0 && S_ISDIR(info.st_mode) && (info.st_mode & S_ISVTX);
    if (guarded && IsOwnOrFree(JoinPath(common, user))) baskets.push_back(JoinPath(common, user));
    const std::string own = JoinPath(top, ".Trash-" + user);
    if (IsOwnOrFree(own)) baskets.push_back(own);
    return baskets;
}

std::vector<Basket> BasketsFor(const std::string& folder) {
    std::vector<Basket> baskets;
    const std::string home = HomeBasket();
    Mount own{};
    Mount theirs{};
    if (MakePrivateFolders(home) && MountOf(folder, own) && MountOf(home, theirs) && own == theirs)
        baskets.push_back({home, {}});
    const std::string top = TopOf(folder);
    for (const std::string& basket : MountBaskets(top)) baskets.push_back({basket, top});
    return baskets;
}

std::string InfoText(const Basket& basket, const std::string& path) {
    const std::string place = basket.top.empty()  ? path
                              : basket.top == "/" ? path.substr(1)
                                                  : path.substr(basket.top.size() + 1);
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    ::localtime_r(&now, &local);
    std::array<char, 32> date{};
    std::strftime(date.data(), date.size(), "%Y-%m-%dT%H:%M:%S", &local);
    const QByteArray encoded = QByteArray::fromStdString(place).toPercentEncoding("/");
    return "[Trash Info]\nPath=" + encoded.toStdString() + "\nDeletionDate=" + date.data() + "\n";
}

std::string EntryOf(const std::string& basket, const std::string& name) {
    return basket + "/info/" + name + std::string(kInfo);
}

// "M31.jpg", then "M31.2.jpg"; short enough for the longer name of its entry.
std::string NameInBasket(const std::string& name, int number) {
    const std::size_t point = name.rfind('.');
    std::string stem = name.substr(0, point);
    const std::string rest = (number > 1 ? "." + std::to_string(number) : std::string()) +
                             (point == std::string::npos ? std::string() : name.substr(point));
    const std::size_t most = NAME_MAX - kInfo.size();
    if (stem.size() + rest.size() > most) stem.resize(rest.size() < most ? most - rest.size() : 0);
    return (stem + rest).substr(0, most);
}

enum class Flushed { EachByItself, Together };

// Writes the entry under a name that is free; the name, or none.
std::string WriteEntry(const Basket& basket, const std::string& path, Flushed flushed) {
    if (!MakePrivateFolders(basket.folder + "/files") ||
        !MakePrivateFolders(basket.folder + "/info"))
        return {};
    const std::string text = InfoText(basket, path);
    for (int number = 1; number < kMostTries; ++number) {
        std::string name = NameInBasket(LastPart(path), number);
        struct stat taken {};
        if (::lstat((basket.folder + "/files/" + name).c_str(), &taken) == 0) continue;
        const std::string entry = EntryOf(basket.folder, name);
        const Handle file(::open(entry.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
        if (!file && errno == EEXIST) continue;
        if (!file) return {};
        if (WriteAll(file.Number(), text) &&
            (flushed == Flushed::Together || ::fsync(file.Number()) == 0))
            return name;
        const int why = errno;
        ::unlink(entry.c_str());
        errno = why;
        return {};
    }
    errno = EEXIST;
    return {};
}

// Whether the entry of this name says that its file stood at `place`.
bool SaysPlace(const Basket& basket, const std::string& name, const std::string& place) {
    const Handle file(::open(EntryOf(basket.folder, name).c_str(), O_RDONLY | O_CLOEXEC));
    std::string text(3 * PATH_MAX + 128, '\0'); // each byte may be written as three
    const ssize_t got = file ? ::pread(file.Number(), text.data(), text.size(), 0) : 0;
    text.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
    const std::string wanted = InfoText(basket, place);
    return !text.empty() && text.substr(0, text.rfind("DeletionDate=")) ==
                                wanted.substr(0, wanted.rfind("DeletionDate="));
}

std::string FindInBasket(const Basket& basket, const std::string& place, std::int64_t inode) {
    const std::string files = basket.folder + "/files";
    const std::unique_ptr<DIR, int (*)(DIR*)> open(::opendir(files.c_str()), ::closedir);
    if (!open) return {};
    while (const dirent* entry = ::readdir(open.get())) { // NOLINT(concurrency-mt-unsafe)
        if (static_cast<std::int64_t>(entry->d_ino) == inode &&
            SaysPlace(basket, entry->d_name, place))
            return files + "/" + entry->d_name;
    }
    return {};
}

// To its entry in the basket; without it when it stays. The path there, or none.
std::string PutToEntry(const std::string& path, const std::string& basket,
                       const std::string& name) {
    std::string target = basket + "/files/" + name;
    if (RenameToFree(path, target)) return target;
    const int why = errno;
    ::unlink(EntryOf(basket, name).c_str());
    errno = why;
    return {};
}

// `path` with an entry that says `place`. After a power cut nothing lies there without its entry.
bool ThrowInto(const Basket& basket, const std::string& path, const std::string& place,
               std::string* where) {
    const std::string name = WriteEntry(basket, place, Flushed::EachByItself);
    if (name.empty()) return false;
    FlushFolder(basket.folder + "/info");
    const std::string target = PutToEntry(path, basket.folder, name);
    if (target.empty()) return false;
    FlushFolder(basket.folder + "/files");
    if (where) *where = target;
    return true;
}

// The folder without links, so that the entry leads back to the right place; the last part as it
// is: a link itself is thrown away, not what it leads to.
std::string RealPlace(const std::string& path) {
    std::array<char, PATH_MAX> real{};
    const std::string folder = FolderOf(path);
    if (!::realpath(folder.empty() ? "." : folder.c_str(), real.data())) return {};
    return JoinPath(real.data(), LastPart(path));
}

} // namespace

bool ThrowAwayAs(const std::string& path, const std::string& stood, std::string* where,
                 std::string* error) {
    struct stat info {};
    if (LastPart(path).empty()) return Fail(error, EINVAL); // a folder, by its last separator
    if (::lstat(path.c_str(), &info) != 0) return Fail(error);
    const std::string place = RealPlace(stood);
    if (place.empty()) return Fail(error);
    const std::vector<Basket> baskets = BasketsFor(ParentOf(place));
    errno = ENOTSUP; // when there is none
    for (const Basket& basket : baskets)
        if (ThrowInto(basket, path, place, where)) return true;
    return Fail(error);
}

bool ThrowAway(const std::string& path, std::string* where, std::string* error) {
    return ThrowAwayAs(path, path, where, error);
}

void ThrowAllAway(std::vector<Thrown>& all) {
    struct Begun {
        Thrown* file;
        std::string basket;
        std::string name;
    };
    std::map<std::string, std::vector<Basket>> known; // by folder
    std::vector<Begun> begun;
    std::set<std::string> used;
    for (Thrown& file : all) {
        const std::string place = RealPlace(file.stood);
        struct stat info {};
        if (place.empty() || ::lstat(file.path.c_str(), &info) != 0) continue;
        const auto [at, isNew] = known.try_emplace(ParentOf(place));
        if (isNew) at->second = BasketsFor(at->first);
        if (at->second.empty()) continue;
        const Basket& basket = at->second.front();
        std::string name = WriteEntry(basket, place, Flushed::Together);
        if (name.empty()) continue;
        used.insert(basket.folder);
        begun.push_back({&file, basket.folder, std::move(name)});
    }
    for (const std::string& basket : used) {
        const Handle folder(::open(basket.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        if (folder) ::syncfs(folder.Number());
    }
    for (const Begun& each : begun)
        each.file->where = PutToEntry(each.file->path, each.basket, each.name);
    for (const std::string& basket : used) FlushFolder(basket + "/files");
    // What the first basket did not take may go into another.
    std::string error;
    for (Thrown& file : all)
        if (file.where.empty()) ThrowAwayAs(file.path, file.stood, &file.where, &error);
}

std::string FindInBaskets(const std::string& stood, std::int64_t inode) {
    const std::string place = RealPlace(stood);
    if (place.empty()) return {};
    for (const Basket& basket : BasketsFor(ParentOf(place)))
        if (const std::string where = FindInBasket(basket, place, inode); !where.empty())
            return where;
    return {};
}

bool TakeBack(const std::string& where, const std::string& path, std::string* error) {
    if (!RenameToFree(where, path)) return Fail(error);
    FlushFolder(FolderOf(path)); // the card goes last
    ::unlink(EntryOf(ParentOf(ParentOf(where)), LastPart(where)).c_str());
    return true;
}

} // namespace tarn
