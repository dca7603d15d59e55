// A new file beside its target that is gone again unless it is put into place. Where the file
// system allows it has no name until then, so that a kill leaves nothing lying about.
#pragma once

#include "platform/Descriptors.h"

#include <sys/types.h>

#include <string>

namespace tarn {

class Beside {
public:
    // It gets this mode as any new file does: less what the user's mask takes.
    Beside(const std::string& target, mode_t mode);
    ~Beside();
    Beside(const Beside&) = delete;
    Beside& operator=(const Beside&) = delete;

    explicit operator bool() const { return static_cast<bool>(m_file); }
    int Number() const { return m_file.Number(); }

    // Flushed and put into place, over what stands there. errno says why it could not be; so below.
    bool Place();

    // The same where nothing stands, else EEXIST.
    bool PlaceNew();

private:
    int Open(mode_t mode);
    bool Name();
    bool LinkTo(const std::string& path) const;
    std::string NextPath() const;

    std::string m_target;
    std::string m_folder;
    std::string m_path;
    bool m_named = false;
    bool m_placed = false;
    Handle m_file; // opened last: it sets the names above
};

} // namespace tarn
