// The notes of all makers that are known, found by the camera's name.
#pragma once

#include "pictureinfo/MakerNote.h"

#include <memory>
#include <vector>

namespace tarn {

class MakerNotes {
public:
    MakerNotes();

    // By the maker of the camera; nothing is done when none is known.
    void Read(const NoteSource& source);
    void Show(PictureInfo& info, const ExifTag& tag) const;

private:
    std::vector<std::unique_ptr<MakerNote>> m_notes; // one a row of the table
};

} // namespace tarn
