#include "desk/settings/SettingsTable.h"

#include "common/numbers.h"

#include <cassert>

namespace tarn {

namespace {

#define TARN_FIELD(field) [](ProgramState& state) -> FieldRef { return &state.field; }

// Defaults that are worked out when the program starts.
std::string PaneWidth(const ProgramState& state) {
    return std::to_string(state.PreviewWidth);
}

std::string PaneHeight(const ProgramState& state) {
    return std::to_string(state.PreviewHeight);
}

std::string MainTopText(const ProgramState& state) {
    return FormatFixed(state.MainTop, 0);
}

std::string BesideMain(const ProgramState& state) {
    return FormatFixed(state.MainLeft + 300, 0);
}

// clang-format off
const std::vector<SettingRow> kRows{
    {"left_position", SettingType::Single, TARN_FIELD(MainLeft), Keeping::WhileNormal},
    {"top_position", SettingType::Single, TARN_FIELD(MainTop), Keeping::WhileNormal},
    {"main_width", SettingType::Long, TARN_FIELD(MainWidth)},
    {"main_height", SettingType::Long, TARN_FIELD(MainHeight)},
    {"left1_position", SettingType::Long, TARN_FIELD(OneToOnePlace.left)},
    {"top1_position", SettingType::Long, TARN_FIELD(OneToOnePlace.top)},
    {"width1_value", SettingType::Long, TARN_FIELD(OneToOnePlace.width)},
    {"height1_value", SettingType::Long, TARN_FIELD(OneToOnePlace.height)},
    {"one_to_one_info", SettingType::Boolean, TARN_FIELD(OneToOneInfo)},
    {"leftpic_position", SettingType::Long, TARN_FIELD(PicPlace.left)},
    {"toppic_position", SettingType::Long, TARN_FIELD(PicPlace.top)},
    {"widthpic_value", SettingType::Long, TARN_FIELD(PicPlace.width)},
    {"heightpic_value", SettingType::Long, TARN_FIELD(PicPlace.height)},
    {"leftlogs_position", SettingType::Long, TARN_FIELD(LogsPlace.left)},
    {"toplogs_position", SettingType::Long, TARN_FIELD(LogsPlace.top)},
    {"logs_width", SettingType::Long, TARN_FIELD(LogsPlace.width)},
    {"logs_height", SettingType::Long, TARN_FIELD(LogsPlace.height)},
    {"lefthelp_position", SettingType::Long, TARN_FIELD(HelpPlace.left)},
    {"tophelp_position", SettingType::Long, TARN_FIELD(HelpPlace.top)},
    {"leftrename_position", SettingType::Long, TARN_FIELD(RenamePlace.left)},
    {"toprename_position", SettingType::Long, TARN_FIELD(RenamePlace.top)},
    {"open_in", SettingType::String, TARN_FIELD(OpenIn)},
    {"notes_folder", SettingType::String, TARN_FIELD(NotesFolder)},
    {"copy_folder", SettingType::String, TARN_FIELD(CopyImageFolder)},
    {"clear_notes_saveplus", SettingType::Check, TARN_FIELD(ClearNotesSavePlus)},
    {"splitter_top", SettingType::Long, TARN_FIELD(SplitterTop)},
    {"filetype_filter", SettingType::String, TARN_FIELD(PictureTypes)},
    {"videotype_filter", SettingType::String, TARN_FIELD(VideoTypes)},
    {"webtype_filter", SettingType::String, TARN_FIELD(WebTypes)},
    {"picturelist_check", SettingType::Check, TARN_FIELD(PictureListCheck)},
    {"videolist_check", SettingType::Check, TARN_FIELD(VideoListCheck)},
    {"weblist_check", SettingType::Check, TARN_FIELD(WebListCheck)},
    {"html_auto", SettingType::Integer, TARN_FIELD(HtmlAuto)},
    {"html_exif_info", SettingType::Integer, TARN_FIELD(HtmlExifInfo)},
    {"copy_auto", SettingType::Boolean, TARN_FIELD(CopyAuto)},
    {"camera_settings", SettingType::Boolean, TARN_FIELD(CameraSettings)},
    {"convert_jpg_add_filename", SettingType::Boolean, TARN_FIELD(ConvertJpgAddFN)},
    {"thumbnotes_print", SettingType::Boolean, TARN_FIELD(PrintNotesOnThumbnails)},
    {"shownotes_slide", SettingType::Boolean, TARN_FIELD(ShowNotesSlide)},
    {"filedate_auto", SettingType::Boolean, TARN_FIELD(AutoSetFileDates)},
    {"beep_last_slide", SettingType::Boolean, TARN_FIELD(BeepLastSlide)},
    {"beep_all_slide", SettingType::Boolean, TARN_FIELD(BeepAllSlide)},
    {"beep_copy_picture", SettingType::Boolean, TARN_FIELD(BeepCopyPicture)},
    {"slidefont_index", SettingType::Integer, TARN_FIELD(SlideFontIndex)},
    {"slidefontsize_index", SettingType::Integer, TARN_FIELD(SlideFontSizeIndex)},
    {"slidebackground_index", SettingType::Integer, TARN_FIELD(SlideBackgroundIndex)},
    {"textcolor_index", SettingType::Integer, TARN_FIELD(SlideTextColorIndex)},
    {"slides4_mouse", SettingType::Boolean, TARN_FIELD(Slides4Mouse)},
    {"html_layout1", SettingType::Boolean, TARN_FIELD(HtmlLayout1)},
    {"html_layout2", SettingType::Boolean, TARN_FIELD(HtmlLayout2)},
    {"html_layout3", SettingType::Boolean, TARN_FIELD(HtmlLayout3)},
    {"html_border", SettingType::Integer, TARN_FIELD(HtmlBorder)},
    {"html_sizef", SettingType::Boolean, TARN_FIELD(HtmlSizeF)},
    {"html_sizeh", SettingType::Boolean, TARN_FIELD(HtmlSizeH)},
    {"html_sizeo", SettingType::Boolean, TARN_FIELD(HtmlSizeO)},
    {"html_sizew", SettingType::Boolean, TARN_FIELD(HtmlSizeW)},
    {"html_width", SettingType::Integer, TARN_FIELD(HtmlWidth), Keeping::Always, PaneWidth},
    {"html_height", SettingType::Integer, TARN_FIELD(HtmlHeight), Keeping::Always, PaneHeight},
    {"html_title", SettingType::String, TARN_FIELD(HtmlTitle)},
    {"html_picture_type", SettingType::Integer, TARN_FIELD(HtmlPictureType)},
    {"html_append_option", SettingType::Integer, TARN_FIELD(HtmlAppendOption)},
    {"html_page_bg_color", SettingType::String, TARN_FIELD(HtmlPageBgColor)},
    {"html_title_bg_color", SettingType::String, TARN_FIELD(HtmlTitleBgColor)},
    {"html_title_border_width", SettingType::Integer, TARN_FIELD(HtmlTitleBorderWidth)},
    {"html_text_color", SettingType::String, TARN_FIELD(HtmlTextColor)},
    {"html_border_color", SettingType::String, TARN_FIELD(HtmlBorderColor)},
    {"html_line_width", SettingType::Integer, TARN_FIELD(HtmlLineWidth)},
    {"html_pnotes_top", SettingType::Boolean, TARN_FIELD(HtmlPnotesTop)},
    {"html_pnotes_bottom", SettingType::Boolean, TARN_FIELD(HtmlPnotesBottom)},
    {"html_email", SettingType::String, TARN_FIELD(HtmlEmail)},
    {"html_home_page", SettingType::String, TARN_FIELD(HtmlHomePage)},
    {"html_home_text", SettingType::String, TARN_FIELD(HtmlHomeText)},
    {"html_fontname", SettingType::String, TARN_FIELD(HtmlFontname)},
    {"html_fontsize", SettingType::Integer, TARN_FIELD(HtmlFontsize)},
    {"html_pic_center", SettingType::Boolean, TARN_FIELD(HtmlPicCenter)},
    {"html_pic_left", SettingType::Boolean, TARN_FIELD(HtmlPicLeft)},
    {"html_check_image_label", SettingType::Integer, TARN_FIELD(HtmlCheckImageLabel)},
    {"html_mp4_video", SettingType::Integer, TARN_FIELD(HtmlMp4Video)},
    {"html_text_image_label", SettingType::String, TARN_FIELD(HtmlTextImageLabel)},
    {"html_page_break", SettingType::Integer, TARN_FIELD(HtmlPageBreak)},
    {"html_zoom_pan", SettingType::Integer, TARN_FIELD(HtmlZoomPan)},
    {"html_thumb_notes", SettingType::Integer, TARN_FIELD(HtmlThumbNotes)},
    {"html_thumb_notes2", SettingType::Integer, TARN_FIELD(HtmlThumbNotes2)},
    {"html_thumb_data", SettingType::Integer, TARN_FIELD(HtmlThumbData)},
    {"html_thumb_closewindow", SettingType::Integer, TARN_FIELD(HtmlThumbCloseWindow)},
    {"html_thumb_linked_size", SettingType::Long, TARN_FIELD(HtmlThumbLinkedSize)},
    {"html_thumb_slider", SettingType::Integer, TARN_FIELD(HtmlThumbSlider)},
    {"html_thumb_notes_t", SettingType::Integer, TARN_FIELD(HtmlThumbNotesT)},
    {"html_thumb_title", SettingType::String, TARN_FIELD(HtmlThumbTitle)},
    {"html_thumb_cs", SettingType::Integer, TARN_FIELD(HtmlThumbCs)},
    {"html_thumb_cs_width", SettingType::Boolean, TARN_FIELD(HtmlThumbCsWidth)},
    {"html_thumb_cs_height", SettingType::Boolean, TARN_FIELD(HtmlThumbCsHeight)},
    {"html_thumb_cs_value", SettingType::String, TARN_FIELD(HtmlThumbCsValue)},
    {"html_thumb_home_link", SettingType::Integer, TARN_FIELD(HtmlThumbHomeLink)},
    {"html_thumb_home_url", SettingType::String, TARN_FIELD(HtmlThumbHomeUrl)},
    {"html_thumb_text_color", SettingType::String, TARN_FIELD(HtmlThumbTextColor)},
    {"html_thumb_border_color", SettingType::String, TARN_FIELD(HtmlThumbBorderColor)},
    {"html_thumb_page_bg_color", SettingType::String, TARN_FIELD(HtmlThumbPageBgColor)},
    {"html_thumb_thumb_bg_color", SettingType::String, TARN_FIELD(HtmlThumbThumbBgColor)},
    {"html_thumb_border_width", SettingType::Integer, TARN_FIELD(HtmlThumbBorderWidth)},
    {"html_thumb_notes_top_line", SettingType::Integer, TARN_FIELD(HtmlThumbNotesTopLine)},
    {"html_thumb_slider_top", SettingType::Integer, TARN_FIELD(HtmlThumbSliderTop)},
    {"html_thumb_begin_slider_top", SettingType::Integer, TARN_FIELD(HtmlThumbBeginSliderTop)},
    {"html_thumb_notes_top", SettingType::Boolean, TARN_FIELD(HtmlThumbNotesTop)},
    {"html_thumb_notes_bottom", SettingType::Boolean, TARN_FIELD(HtmlThumbNotesBottom)},
    {"html_thumb_notes_right", SettingType::Boolean, TARN_FIELD(HtmlThumbNotesRight)},
    {"html_thumb_fontname", SettingType::String, TARN_FIELD(HtmlThumbFontname)},
    {"html_thumb_fontsize", SettingType::Integer, TARN_FIELD(HtmlThumbFontsize)},
    {"html_thumb_wrap", SettingType::Integer, TARN_FIELD(HtmlThumbWrap)},
    {"html_thumb_pagebreak", SettingType::Integer, TARN_FIELD(HtmlThumbPagebreak)},
    {"html_thumb_emailaddress", SettingType::String, TARN_FIELD(HtmlThumbEmailaddress)},
    {"thumbnail_size", SettingType::Integer, TARN_FIELD(ThumbSizeIndex)},
    {"thumbnail_subfolder", SettingType::String, TARN_FIELD(ThumbSubFolder)},
    {"thumbnail_clear", SettingType::Boolean, TARN_FIELD(ThumbClear)},
    {"thumbnail_create_notes", SettingType::Boolean, TARN_FIELD(ThumbCreateNotes)},
    {"list_pictures", SettingType::Boolean, TARN_FIELD(ListPictures)},
    {"video_in_window", SettingType::Boolean, TARN_FIELD(VideoInWindow)},
    {"html_last_page", SettingType::String, TARN_FIELD(HtmlPath)},
    {"html_last_gallery", SettingType::String, TARN_FIELD(HtmlGalleryPath)},
    {"slide_clear", SettingType::Boolean, TARN_FIELD(SlideClear)},
    {"slide_alt_arrow_keys", SettingType::Boolean, TARN_FIELD(SlideAltArrowKeys)},
    {"print_only_1st_page", SettingType::Boolean, TARN_FIELD(PrintOnly1stPage)},
    {"delete_confirm", SettingType::Boolean, TARN_FIELD(DeleteConfirm)},
    {"delete_keep_notes", SettingType::Boolean, TARN_FIELD(DeleteKeepNotes)},
    {"one_always_top", SettingType::Boolean, TARN_FIELD(OneAlwaysTop)},
    {"leftB_position", SettingType::Long, TARN_FIELD(BrightnessPlace.left)},
    {"topB_position", SettingType::Long, TARN_FIELD(BrightnessPlace.top)},
    {"leftF_position", SettingType::Long, TARN_FIELD(FilterPlace.left)},
    {"topF_position", SettingType::Long, TARN_FIELD(FilterPlace.top)},
    {"custom_filter", SettingType::String, TARN_FIELD(FilterCustom)},
    {"filter_presets", SettingType::String, TARN_FIELD(FilterPresets)},
    {"leftE_position", SettingType::Long, TARN_FIELD(ExpCalcPlace.left)},
    {"topE_position", SettingType::Long, TARN_FIELD(ExpCalcPlace.top)},
    {"leftC_position", SettingType::Long, TARN_FIELD(CaptionPlace.left)},
    {"topC_position", SettingType::Long, TARN_FIELD(CaptionPlace.top)},
    {"convert_jpg_type", SettingType::Integer, TARN_FIELD(ConvertJpgType)},
    {"convert_jpg_lines", SettingType::String, TARN_FIELD(ConvertJpgLines)},
    {"convert_jpg_captiontext", SettingType::String, TARN_FIELD(ConvertJpgText)},
    {"convert_jpg_maxsize", SettingType::String, TARN_FIELD(ConvertJpgMaxSize)},
    {"convert_jpg_maxwidth", SettingType::String, TARN_FIELD(ConvertJpgMaxWidth)},
    {"convert_jpg_maxheight", SettingType::Integer, TARN_FIELD(ConvertJpgMaxHeight)},
    {"HtmlEditor", SettingType::String, TARN_FIELD(HtmlEditor)},
    {"ImagesPlus", SettingType::String, TARN_FIELD(ImagesPlus)},
    {"ImagesPlusExp", SettingType::String, TARN_FIELD(ImagesPlusExp)},
    {"RegiStax", SettingType::String, TARN_FIELD(RegiStax)},
    {"html_overwrite_warning", SettingType::Boolean, TARN_FIELD(HtmlOverwriteWarning)},
    {"html_layout_top", SettingType::Long, TARN_FIELD(HtmlLayoutPlace.top), Keeping::Always, MainTopText},
    {"html_layout_left", SettingType::Long, TARN_FIELD(HtmlLayoutPlace.left), Keeping::Always, BesideMain},
    {"CvtJpgQ", SettingType::Integer, TARN_FIELD(ConvertJpgQuality)},
    {"NewNotesTelescope", SettingType::Integer, TARN_FIELD(NewNotesTelescope)},
    {"NewNotesGuideScope", SettingType::Integer, TARN_FIELD(NewNotesGuideScope)},
    {"NewNotesLens", SettingType::Integer, TARN_FIELD(NewNotesLens)},
    {"NewNotesMount", SettingType::Integer, TARN_FIELD(NewNotesMount)},
    {"NewNotesCamera", SettingType::Integer, TARN_FIELD(NewNotesCamera)},
    {"NewNotesFilter", SettingType::Integer, TARN_FIELD(NewNotesFilter)},
    {"NewNotesExposure", SettingType::Integer, TARN_FIELD(NewNotesExposure)},
    {"NewNotesProcessing", SettingType::Integer, TARN_FIELD(NewNotesProcessing)},
    {"NewNotesLocation", SettingType::Integer, TARN_FIELD(NewNotesLocation)},
    {"NewNotesDate", SettingType::Integer, TARN_FIELD(NewNotesDate)},
    {"print_printer", SettingType::String, TARN_FIELD(PrinterName)},
    {"print_to_file", SettingType::Boolean, TARN_FIELD(PrintToFile)},
    {"print_folder", SettingType::String, TARN_FIELD(PrintFolder)},
    {"print_paper", SettingType::String, TARN_FIELD(PrintPaper)},
    {"print_landscape", SettingType::Boolean, TARN_FIELD(PrintLandscape)},
    {"print_copies", SettingType::Integer, TARN_FIELD(PrintCopies)},
    {"print_preview", SettingType::Boolean, TARN_FIELD(PrintPreview)},
    {"left_preview_position", SettingType::Long, TARN_FIELD(PreviewPlace.left)},
    {"top_preview_position", SettingType::Long, TARN_FIELD(PreviewPlace.top)},
    {"preview_width", SettingType::Long, TARN_FIELD(PreviewPlace.width)},
    {"preview_height", SettingType::Long, TARN_FIELD(PreviewPlace.height)},
    {"left_stretch_position", SettingType::Long, TARN_FIELD(StretchPlace.left)},
    {"top_stretch_position", SettingType::Long, TARN_FIELD(StretchPlace.top)},
    {"stretch_width", SettingType::Long, TARN_FIELD(StretchPlace.width)},
    {"stretch_height", SettingType::Long, TARN_FIELD(StretchPlace.height)},
    {"main_maximised", SettingType::Boolean, TARN_FIELD(MainMaximised)},
    {"main_normal_width", SettingType::Long, TARN_FIELD(MainNormalWidth)},
    {"main_normal_height", SettingType::Long, TARN_FIELD(MainNormalHeight)},
    {"main_screen", SettingType::String, TARN_FIELD(MainScreen)},
    {"pane_tree_width", SettingType::Long, TARN_FIELD(TreeWidth)},
    {"pane_strip_height", SettingType::Long, TARN_FIELD(StripHeight)},
    {"pane_notes_width", SettingType::Long, TARN_FIELD(NotesWidth)},
    {"theme", SettingType::Integer, TARN_FIELD(Theme)},
    {"filedate_auto_answered", SettingType::Boolean, TARN_FIELD(FileDatesAnswered)},
    {"xisftype_filter", SettingType::String, TARN_FIELD(XisfTypes)},
    {"packedfits_filter", SettingType::String, TARN_FIELD(PackedFitsTypes)},
    {"picture_memory_percent", SettingType::Integer, TARN_FIELD(PictureMemory)},
    {"mark_advance", SettingType::Boolean, TARN_FIELD(MarkAdvance)},
    {"sort_folders", SettingType::String, TARN_FIELD(SortOfFolders)},
    {"history_days", SettingType::Integer, TARN_FIELD(HistoryDays)},
    {"history_megabytes", SettingType::Integer, TARN_FIELD(HistoryMegabytes)},
    {"left_history_position", SettingType::Long, TARN_FIELD(HistoryPlace.left)},
    {"top_history_position", SettingType::Long, TARN_FIELD(HistoryPlace.top)},
    {"history_width", SettingType::Long, TARN_FIELD(HistoryPlace.width)},
    {"history_height", SettingType::Long, TARN_FIELD(HistoryPlace.height)},
    {"left_night_position", SettingType::Long, TARN_FIELD(NightPlace.left)},
    {"top_night_position", SettingType::Long, TARN_FIELD(NightPlace.top)},
    {"night_width", SettingType::Long, TARN_FIELD(NightPlace.width)},
    {"night_height", SettingType::Long, TARN_FIELD(NightPlace.height)},
    {"left_corners_position", SettingType::Long, TARN_FIELD(CornersPlace.left)},
    {"top_corners_position", SettingType::Long, TARN_FIELD(CornersPlace.top)},
    {"corners_width", SettingType::Long, TARN_FIELD(CornersPlace.width)},
    {"corners_height", SettingType::Long, TARN_FIELD(CornersPlace.height)},
    {"night_columns", SettingType::String, TARN_FIELD(NightColumns)},
    {"night_measure", SettingType::String, TARN_FIELD(NightMeasure)},
    {"night_below", SettingType::String, TARN_FIELD(NightBelow)},
    {"night_by_order", SettingType::Boolean, TARN_FIELD(NightByOrder)},
    {"night_table_width", SettingType::Integer, TARN_FIELD(NightTableWidth)},
    {"star_circles", SettingType::Boolean, TARN_FIELD(StarCircles)},
    {"sky_panel", SettingType::Boolean, TARN_FIELD(SkyPanel)},
    {"sky_sites", SettingType::String, TARN_FIELD(SkySites)},
    {"sky_site", SettingType::String, TARN_FIELD(SkySite)},
    {"report_graphs", SettingType::Boolean, TARN_FIELD(ReportGraphs)},
    {"report_pictures", SettingType::Boolean, TARN_FIELD(ReportPictures)},
    {"report_rejected", SettingType::Boolean, TARN_FIELD(ReportRejected)},
    {"report_gaps", SettingType::Boolean, TARN_FIELD(ReportGaps)},
    {"report_equipment", SettingType::Boolean, TARN_FIELD(ReportEquipment)},
    {"report_notes", SettingType::Boolean, TARN_FIELD(ReportNotes)},
    {"left_report_position", SettingType::Long, TARN_FIELD(ReportPlace.left)},
    {"top_report_position", SettingType::Long, TARN_FIELD(ReportPlace.top)},
    {"report_width", SettingType::Long, TARN_FIELD(ReportPlace.width)},
    {"report_height", SettingType::Long, TARN_FIELD(ReportPlace.height)},
    {"left_sites_position", SettingType::Long, TARN_FIELD(SitesPlace.left)},
    {"top_sites_position", SettingType::Long, TARN_FIELD(SitesPlace.top)},
    {"sites_width", SettingType::Long, TARN_FIELD(SitesPlace.width)},
    {"sites_height", SettingType::Long, TARN_FIELD(SitesPlace.height)},
    {"follow_folder", SettingType::Boolean, TARN_FIELD(FollowFolder)},
    {"show_newest", SettingType::Boolean, TARN_FIELD(ShowNewest)},
    {"blink_rate", SettingType::Integer, TARN_FIELD(BlinkRate)},
    {"blink_by_score", SettingType::Boolean, TARN_FIELD(BlinkByScore)},
    {"blink_skip_rejected", SettingType::Boolean, TARN_FIELD(BlinkSkipRejected)},
    {"blink_memory", SettingType::Long, TARN_FIELD(BlinkMemory)},
    {"sum_sigma", SettingType::Integer, TARN_FIELD(SumSigma)},
    {"sum_by_score", SettingType::Boolean, TARN_FIELD(SumByScore)},
    {"sharpest_of_clips", SettingType::Boolean, TARN_FIELD(SharpestOfClips)},
    {"best_frames", SettingType::Long, TARN_FIELD(BestFrames)},
    {"best_in_percent", SettingType::Boolean, TARN_FIELD(BestInPercent)},
    {"best_aligned", SettingType::Boolean, TARN_FIELD(BestAligned)},
    {"best_as_clip", SettingType::Boolean, TARN_FIELD(BestAsClip)},
    {"best_by_time", SettingType::Boolean, TARN_FIELD(BestByTime)},
    {"best_folder", SettingType::String, TARN_FIELD(BestFolder)},
    {"left_blink_position", SettingType::Long, TARN_FIELD(BlinkPlace.left)},
    {"top_blink_position", SettingType::Long, TARN_FIELD(BlinkPlace.top)},
    {"blink_width", SettingType::Long, TARN_FIELD(BlinkPlace.width)},
    {"blink_height", SettingType::Long, TARN_FIELD(BlinkPlace.height)},
    {"left_movers_position", SettingType::Long, TARN_FIELD(MoversPlace.left)},
    {"top_movers_position", SettingType::Long, TARN_FIELD(MoversPlace.top)},
    {"movers_width", SettingType::Long, TARN_FIELD(MoversPlace.width)},
    {"movers_height", SettingType::Long, TARN_FIELD(MoversPlace.height)},
    {"left_sum_position", SettingType::Long, TARN_FIELD(SumPlace.left)},
    {"top_sum_position", SettingType::Long, TARN_FIELD(SumPlace.top)},
    {"sum_width", SettingType::Long, TARN_FIELD(SumPlace.width)},
    {"sum_height", SettingType::Long, TARN_FIELD(SumPlace.height)},
    {"left_best_frames_position", SettingType::Long, TARN_FIELD(BestFramesPlace.left)},
    {"top_best_frames_position", SettingType::Long, TARN_FIELD(BestFramesPlace.top)},
    {"best_frames_width", SettingType::Long, TARN_FIELD(BestFramesPlace.width)},
    {"best_frames_height", SettingType::Long, TARN_FIELD(BestFramesPlace.height)},
    {"left_kits_position", SettingType::Long, TARN_FIELD(KitsPlace.left)},
    {"top_kits_position", SettingType::Long, TARN_FIELD(KitsPlace.top)},
    {"kits_width", SettingType::Long, TARN_FIELD(KitsPlace.width)},
    {"kits_height", SettingType::Long, TARN_FIELD(KitsPlace.height)},
    {"left_clock_position", SettingType::Long, TARN_FIELD(ClockPlace.left)},
    {"top_clock_position", SettingType::Long, TARN_FIELD(ClockPlace.top)},
    {"clock_width", SettingType::Long, TARN_FIELD(ClockPlace.width)},
    {"clock_height", SettingType::Long, TARN_FIELD(ClockPlace.height)},
    {"left_fill_notes_position", SettingType::Long, TARN_FIELD(FillNotesPlace.left)},
    {"top_fill_notes_position", SettingType::Long, TARN_FIELD(FillNotesPlace.top)},
    {"fill_notes_width", SettingType::Long, TARN_FIELD(FillNotesPlace.width)},
    {"fill_notes_height", SettingType::Long, TARN_FIELD(FillNotesPlace.height)},
    {"HistCur", SettingType::Integer, TARN_FIELD(HistCur)},
    {"HistHigh", SettingType::Integer, TARN_FIELD(HistHigh)},
    {"leftNotes_position", SettingType::Long, TARN_FIELD(NotesFolderPlace.left), Keeping::ByItsWindow},
    {"topNotes_position", SettingType::Long, TARN_FIELD(NotesFolderPlace.top), Keeping::ByItsWindow},
    {"leftNewNotes_position", SettingType::Long, TARN_FIELD(NewNotesPlace.left), Keeping::ByItsWindow},
    {"topNewNotes_position", SettingType::Long, TARN_FIELD(NewNotesPlace.top), Keeping::ByItsWindow},
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
    if (row.atStart) return row.atStart(state);
    static ProgramState fresh;
    return TextOf(row, fresh);
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
