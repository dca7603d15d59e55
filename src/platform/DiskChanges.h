// The part of Files that reads and changes bytes on the disk.
#pragma once

#include "platform/Files.h"

namespace tarn {

class DiskChanges : public Files {
public:
    std::optional<std::string> Read(const std::string& path, std::size_t most, std::string* error,
                                    std::size_t from) const override;
    bool Write(const std::string& path, std::string_view bytes, std::string* error) override;
    bool Trash(const std::string& path, std::string* error, std::string* where) override;
    std::vector<std::string> TrashAll(const std::vector<std::string>& paths) override;
    bool Restore(const std::string& where, const std::string& path, std::string* error) override;
    std::string FindThrown(const std::string& path, const FileLook& look) const override;
    void Sweep(const std::string& folder) override;
    bool Remove(const std::string& path, std::string* error) override;
    bool Rename(const std::string& from, const std::string& to, std::string* error) override;
    bool Copy(const std::string& from, const std::string& to, std::string* error,
              std::string* replaced) override;
    Moved Move(const std::string& from, const std::string& to, std::string* error,
               std::string* replaced) override;
    void Flush(const std::string& folder) override;
    bool WriteAt(const std::string& path, std::size_t offset, std::string_view bytes,
                 std::string* error) override;
    bool Extend(const std::string& path, std::size_t offset, std::string_view bytes,
                std::string* error) override;
    std::unique_ptr<StagedFiles> Stage(const std::string& folder, std::string* error) override;
    bool SetTimes(const std::string& path, std::int64_t when, std::string* error) override;
    bool PutTimeBack(const std::string& path, const FileLook& then, std::string* error) override;
    bool MakeFolder(const std::string& path, std::string* error) override;
    int RemoveFolder(const std::string& path, std::string* error) override;
};

} // namespace tarn
