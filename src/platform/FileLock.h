// A file that one process at a time may hold; given back when its holder ends, however it ends.
#pragma once

#include "platform/Descriptors.h"

#include <string>

namespace tarn {

class FileLock {
public:
    // Of this file, made when it is missing.
    explicit FileLock(const std::string& path);

    // At once, or not at all.
    bool Take();

private:
    Handle m_file;
};

} // namespace tarn
