// A file of these bytes, as the program loads it.
#pragma once

#include "support/TestFolder.h"

#include "imaging/ImgX.h"

#include <string>

namespace tarn::testing {

struct LoadedFile {
    TestFolder folder;
    std::string error;

    ImgX Load(const std::string& bytes, QSize wanted = {}) {
        ImgX picture;
        error = picture.LoadFile(folder.Write("a.jpg", bytes), wanted);
        return picture;
    }
};

} // namespace tarn::testing
