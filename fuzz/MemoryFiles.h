// A file system with one file, which can be read and written over; all else is refused.
#pragma once

#include "platform/Files.h"

#include <algorithm>
#include <string>

namespace tarn::fuzz {

class MemoryFiles : public Files {
public:
    std::string bytes; // of the file, under any path

    std::optional<std::string> Read(const std::string&, std::size_t most, std::string*,
                                    std::size_t from) const override {
        return bytes.substr(std::min(from, bytes.size()), most);
    }
    bool WriteAt(const std::string&, std::size_t offset, std::string_view over,
                 std::string*) override {
        if (offset > bytes.size() || over.size() > bytes.size() - offset) return false;
        bytes.replace(offset, over.size(), over);
        return true;
    }

    using S = const std::string&;
    using Error = std::string*;
    bool Exists(S) const override { return true; }
    bool IsFolder(S) const override { return false; }
    bool IsSameFile(S, S) const override { return true; }
    bool IsWritable(S) const override { return true; }
    std::optional<FileLook> Look(S, Error) const override { return {}; }
    std::int64_t Volume(S) const override { return 0; }
    std::string FindThrown(S, const FileLook&) const override { return {}; }
    std::optional<std::vector<std::string>> FileNames(S, Error) const override { return {}; }
    std::vector<std::string> FolderNames(S) const override { return {}; }
    std::optional<std::string> FindAnyCase(S path) const override { return path; }
    bool Write(S, std::string_view, Error) override { return false; }
    bool Trash(S, Error, std::string*) override { return false; }
    std::vector<std::string> TrashAll(const std::vector<std::string>&) override { return {}; }
    bool LeadsOut(S) const override { return false; }
    void Sweep(const std::string&) override {}
    void Flush(S) override {}
    Moved Move(S, S, Error, std::string*) override { return Moved::No; }
    bool Restore(S, S, Error) override { return false; }
    bool Remove(S, Error) override { return false; }
    bool Rename(S, S, Error) override { return false; }
    bool Copy(S, S, Error, std::string*) override { return false; }
    bool Extend(S, std::size_t, std::string_view, Error) override { return false; }
    std::unique_ptr<StagedFiles> Stage(S, Error) override { return nullptr; }
    bool SetTimes(S, std::int64_t, Error) override { return false; }
    bool PutTimeBack(S, const FileLook&, Error) override { return false; }
    bool MakeFolder(S, Error) override { return false; }
    int RemoveFolder(S, Error) override { return 1; }
    std::string Absolute(S path) const override { return path; }
    std::string HomeFolder() const override { return {}; }
    std::string PicturesFolder() const override { return {}; }
    std::string StateFolder() const override { return {}; }
};

} // namespace tarn::fuzz
