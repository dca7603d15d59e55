#include "shell/settings/Settings.h"
#include "common/text.h"
#include "platform/SettingsStore.h"
#include "shell/settings/HistoryText.h"
#include "shell/settings/SettingsTable.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <sstream>

namespace tarn::testing {
namespace {

struct Store {
    TestFolder folder;
    std::unique_ptr<SettingsStore> store = MakeSettingsStore(folder.Path() + "/settings.ini");
};

// A text of the row's type that is not its default.
std::string OtherText(const SettingRow& row, int i) {
    switch (row.type) {
    case SettingType::String:
        return "text " + std::to_string(i);
    case SettingType::Boolean:
        return std::string(row.fallback) == "True" ? "False" : "True";
    case SettingType::Check:
        return std::string(row.fallback) == "1" ? "0" : "1";
    case SettingType::Single:
        return std::to_string(i) + ".5";
    default:
        return std::to_string(100 + i);
    }
}

bool IsKeptInRange(const std::string& key) {
    return key == "thumbnail_size" || key == "textcolor_index" || key == "CvtJpgQ" ||
           key == "convert_jpg_type" || (key.find("slide") == 0 && EndsWith(key, "_index"));
}

TEST(Settings, EveryKeyIsReadAndWrittenBack) {
    Store first;
    int i = 0;
    std::set<std::string> keys;
    for (const SettingRow& row : SettingRows()) {
        if (std::string(row.key).substr(0, 4) == "Hist") continue; // below
        if (IsKeptInRange(row.key)) continue;                      // below, too
        first.store->Write(row.key, OtherText(row, ++i));
        EXPECT_TRUE(keys.insert(row.key).second) << row.key;
    }
    EXPECT_EQ(keys.size() + 7 + 2, SettingRows().size());
    ProgramState state;
    LoadSettings(state, *first.store);
    Store second;
    EXPECT_TRUE(SaveSettings(state, *second.store));
    const auto ownWindow = [](const std::string& key) {
        return key.find("Notes_position") != std::string::npos; // written by their own windows
    };
    for (const std::string& key : keys)
        if (!ownWindow(key)) {
            EXPECT_EQ(second.store->Read(key, "missing"), first.store->Read(key, "")) << key;
        }
}

// What stores of all versions hold, in the order of writing: key, type, default; "@" is worked out
// at the start. Later keys of our own stand between them.
constexpr char kKnown[] = R"(
left_position:s:100 top_position:s:100 main_width:l:0 main_height:l:0 left1_position:l:0
top1_position:l:0 width1_value:l:0 height1_value:l:0 one_to_one_info:b:False leftpic_position:l:0
toppic_position:l:0 widthpic_value:l:0 heightpic_value:l:0 leftlogs_position:l:0
toplogs_position:l:0 logs_width:l:0 logs_height:l:0 lefthelp_position:l:0 tophelp_position:l:0
leftrename_position:l:0 toprename_position:l:0 open_in:t: notes_folder:t: copy_folder:t:
clear_notes_saveplus:c:0 splitter_top:l:0 filetype_filter:t:*.jpg;*.tif;*.gif;*.bmp;*.txt
videotype_filter:t:*.avi;*.ser;*.log webtype_filter:t:*.html;*.css picturelist_check:c:1
videolist_check:c:1 weblist_check:c:0 html_auto:i:0 html_exif_info:i:1 copy_auto:b:False
camera_settings:b:True convert_jpg_add_filename:b:True thumbnotes_print:b:True
shownotes_slide:b:False filedate_auto:b:True beep_last_slide:b:False beep_all_slide:b:False
beep_copy_picture:b:False slidefont_index:i:1 slidefontsize_index:i:3 slidebackground_index:i:3
textcolor_index:i:0 slides4_mouse:b:True html_layout1:b:True html_layout2:b:False
html_layout3:b:False html_border:i:1 html_sizef:b:False html_sizeh:b:False html_sizeo:b:True
html_sizew:b:False html_width:i:@ html_height:i:@ html_title:t:Pictures html_picture_type:i:1
html_append_option:i:1 html_page_bg_color:t:FFFFFF html_title_bg_color:t:BFCFE0
html_title_border_width:i:1 html_text_color:t:000000 html_border_color:t:000000 html_line_width:i:1
html_pnotes_top:b:False html_pnotes_bottom:b:True html_email:t: html_home_page:t:
html_home_text:t:Home html_fontname:t:Verdana html_fontsize:i:10 html_pic_center:b:True
html_pic_left:b:False html_check_image_label:i:0 html_mp4_video:i:0 html_text_image_label:t:
html_page_break:i:0 html_zoom_pan:i:0 html_thumb_notes:i:1 html_thumb_notes2:i:1 html_thumb_data:i:0
html_thumb_closewindow:i:0 html_thumb_linked_size:l:1 html_thumb_slider:i:5 html_thumb_notes_t:i:1
html_thumb_title:t:Pictures html_thumb_cs:i:0 html_thumb_cs_width:b:True
html_thumb_cs_height:b:False html_thumb_cs_value:t:600 html_thumb_home_link:i:0
html_thumb_home_url:t: html_thumb_text_color:t:FFFFFF html_thumb_border_color:t:FFFFFF
html_thumb_page_bg_color:t:000000 html_thumb_thumb_bg_color:t:404040 html_thumb_border_width:i:3
html_thumb_notes_top_line:i:0 html_thumb_slider_top:i:1 html_thumb_begin_slider_top:i:1
html_thumb_notes_top:b:False html_thumb_notes_bottom:b:False html_thumb_notes_right:b:True
html_thumb_fontname:t:Verdana html_thumb_fontsize:i:10 html_thumb_wrap:i:0 html_thumb_pagebreak:i:0
html_thumb_emailaddress:t: thumbnail_size:i:3 thumbnail_subfolder:t:thumbnails
thumbnail_clear:b:True thumbnail_create_notes:b:True slide_clear:b:False
slide_alt_arrow_keys:b:False print_only_1st_page:b:False delete_confirm:b:True
delete_keep_notes:b:False one_always_top:b:False leftB_position:l:100 topB_position:l:100
leftF_position:l:200 topF_position:l:200 custom_filter:t: filter_presets:t: leftE_position:l:200
topE_position:l:200 leftC_position:l:400 topC_position:l:500 convert_jpg_type:i:0
convert_jpg_lines:t:1 convert_jpg_captiontext:t: convert_jpg_maxsize:t:0 convert_jpg_maxwidth:t:0
convert_jpg_maxheight:i:0 HtmlEditor:t: ImagesPlus:t: ImagesPlusExp:t: RegiStax:t:
html_overwrite_warning:b:True html_layout_top:l:@ html_layout_left:l:@ CvtJpgQ:i:75
NewNotesTelescope:i:0 NewNotesGuideScope:i:0 NewNotesLens:i:0 NewNotesMount:i:0 NewNotesCamera:i:0
NewNotesFilter:i:0 NewNotesExposure:i:0 NewNotesProcessing:i:0 NewNotesLocation:i:0 NewNotesDate:i:0
HistCur:i:0 HistHigh:i:0 HistFolders:t: HistFiles:t:
)";

TEST(Settings, OrderTypesAndDefaultsOfEveryKey) {
    Store empty;
    ProgramState fresh;
    ProgramState state;
    state.PreviewWidth = 800;
    state.PreviewHeight = 533;
    LoadSettings(state, *empty.store);
    EXPECT_EQ(state.HtmlWidth * 1000 + state.HtmlHeight, 800533);
    EXPECT_EQ(state.HtmlLayoutPlace.top, 100);
    EXPECT_EQ(state.HtmlLayoutPlace.left, 400);
    std::vector<std::string> known;
    std::istringstream tokens(kKnown);
    for (std::string token; tokens >> token;) {
        const std::vector<std::string> parts = Split(token, ':');
        known.push_back(parts[0]);
        if (parts[0] == "HistFolders" || parts[0] == "HistFiles") continue; // packed, below
        const SettingRow& row = SettingOf(parts[0]);
        EXPECT_EQ("tilsbc"[std::size_t(row.type)], parts[1][0]) << token;
        EXPECT_EQ(parts[2] == "@" ? "@" : TextOf(row, state), parts[2]) << token;
    }
    std::vector<std::string> written = WriteOrder();
    const std::set<std::string> names(written.begin(), written.end());
    EXPECT_EQ(names.size(), written.size());
    std::erase_if(written, [&](const std::string& key) {
        return std::find(known.begin(), known.end(), key) == known.end();
    });
    EXPECT_EQ(written, known);
    int elsewhere = 0;
    for (const SettingRow& row : SettingRows()) {
        elsewhere += names.count(row.key) == 0;
        // What a state holds without a store is no other default; texts may stay empty.
        const std::string first = TextOf(row, fresh);
        const bool open = row.fallback[0] == '@' || first.empty();
        EXPECT_TRUE(open || first == TextOf(row, state)) << row.key;
    }
    EXPECT_EQ(elsewhere, 4); // the places that two windows write themselves
}

TEST(Settings, KeysReachTheFieldsOfTheirName) {
    Store store;
    const std::pair<const char*, const char*> values[] = {
        {"main_width", "39000"},      {"topF_position", "7"},   {"leftpic_position", "-40000"},
        {"copy_folder", "/c"},        {"notes_folder", "/n"},   {"html_sizew", "True"},
        {"html_thumb_cs_value", "9"}, {"beep_last_slide", "1"}, {"delete_keep_notes", "True"},
        {"thumbnail_clear", "False"}, {"NewNotesLens", "4"},    {"leftNewNotes_position", "55"}};
    for (const auto& [key, text] : values) store.store->Write(key, text);
    ProgramState s;
    LoadSettings(s, *store.store);
    EXPECT_EQ(s.MainWidth, 39000); // wide screens need more than 16 bits
    EXPECT_EQ(s.FilterPlace.top, 7);
    EXPECT_EQ(s.PicPlace.left, -40000);
    EXPECT_EQ(s.CopyImageFolder + s.NotesFolder, "/c/n");
    EXPECT_TRUE(s.HtmlSizeW && s.BeepLastSlide && s.DeleteKeepNotes && !s.ThumbClear);
    EXPECT_EQ(s.HtmlThumbCsValue, "9");
    EXPECT_EQ(s.NewNotesLens, 4);
    EXPECT_EQ(s.NewNotesPlace.left, 55);
}

TEST(Settings, BrokenValuesCostNothingButThemselves) {
    Store store;
    store.store->Write("main_width", "wide");
    store.store->Write("CvtJpgQ", "40000");   // more than 16 bits
    store.store->Write("copy_auto", "maybe"); // neither true nor false
    store.store->Write("left_position", "-50.5");
    store.store->Write("beep_all_slide", "-1");
    store.store->Write("picturelist_check", "0");
    ProgramState state;
    LoadSettings(state, *store.store);
    EXPECT_EQ(state.MainWidth, 0);
    EXPECT_EQ(state.ConvertJpgQuality, 75);
    EXPECT_FALSE(state.CopyAuto);
    EXPECT_EQ(state.MainLeft, -50.5F);
    EXPECT_TRUE(state.BeepAllSlide);
    EXPECT_EQ(state.PictureListCheck, 0);
}

TEST(Settings, LimitsOfTheMenusDiffer) {
    Store store;
    for (const char* key : {"thumbnail_size", "slidebackground_index", "textcolor_index",
                            "slidefontsize_index", "slidefont_index"})
        store.store->Write(key, "16");
    store.store->Write("convert_jpg_type", "3");
    store.store->Write("CvtJpgQ", "101");
    ProgramState state;
    LoadSettings(state, *store.store);
    EXPECT_EQ(state.ConvertJpgType, 0);
    EXPECT_EQ(state.ConvertJpgQuality, 75);
    EXPECT_EQ(state.ThumbSizeIndex, 3);
    EXPECT_EQ(state.SlideBackgroundIndex, 3);
    EXPECT_EQ(state.SlideTextColorIndex, 0);
    EXPECT_EQ(state.SlideFontSizeIndex, 7);
    EXPECT_EQ(state.SlideFontIndex, 6);
    store.store->Write("thumbnail_size", "0");
    LoadSettings(state, *store.store);
    EXPECT_EQ(state.ThumbSizeIndex, 3);
}

TEST(Settings, FolderHistoryIsPackedWithItsEmptySlot) {
    ProgramState state;
    state.HistCur = 2;
    state.HistHigh = 3;
    const char* folders[] = {"", "/a", "/b b", "/c"};
    for (std::size_t i = 0; i < 4; ++i) {
        state.HistFolderPath[i] = folders[i];
        state.HistFileIndex[i] = static_cast<int>(i) * 2;
    }
    EXPECT_EQ(PackFolders(state), "+/a+/b b+/c+");
    EXPECT_EQ(PackRows(state), "0+2+4+6+");
    Store store;
    SaveSettings(state, *store.store);
    ProgramState read;
    LoadSettings(read, *store.store);
    EXPECT_EQ(read.HistCur, 2);
    EXPECT_EQ(read.HistFolderPath[3], "/c");
    EXPECT_EQ(read.HistFileIndex[3], 6);
    store.store->Write("HistFolders", "+/a+"); // what splits into whole pairs is used
    LoadSettings(read, *store.store);
    EXPECT_EQ(read.HistHigh, 1);
    EXPECT_EQ(read.HistCur, 1);
    state.HistHigh = 0;
    EXPECT_EQ(PackFolders(state), "");
}

TEST(Settings, WhatIsWrittenOnlySometimes) {
    Store store;
    ProgramState state;
    state.MainNormal = false;
    SaveSettings(state, *store.store);
    EXPECT_FALSE(store.store->Contains("filespec_default"));
    EXPECT_FALSE(store.store->Contains("left_position"));
    EXPECT_TRUE(store.store->Contains("main_width"));
    state.Filename = "/a/b.jpg";
    state.MainNormal = true;
    SaveSettings(state, *store.store);
    EXPECT_EQ(LoadStartPath(*store.store, "none"), "/a/b.jpg");
    EXPECT_TRUE(store.store->Contains("left_position"));
    Store untouched;
    state.NoSaveOnExit = true;
    EXPECT_TRUE(SaveSettings(state, *untouched.store));
    EXPECT_FALSE(untouched.store->Contains("main_width"));
}

} // namespace
} // namespace tarn::testing
