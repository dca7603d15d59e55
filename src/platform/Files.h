// The file system, one call a verb. Paths are bytes. Nothing throws; what cannot be done says why.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tarn {

class Files {
public:
    virtual ~Files() = default;

    virtual bool Exists(const std::string& path) const = 0;
    virtual bool IsFolder(const std::string& path) const = 0;

    // Last modification, seconds since 1970. None, and the system's text in `error`, when the file
    // cannot be asked.
    virtual std::optional<std::int64_t> ModifiedTime(const std::string& path,
                                                     std::string* error = nullptr) const = 0;

    // Names of the visible plain files of a folder, unsorted, by one reading of the directory: no
    // file is opened, and none is asked unless the directory does not tell its kind (a link).
    // None when the folder cannot be read.
    virtual std::optional<std::vector<std::string>>
    FileNames(const std::string& folder, std::string* error = nullptr) const = 0;

    // Names of the visible folders in a folder, unsorted; empty when it cannot be read.
    virtual std::vector<std::string> FolderNames(const std::string& folder) const = 0;

    // The path made absolute against the working folder, links left as they are.
    virtual std::string Absolute(const std::string& path) const = 0;

    virtual std::string HomeFolder() const = 0;
    virtual std::string PicturesFolder() const = 0; // empty when there is none
};

std::unique_ptr<Files> MakeFiles();

} // namespace tarn
