// Options of the thumbnail gallery: those that the settings store keeps, and those that live for
// the run and in the gallery's own page.
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

    std::string NotesLineBottomCheck = "00000"; // a digit for each of the note's first five lines
    int ThumbBorderStyle = 0;                   // 0 ridge, 1 solid
    bool ThumbNavTop = true;                    // else navigation stands at the lower edge
    int ThumbNavSpace = 1;
    int ThumbNoLinkPic = 0;
    int ThumbImagePos = 0; // 0 left, 1 centre, 2 auto
    int ThumbTitleBorder = 1;
    int ThumbSpacing = 5; // pixels, as the next
    int ThumbPadding = 5;
    int ThumbTnailBorder = 1;
    int ThumbImageBorder = 1;
    int LongNotesLine = 0;
    int ThumbFileLink = 0;
    std::string ThumbFileLinkURL;
    std::string ThumbFileLinkButtonText;
    int ThumbCheckTele = 0;
    int ThumbCheckCamera = 0;
    int ThumbCheckFilter = 0;
    int ThumbCheckDate = 0;

    // These stand in no page.
    int SizeCheck = 1;
    int NoLinkCheck = 0;
    int CheckOrder = 0;
};

} // namespace tarn
