#include "pictureinfo/PictureInfoReader.h"

#include "common/paths.h"
#include "pictureinfo/CameraDataText.h"
#include "pictureinfo/CameraTables.h"
#include "pictureinfo/Step.h"
#include "pictureinfo/TagActions.h"

#include <algorithm>
#include <cstring>
#include <span>

namespace tarn {

namespace {

// Where the data begin in the three kinds of file.
constexpr int kExifDataOffset = 22;
constexpr int kTiffDataOffset = 10;
constexpr int kJfifDataOffset = 40;

constexpr int kSignatureOffset = 6;
constexpr int kJfifExifSignatureOffset = 24;
constexpr int kByteOrderOffset = 12; // also where the mark of a file with another head is not

constexpr int kEntrySize = 12;
constexpr int kLastIndex = 15000;    // of an entry, in the full walk
constexpr int kLastDateIndex = 1872; // and in the date pass,
constexpr int kDateBytes = 2000;     // which copies no more of the file
constexpr int kMaxEntries = 5000;    // a directory that leads back to itself ends here

void EmptyFields(PictureInfo& info) {
    for (std::string* field :
         {&info.CameraName, &info.ExpCamera, &info.ExpTime, &info.ExpAperture, &info.ExpProgram,
          &info.ExpSpeed, &info.ExpBias, &info.ExpFocus, &info.ExpFocusShort, &info.ExpMeter,
          &info.ExpFlash, &info.ExpFlashShort, &info.ExpMagnification, &info.ExpMegapixels,
          &info.PictureDate}) {
        field->clear();
    }
    info.ExifFound = false;
}

void EmptyLines(PictureInfo& info) {
    std::for_each_n(info.CameraDataLines.begin(), kPanelLines,
                    [](std::string& line) { line.clear(); });
}

} // namespace

void BeginPicture(PictureInfo& info, const std::string& path) {
    info.Filename = path;
    info.FileNameOnly = LastPart(path);
    info.NoExif = info.DatesDiffer = false;
    info.ExpOrientation = 0;
}

void PictureInfoReader::ReadTaken(PictureInfo& info) {
    EmptyFields(info);
    FindData(info, PictureDataBuffer::kSize);
    if (info.ExifFound) EmptyLines(info);
    SetSizeTexts(info, m_file.size);
    SetNameAndFileDate(info);
    if (!info.ExifFound) {
        info.NoExif = true;
        ShowLines(info, 3);
        return;
    }
    info.CameraDataLines[6] = kManualLensLine;
    TagActions actions(info, Tag, m_notes);
    Walk(info, kLastIndex, [&] { actions.Act(); });
    AssembleLines(info);
    ShowLines(info, kPanelLines);
}

void PictureInfoReader::ReadCameraDate(PictureInfo& info) {
    info.NoExif = false;
    info.ExifFound = false;
    Take(PictureFile(info.Filename));
    if (m_file.known) info.FileDate = FormatFileDate(m_file);
    FindData(info, kDateBytes);
    if (!info.ExifFound) {
        info.NoExif = true;
        return;
    }
    Walk(info, kLastDateIndex, [&] {
        if (Tag.TagNumber == kDateTag) TakeDate(info, Tag);
    });
}

void PictureInfoReader::Take(const PictureFile& file) {
    const std::size_t other = 1 - m_bufferRecord;
    m_file = file.Facts();
    m_fileWasRead = file.ReadRecord(m_records[other]);
    if (m_fileWasRead) m_fileRecord = other;
}

void PictureInfoReader::FindData(PictureInfo& info, int copied) {
    info.PictureDataOffset = kExifDataOffset;
    if (RecordHas("Exif", kSignatureOffset)) {
        m_bufferRecord = m_fileRecord;
        info.ExifFound = true;
        return;
    }
    const auto copyFrom = [&](int offset) {
        CopyData(offset, copied);
        info.PictureDataOffset = static_cast<std::int16_t>(offset);
        info.ExifFound = true;
    };
    if (RecordHas("MM", 0)) copyFrom(kTiffDataOffset);
    if (RecordHas("JFIF", kSignatureOffset) && RecordHas("Exif", kJfifExifSignatureOffset)) {
        copyFrom(kJfifDataOffset);
    }
}

// What stands behind the bytes that are copied stays there from an earlier file.
void PictureInfoReader::CopyData(int offset, int count) {
    std::copy_n(m_records[m_fileRecord].begin() + offset, count,
                m_records[m_bufferRecord].begin() + kExifDataOffset);
}

bool PictureInfoReader::RecordHas(std::string_view signature, int offset) const {
    return std::memcmp(m_records[m_fileRecord].data() + offset, signature.data(),
                       signature.size()) == 0;
}

PictureDataBuffer PictureInfoReader::Data() const {
    return PictureDataBuffer(
        std::span(m_records[m_bufferRecord]).subspan<kExifDataOffset, PictureDataBuffer::kSize>());
}

template <typename Action>
void PictureInfoReader::Walk(const PictureInfo& info, int lastIndex, const Action& action) {
    Tag.TagNumber = 0;
    Tag.TagIndex = 0;
    for (int entries = 0; Tag.TagIndex <= lastIndex && entries < kMaxEntries; ++entries) {
        ReadTag(info);
        if (Tag.TagNumber == 0) return;
        action();
        StoreIfFits(Tag.TagIndex, Tag.TagIndex + kEntrySize);
    }
}

void PictureInfoReader::ReadTag(const PictureInfo& info) {
    // The mark is looked for at the place of a file that begins with Exif data, whatever the file.
    const ByteOrder order =
        RecordHas("II", kByteOrderOffset) ? ByteOrder::Intel : ByteOrder::Motorola;
    Tag.Read(Data(), order);
    if (Tag.IsMakerNote()) m_notes.Read({Data(), order, info.CameraName, info.FlashFired, Tag});
}

} // namespace tarn
