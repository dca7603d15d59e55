// The file system, one call a verb. Paths are bytes. Nothing throws; what cannot be done says why.
#pragma once

#include "common/file_look.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarn {

// Files that are written beside their places and put there all at once: until then, and when this
// goes without it, nothing in the folder has changed.
class StagedFiles {
public:
    virtual ~StagedFiles() = default;

    virtual bool Write(const std::string& name, std::string_view bytes, std::string* error) = 0;

    // Over what stands there, whose mode they take and which goes to the wastebasket; where there
    // is none it is gone. Links are refused that lead out of the folder. On a failure `error` and
    // the name that failed; everything then stands as it stood.
    virtual bool Place(std::string* error, std::string* failed) = 0;
};

enum class Moved { No, Renamed, Copied };

class Files {
public:
    virtual ~Files() = default;

    // Also when the system cannot say: what cannot be asked is not taken for free.
    virtual bool Exists(const std::string& path) const = 0;
    virtual bool IsFolder(const std::string& path) const = 0;

    // One file under two spellings, links or mounts: false when one of them is not there.
    virtual bool IsSameFile(const std::string& a, const std::string& b) const = 0;

    virtual bool IsWritable(const std::string& path) const = 0;

    // Whether this is a link to something outside of the folder that it stands in.
    virtual bool LeadsOut(const std::string& path) const = 0;

    // One look at a file, which is not opened. None, and the system's text in `error`, when it
    // cannot be asked.
    virtual std::optional<FileLook> Look(const std::string& path,
                                         std::string* error = nullptr) const = 0;

    // What tells the file system of this path from others, also after a restart, as far as the
    // system knows; 0 when it does not.
    virtual std::int64_t Volume(const std::string& path) const = 0;

    // Last modification, seconds since 1970; by a look.
    std::optional<std::int64_t> ModifiedTime(const std::string& path,
                                             std::string* error = nullptr) const {
        const auto look = Look(path, error);
        return look ? std::optional(look->seconds) : std::nullopt;
    }

    // Names of the visible plain files of a folder, unsorted, by one reading of the directory: no
    // file is opened, and none is asked unless the directory does not tell its kind (a link).
    // None when the folder cannot be read.
    virtual std::optional<std::vector<std::string>>
    FileNames(const std::string& folder, std::string* error = nullptr) const = 0;

    // Names of the visible folders in a folder, unsorted; empty when it cannot be read.
    virtual std::vector<std::string> FolderNames(const std::string& folder) const = 0;

    // An existing path that differs from this one at most in the case of its last part: the path
    // itself when it is there, or when the system cannot say, else the first such name of the
    // folder; none when there is none.
    virtual std::optional<std::string> FindAnyCase(const std::string& path) const = 0;

    // At most `most` bytes of a file, from the byte `from` on. None and the system's text when it
    // cannot be read.
    virtual std::optional<std::string> Read(const std::string& path, std::size_t most,
                                            std::string* error = nullptr,
                                            std::size_t from = 0) const = 0;

    // The verbs below change the disk. Each is false, with the system's text in `error`, when it
    // could not be done; everything then stands as it stood.

    // The whole file anew: written beside it, flushed, given its mode, renamed over it, through
    // links to the file they lead to; so whoever looks finds the old bytes or the new ones. Where
    // no file can be made beside it but it can be written itself, it is written in place.
    virtual bool Write(const std::string& path, std::string_view bytes, std::string* error) = 0;

    // Into the desktop's wastebasket; never deletes for good. `where` gets its path there.
    virtual bool Trash(const std::string& path, std::string* error,
                       std::string* where = nullptr) = 0;

    // Many, which are flushed together: where each is now; empty what stays.
    virtual std::vector<std::string> TrashAll(const std::vector<std::string>& paths) = 0;

    // Back from there; refused when something stands at `path`.
    virtual bool Restore(const std::string& where, const std::string& path, std::string* error) = 0;

    // Where in the wastebasket, or in what a kill has left of staged files, the file of this look
    // lies, that stood at `path`; none when it does not.
    virtual std::string FindThrown(const std::string& path, const FileLook& look) const = 0;

    // What killed runs of the program have left in a folder, hidden beside the user's files.
    virtual void Sweep(const std::string& folder) = 0;

    // For good: only where the user has said so.
    virtual bool Remove(const std::string& path, std::string* error) = 0;

    // A new name on the same file system; refused when something stands there, unless it is the
    // same file under another case. Many are flushed together: see Flush.
    virtual bool Rename(const std::string& from, const std::string& to, std::string* error) = 0;

    // A copy with times and the rights of its mode, less those that a new file does not get;
    // written beside its target, flushed and put into place. Refused when both are the same file, a
    // folder stands there, or `from` changed meanwhile. Without `replaced` nothing else that stands
    // there is replaced, also when it came while the bytes were written; with it that goes to the
    // wastebasket once they are, and `replaced` gets its path there.
    virtual bool Copy(const std::string& from, const std::string& to, std::string* error,
                      std::string* replaced = nullptr) = 0;

    // A file to its place in another folder, `replaced` as above: renamed where both are on one
    // file system. Elsewhere a copy that has its attributes, too; then `from` stays, and goes when
    // its caller throws it away.
    virtual Moved Move(const std::string& from, const std::string& to, std::string* error,
                       std::string* replaced = nullptr) = 0;

    // Renames in this folder outlast a power cut from now on.
    virtual void Flush(const std::string& folder) = 0;

    // These bytes over those that stand at `offset`, in place. Refused when the file ends before
    // their end.
    virtual bool WriteAt(const std::string& path, std::size_t offset, std::string_view bytes,
                         std::string* error) = 0;

    // These bytes from `offset` on, over what stands there, in place; the file grows where they
    // reach beyond its end. Refused when it ends before `offset`. When not all can be written, what
    // stood there comes back.
    virtual bool Extend(const std::string& path, std::size_t offset, std::string_view bytes,
                        std::string* error) = 0;

    // New files for a folder, to be put into place together; null when none can be written there.
    virtual std::unique_ptr<StagedFiles> Stage(const std::string& folder, std::string* error) = 0;

    // Last access and last modification, seconds since 1970. The file must be one that may be
    // written.
    virtual bool SetTimes(const std::string& path, std::int64_t when, std::string* error) = 0;

    // Its last modification as it was at a look, to the nanosecond; the last access is now.
    virtual bool PutTimeBack(const std::string& path, const FileLook& then, std::string* error) = 0;

    virtual bool MakeFolder(const std::string& path, std::string* error) = 0;

    // An empty one, for good. 0, or the number of the system's error.
    virtual int RemoveFolder(const std::string& path, std::string* error) = 0;

    // The path made absolute against the working folder, links left as they are.
    virtual std::string Absolute(const std::string& path) const = 0;

    virtual std::string HomeFolder() const = 0;
    virtual std::string PicturesFolder() const = 0; // empty when there is none
    virtual std::string StateFolder() const = 0;    // of the program's own, made when missing
};

std::unique_ptr<Files> MakeFiles();

} // namespace tarn
