#include "web/GalleryRun.h"

#include "support/ForwardingFiles.h"
#include "support/TestFolder.h"
#include "support/Trees.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

using namespace tarn;
using tarn::testing::TestFolder;

namespace {

constexpr char kScript[] = "function wheelzoom() {}";

class GalleryRuns : public ::testing::Test {
protected:
    GalleryRuns() {
        ::setenv("XDG_DATA_HOME", m_trash.Path().c_str(), 1);
        for (const char* name : {"a.jpg", "b.jpg", "c.jpg"}) folder.Write(name, "picture");
        folder.Write("index.html", "old");
        folder.Write("ImageT009.html", "old");
        folder.Write("own.js", "old");
        folder.Write("index_top.html", "old");
        plan.indexPath = folder.Path() + "/index.html";
        plan.pictureFolder = folder.Path();
        plan.subFolder = "thumbnails";
        plan.thumbnailSize = 120;
        plan.version = "v1";
        plan.now = "now";
        plan.script = m_trash.Write("wheelzoom.js", kScript);
        plan.items = {{"a.jpg", "T120_a.jpg"}, {"b.jpg", "T120_b.jpg"}, {"c.jpg", "T120_c.jpg"}};
    }

    GallerySources Sources() {
        return {[](const std::string&) { return std::pair(3000, 2000); },
                [](const std::string&) { return 1234; },
                [](const std::string& path) {
                    return path.ends_with("b.jpg") ? std::string(9000, 'n') : std::string();
                },
                [](const std::string&) { return std::vector<std::string>{"row"}; }};
    }

    std::vector<std::string> Names() {
        auto names = files.FileNames(folder.Path(), nullptr).value();
        std::sort(names.begin(), names.end());
        return names;
    }

    std::string Text(const std::string& name) {
        return files.Read(folder.Path() + "/" + name, SIZE_MAX, nullptr).value_or("none");
    }

    bool Make() {
        GalleryRun run(files, plan, Sources());
        while (run.Step()) {
        }
        const bool made = run.Finish();
        fault = run.Fault();
        return made;
    }

    TestFolder m_trash;
    TestFolder folder;
    tarn::testing::ForwardingFiles files;
    GalleryPlan plan;
    std::optional<GalleryFault> fault;
};

} // namespace

TEST_F(GalleryRuns, ReplaceTheOldSite) {
    ASSERT_TRUE(Make());
    EXPECT_EQ(Names(),
              (std::vector<std::string>{"ImageT001.html", "ImageT002.html", "ImageT003.html",
                                        "a.jpg", "b.jpg", "c.jpg", "index.html", "slides.css"}));
    EXPECT_EQ(files.Read(m_trash.Path() + "/Trash/files/index.html", 10, nullptr), "old");
    EXPECT_NE(Text("index.html").find("\r\n" + std::string(8000, 'n') + "\r\n"), std::string::npos);
    EXPECT_NE(Text("ImageT003.html").find("(3 of 3)"), std::string::npos);
    plan.frames = true;
    folder.Write("index_top.html", "old");
    ASSERT_TRUE(Make());
    EXPECT_NE(Text("index_top.html"), "old");
    EXPECT_NE(Text("index_thumbs.html").find("id=3"), std::string::npos);
}

TEST_F(GalleryRuns, LeaveEverythingWhenTheyEndEarly) {
    const auto before = tarn::testing::ReadTree(folder.Path());
    {
        GalleryRun run(files, plan, Sources());
        run.Step();
    }
    EXPECT_EQ(tarn::testing::ReadTree(folder.Path()), before);
    // Every call that changes something fails once.
    for (int failing = 0;; ++failing) {
        int call = 0;
        files.onChange = [&](const std::string& verb, const std::string&) {
            const bool mayFail = verb == "stage" || verb == "place";
            return mayFail && call++ == failing ? "No space left on device" : "";
        };
        if (Make()) {
            EXPECT_EQ(failing, 7); // folder, style, three pages, index, place
            break;
        }
        ASSERT_TRUE(fault);
        EXPECT_NE(fault->text.find("\n\nError 28, No space left on device"), std::string::npos);
        EXPECT_EQ(fault->title, failing >= 2 && failing < 5 ? "Write html image file error"
                                                            : "Write html thumbnail file error")
            << failing;
        EXPECT_EQ(tarn::testing::ReadTree(folder.Path()), before) << failing;
    }
}

TEST_F(GalleryRuns, AreTakenBackWhenTheyCannotBePlacedWhole) {
    ASSERT_TRUE(Make());
    plan.settings.HtmlThumbTitle = "Other";
    std::remove((folder.Path() + "/index.html").c_str());
    std::filesystem::create_directory(folder.Path() + "/index.html");
    folder.Write("index.html/file", "a folder in the way");
    const auto before = tarn::testing::ReadTree(folder.Path());
    EXPECT_FALSE(Make());
    EXPECT_NE(fault->text.find("/index.html\n\nError 21, "), std::string::npos) << fault->text;
    EXPECT_EQ(tarn::testing::ReadTree(folder.Path()), before);
    for (const char* taken : {"ImageT001.html", "slides.css"}) {
        plan.indexPath = folder.Path() + "/" + taken;
        EXPECT_FALSE(Make());
        EXPECT_EQ(tarn::testing::ReadTree(folder.Path()), before);
    }
}

TEST_F(GalleryRuns, KeepTheScriptOfPagesThatStay) {
    folder.Write("wheelzoom.js", "old");
    ASSERT_TRUE(Make());
    EXPECT_EQ(Text("wheelzoom.js"), "none");
    folder.Write("PAGE.HTM", "<script src=\"wheelzoom.js\">");
    folder.Write("wheelzoom.js", "old");
    ASSERT_TRUE(Make());
    EXPECT_EQ(Text("wheelzoom.js"), kScript);
    plan.settings.ThumbNoLinkPic = 1;
    plan.script += ".none";
    EXPECT_FALSE(Make());
    EXPECT_EQ(fault->title, "Copy javascript file error");
    plan.settings.NoLinkCheck = 1; // no page, no script
    std::remove((folder.Path() + "/PAGE.HTM").c_str());
    ASSERT_TRUE(Make());
    EXPECT_EQ(Text("ImageT001.html"), "none");
}

TEST(PairThumbnails, ByTheNameBehindTheSize) {
    const auto items = PairThumbnails(
        {"T120_a.jpg", "T200_a.jpg", "T120_gone.jpg", "T064_T1_b.jpg", "x.jpg", "T_c.jpg"},
        {"T1_b.jpg", "a.jpg", "c.jpg", "x.jpg"}, 200);
    ASSERT_EQ(items.size(), 2U);
    EXPECT_EQ(items[0].thumbnail, "T200_a.jpg");
    EXPECT_EQ(items[1].picture, "T1_b.jpg");
}
