// Reads what a picture file says about itself from its first bytes, by fixed places: it follows
// neither markers nor directory offsets, and reports no error. A step that fails is passed over.
#pragma once

#include "pictureinfo/ExifTag.h"
#include "pictureinfo/MakerNotes.h"
#include "pictureinfo/PictureDataBuffer.h"
#include "pictureinfo/PictureFile.h"
#include "pictureinfo/PictureInfo.h"

#include <array>
#include <string_view>

namespace tarn {

// Makes a record ready for the read of a file, but for its date and its size in pixels: its names,
// and what a read leaves as it is.
void BeginPicture(PictureInfo& info, const std::string& path);

// One reader serves all pictures of a run, one after the other: its buffer, its tag fields and its
// maker note fields outlive a picture, and a failed step shows what an earlier picture left there.
class PictureInfoReader {
public:
    // The whole record and its panel. Reads Filename, FileNameOnly, FileDate, ImageWidth and
    // ImageHeight; the caller has cleared NoExif and DatesDiffer. Sets NoExif when the file shows
    // no camera data. ExpOrientation stays when the file has none: the display clears it for each
    // picture, a show does not.
    void ReadPictureInfo(PictureInfo& info) { ReadPictureInfo(info, PictureFile(info.Filename)); }
    void ReadPictureInfo(PictureInfo& info, const PictureFile& file) {
        Take(file);
        ReadTaken(info);
    }

    // The same in two steps, for who looks at the first bytes in between.
    void Take(const PictureFile& file);
    const FileRecord& Record() const { return m_records[m_fileRecord]; } // of what was taken last
    void ReadTaken(PictureInfo& info);

    // Only FileDate, NoExif, ExifFound, PictureDataOffset, CameraDate, CameraDateOffset and
    // PictureDate of `info.Filename`, for work on whole folders. Without a date tag the dates stay
    // those of the picture before.
    void ReadCameraDate(PictureInfo& info);

    // Whether the last read could read its file; if not, it went over the bytes of the file before.
    bool FileWasRead() const { return m_fileWasRead; }

    // Of the file of the last read.
    const FileFacts& File() const { return m_file; }

    ExifTag Tag;

private:
    void FindData(PictureInfo& info, int copied);
    void CopyData(int offset, int count);
    bool RecordHas(std::string_view signature, int offset) const;
    PictureDataBuffer Data() const; // of the picture under work
    void ReadTag(const PictureInfo& info);
    template <typename Action>
    void Walk(const PictureInfo& info, int lastIndex, const Action& action);

    // One holds the last file that was read, one the buffer; they are the same when the file's data
    // stand first. A file is read into the other one, so that the buffer outlives it.
    alignas(64) std::array<FileRecord, 2> m_records{};
    std::size_t m_fileRecord = 0;
    std::size_t m_bufferRecord = 1;

    MakerNotes m_notes;
    FileFacts m_file;
    bool m_fileWasRead = false;
};

} // namespace tarn
