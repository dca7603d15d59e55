#include "pictureinfo/TagActions.h"

#include "common/codepage.h"
#include "common/numbers.h"
#include "common/text.h"
#include "pictureinfo/CameraDataText.h"
#include "pictureinfo/CameraTables.h"

#include <algorithm>
#include <span>

namespace tarn {

namespace {

constexpr int kDateLineIndex = 1;
constexpr int kComparedDateLength = 12; // the day, and the first digit of the hour

// The second word of three or more, else the first; words end at each blank.
std::string_view ShortCameraWord(std::string_view name) {
    const std::size_t first = name.find(' ');
    if (first == std::string_view::npos) return name;
    const std::size_t second = name.find(' ', first + 1);
    if (second == std::string_view::npos) return name.substr(0, first);
    return name.substr(first + 1, second - first - 1);
}

// The name of a value; a value outside the table leaves the field as it is.
void SetName(std::string& field, int value, std::span<const std::string_view> names) {
    if (value < 0 || value >= static_cast<int>(names.size())) return;
    field = names[static_cast<std::size_t>(value)];
}

} // namespace

void TakeDate(PictureInfo& info, const ExifTag& tag) {
    info.CameraDateOffset = tag.TagDataIndex;
    info.CameraDate = FromCodePage(tag.TagText);
    if (auto shown = ShownCameraDate(tag.TagText)) info.PictureDate = std::move(*shown);
}

const TagActions::Row TagActions::kActions[] = {{271, &TagActions::Make},
                                                {272, &TagActions::Model},
                                                {274, &TagActions::Orientation},
                                                {33434, &TagActions::ExposureTime},
                                                {33437, &TagActions::FNumber},
                                                {34850, &TagActions::ExposureProgram},
                                                {34855, &TagActions::Sensitivity},
                                                {kDateTag, &TagActions::Date},
                                                {37380, &TagActions::Bias},
                                                {37382, &TagActions::SubjectDistance},
                                                {37383, &TagActions::MeterMode},
                                                {37385, &TagActions::Flash},
                                                {37386, &TagActions::FocalLength},
                                                {kMakerNoteTag, &TagActions::MakerNote},
                                                {41493, &TagActions::ExposureIndex},
                                                {41989, &TagActions::FilmFocalLength}};

void TagActions::Act() {
    const auto* const row =
        std::find_if(std::begin(kActions), std::end(kActions),
                     [this](const Row& candidate) { return candidate.tag == tag_.TagNumber; });
    if (row != std::end(kActions)) (this->*row->action)();
}

void TagActions::Make() {
    make_ = tag_.TagText;
}

void TagActions::Model() {
    const std::string& model = tag_.TagText;
    info_.CameraName = FromCodePage(Contains(model, " ") ? model : make_ + " " + model);
    info_.ExpCamera = std::string(ShortCameraWord(info_.CameraName)) + " ";
    info_.CameraDataLines[12] = CameraLine(info_.CameraName);
    const CameraModel known = FindCameraModel(model);
    info_.FilmFactor = known.filmFactor;
    if (!known.fixedFocus) return;
    info_.ExpProgram = "Program normal";
    info_.ExpFocus = "Autofocus";
    info_.ExpFocusShort = ", AF";
    info_.CameraDataLines[9] = FocusLine(info_.ExpFocus);
}

void TagActions::Orientation() {
    info_.ExpOrientation = tag_.TagValue;
}

void TagActions::ExposureTime() {
    info_.ExpTime = ExposureTimeText(tag_.TagNumerator, tag_.TagDenominator);
}

void TagActions::FNumber() {
    if (!(tag_.TagRational > 0)) return;
    info_.ExpAperture = ApertureText(tag_.TagRational);
    ManualLens_ = false;
}

void TagActions::ExposureProgram() {
    SetName(info_.ExpProgram, tag_.TagValue, ExposureProgramNames);
}

void TagActions::Sensitivity() {
    info_.ExpSpeed = std::to_string(tag_.TagValue) + " ISO";
}

void TagActions::Date() {
    TakeDate(info_, tag_);
    if (info_.PictureDate.empty()) return;
    if (LeftChars(info_.PictureDate, kComparedDateLength) !=
        LeftChars(info_.FileDate, kComparedDateLength)) {
        info_.DatesDiffer = true;
    }
    SetPictureDateLine(info_);
    info_.CameraDateIndex = kDateLineIndex;
}

void TagActions::Bias() {
    info_.ExpBias = BiasText(tag_.TagRational);
}

void TagActions::SubjectDistance() {
    const bool infinity = tag_.TagDenominator == 0 || tag_.TagNumerator == 0;
    info_.ExpFocus = infinity ? "INFINITY" : "AUTOFOCUS";
    info_.ExpFocusShort = infinity ? ", Inf" : ", AF";
}

void TagActions::MeterMode() {
    std::string name;
    SetName(name, tag_.TagValue, MeterModeNamesOf(info_.CameraName));
    if (!name.empty()) info_.CameraDataLines[3] = MeterLine(name);
    SetName(info_.ExpMeter, tag_.TagValue, MeterModeNames);
}

void TagActions::Flash() {
    info_.FlashFired = (tag_.TagValue & 1) != 0;
    info_.ExpFlash = info_.FlashFired ? "Flash" : "";
    info_.ExpFlashShort = info_.FlashFired ? ", Flash" : "";
}

void TagActions::FocalLength() {
    focal_ = tag_.TagRational;
    if (!ManualLens_ && focal_ > 0) SetFocalLength(info_, focal_);
}

void TagActions::MakerNote() {
    notes_.Show(info_, tag_);
}

void TagActions::ExposureIndex() {
    info_.ExpSpeed = ShortestSingle(tag_.TagRational) + " ISO";
}

void TagActions::FilmFocalLength() {
    SetFilmFocalLength(info_, tag_.TagValue, focal_);
}

} // namespace tarn
