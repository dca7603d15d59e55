// Pictures of files one after the other, each with its record, for work that shows them elsewhere
// than on the screen.
#pragma once

#include "imaging/ImgX.h"
#include "pictureinfo/PictureInfoReader.h"

#include <QSize>

#include <string>
#include <vector>

namespace tarn {

class PicturesAhead;

struct ReadPicture {
    ImgX picture;         // upright; of a file that has none, what stands in for it
    bool standIn = false; // and so it has no camera data
    std::string fault;    // why the file has none, or not all of it
};

class PictureReading {
public:
    explicit PictureReading(PicturesAhead& ahead) : m_ahead(ahead) {}

    // With the pixels that `wanted` asks for, as ImgX::LoadFile has them.
    ReadPicture Read(const std::string& path, QSize wanted);

    // Some of those that come next, in their order, are decoded meanwhile.
    void Expect(const std::vector<std::string>& paths, std::size_t next, QSize wanted);

    // Of the last file that was read. What is known of a picture alone is empty for a file without
    // one.
    const PictureInfo& Info() const { return m_info; }

private:
    PicturesAhead& m_ahead;
    PictureInfoReader m_reader;
    PictureInfo m_info;
};

} // namespace tarn
