// Names, folder and run, on real files.
#include "PictureFiles.h"
#include "support/ForwardingFiles.h"
#include "support/TestFolder.h"
#include "support/Trees.h"

#include "thumbnails/ThumbFolder.h"
#include "thumbnails/ThumbNames.h"
#include "thumbnails/ThumbRun.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace tarn::testing {
namespace {

namespace fs = std::filesystem;

struct RunDesk {
    TestFolder folder;
    ForwardingFiles files;
    ThumbRequest request;

    RunDesk() {
        request.pictures = folder.Path();
        request.subFolder = "thumbnails";
        fs::create_directory(Thumbs());
    }
    std::string Thumbs() const { return folder.Path() + "/thumbnails"; }
    void Add(const std::string& name) { folder.Write(name, JpegBytes(TellTale(60, 40))); }
    std::string Report(const std::vector<std::string>& names) {
        ThumbRun run(PlanThumbnails(names, {}, request, false, files), request, files);
        while (!run.Done()) run.Step();
        return run.Report(false);
    }
    std::string Made() const {
        std::string names;
        for (const auto& [name, bytes] : ReadTree(Thumbs())) names += name + " ";
        return names;
    }
};

TEST(ThumbNames, HoldTheSizeAndTheWholeName) {
    EXPECT_EQ(ThumbnailName(64, "m31.tif"), "T064_m31.tif");
    EXPECT_EQ(ThumbnailName(1200, "a.b.jpg"), "T1200_a.b.jpg");
    EXPECT_EQ(ThumbnailNoteName(150, "a.b.jpg"), "T150_a.enf");
    for (const char* name : {"T120_a.jpg", "T1_x"}) EXPECT_TRUE(IsThumbnailName(name)) << name;
    for (const char* name :
         {"", "T", "T_a.jpg", "t120_a.jpg", "T120_", "T120a.jpg", "M31.jpg", "T120_a.enf"})
        EXPECT_FALSE(IsThumbnailName(name)) << name;
}

TEST(ThumbFolder, LiesStrictlyBelowThePictures) {
    const TestFolder folder;
    const TestFolder elsewhere;
    const ForwardingFiles files;
    const std::string at = folder.Path();
    fs::create_directory(at + "/in");
    fs::create_directory_symlink(elsewhere.Path(), at + "/out");
    fs::create_directory_symlink(at, at + "/self");
    for (const char* name : {"thumbnails", "in", "in/deep", "a\\b", "..a", "in/../other"})
        EXPECT_EQ(ThumbnailFolder(files, at, name, {}), at + "/" + name);
    for (const char* name :
         {"", ".", "./", "..", "../x", "/tmp", "in/..", "in/../..", "out", "out/x", "self"})
        EXPECT_EQ(ThumbnailFolder(files, at, name, {}), "") << name;
    EXPECT_EQ(ThumbnailFolder(files, "", "thumbnails", {}), "");
    EXPECT_EQ(ThumbnailFolder(files, at, "in", at + "/./in"), ""); // the notes
}

TEST(ThumbFolder, ClearingDeletesThumbnailsAndThrowsTheRestAway) {
    RunDesk d;
    d.Add("a.jpg");
    d.folder.Write("thumbnails/T120_a.jpg", "old");
    d.folder.Write("thumbnails/original.jpg", "dear");
    d.folder.Write("thumbnails/.hidden", "stays");
    fs::create_directory(d.Thumbs() + "/deep");
    std::string trashed;
    d.files.onChange = [&](const std::string& verb, const std::string& path) {
        if (verb == "trash") trashed += path.substr(path.rfind('/') + 1);
        return std::string();
    };
    EXPECT_EQ(ClearThumbnails(d.files, d.Thumbs()).count, 0);
    EXPECT_EQ(trashed, "original.jpg");
    EXPECT_FALSE(fs::exists(d.Thumbs() + "/T120_a.jpg"));
    EXPECT_TRUE(fs::exists(d.Thumbs() + "/.hidden"));
    EXPECT_TRUE(fs::exists(d.Thumbs() + "/deep"));
    EXPECT_TRUE(fs::exists(d.folder.Path() + "/a.jpg"));
}

TEST(ThumbRun, GoesOnBehindFailuresAndNamesTheFirst) {
    RunDesk d;
    for (const char* name : {"a.jpg", "d.jpg"}) d.Add(name);
    d.folder.Write("b.jpg", "no picture at all");
    d.files.onChange = [](const std::string& verb, const std::string& path) {
        return verb == "write" && path.ends_with("T120_a.jpg")
                   ? std::string("No space left on device")
                   : std::string();
    };
    EXPECT_EQ(d.Report({"a.jpg", "b.jpg", "d.jpg"}),
              "1 thumbnails, sized 120 pixels created in ...\\thumbnails sub folder, "
              "2 failed: 'a.jpg' - No space left on device");
    EXPECT_EQ(d.Made(), "T120_d.jpg ");
}

// What could be read of a damaged file is made small, and told.
TEST(ThumbRun, DamagedFilesHaveThumbnailsAndAreFaults) {
    RunDesk d;
    const std::string whole = JpegBytes(TellTale(600, 400));
    d.folder.Write("a.jpg", whole.substr(0, whole.size() / 2));
    d.Add("b.jpg");
    ThumbRun run({{0, "a.jpg"}, {1, "b.jpg"}}, d.request, d.files);
    EXPECT_TRUE(run.Step());
    const std::string fault = run.Fault();
    EXPECT_NE(fault, "");
    EXPECT_TRUE(run.Step());
    EXPECT_EQ(run.Fault(), "");
    ASSERT_EQ(run.Faults().size(), 1U);
    EXPECT_EQ(run.Faults()[0].path, d.folder.Path() + "/a.jpg");
    EXPECT_EQ(run.Faults()[0].why, fault);
    EXPECT_EQ(run.Report(false), "2 thumbnails, sized 120 pixels created in ...\\thumbnails sub "
                                 "folder, 1 of damaged files: 'a.jpg' - " +
                                     fault);
    EXPECT_EQ(d.Made(), "T120_a.jpg T120_b.jpg ");
}

} // namespace
} // namespace tarn::testing
