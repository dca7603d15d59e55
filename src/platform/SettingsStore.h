// One flat section of named texts per user: what survives a run.
#pragma once

#include <memory>
#include <string>

namespace tarn {

class SettingsStore {
public:
    virtual ~SettingsStore() = default;

    // The stored text, or the default when the key was never written.
    virtual std::string Read(const std::string& key, const std::string& fallback) const = 0;
    virtual bool Contains(const std::string& key) const = 0;

    // Values that are as this run has read or written them last are not written: two windows keep
    // each other's changes.
    virtual void Write(const std::string& key, const std::string& text) = 0;

    // Removes the section with all its keys.
    virtual void Delete() = 0;

    // Brings what was written to the disk; false when the store cannot be written.
    virtual bool Flush() = 0;

    virtual bool IsWritable() const = 0;

    // Where the store lies, for the user.
    virtual std::string Location() const = 0;
};

// INI file of the application "Tarn_View", section "Defaults", in the user's configuration folder.
std::unique_ptr<SettingsStore> MakeUserSettingsStore();

// The same in a file of the caller's choice.
std::unique_ptr<SettingsStore> MakeSettingsStore(const std::string& iniFile);

} // namespace tarn
