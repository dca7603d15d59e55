#include "platform/PrivateFolders.h"

#include <sys/stat.h>

#include <cerrno>

namespace tarn {

bool MakePrivateFolders(const std::string& path) {
    for (std::size_t at = path.find('/', 1);; at = path.find('/', at + 1)) {
        if (::mkdir(path.substr(0, at).c_str(), 0700) != 0 && errno != EEXIST) return false;
        if (at == std::string::npos) return true;
    }
}

} // namespace tarn
