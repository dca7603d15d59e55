#include "app/start/StartPath.h"
#include "common/paths.h"
#include "platform/Files.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace tarn::testing {
namespace {

struct Place {
    TestFolder folder;
    std::unique_ptr<Files> files = MakeFiles();
    std::string picture = folder.Write("a b.jpg", "x");

    std::string Start(const std::string& argument, const std::string& last = "") const {
        const StartPath start = WorkOutStart(argument, last, *files);
        return start.folder + "|" + start.name + (start.missing.empty() ? "" : "|missing");
    }
};

TEST(StartPath, AnArgumentNamesAFileOrAFolder) {
    const Place p;
    const std::string folder = p.folder.Path();
    EXPECT_EQ(p.Start(p.picture), folder + "|a b.jpg");
    EXPECT_EQ(p.Start("\"" + p.picture + "\""), folder + "|a b.jpg");
    EXPECT_EQ(p.Start(folder), folder + "|NONE.JPG");
    EXPECT_EQ(p.Start(folder + "/"), folder + "|NONE.JPG");
    EXPECT_EQ(p.Start("/"), "/|NONE.JPG");
    EXPECT_EQ(p.Start(folder + "/none.jpg"), folder + "|NONE.JPG|missing");
    EXPECT_EQ(p.Start(folder + "/no/none.jpg"), folder + "/no/none.jpg|NONE.JPG");
}

TEST(StartPath, ARelativeArgumentIsMadeAbsoluteThroughLinks) {
    const Place p;
    const std::string link = p.folder.Path() + "/link";
    std::filesystem::create_directory_symlink(p.folder.Path(), link);
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(p.folder.Path());
    EXPECT_EQ(p.Start("link/a b.jpg"), link + "|a b.jpg"); // absolute, not canonical
    const std::string quoted = HandedOver("\"a b.jpg\"", *p.files);
    const std::string plain = HandedOver("a b.jpg", *p.files);
    std::filesystem::current_path(before);
    for (const std::string& handed : {quoted, plain}) // to a window that stands elsewhere
        EXPECT_EQ(p.Start(handed), p.folder.Path() + "|a b.jpg");
    EXPECT_EQ(HandedOver("", *p.files), "");
}

TEST(StartPath, WithoutArgumentTheLastRunDecides) {
    const Place p;
    EXPECT_EQ(p.Start("", "/x/y/z.jpg"), "/x/y|z.jpg"); // not asked whether it is there
    EXPECT_EQ(p.Start("", "/z.jpg"), "/|z.jpg");
    EXPECT_EQ(LastPart(FirstRunPath(*p.files)), "NONE.JPG");
    EXPECT_EQ(p.Start("", ""), p.Start("", FirstRunPath(*p.files)));
    EXPECT_EQ(p.Start("", "no folder"), p.Start("", ""));
}

} // namespace
} // namespace tarn::testing
