// What is said about pictures, read from their files without their pixels.
#pragma once

#include "pictureinfo/PictureInfoReader.h"

#include <set>
#include <string>
#include <utility>
#include <vector>

namespace tarn {

class DiskFacts {
public:
    // Pixel size from the header, sides exchanged where the camera's orientation lays the picture
    // on its side. 0 x 0 when no reader knows the file.
    std::pair<int, int> UprightSize(const std::string& path);

    // Rows of the camera data panel, UTF-8.
    std::vector<std::string> PanelRows(const std::string& path);

    // Paths of the files that were asked for and could not be read: they have no camera data.
    const std::set<std::string>& Unread() const { return m_unread; }

    long long FileBytes(const std::string& path) const; // 0 when it cannot be asked

private:
    const PictureInfo& Read(const std::string& path);

    PictureInfoReader m_reader;
    PictureInfo m_info;
    std::string m_read; // the file that m_info is of
    std::set<std::string> m_unread;
};

} // namespace tarn
