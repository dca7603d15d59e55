// Options of the hand-laid page, as they outlive its form.
#pragma once

#include <string>

namespace tarn {

struct HtmlSettings {
    bool HtmlLayout1 = true; // link mode
    bool HtmlLayout2 = false;
    bool HtmlLayout3 = false;
    int HtmlBorder = 1;     // pixels
    bool HtmlSizeF = false; // size mode: full, height, preview, width
    bool HtmlSizeH = false;
    bool HtmlSizeO = true;
    bool HtmlSizeW = false;
    int HtmlWidth = 0; // pixels
    int HtmlHeight = 0;
    std::string HtmlTitle = "Pictures";
    int HtmlPictureType = 1; // page format 1 to 4
    int HtmlAppendOption = 1;
    std::string HtmlPageBgColor = "FFFFFF"; // six hexadecimal digits, red first
    std::string HtmlTitleBgColor = "BFCFE0";
    int HtmlTitleBorderWidth = 1;
    std::string HtmlTextColor = "000000";
    std::string HtmlBorderColor = "000000";
    int HtmlLineWidth = 1;
    bool HtmlPnotesTop = false;
    bool HtmlPnotesBottom = true;
    std::string HtmlEmail;
    std::string HtmlHomePage;
    std::string HtmlHomeText = "Home";
    std::string HtmlFontname = "Verdana";
    int HtmlFontsize = 10; // points
    bool HtmlPicCenter = true;
    bool HtmlPicLeft = false;
    int HtmlCheckImageLabel = 0;
    int HtmlMp4Video = 0;
    std::string HtmlTextImageLabel;
    int HtmlPageBreak = 0;
    int HtmlZoomPan = 0;
    int HtmlAuto = 0;
    int HtmlExifInfo = 1;
    bool HtmlOverwriteWarning = true;

    std::string HtmlPath;        // of the last page
    std::string HtmlGalleryPath; // of the last gallery
};

} // namespace tarn
