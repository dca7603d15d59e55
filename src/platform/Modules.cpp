#include "platform/Modules.h"

#include <dlfcn.h>
#include <unistd.h>

#include <climits>
#include <cstddef>

namespace tarn {

namespace {

std::string ProgramFolder() {
    char path[PATH_MAX];
    const ssize_t length = ::readlink("/proc/self/exe", path, sizeof path);
    const std::string program(path, length > 0 ? static_cast<std::size_t>(length) : 0);
    return program.substr(0, program.rfind('/') + 1);
}

// In the build tree all lie together; a helper's folder is that of the modules.
std::string FindBeside(const std::string& file, int access) {
    for (const char* place : {"", "../lib/tarn-view/plugins/"})
        if (std::string path = ProgramFolder() + place + file; ::access(path.c_str(), access) == 0)
            return path;
    return {};
}

} // namespace

std::string ModulePath(const std::string& name) {
    return FindBeside("libtarn-" + name + ".so", R_OK);
}

std::string HelperPath(const std::string& name) {
    return FindBeside(name, X_OK);
}

// Lazily, as most of what the libraries bring is never called.
const void* LoadModule(const std::string& name) {
    const std::string path = ModulePath(name);
    void* const module = path.empty() ? nullptr : ::dlopen(path.c_str(), RTLD_LAZY | RTLD_LOCAL);
    return module ? ::dlsym(module, "TarnModule") : nullptr;
}

} // namespace tarn
