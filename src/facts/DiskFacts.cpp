#include "facts/DiskFacts.h"

#include "common/dates.h"
#include "imaging/PictureLoader.h"
#include "imaging/Upright.h"
#include "imaging/fits/FitsLines.h"
#include "pictureinfo/CameraDataText.h"
#include "pictureinfo/PictureFile.h"

#include <filesystem>

namespace tarn {

long long DiskFacts::FileBytes(const std::string& path) const {
    if (path == m_read && m_reader.FileWasRead()) return m_reader.File().size;
    std::error_code code;
    const auto bytes = std::filesystem::file_size(path, code);
    return code ? 0 : static_cast<long long>(bytes);
}

const PictureInfo& DiskFacts::Read(const std::string& path) {
    if (path == m_read) return m_info;
    m_read = path;
    m_info = {};
    BeginPicture(m_info, path);
    const PictureFile file(path);
    m_info.FileDate = FormatFileDate(file.Facts());
    const PictureHeader header = PictureLoader::ReadHeader(file.Number());
    m_info.ImageWidth = header.size.width();
    m_info.ImageHeight = header.size.height();
    m_reader.ReadPictureInfo(m_info, file);
    if (!m_reader.FileWasRead()) { // and so went over the bytes of the file before
        m_unread.insert(path);
        m_reader = {};
        BeginPicture(m_info, path);
        m_reader.ReadPictureInfo(m_info, file);
    }
    if (m_info.ExpOrientation != 0 && header.upright) m_info.ExpOrientation = 1;
    if (header.fits) {
        const SkyFacts sky = SkyFactsOf(path);
        AddOwnFacts(m_info, sky.cameraDate, sky.lines);
    }
    return m_info;
}

std::pair<int, int> DiskFacts::UprightSize(const std::string& path) {
    const PictureInfo& info = Read(path);
    const bool sideways = LiesOnItsSide(info.ExpOrientation);
    return sideways ? std::pair(int(info.ImageHeight), int(info.ImageWidth))
                    : std::pair(int(info.ImageWidth), int(info.ImageHeight));
}

std::vector<std::string> DiskFacts::PanelRows(const std::string& path) {
    return Read(path).PanelRows;
}

} // namespace tarn
