#include "navigation/ClassFilter.h"
#include "navigation/HiddenFiles.h"
#include "navigation/NameFilter.h"

#include <gtest/gtest.h>

namespace tarn::testing {
namespace {

TEST(ClassFilter, EmptyListsLeaveNoSeparators) {
    SelectionState s;
    s.PictureTypes = "*.jpg";
    s.VideoTypes.clear();
    s.WebTypes = "*.html";
    EXPECT_EQ(TypesFromVideos(s, {false, true}), "");
    EXPECT_EQ(TypesFromVideos(s, {true, true}), "*.jpg");
    EXPECT_EQ(TypesFromPictures(s, {true, true}), "*.jpg");
    s.PictureTypes.clear();
    EXPECT_EQ(TypesFromPictures(s, {true, true, false, true}),
              "*.fits;*.fit;*.xisf;*.fit*.gz;*.fz");
    s.XisfTypes.clear();
    EXPECT_EQ(TypesFromPictures(s, {true, true, false, true}), "*.fits;*.fit;*.fit*.gz;*.fz");
    s.PackedFitsTypes.clear();
    EXPECT_EQ(TypesFromPictures(s, {true, true, false, true}), "*.fits;*.fit");
    EXPECT_EQ(TypesFromTexts({true, true, true}, "", "*.avi", ""), "*.avi");
    EXPECT_EQ(TypesFromTexts({false, true, false}, "*.jpg", "", "*.css"), "");
    s.VideoListCheck = s.WebListCheck = 1;
    EXPECT_EQ(StartFileTypes(s), "*.html");
}

TEST(HiddenFiles, EachFileCountsInOneClassAndThoseOfNoClassInNone) {
    SelectionState s;
    s.FileTypes = s.VideoTypes;
    s.RawTypes.clear(); // fits nothing, though such a pattern fits all
    const std::vector<HiddenFiles> hidden =
        CountHidden(s, {"a.txt", "b.JPG", "c.fits", "d.css", "e.cr2", "f.dat", "g.avi", "h.fit",
                        "i.xisf", "j.fits.gz", "k.FZ"});
    EXPECT_EQ(hidden, (std::vector<HiddenFiles>{{FileClass::Pictures, 2, {}},
                                                {FileClass::Web, 1, {}},
                                                {FileClass::Fits, 5, {}}}));
    EXPECT_EQ(HiddenText(hidden), "2 picture files, 1 web file and 5 FITS files are not listed");
    EXPECT_EQ(HiddenText({{FileClass::Raw, 1, {}}}), "1 raw file is not listed");
    EXPECT_EQ(HiddenText({}), "");
}

TEST(HiddenFiles, WhatCanBeShownButIsOfNoClassCountsWithItsTypes) {
    SelectionState s;
    s.FileTypes = s.PictureTypes;
    const std::vector<std::string> names = {"a.PNG", "b.heic", "c.png", "d.mp4", "e.dat", "f.fit"};
    const std::vector<HiddenFiles> hidden = CountHidden(s, names);
    EXPECT_EQ(HiddenText(hidden), "1 FITS file, 3 picture files of other types (png, heic) and "
                                  "1 video file of other types (mp4) are not listed");
    for (const HiddenFiles& each : hidden) AddTypes(s, each.fileClass, each.types);
    EXPECT_EQ(s.PictureTypes, std::string(kPictureTypes) + ";*.png;*.heic");
    EXPECT_EQ(s.VideoTypes, "*.avi;*.ser;*.log;*.mp4");
    s.FileTypes = s.PictureTypes;
    EXPECT_EQ(HiddenText(CountHidden(s, names)), "1 video file and 1 FITS file are not listed");
}

TEST(NameFilter, SixteenBoxesAtMost) {
    std::string pattern = "*.0";
    for (int i = 1; i < 17; ++i) pattern += ";*." + std::to_string(i);
    const auto captions = FilterCaptions(pattern);
    ASSERT_EQ(captions.size(), 16U); // and no box behind them is asked
    EXPECT_EQ(captions.back(), "*.15");
}

TEST(NameFilter, AWordStandsAnywhereAPatternAsItIs) {
    EXPECT_EQ(PatternOfText("m31"), "*m31*");
    EXPECT_EQ(PatternOfText(" m31 ; *.tif;m?3;;"), "*m31*;*.tif;m?3");
    EXPECT_EQ(PatternOfText("m 31"), "*m 31*");
}

TEST(NameFilter, PresetsAsTheyAreStored) {
    const std::vector<std::string> first{"*VMC*"};
    EXPECT_EQ(PresetsOf(""), first);
    EXPECT_EQ(PresetsOf("*M31*"), first); // without ";" it holds none
    EXPECT_EQ(PresetsOf("*M31*;*M42*;"), (std::vector<std::string>{"*M31*", "*M42*"}));
    EXPECT_EQ(PresetsOf("*M31*;*M42*"), (std::vector<std::string>{"*M31*"})); // cut off
    EXPECT_EQ(StoredPresets({"*M31*", "*M42*"}), "*M31*;*M42*;");
    EXPECT_EQ(StoredPresets({}), "");
}

} // namespace
} // namespace tarn::testing
