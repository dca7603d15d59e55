#include "facts/PictureReading.h"

#include "common/paths.h"
#include "imaging/PicturesAhead.h"
#include "imaging/Placeholder.h"
#include "imaging/Upright.h"
#include "pictureinfo/CameraDataText.h"
#include "platform/ProgramFiles.h"

#include <algorithm>

namespace tarn {

namespace {

constexpr std::size_t kAhead = 3; // pictures decoded while one is worked on

} // namespace

ReadPicture PictureReading::Read(const std::string& path, QSize wanted) {
    BeginPicture(m_info, path);
    m_info.FileDate = FormatFileDate(ReadFileFacts(path));
    for (std::string* text :
         {&m_info.PictureDate, &m_info.ExpSpeed, &m_info.ExpTime, &m_info.ExpSizeLine})
        text->clear();
    ReadPicture read;
    read.fault = read.picture.LoadFile(path, wanted, m_ahead);
    if (!read.picture.HasImage() && read.picture.LoadWithSystemReader(path).empty())
        read.fault.clear();
    read.standIn = !read.picture.HasImage();
    if (read.standIn) {
        const Placeholder placeholder = PlaceholderFor(FileTypeOf(path));
        read.picture.LoadFile(ProgramFile(std::string(placeholder.picture)), wanted);
        return read;
    }
    m_info.ImageWidth = read.picture.Width();
    m_info.ImageHeight = read.picture.Height();
    const PictureFacts& facts = *read.picture.Facts();
    m_reader.ReadPictureInfo(m_info, PictureFile(facts.look, facts.front));
    AddOwnFacts(m_info, facts.sky.cameraDate, facts.sky.lines);
    if (!read.picture.IsUpright()) TurnUpright(m_info.ExpOrientation, read.picture);
    return read;
}

void PictureReading::Expect(const std::vector<std::string>& paths, std::size_t next, QSize wanted) {
    std::vector<PictureWish> wishes;
    for (std::size_t i = next; i < std::min(paths.size(), next + kAhead); ++i)
        wishes.push_back({paths[i], wanted, {}});
    m_ahead.Expect(wishes);
}

} // namespace tarn
