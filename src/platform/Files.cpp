#include "platform/Files.h"

#include "common/paths.h"
#include "common/text.h"
#include "platform/Descriptors.h"
#include "platform/DiskChanges.h"
#include "platform/QtText.h"

#include <QStandardPaths>

#include <dirent.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

namespace tarn {

namespace {

namespace fs = std::filesystem;

void Say(std::string* error, const std::string& text) {
    if (error) *error = text;
}

struct CloseFolder {
    void operator()(DIR* folder) const { ::closedir(folder); }
};

// A link is what it leads to; one that leads nowhere is no folder.
bool EntryIsFolder(DIR* folder, const dirent& entry) {
    if (entry.d_type != DT_LNK && entry.d_type != DT_UNKNOWN) return entry.d_type == DT_DIR;
    struct stat info {};
    return ::fstatat(::dirfd(folder), entry.d_name, &info, 0) == 0 && S_ISDIR(info.st_mode);
}

// Visits each visible entry with its name and kind.
template <typename Visit>
bool ForEachEntry(const std::string& folder, std::string* error, Visit visit) {
    const std::unique_ptr<DIR, CloseFolder> open(::opendir(folder.c_str()));
    if (!open) return Say(error, std::strerror(errno)), false;
    errno = 0;
    while (const dirent* entry = ::readdir(open.get())) { // NOLINT(concurrency-mt-unsafe)
        if (entry->d_name[0] != '.') visit(entry->d_name, EntryIsFolder(open.get(), *entry));
        errno = 0;
    }
    if (errno != 0) Say(error, std::strerror(errno));
    return errno == 0;
}

// Whether a question that failed has at least told that nothing is there.
bool IsNowhere(int why) {
    return why == ENOENT || why == ENOTDIR || why == ELOOP || why == ENAMETOOLONG || why == EINVAL;
}

class DiskFiles : public DiskChanges {
public:
    bool Exists(const std::string& path) const override {
        struct stat info {};
        return ::stat(path.c_str(), &info) == 0 || !IsNowhere(errno);
    }
    bool IsFolder(const std::string& path) const override {
        struct stat info {};
        return ::stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
    }
    bool IsWritable(const std::string& path) const override {
        return ::access(path.c_str(), W_OK) == 0;
    }
    bool LeadsOut(const std::string& path) const override { return IsLinkOut(path); }
    bool IsSameFile(const std::string& a, const std::string& b) const override {
        struct stat one {};
        struct stat other {};
        return ::stat(a.c_str(), &one) == 0 && ::stat(b.c_str(), &other) == 0 &&
               one.st_dev == other.st_dev && one.st_ino == other.st_ino;
    }
    std::optional<FileLook> Look(const std::string& path, std::string* error) const override {
        struct stat info {};
        if (::stat(path.c_str(), &info) != 0) {
            Say(error, std::strerror(errno));
            return {};
        }
        return LookOf(info);
    }
    std::int64_t Volume(const std::string& path) const override {
        struct statfs info {};
        if (::statfs(path.c_str(), &info) != 0) return 0;
        std::int64_t number = 0;
        std::memcpy(&number, &info.f_fsid, sizeof number);
        return number;
    }
    std::optional<std::vector<std::string>> FileNames(const std::string& folder,
                                                      std::string* error) const override {
        std::vector<std::string> names;
        const bool read = ForEachEntry(folder, error, [&](const char* name, bool isFolder) {
            if (!isFolder) names.emplace_back(name);
        });
        if (!read) return {};
        return names;
    }
    std::vector<std::string> FolderNames(const std::string& folder) const override {
        std::vector<std::string> names;
        ForEachEntry(folder, nullptr, [&](const char* name, bool isFolder) {
            if (isFolder) names.emplace_back(name);
        });
        return names;
    }
    std::string Absolute(const std::string& path) const override {
        std::error_code code;
        const fs::path absolute = fs::absolute(path, code);
        return code ? path : absolute.lexically_normal().string();
    }
    std::optional<std::string> FindAnyCase(const std::string& path) const override {
        if (Exists(path)) return path;
        const std::string folder = FolderOf(path);
        const std::string wanted = FoldCase(LastPart(path));
        std::optional<std::string> found;
        std::error_code code;
        fs::directory_iterator at(folder.empty() ? "." : folder, code);
        for (; !code && at != fs::directory_iterator() && !found; at.increment(code)) {
            const std::string name = at->path().filename().string();
            if (FoldCase(name) == wanted) found = JoinPath(folder, name);
        }
        if (code && !IsNowhere(code.value())) return path;
        return found;
    }
    std::string HomeFolder() const override {
        return FromQt(QStandardPaths::writableLocation(QStandardPaths::HomeLocation));
    }
    std::string PicturesFolder() const override {
        const std::string folder =
            FromQt(QStandardPaths::writableLocation(QStandardPaths::PicturesLocation));
        return folder != HomeFolder() && IsFolder(folder) ? folder : std::string();
    }
    std::string StateFolder() const override {
        const QByteArray chosen = qgetenv("XDG_STATE_HOME");
        std::string folder =
            (chosen.isEmpty() ? HomeFolder() + "/.local/state" : chosen.toStdString()) +
            "/tarn-view";
        std::error_code ignored; // who writes there will say what is the matter
        fs::create_directories(folder, ignored);
        return folder;
    }
};

} // namespace

std::unique_ptr<Files> MakeFiles() {
    return std::make_unique<DiskFiles>();
}

} // namespace tarn
