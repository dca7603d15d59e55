#include "pictureinfo/MakerNotes.h"

#include "pictureinfo/CanonMakerNote.h"
#include "pictureinfo/NikonMakerNote.h"

namespace tarn {

namespace {

struct Maker {
    bool (*applies)(std::string_view cameraName);
    std::unique_ptr<MakerNote> (*make)();
};

template <typename Note> std::unique_ptr<MakerNote> Make() {
    return std::make_unique<Note>();
}

constexpr Maker kMakers[] = {{&CanonMakerNote::Applies, &Make<CanonMakerNote>},
                             {&NikonMakerNote::Applies, &Make<NikonMakerNote>}};

} // namespace

MakerNotes::MakerNotes() {
    for (const Maker& maker : kMakers) m_notes.push_back(maker.make());
}

void MakerNotes::Read(const NoteSource& source) {
    for (std::size_t row = 0; row < m_notes.size(); ++row) {
        if (kMakers[row].applies(source.cameraName)) m_notes[row]->Read(source);
    }
}

void MakerNotes::Show(PictureInfo& info, const ExifTag& tag) const {
    for (std::size_t row = 0; row < m_notes.size(); ++row) {
        if (kMakers[row].applies(info.CameraName)) m_notes[row]->Show(info, tag);
    }
}

} // namespace tarn
