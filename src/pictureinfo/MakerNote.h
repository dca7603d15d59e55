// What one maker writes into its note and what the panel shows of it. Each maker has a file of its
// own, and a row in MakerNotes.cpp.
#pragma once

#include "pictureinfo/ExifTag.h"
#include "pictureinfo/PictureInfo.h"

#include <string_view>

namespace tarn {

// A note under work, as the walk finds it.
struct NoteSource {
    PictureDataBuffer data;
    ByteOrder order; // of the file around the note; a maker may write its note in another
    std::string_view cameraName;
    bool flashFired;
    ExifTag& tag; // its data are the note
};

// What is read lasts until the next note of this maker, in whatever picture that is.
class MakerNote {
public:
    virtual ~MakerNote() = default;
    virtual void Read(const NoteSource& source) = 0;
    virtual void Show(PictureInfo& info, const ExifTag& tag) const = 0;
};

} // namespace tarn
