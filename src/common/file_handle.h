// A file of the C library, closed when its holder goes.
#pragma once

#include <cstdio>
#include <memory>

namespace tarn {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using FileHandle = std::unique_ptr<std::FILE, CloseFile>;

} // namespace tarn
