// What the full read of a picture does with each tag: it fills the record, in file order, a later
// tag over an earlier one.
#pragma once

#include "pictureinfo/ExifTag.h"
#include "pictureinfo/MakerNotes.h"
#include "pictureinfo/PictureInfo.h"

#include <string>

namespace tarn {

// Of the tag with the date and time of the picture: CameraDate, CameraDateOffset and PictureDate,
// which stays as it is when the tag's time is none. The fast date pass does no more.
inline constexpr std::int32_t kDateTag = 36867;
void TakeDate(PictureInfo& info, const ExifTag& tag);

// One walk over one picture's tags.
class TagActions {
public:
    TagActions(PictureInfo& info, const ExifTag& tag, const MakerNotes& notes)
        : m_info(info), m_tag(tag), m_notes(notes) {}

    // Acts on the tag under work; tags without an action are passed over.
    void Act();

private:
    using Action = void (TagActions::*)();
    struct Row {
        std::int32_t tag;
        Action action;
    };
    static const Row kActions[];

    void Make();
    void Model();
    void Orientation();
    void ExposureTime();
    void FNumber();
    void ExposureProgram();
    void Sensitivity();
    void Date();
    void Bias();
    void SubjectDistance();
    void MeterMode();
    void Flash();
    void FocalLength();
    void MakerNote();
    void ExposureIndex();
    void FilmFocalLength();

    PictureInfo& m_info;
    const ExifTag& m_tag;
    const MakerNotes& m_notes;
    std::string m_make;      // code page bytes
    float m_focal = 0;       // focal length in mm, 0 when none was stated
    bool ManualLens_ = true; // until an f-number is stated
};

} // namespace tarn
