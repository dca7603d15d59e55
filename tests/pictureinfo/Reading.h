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
        BeginPicture(m_info, m_folder.Write(name, bytes));
        m_reader.ReadPictureInfo(m_info);
        return m_info;
    }

    const PictureInfo& ReadDate(std::string_view bytes) {
        m_info.Filename = m_folder.Write("a.jpg", bytes);
        m_reader.ReadCameraDate(m_info);
        return m_info;
    }

    const std::string& Line(std::size_t line) const { return m_info.CameraDataLines[line]; }

    TestFolder m_folder;
    PictureInfoReader m_reader;
    PictureInfo m_info;
};

} // namespace tarn::testing
