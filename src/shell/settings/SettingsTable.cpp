#include "shell/settings/SettingsTable.h"

#include "common/patterns.h"

#include "common/numbers.h"

#include <cassert>

namespace tarn {

namespace {

#define TARN_FIELD(field) [](ProgramState& state) -> FieldRef { return &state.field; }

// clang-format off
const std::vector<SettingRow> kRows{
    // window places, in twips
    {"left_position", SettingType::Single, "100", TARN_FIELD(MainLeft)},
    {"top_position", SettingType::Single, "100", TARN_FIELD(MainTop)},
    {"main_width", SettingType::Long, "0", TARN_FIELD(MainWidth)},
    {"main_height", SettingType::Long, "0", TARN_FIELD(MainHeight)},
    {"splitter_top", SettingType::Long, "0", TARN_FIELD(SplitterTop)},
    {"leftB_position", SettingType::Long, "100", TARN_FIELD(BrightnessPlace.left)},
    {"topB_position", SettingType::Long, "100", TARN_FIELD(BrightnessPlace.top)},
    {"leftF_position", SettingType::Long, "200", TARN_FIELD(FilterPlace.left)},
    {"topF_position", SettingType::Long, "200", TARN_FIELD(FilterPlace.top)},
    {"leftC_position", SettingType::Long, "400", TARN_FIELD(CaptionPlace.left)},
    {"topC_position", SettingType::Long, "500", TARN_FIELD(CaptionPlace.top)},
    {"leftE_position", SettingType::Long, "200", TARN_FIELD(ExpCalcPlace.left)},
    {"topE_position", SettingType::Long, "200", TARN_FIELD(ExpCalcPlace.top)},
    {"left1_position", SettingType::Long, "0", TARN_FIELD(OneToOnePlace.left)},
    {"top1_position", SettingType::Long, "0", TARN_FIELD(OneToOnePlace.top)},
    {"width1_value", SettingType::Long, "0", TARN_FIELD(OneToOnePlace.width)},
    {"height1_value", SettingType::Long, "0", TARN_FIELD(OneToOnePlace.height)},
    {"leftpic_position", SettingType::Long, "0", TARN_FIELD(PicPlace.left)},
    {"toppic_position", SettingType::Long, "0", TARN_FIELD(PicPlace.top)},
    {"widthpic_value", SettingType::Long, "0", TARN_FIELD(PicPlace.width)},
    {"heightpic_value", SettingType::Long, "0", TARN_FIELD(PicPlace.height)},
    // places that their own windows ask for
    {"lefthelp_position", SettingType::Long, "0", TARN_FIELD(HelpPlace.left)},
    {"tophelp_position", SettingType::Long, "0", TARN_FIELD(HelpPlace.top)},
    {"leftrename_position", SettingType::Long, "0", TARN_FIELD(RenamePlace.left)},
    {"toprename_position", SettingType::Long, "0", TARN_FIELD(RenamePlace.top)},
    {"leftlogs_position", SettingType::Long, "0", TARN_FIELD(LogsPlace.left)},
    {"toplogs_position", SettingType::Long, "0", TARN_FIELD(LogsPlace.top)},
    {"logs_width", SettingType::Long, "0", TARN_FIELD(LogsPlace.width)},
    {"logs_height", SettingType::Long, "0", TARN_FIELD(LogsPlace.height)},
    {"leftNotes_position", SettingType::Long, "0", TARN_FIELD(NotesFolderPlace.left)},
    {"topNotes_position", SettingType::Long, "0", TARN_FIELD(NotesFolderPlace.top)},
    {"leftNewNotes_position", SettingType::Long, "0", TARN_FIELD(NewNotesPlace.left)},
    {"topNewNotes_position", SettingType::Long, "0", TARN_FIELD(NewNotesPlace.top)},
    // folders and programs
    {"open_in", SettingType::String, "", TARN_FIELD(OpenIn)},
    {"notes_folder", SettingType::String, "", TARN_FIELD(NotesFolder)},
    {"copy_folder", SettingType::String, "", TARN_FIELD(CopyImageFolder)},
    {"HtmlEditor", SettingType::String, "", TARN_FIELD(HtmlEditor)},
    {"ImagesPlus", SettingType::String, "", TARN_FIELD(ImagesPlus)},
    {"ImagesPlusExp", SettingType::String, "", TARN_FIELD(ImagesPlusExp)},
    {"RegiStax", SettingType::String, "", TARN_FIELD(RegiStax)},
    // type lists
    {"custom_filter", SettingType::String, "", TARN_FIELD(FilterCustom)},
    {"filter_presets", SettingType::String, "", TARN_FIELD(FilterPresets)},
    {"filetype_filter", SettingType::String, kPictureTypes, TARN_FIELD(PictureTypes)},
    {"videotype_filter", SettingType::String, "*.avi;*.ser;*.log", TARN_FIELD(VideoTypes)},
    {"webtype_filter", SettingType::String, "*.html;*.css", TARN_FIELD(WebTypes)},
    {"picturelist_check", SettingType::Check, "1", TARN_FIELD(PictureListCheck)},
    {"videolist_check", SettingType::Check, "1", TARN_FIELD(VideoListCheck)},
    {"weblist_check", SettingType::Check, "0", TARN_FIELD(WebListCheck)},
    // convert to JPEG
    {"convert_jpg_type", SettingType::Integer, "0", TARN_FIELD(ConvertJpgType)},
    {"convert_jpg_lines", SettingType::String, "1", TARN_FIELD(ConvertJpgLines)},
    {"convert_jpg_captiontext", SettingType::String, "", TARN_FIELD(ConvertJpgText)},
    {"convert_jpg_maxsize", SettingType::String, "0", TARN_FIELD(ConvertJpgMaxSize)},
    {"convert_jpg_maxwidth", SettingType::String, "0", TARN_FIELD(ConvertJpgMaxWidth)},
    {"convert_jpg_maxheight", SettingType::Integer, "0", TARN_FIELD(ConvertJpgMaxHeight)},
    {"convert_jpg_add_filename", SettingType::Boolean, "True", TARN_FIELD(ConvertJpgAddFN)},
    {"CvtJpgQ", SettingType::Integer, "75", TARN_FIELD(ConvertJpgQuality)},
    // page builder
    {"html_layout1", SettingType::Boolean, "True", TARN_FIELD(HtmlLayout1)},
    {"html_layout2", SettingType::Boolean, "False", TARN_FIELD(HtmlLayout2)},
    {"html_layout3", SettingType::Boolean, "False", TARN_FIELD(HtmlLayout3)},
    {"html_border", SettingType::Integer, "1", TARN_FIELD(HtmlBorder)},
    {"html_sizef", SettingType::Boolean, "False", TARN_FIELD(HtmlSizeF)},
    {"html_sizeh", SettingType::Boolean, "False", TARN_FIELD(HtmlSizeH)},
    {"html_sizeo", SettingType::Boolean, "True", TARN_FIELD(HtmlSizeO)},
    {"html_sizew", SettingType::Boolean, "False", TARN_FIELD(HtmlSizeW)},
    {"html_width", SettingType::Integer, kFromPaneWidth, TARN_FIELD(HtmlWidth)},
    {"html_height", SettingType::Integer, kFromPaneHeight, TARN_FIELD(HtmlHeight)},
    {"html_title", SettingType::String, "Pictures", TARN_FIELD(HtmlTitle)},
    {"html_picture_type", SettingType::Integer, "1", TARN_FIELD(HtmlPictureType)},
    {"html_append_option", SettingType::Integer, "1", TARN_FIELD(HtmlAppendOption)},
    {"html_page_bg_color", SettingType::String, "FFFFFF", TARN_FIELD(HtmlPageBgColor)},
    {"html_title_bg_color", SettingType::String, "BFCFE0", TARN_FIELD(HtmlTitleBgColor)},
    {"html_title_border_width", SettingType::Integer, "1", TARN_FIELD(HtmlTitleBorderWidth)},
    {"html_text_color", SettingType::String, "000000", TARN_FIELD(HtmlTextColor)},
    {"html_border_color", SettingType::String, "000000", TARN_FIELD(HtmlBorderColor)},
    {"html_line_width", SettingType::Integer, "1", TARN_FIELD(HtmlLineWidth)},
    {"html_pnotes_top", SettingType::Boolean, "False", TARN_FIELD(HtmlPnotesTop)},
    {"html_pnotes_bottom", SettingType::Boolean, "True", TARN_FIELD(HtmlPnotesBottom)},
    {"html_email", SettingType::String, "", TARN_FIELD(HtmlEmail)},
    {"html_home_page", SettingType::String, "", TARN_FIELD(HtmlHomePage)},
    {"html_home_text", SettingType::String, "Home", TARN_FIELD(HtmlHomeText)},
    {"html_fontname", SettingType::String, "Verdana", TARN_FIELD(HtmlFontname)},
    {"html_fontsize", SettingType::Integer, "10", TARN_FIELD(HtmlFontsize)},
    {"html_pic_center", SettingType::Boolean, "True", TARN_FIELD(HtmlPicCenter)},
    {"html_pic_left", SettingType::Boolean, "False", TARN_FIELD(HtmlPicLeft)},
    {"html_check_image_label", SettingType::Integer, "0", TARN_FIELD(HtmlCheckImageLabel)},
    {"html_mp4_video", SettingType::Integer, "0", TARN_FIELD(HtmlMp4Video)},
    {"html_text_image_label", SettingType::String, "", TARN_FIELD(HtmlTextImageLabel)},
    {"html_page_break", SettingType::Integer, "0", TARN_FIELD(HtmlPageBreak)},
    {"html_zoom_pan", SettingType::Integer, "0", TARN_FIELD(HtmlZoomPan)},
    {"html_layout_top", SettingType::Long, kFromMainTop, TARN_FIELD(HtmlLayoutPlace.top)},
    {"html_layout_left", SettingType::Long, kFromMainLeft, TARN_FIELD(HtmlLayoutPlace.left)},
    {"html_auto", SettingType::Integer, "0", TARN_FIELD(HtmlAuto)},
    {"html_exif_info", SettingType::Integer, "1", TARN_FIELD(HtmlExifInfo)},
    {"html_overwrite_warning", SettingType::Boolean, "True", TARN_FIELD(HtmlOverwriteWarning)},
    // gallery
    {"html_thumb_notes", SettingType::Integer, "1", TARN_FIELD(HtmlThumbNotes)},
    {"html_thumb_notes2", SettingType::Integer, "1", TARN_FIELD(HtmlThumbNotes2)},
    {"html_thumb_data", SettingType::Integer, "0", TARN_FIELD(HtmlThumbData)},
    {"html_thumb_closewindow", SettingType::Integer, "0", TARN_FIELD(HtmlThumbCloseWindow)},
    {"html_thumb_linked_size", SettingType::Long, "1", TARN_FIELD(HtmlThumbLinkedSize)},
    {"html_thumb_slider", SettingType::Integer, "5", TARN_FIELD(HtmlThumbSlider)},
    {"html_thumb_notes_t", SettingType::Integer, "1", TARN_FIELD(HtmlThumbNotesT)},
    {"html_thumb_title", SettingType::String, "Pictures", TARN_FIELD(HtmlThumbTitle)},
    {"html_thumb_cs", SettingType::Integer, "0", TARN_FIELD(HtmlThumbCs)},
    {"html_thumb_cs_width", SettingType::Boolean, "True", TARN_FIELD(HtmlThumbCsWidth)},
    {"html_thumb_cs_height", SettingType::Boolean, "False", TARN_FIELD(HtmlThumbCsHeight)},
    {"html_thumb_cs_value", SettingType::String, "600", TARN_FIELD(HtmlThumbCsValue)},
    {"html_thumb_home_link", SettingType::Integer, "0", TARN_FIELD(HtmlThumbHomeLink)},
    {"html_thumb_home_url", SettingType::String, "", TARN_FIELD(HtmlThumbHomeUrl)},
    {"html_thumb_text_color", SettingType::String, "FFFFFF", TARN_FIELD(HtmlThumbTextColor)},
    {"html_thumb_border_color", SettingType::String, "FFFFFF", TARN_FIELD(HtmlThumbBorderColor)},
    {"html_thumb_page_bg_color", SettingType::String, "000000", TARN_FIELD(HtmlThumbPageBgColor)},
    {"html_thumb_thumb_bg_color", SettingType::String, "404040", TARN_FIELD(HtmlThumbThumbBgColor)},
    {"html_thumb_border_width", SettingType::Integer, "3", TARN_FIELD(HtmlThumbBorderWidth)},
    {"html_thumb_notes_top_line", SettingType::Integer, "0", TARN_FIELD(HtmlThumbNotesTopLine)},
    {"html_thumb_slider_top", SettingType::Integer, "1", TARN_FIELD(HtmlThumbSliderTop)},
    {"html_thumb_begin_slider_top", SettingType::Integer, "1", TARN_FIELD(HtmlThumbBeginSliderTop)},
    {"html_thumb_notes_top", SettingType::Boolean, "False", TARN_FIELD(HtmlThumbNotesTop)},
    {"html_thumb_notes_bottom", SettingType::Boolean, "False", TARN_FIELD(HtmlThumbNotesBottom)},
    {"html_thumb_notes_right", SettingType::Boolean, "True", TARN_FIELD(HtmlThumbNotesRight)},
    {"html_thumb_fontname", SettingType::String, "Verdana", TARN_FIELD(HtmlThumbFontname)},
    {"html_thumb_fontsize", SettingType::Integer, "10", TARN_FIELD(HtmlThumbFontsize)},
    {"html_thumb_wrap", SettingType::Integer, "0", TARN_FIELD(HtmlThumbWrap)},
    {"html_thumb_pagebreak", SettingType::Integer, "0", TARN_FIELD(HtmlThumbPagebreak)},
    {"html_thumb_emailaddress", SettingType::String, "", TARN_FIELD(HtmlThumbEmailaddress)},
    // thumbnails
    {"thumbnotes_print", SettingType::Boolean, "True", TARN_FIELD(PrintNotesOnThumbnails)},
    {"thumbnail_size", SettingType::Integer, "3", TARN_FIELD(ThumbSizeIndex)},
    {"thumbnail_subfolder", SettingType::String, "thumbnails", TARN_FIELD(ThumbSubFolder)},
    {"thumbnail_clear", SettingType::Boolean, "True", TARN_FIELD(ThumbClear)},
    {"thumbnail_create_notes", SettingType::Boolean, "True", TARN_FIELD(ThumbCreateNotes)},
    {"html_last_page", SettingType::String, "", TARN_FIELD(HtmlPath)},
    {"html_last_gallery", SettingType::String, "", TARN_FIELD(HtmlGalleryPath)},
    {"video_in_window", SettingType::Boolean, "False", TARN_FIELD(VideoInWindow)},
    {"list_pictures", SettingType::Boolean, "False", TARN_FIELD(ListPictures)},
    // menu switches
    {"one_to_one_info", SettingType::Boolean, "False", TARN_FIELD(OneToOneInfo)},
    {"copy_auto", SettingType::Boolean, "False", TARN_FIELD(CopyAuto)},
    {"shownotes_slide", SettingType::Boolean, "False", TARN_FIELD(ShowNotesSlide)},
    {"filedate_auto", SettingType::Boolean, "True", TARN_FIELD(AutoSetFileDates)},
    {"camera_settings", SettingType::Boolean, "True", TARN_FIELD(CameraSettings)},
    {"beep_last_slide", SettingType::Boolean, "False", TARN_FIELD(BeepLastSlide)},
    {"beep_all_slide", SettingType::Boolean, "False", TARN_FIELD(BeepAllSlide)},
    {"beep_copy_picture", SettingType::Boolean, "False", TARN_FIELD(BeepCopyPicture)},
    {"slides4_mouse", SettingType::Boolean, "True", TARN_FIELD(Slides4Mouse)},
    {"clear_notes_saveplus", SettingType::Check, "0", TARN_FIELD(ClearNotesSavePlus)},
    {"slide_clear", SettingType::Boolean, "False", TARN_FIELD(SlideClear)},
    {"slide_alt_arrow_keys", SettingType::Boolean, "False", TARN_FIELD(SlideAltArrowKeys)},
    {"print_only_1st_page", SettingType::Boolean, "False", TARN_FIELD(PrintOnly1stPage)},
    {"delete_confirm", SettingType::Boolean, "True", TARN_FIELD(DeleteConfirm)},
    {"delete_keep_notes", SettingType::Boolean, "False", TARN_FIELD(DeleteKeepNotes)},
    {"one_always_top", SettingType::Boolean, "False", TARN_FIELD(OneAlwaysTop)},
    // printing
    {"print_printer", SettingType::String, "", TARN_FIELD(PrinterName)},
    {"print_to_file", SettingType::Boolean, "False", TARN_FIELD(PrintToFile)},
    {"print_folder", SettingType::String, "", TARN_FIELD(PrintFolder)},
    {"print_paper", SettingType::String, "A4", TARN_FIELD(PrintPaper)},
    {"print_landscape", SettingType::Boolean, "False", TARN_FIELD(PrintLandscape)},
    {"print_copies", SettingType::Integer, "1", TARN_FIELD(PrintCopies)},
    {"print_preview", SettingType::Boolean, "False", TARN_FIELD(PrintPreview)},
    {"left_preview_position", SettingType::Long, "0", TARN_FIELD(PreviewPlace.left)},
    {"top_preview_position", SettingType::Long, "0", TARN_FIELD(PreviewPlace.top)},
    {"preview_width", SettingType::Long, "0", TARN_FIELD(PreviewPlace.width)},
    {"preview_height", SettingType::Long, "0", TARN_FIELD(PreviewPlace.height)},
    {"left_stretch_position", SettingType::Long, "0", TARN_FIELD(StretchPlace.left)},
    {"top_stretch_position", SettingType::Long, "0", TARN_FIELD(StretchPlace.top)},
    {"stretch_width", SettingType::Long, "0", TARN_FIELD(StretchPlace.width)},
    {"stretch_height", SettingType::Long, "0", TARN_FIELD(StretchPlace.height)},
    // look of slides
    {"slidefont_index", SettingType::Integer, "1", TARN_FIELD(SlideFontIndex)},
    {"slidefontsize_index", SettingType::Integer, "3", TARN_FIELD(SlideFontSizeIndex)},
    {"slidebackground_index", SettingType::Integer, "3", TARN_FIELD(SlideBackgroundIndex)},
    {"textcolor_index", SettingType::Integer, "0", TARN_FIELD(SlideTextColorIndex)},
    // choices of the note composer
    {"NewNotesTelescope", SettingType::Integer, "0", TARN_FIELD(NewNotesTelescope)},
    {"NewNotesGuideScope", SettingType::Integer, "0", TARN_FIELD(NewNotesGuideScope)},
    {"NewNotesLens", SettingType::Integer, "0", TARN_FIELD(NewNotesLens)},
    {"NewNotesMount", SettingType::Integer, "0", TARN_FIELD(NewNotesMount)},
    {"NewNotesCamera", SettingType::Integer, "0", TARN_FIELD(NewNotesCamera)},
    {"NewNotesFilter", SettingType::Integer, "0", TARN_FIELD(NewNotesFilter)},
    {"NewNotesExposure", SettingType::Integer, "0", TARN_FIELD(NewNotesExposure)},
    {"NewNotesProcessing", SettingType::Integer, "0", TARN_FIELD(NewNotesProcessing)},
    {"NewNotesLocation", SettingType::Integer, "0", TARN_FIELD(NewNotesLocation)},
    {"NewNotesDate", SettingType::Integer, "0", TARN_FIELD(NewNotesDate)},
    // folder history; HistFolders and HistFiles are packed beside this table
    {"HistCur", SettingType::Integer, "0", TARN_FIELD(HistCur)},
    {"HistHigh", SettingType::Integer, "0", TARN_FIELD(HistHigh)},
};
// clang-format on

#undef TARN_FIELD

bool SetWhole(int& field, const SettingRow& row, const std::string& text) {
    const bool isLong = row.type == SettingType::Long;
    const auto value32 = isLong ? ParseInt32(text) : std::optional<std::int32_t>();
    const auto value16 = isLong ? std::optional<std::int16_t>() : ParseInt16(text);
    if (!value32 && !value16) return false;
    const int value = isLong ? *value32 : *value16;
    if (row.type == SettingType::Check && (value < 0 || value > 1)) return false;
    field = value;
    return true;
}

} // namespace

const std::vector<SettingRow>& SettingRows() {
    return kRows;
}

const SettingRow& SettingOf(const std::string& key) {
    for (const SettingRow& row : kRows)
        if (key == row.key) return row;
    assert(false);
    return kRows.front();
}

std::string DefaultOf(const SettingRow& row, const ProgramState& state) {
    if (row.fallback == kFromPaneWidth) return std::to_string(state.PreviewWidth);
    if (row.fallback == kFromPaneHeight) return std::to_string(state.PreviewHeight);
    if (row.fallback == kFromMainTop) return FormatFixed(state.MainTop, 0);
    if (row.fallback == kFromMainLeft) return FormatFixed(state.MainLeft + 300, 0);
    return row.fallback;
}

bool SetField(const SettingRow& row, ProgramState& state, const std::string& text) {
    const FieldRef field = row.field(state);
    if (auto* const string = std::get_if<std::string*>(&field)) {
        **string = text;
        return true;
    }
    if (auto* const whole = std::get_if<int*>(&field)) return SetWhole(**whole, row, text);
    if (auto* const flag = std::get_if<bool*>(&field)) {
        const auto value = ParseBoolean(text);
        if (value) **flag = *value;
        return value.has_value();
    }
    const auto value = ParseSingle(text);
    if (value) *std::get<float*>(field) = *value;
    return value.has_value();
}

std::string TextOf(const SettingRow& row, ProgramState& state) {
    const FieldRef field = row.field(state);
    if (auto* const string = std::get_if<std::string*>(&field)) return **string;
    if (auto* const whole = std::get_if<int*>(&field)) return std::to_string(**whole);
    if (auto* const flag = std::get_if<bool*>(&field)) return **flag ? "True" : "False";
    return ShortestSingle(*std::get<float*>(field));
}

} // namespace tarn
