// Options of the thumbnail gallery that the settings store keeps.
#pragma once

#include <string>

namespace tarn {

struct GallerySettings {
    int HtmlThumbNotes = 1;
    int HtmlThumbNotes2 = 1;
    int HtmlThumbData = 0;
    int HtmlThumbCloseWindow = 0;
    int HtmlThumbLinkedSize = 1;
    int HtmlThumbSlider = 5; // columns
    int HtmlThumbNotesT = 1;
    std::string HtmlThumbTitle = "Pictures";
    int HtmlThumbCs = 0;
    bool HtmlThumbCsWidth = true;
    bool HtmlThumbCsHeight = false;
    std::string HtmlThumbCsValue = "600";
    int HtmlThumbHomeLink = 0;
    std::string HtmlThumbHomeUrl;
    std::string HtmlThumbTextColor = "FFFFFF"; // six hexadecimal digits, red first
    std::string HtmlThumbBorderColor = "FFFFFF";
    std::string HtmlThumbPageBgColor = "000000";
    std::string HtmlThumbThumbBgColor = "404040";
    int HtmlThumbBorderWidth = 3;
    int HtmlThumbNotesTopLine = 0;
    int HtmlThumbSliderTop = 1;
    int HtmlThumbBeginSliderTop = 1;
    bool HtmlThumbNotesTop = false;
    bool HtmlThumbNotesBottom = false;
    bool HtmlThumbNotesRight = true;
    std::string HtmlThumbFontname = "Verdana";
    int HtmlThumbFontsize = 10; // points
    int HtmlThumbWrap = 0;
    int HtmlThumbPagebreak = 0;
    std::string HtmlThumbEmailaddress;
};

} // namespace tarn
