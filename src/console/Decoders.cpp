#include "console/Decoders.h"

#include <dlfcn.h>
#include <unistd.h>

#include <climits>

namespace tarn {

namespace {

using SizeFunction = bool (*)(const char* path, int* width, int* height);

std::string ProgramFolder() {
    char path[PATH_MAX];
    const ssize_t length = ::readlink("/proc/self/exe", path, sizeof path);
    const std::string program(path, length > 0 ? static_cast<std::size_t>(length) : 0);
    return program.substr(0, program.rfind('/') + 1);
}

// Beside the program, as in the build tree, then where it is installed.
SizeFunction LoadDecoders() {
    for (const char* place : {"libtarn-decoders.so", "../lib/tarn-view/libtarn-decoders.so"}) {
        void* module = ::dlopen((ProgramFolder() + place).c_str(), RTLD_NOW | RTLD_LOCAL);
        if (module) return reinterpret_cast<SizeFunction>(::dlsym(module, "TarnPictureSize"));
    }
    return nullptr;
}

} // namespace

bool SizeFromHeader(const std::string& path, int& width, int& height) {
    static const SizeFunction kSize = LoadDecoders();
    width = height = 0;
    return kSize && kSize(path.c_str(), &width, &height);
}

} // namespace tarn
