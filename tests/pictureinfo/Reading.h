// A reader with its record and a folder, as the tests of this room use them.
#pragma once

#include "pictureinfo/PictureInfoReader.h"
#include "support/ExifBuilder.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

namespace tarn::testing {

class Reading : public ::testing::Test {
protected:
    // Prepares the record as the display does, then reads the file.
    const PictureInfo& Read(std::string_view bytes, const std::string& name = "a.jpg") {
        BeginPicture(info_, folder_.Write(name, bytes));
        reader_.ReadPictureInfo(info_);
        return info_;
    }

    const PictureInfo& ReadDate(std::string_view bytes) {
        info_.Filename = folder_.Write("a.jpg", bytes);
        reader_.ReadCameraDate(info_);
        return info_;
    }

    const std::string& Line(std::size_t line) const { return info_.CameraDataLines[line]; }

    TestFolder folder_;
    PictureInfoReader reader_;
    PictureInfo info_;
};

} // namespace tarn::testing
