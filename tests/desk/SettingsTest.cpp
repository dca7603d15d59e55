#include "desk/settings/Settings.h"
#include "common/text.h"
#include "desk/settings/HistoryText.h"
#include "desk/settings/SettingsTable.h"
#include "platform/SettingsStore.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
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
        return DefaultOf(row, {}) == "True" ? "False" : "True";
    case SettingType::Check:
        return DefaultOf(row, {}) == "1" ? "0" : "1";
    case SettingType::Single:
        return std::to_string(i) + ".5";
    default:
        return std::to_string(100 + i);
    }
}

bool IsKeptInRange(const std::string& key) {
    return key == "thumbnail_size" || key == "textcolor_index" || key == "CvtJpgQ" ||
           key == "convert_jpg_type" || key == "theme" ||
           (key.find("slide") == 0 && EndsWith(key, "_index"));
}

TEST(Settings, EveryKeyIsReadAndWrittenBack) {
    Store first;
    int i = 0;
    std::set<std::string> keys;
    std::set<std::string> elsewhere;
    for (const SettingRow& row : SettingRows()) {
        if (std::string(row.key).substr(0, 4) == "Hist" || IsKeptInRange(row.key)) {
            elsewhere.insert(row.key); // below
            continue;
        }
        first.store->Write(row.key, OtherText(row, ++i));
        EXPECT_TRUE(keys.insert(row.key).second) << row.key;
    }
    EXPECT_EQ(elsewhere, (std::set<std::string>{"CvtJpgQ", "HistCur", "HistHigh",
                                                "convert_jpg_type", "slidebackground_index",
                                                "slidefont_index", "slidefontsize_index",
                                                "textcolor_index", "theme", "thumbnail_size"}));
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

// What stores of all versions hold stands in known_settings.txt in the order of writing: key, type,
// default; "@" is worked out at the start. Later keys of our own stand between them.
TEST(Settings, OrderTypesAndDefaultsOfEveryKey) {
    Store empty;
    ProgramState state;
    state.PreviewWidth = 800;
    state.PreviewHeight = 533;
    LoadSettings(state, *empty.store);
    EXPECT_EQ(state.HtmlWidth, 800);
    EXPECT_EQ(state.HtmlHeight, 533);
    EXPECT_EQ(state.HtmlLayoutPlace.top, 100);
    EXPECT_EQ(state.HtmlLayoutPlace.left, 400);
    std::vector<std::string> known;
    std::ifstream tokens(TARN_DESK_TESTS "/known_settings.txt");
    for (std::string token; tokens >> token;) {
        const std::vector<std::string> parts = Split(token, ':');
        known.push_back(parts[0]);
        if (parts[0] == "HistFolders" || parts[0] == "HistFiles") continue; // packed, below
        const SettingRow& row = SettingOf(parts[0]);
        EXPECT_EQ("tilsbc"[std::size_t(row.type)], parts[1][0]) << token;
        EXPECT_EQ(parts[2] == "@" ? "@" : TextOf(row, state), parts[2]) << token;
    }
    std::vector<std::string> written;
    std::set<std::string> byWindows;
    for (const SettingRow& row : SettingRows()) {
        if (row.keeping == Keeping::ByItsWindow)
            byWindows.insert(row.key);
        else if (std::find(known.begin(), known.end(), row.key) != known.end())
            written.push_back(row.key);
    }
    written.insert(written.end(), {"HistFolders", "HistFiles"}); // behind all others
    EXPECT_EQ(written, known);
    EXPECT_EQ(byWindows, (std::set<std::string>{"leftNotes_position", "topNotes_position",
                                                "leftNewNotes_position", "topNewNotes_position"}));
}

TEST(Settings, KeysReachTheFieldsOfTheirName) {
    Store store;
    for (const char* key : {"html_sizew", "beep_last_slide", "delete_keep_notes"})
        store.store->Write(key, "True");
    store.store->Write("thumbnail_clear", "False");
    store.store->Write("html_thumb_cs_value", "9");
    store.store->Write("leftNewNotes_position", "55");
    ProgramState s;
    LoadSettings(s, *store.store);
    EXPECT_TRUE(s.HtmlSizeW);
    EXPECT_TRUE(s.BeepLastSlide);
    EXPECT_TRUE(s.DeleteKeepNotes);
    EXPECT_FALSE(s.ThumbClear);
    EXPECT_EQ(s.HtmlThumbCsValue, "9");
    EXPECT_EQ(s.NewNotesPlace.left, 55);
}

TEST(Settings, BrokenValuesCostNothingButThemselves) {
    struct Case {
        const char *key, *stored, *read;
    };
    for (const Case& each : {Case{"main_width", "wide", "0"},
                             {"main_width", "39000", "39000"}, // wide screens: more than 16 bits
                             {"leftpic_position", "-40000", "-40000"},
                             {"CvtJpgQ", "40000", "75"}, // more than 16 bits
                             {"CvtJpgQ", "101", "75"},
                             {"copy_auto", "maybe", "False"}, // neither true nor false
                             {"left_position", "-50.5", "-50.5"},
                             {"beep_all_slide", "-1", "True"},
                             {"picturelist_check", "0", "0"},
                             {"convert_jpg_type", "3", "0"},
                             // The limits of the menus differ.
                             {"thumbnail_size", "16", "3"},
                             {"thumbnail_size", "0", "3"},
                             {"slidebackground_index", "16", "3"},
                             {"textcolor_index", "16", "0"},
                             {"slidefontsize_index", "16", "7"},
                             {"slidefont_index", "16", "6"}}) {
        Store store;
        store.store->Write(each.key, each.stored);
        ProgramState state;
        LoadSettings(state, *store.store);
        EXPECT_EQ(TextOf(SettingOf(each.key), state), each.read) << each.key;
    }
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
