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
                     [this](const Row& candidate) { return candidate.tag == m_tag.TagNumber; });
    if (row != std::end(kActions)) (this->*row->action)();
}

void TagActions::Make() {
    m_make = m_tag.TagText;
}

void TagActions::Model() {
    const std::string& model = m_tag.TagText;
    m_info.CameraName = FromCodePage(Contains(model, " ") ? model : m_make + " " + model);
    m_info.ExpCamera = std::string(ShortCameraWord(m_info.CameraName)) + " ";
    SetCameraLine(m_info);
    const CameraModel known = FindCameraModel(model);
    m_info.FilmFactor = known.filmFactor;
    if (!known.fixedFocus) return;
    m_info.ExpProgram = "Program normal";
    m_info.ExpFocus = "Autofocus";
    m_info.ExpFocusShort = ", AF";
    SetFocusLine(m_info);
}

void TagActions::Orientation() {
    m_info.ExpOrientation = m_tag.TagValue;
}

void TagActions::ExposureTime() {
    m_info.ExpTime = ExposureTimeText(m_tag.TagNumerator, m_tag.TagDenominator);
}

void TagActions::FNumber() {
    if (!(m_tag.TagRational > 0)) return;
    m_info.ExpAperture = ApertureText(m_tag.TagRational);
    ManualLens_ = false;
}

void TagActions::ExposureProgram() {
    SetName(m_info.ExpProgram, m_tag.TagValue, ExposureProgramNames);
}

void TagActions::Sensitivity() {
    m_info.ExpSpeed = std::to_string(m_tag.TagValue) + " ISO";
}

void TagActions::Date() {
    TakeDate(m_info, m_tag);
    if (m_info.PictureDate.empty()) return;
    if (LeftChars(m_info.PictureDate, kComparedDateLength) !=
        LeftChars(m_info.FileDate, kComparedDateLength)) {
        m_info.DatesDiffer = true;
    }
    SetPictureDateLine(m_info);
    m_info.CameraDateIndex = kDateLineIndex;
}

void TagActions::Bias() {
    m_info.ExpBias = BiasText(m_tag.TagRational);
}

void TagActions::SubjectDistance() {
    const bool infinity = m_tag.TagDenominator == 0 || m_tag.TagNumerator == 0;
    m_info.ExpFocus = infinity ? "INFINITY" : "AUTOFOCUS";
    m_info.ExpFocusShort = infinity ? ", Inf" : ", AF";
}

void TagActions::MeterMode() {
    std::string name;
    SetName(name, m_tag.TagValue, MeterModeNamesOf(m_info.CameraName));
    if (!name.empty()) SetMeterLine(m_info, name);
    SetName(m_info.ExpMeter, m_tag.TagValue, MeterModeNames);
}

void TagActions::Flash() {
    m_info.FlashFired = (m_tag.TagValue & 1) != 0;
    m_info.ExpFlash = m_info.FlashFired ? "Flash" : "";
    m_info.ExpFlashShort = m_info.FlashFired ? ", Flash" : "";
}

void TagActions::FocalLength() {
    m_focal = m_tag.TagRational;
    if (!ManualLens_ && m_focal > 0) SetFocalLength(m_info, m_focal);
}

void TagActions::MakerNote() {
    m_notes.Show(m_info, m_tag);
}

void TagActions::ExposureIndex() {
    m_info.ExpSpeed = ShortestSingle(m_tag.TagRational) + " ISO";
}

void TagActions::FilmFocalLength() {
    SetFilmFocalLength(m_info, m_tag.TagValue, m_focal);
}

} // namespace tarn
