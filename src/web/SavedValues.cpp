#include "web/SavedValues.h"

#include "common/codepage.h"
#include "common/numbers.h"
#include "common/text.h"

#include <algorithm>
#include <optional>

namespace tarn {

namespace {

constexpr std::string_view kMarker = "<!--TarnView";
constexpr std::string_view kPageMarker = "<!--TarnView saved settings";
constexpr std::string_view kBlockEnd = "-->";

// How many values of each kind of page have always been there: they are taken without a look for
// the end of the block.
constexpr std::size_t kUntestedOfPage = 12;
constexpr std::size_t kUntestedOfGallery = 0;

constexpr SavedGrammar kColor{SavedGrammar::Kind::Color};
constexpr SavedGrammar kFont{SavedGrammar::Kind::Font};
constexpr SavedGrammar kLink{SavedGrammar::Kind::Link};
constexpr SavedGrammar kMail{SavedGrammar::Kind::Mail};
constexpr SavedGrammar kNamePart{SavedGrammar::Kind::NamePart};
constexpr SavedGrammar kDigits{SavedGrammar::Kind::Digits};
constexpr SavedGrammar kBoxes{SavedGrammar::Kind::Boxes};

constexpr SavedGrammar InRange(int least, int most) {
    return {SavedGrammar::Kind::Number, least, most};
}

// Lines of a text, one at a time.
class Lines {
public:
    explicit Lines(std::string_view text) : m_rest(text) {}

