#include "shell/settings/Settings.h"
#include "common/text.h"
#include "platform/SettingsStore.h"
#include "shell/settings/HistoryText.h"
#include "shell/settings/SettingsTable.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

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

TEST(Settings, AnEmptyStoreGivesTheDefaults) {
    Store empty;
    ProgramState state;
    state.PreviewWidth = 800;
    state.PreviewHeight = 533;
    LoadSettings(state, *empty.store);
    EXPECT_EQ(state.MainLeft, 100);
    EXPECT_EQ(state.HtmlWidth, 800);
    EXPECT_EQ(state.HtmlHeight, 533);
    EXPECT_EQ(state.HtmlLayoutPlace.left, 400);
    EXPECT_EQ(state.PictureTypes, "*.jpg;*.tif;*.gif;*.bmp;*.txt");
    EXPECT_TRUE(state.AutoSetFileDates);
    EXPECT_EQ(state.HistHigh, 0);
    EXPECT_TRUE(state.ImagesPlus.empty());
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

TEST(Settings, TheOrderOfWritingNamesEveryKeyOnce) {
    const auto& order = WriteOrder();
    const std::set<std::string> written(order.begin(), order.end());
    EXPECT_EQ(written.size(), order.size());
    int elsewhere = 0;
    for (const SettingRow& row : SettingRows()) elsewhere += written.count(row.key) == 0;
    EXPECT_EQ(elsewhere, 4); // the places that two windows write themselves
    const auto at = [&](const char* key) {
        return std::find(order.begin(), order.end(), key) - order.begin();
    };
    EXPECT_LT(at("height1_value"), at("one_to_one_info"));
    EXPECT_LT(at("one_to_one_info"), at("leftpic_position"));
    EXPECT_LT(at("beep_copy_picture"), at("slidefont_index"));
    EXPECT_EQ(order.back(), "HistFiles");
}

} // namespace
} // namespace tarn::testing
