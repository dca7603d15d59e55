#include "fileops/ClipboardText.h"

#include "common/text.h"

namespace tarn {

std::string NotesCameraText(const std::string& note, const std::vector<std::string>& rows,
                            bool withNotes, bool trimmed) {
    std::string text = withNotes ? note : std::string();
    for (const std::string& row : rows) text += (trimmed ? std::string(Trim(row)) : row) + "\r\n";
    return text;
}

std::string NotesCameraLine(const std::string& note, const PictureInfo& info) {
    std::string line = note.empty() ? "" : note + "   ";
    line += info.PictureDate.empty() ? info.FileDate : info.PictureDate;
    const auto add = [&line](const std::string& field) {
        if (!field.empty()) line += ", " + field;
    };
    add(info.ExpMegapixels);
    line += info.ExpFocusShort + info.ExpFlashShort; // with separators of their own
    for (const std::string* field : {&info.ExpProgram, &info.ExpMeter, &info.ExpSpeed,
                                     &info.ExpTime, &info.ExpAperture, &info.ExpBias})
        add(*field);
    return line + " " + info.FileNameOnly;
}

} // namespace tarn
