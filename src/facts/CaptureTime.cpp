#include "facts/CaptureTime.h"

#include "imaging/fits/FitsLines.h"
#include "pictureinfo/dates/CameraDateText.h"

namespace tarn {

// The reader leaves the date of the file before where one has none.
std::optional<std::int64_t> CaptureTimes::Of(const std::string& path) {
    m_info.Filename = path;
    m_info.CameraDate.clear();
    m_info.PictureDate.clear();
    m_reader.ReadCameraDate(m_info);
    if (!m_reader.FileWasRead()) return {};
    if (m_info.NoExif) m_info.CameraDate = SkyFactsOf(path).cameraDate;
    return FileTimeOf(m_info.CameraDate);
}

} // namespace tarn