    std::optional<std::string_view> Next() {
        if (m_rest.empty()) return std::nullopt;
        const std::size_t end = m_rest.find_first_of("\r\n");
        const std::string_view line = m_rest.substr(0, end);
        if (end == std::string_view::npos) {
            m_rest = {};
            return line;
        }
        const bool pair = m_rest.substr(end, kLineEnd.size()) == kLineEnd;
        m_rest.remove_prefix(end + (pair ? kLineEnd.size() : 1));
        return line;
    }

private:
    std::string_view m_rest;
};

template <class Settings>
void Add(PageText& page, const Settings& settings, const std::vector<SavedValue<Settings>>& all) {
    for (const auto& value : all) {
        if (const auto* flag = std::get_if<bool Settings::*>(&value.field)) {
            const bool on = settings.**flag;
            page.Line(value.asNumber ? SavedNumber(on ? -1 : 0) : on ? "True" : "False");
        } else if (const auto* number = std::get_if<int Settings::*>(&value.field)) {
            page.Line(SavedNumber(settings.**number));
        } else {
            page.Line(settings.*std::get<std::string Settings::*>(value.field));
        }
    }
}

template <class Settings>
bool Take(Settings& settings, const SavedValue<Settings>& value, const std::string& text) {
    if (const auto* flag = std::get_if<bool Settings::*>(&value.field)) {
        const auto read = ParseBoolean(Trim(text));
        if (read) settings.** flag = *read;
        return read.has_value();
    }
    if (const auto* number = std::get_if<int Settings::*>(&value.field)) {
        const auto read = ParseInt32(text);
        if (read) settings.** number = *read;
        return read.has_value();
    }
    if (text.find_first_of(kLineEnd) != std::string::npos) return false; // it would end its line
    settings.*std::get<std::string Settings::*>(value.field) = text;
    return true;
}

template <class Settings>
bool IsOfItsGrammar(const Settings& settings, const SavedValue<Settings>& value) {
    if (const auto* number = std::get_if<int Settings::*>(&value.field))
        return value.grammar.Allows(settings.**number);
    const auto* text = std::get_if<std::string Settings::*>(&value.field);
    return !text || value.grammar.Allows(settings.**text);
}

template <class Settings>
bool Read(std::string_view page, Settings& settings, const std::vector<SavedValue<Settings>>& all,
          bool wantsPage, std::size_t untested) {
    Lines lines(page);
    auto line = lines.Next();
    while (line && !StartsWith(*line, kMarker)) line = lines.Next();
    if (!line || StartsWith(*line, kPageMarker) != wantsPage) return false;
    for (std::size_t i = 0; i < all.size(); ++i) {
        line = lines.Next();
        if (!line || (i >= untested && StartsWith(*line, kBlockEnd))) return true;
        Settings read = settings;
        if (!Take(read, all[i], FromCodePage(*line))) return true;
        if (IsOfItsGrammar(read, all[i])) settings = std::move(read);
    }
    return true;
}

template <class Settings>
bool Set(Settings& settings, const std::vector<SavedValue<Settings>>& all, std::string_view name,
         std::string_view text) {
    const auto found =
        std::find_if(all.begin(), all.end(), [&](const auto& value) { return value.name == name; });
    return found != all.end() && Take(settings, *found, std::string(text));
}

template <class Settings>
Settings Encoded(Settings settings, const std::vector<SavedValue<Settings>>& all) {
    for (const auto& value : all) {
        if (const auto* field = std::get_if<std::string Settings::*>(&value.field))
            settings.** field = ToPageBytes(settings.**field);
    }
    return settings;
}

} // namespace

const std::vector<SavedValue<HtmlSettings>>& PageValues() {
    using S = HtmlSettings;
    static const std::vector<SavedValue<S>> values = {
        {"html_layout1", &S::HtmlLayout1},
        {"html_layout2", &S::HtmlLayout2},
        {"html_layout3", &S::HtmlLayout3},
        {"html_sizeo", &S::HtmlSizeO},
        {"html_sizef", &S::HtmlSizeF},
        {"html_sizeh", &S::HtmlSizeH},
        {"html_sizew", &S::HtmlSizeW},
        {"html_border", &S::HtmlBorder},
        {"html_picture_type", &S::HtmlPictureType, false, InRange(1, 4)},
        {"html_height", &S::HtmlHeight},
        {"html_width", &S::HtmlWidth},
        {"html_title", &S::HtmlTitle},
        {"html_page_bg_color", &S::HtmlPageBgColor, false, kColor},
        {"html_title_bg_color", &S::HtmlTitleBgColor, false, kColor},
        {"html_title_border_width", &S::HtmlTitleBorderWidth},
        {"html_text_color", &S::HtmlTextColor, false, kColor},
        {"html_border_color", &S::HtmlBorderColor, false, kColor},
        {"html_line_width", &S::HtmlLineWidth},
        {"html_pnotes_top", &S::HtmlPnotesTop},
        {"html_pnotes_bottom", &S::HtmlPnotesBottom},
        {"html_email", &S::HtmlEmail, false, kMail},
        {"html_fontname", &S::HtmlFontname, false, kFont},
        {"html_fontsize", &S::HtmlFontsize, false, InRange(1, 1000)},
        {"html_home_page", &S::HtmlHomePage, false, kLink},
        {"html_pic_center", &S::HtmlPicCenter},
        {"html_pic_left", &S::HtmlPicLeft},
        {"html_check_image_label", &S::HtmlCheckImageLabel},
        {"html_text_image_label", &S::HtmlTextImageLabel, false, kNamePart},
        {"html_page_break", &S::HtmlPageBreak},
        {"html_zoom_pan", &S::HtmlZoomPan},
        {"html_home_text", &S::HtmlHomeText},
        {"html_mp4_video", &S::HtmlMp4Video},
    };
    return values;
}

const std::vector<SavedValue<GallerySettings>>& GalleryValues() {
    using S = GallerySettings;
    static const std::vector<SavedValue<S>> values = {
        {"html_thumb_title", &S::HtmlThumbTitle},
        {"html_thumb_slider", &S::HtmlThumbSlider, false, InRange(1, 1000)},
        {"html_thumb_notes", &S::HtmlThumbNotes},
        {"html_thumb_notes2", &S::HtmlThumbNotes2},
        {"html_thumb_notes_t", &S::HtmlThumbNotesT},
        {"html_thumb_closewindow", &S::HtmlThumbCloseWindow},
        {"html_thumb_linked_size", &S::HtmlThumbLinkedSize},
        {"html_thumb_cs", &S::HtmlThumbCs},
        {"html_thumb_cs_width", &S::HtmlThumbCsWidth, true},
        {"html_thumb_cs_height", &S::HtmlThumbCsHeight, true},
        {"html_thumb_cs_value", &S::HtmlThumbCsValue, false, kDigits},
        {"html_thumb_data", &S::HtmlThumbData},
        {"html_thumb_home_link", &S::HtmlThumbHomeLink},
        {"html_thumb_home_url", &S::HtmlThumbHomeUrl, false, kLink},
        {"html_thumb_text_color", &S::HtmlThumbTextColor, false, kColor},
        {"html_thumb_page_bg_color", &S::HtmlThumbPageBgColor, false, kColor},
        {"html_thumb_thumb_bg_color", &S::HtmlThumbThumbBgColor, false, kColor},
        {"html_thumb_border_width", &S::HtmlThumbBorderWidth},
        {"html_thumb_border_color", &S::HtmlThumbBorderColor, false, kColor},
        {"html_thumb_notes_top_line", &S::HtmlThumbNotesTopLine},
        {"html_thumb_slider_top", &S::HtmlThumbSliderTop},
        {"html_thumb_begin_slider_top", &S::HtmlThumbBeginSliderTop},
        {"NotesLineBottomCheck", &S::NotesLineBottomCheck, false, kBoxes},
        {"html_thumb_notes_top", &S::HtmlThumbNotesTop, true},
        {"html_thumb_notes_bottom", &S::HtmlThumbNotesBottom, true},
        {"html_thumb_fontname", &S::HtmlThumbFontname, false, kFont},
        {"html_thumb_fontsize", &S::HtmlThumbFontsize, false, InRange(1, 1000)},
        {"html_thumb_wrap", &S::HtmlThumbWrap},
        {"html_thumb_notes_right", &S::HtmlThumbNotesRight, true},
        {"html_thumb_pagebreak", &S::HtmlThumbPagebreak},
        {"html_thumb_emailaddress", &S::HtmlThumbEmailaddress, false, kMail},
        {"ThumbBorderStyle", &S::ThumbBorderStyle, false, InRange(0, 1)},
        {"ThumbNavTop", &S::ThumbNavTop},
        {"ThumbNavSpace", &S::ThumbNavSpace},
        {"ThumbNoLinkPic", &S::ThumbNoLinkPic},
        {"ThumbImagePos", &S::ThumbImagePos, false, InRange(0, 2)},
        {"ThumbTitleBorder", &S::ThumbTitleBorder},
        {"ThumbSpacing", &S::ThumbSpacing},
        {"ThumbPadding", &S::ThumbPadding},
        {"ThumbTnailBorder", &S::ThumbTnailBorder},
        {"ThumbImageBorder", &S::ThumbImageBorder},
        {"LongNotesLine", &S::LongNotesLine},
        {"ThumbFileLink", &S::ThumbFileLink},
        {"ThumbFileLinkURL", &S::ThumbFileLinkURL, false, kLink},
        {"ThumbFileLinkButtonText", &S::ThumbFileLinkButtonText},
        {"ThumbCheckTele", &S::ThumbCheckTele},
        {"ThumbCheckCamera", &S::ThumbCheckCamera},
        {"ThumbCheckFilter", &S::ThumbCheckFilter},
        {"thumbCheckDate", &S::ThumbCheckDate},
    };
    return values;
}

std::string SavedNumber(int value) {
    return (value < 0 ? "" : " ") + std::to_string(value) + " ";
}

void AddSavedValues(PageText& page, const HtmlSettings& settings) {
    Add(page, settings, PageValues());
}

void AddSavedValues(PageText& page, const GallerySettings& settings) {
    Add(page, settings, GalleryValues());
}

bool ReadSavedValues(std::string_view page, HtmlSettings& settings) {
    return Read(page, settings, PageValues(), true, kUntestedOfPage);
}

bool ReadSavedValues(std::string_view page, GallerySettings& settings) {
    return Read(page, settings, GalleryValues(), false, kUntestedOfGallery);
}

bool SetSavedValue(HtmlSettings& settings, std::string_view name, std::string_view text) {
    return Set(settings, PageValues(), name, text);
}

bool SetSavedValue(GallerySettings& settings, std::string_view name, std::string_view text) {
    return Set(settings, GalleryValues(), name, text);
}

HtmlSettings InPageBytes(HtmlSettings settings) {
    return Encoded(std::move(settings), PageValues());
}

GallerySettings InPageBytes(GallerySettings settings) {
    return Encoded(std::move(settings), GalleryValues());
}

} // namespace tarn
