#include "slides/SlideTitle.h"

#include "common/text.h"
#include "pictureinfo/CameraDataText.h"

namespace tarn {

namespace {

constexpr std::size_t kFewest = 3; // characters of a text that is painted

std::string PlaceOf(int index, int count) {
    return "   (" + std::to_string(index + 1) + " of " + std::to_string(count) + ")";
}

std::string BrightnessMark(int value) {
    if (value == 0) return "   ";
    return value > 0 ? "  +" : "  -";
}

} // namespace

std::string CameraFields(const PictureInfo& info) {
    std::string text =
        info.ExpCamera + info.ExpMegapixels + info.ExpFocusShort + info.ExpFlashShort;
    for (const std::string* field : {&info.ExpProgram, &info.ExpMeter, &info.ExpSpeed,
                                     &info.ExpTime, &info.ExpAperture, &info.ExpBias})
        if (!field->empty()) text += ", " + *field;
    return text;
}

std::string TitleOf(const SlideTitleFacts& facts, const PictureInfo& info) {
    const bool camera = facts.camera && !info.ExpTime.empty();
    std::string title = facts.name + "   ";
    title += camera ? info.PictureDate + "   " + CameraFields(info) : facts.fileDate;
    title += PlaceOf(facts.index, facts.count);
    if (facts.index + 1 == facts.count) title += "  Last Picture";
    if (!facts.mark.empty()) title += "  " + facts.mark;
    if (facts.copied && facts.refusal.empty()) title += "  COPIED";
    if (facts.copied && !facts.refusal.empty()) title = facts.refusal;
    return title + BrightnessMark(facts.brightness);
}

std::string AreaTitle(const std::string& name, const std::string& date, const std::string& camera,
                      int row, bool last, const std::string& mark) {
    std::string title = name + "  " + date;
    if (!camera.empty()) title += "  " + camera;
    title += "  (" + std::to_string(row + 1) + ")";
    if (last) title += " Last";
    return mark.empty() ? title : title + "  " + mark;
}

std::string TextOnSlide(const std::string& note, const PictureInfo& info, int mode) {
    std::string text = note + "\r\n";
    for (std::size_t i = 0; mode == 2 && i < std::size_t{kPanelLines}; ++i) {
        const std::string& line = info.CameraDataLines[i];
        if (!line.empty()) text += "\r\n" + std::string(Trim(line));
    }
    return text.size() < kFewest ? std::string() : text;
}

} // namespace tarn
