#include "platform/SettingsStore.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

namespace tarn::testing {
namespace {

TEST(SettingsStore, KeepsTextsAsTheyAre) {
    TestFolder folder;
    const std::string file = folder.Path() + "/deep/settings.ini";
    const std::vector<std::string> texts{
        "",     "a, b", "+/a+/b c+", "\"quoted\"", "\xEF\x9F\xA4;x", "@at(x)",          "  blanks ",
        "a\nb", "%41",  "C:\\back",  "100",        "/b\xE4\xFF/x",   "\xF0\x9F\x8C\x8C"};
    {
        const auto store = MakeSettingsStore(file);
        for (std::size_t i = 0; i < texts.size(); ++i)
            store->Write("key" + std::to_string(i), texts[i]);
        EXPECT_TRUE(store->Flush());
    }
    const auto store = MakeSettingsStore(file);
    for (std::size_t i = 0; i < texts.size(); ++i)
        EXPECT_EQ(store->Read("key" + std::to_string(i), "none"), texts[i]);
    EXPECT_EQ(store->Read("other", "none"), "none");
    store->Delete();
    EXPECT_FALSE(store->Contains("key1"));
    EXPECT_EQ(store->Location(), file);
}

TEST(SettingsStore, TwoWindowsKeepEachOthersChanges) {
    TestFolder folder;
    const std::string file = folder.Path() + "/settings.ini";
    {
        const auto before = MakeSettingsStore(file);
        before->Write("folder", "/a");
        before->Write("size", "10");
    }
    const auto one = MakeSettingsStore(file);
    const auto two = MakeSettingsStore(file);
    const auto read = [](const std::unique_ptr<SettingsStore>& store) {
        return std::pair(store->Read("folder", ""), store->Read("size", ""));
    };
    EXPECT_EQ(read(one), read(two));
    two->Write("size", "12");
    EXPECT_TRUE(two->Flush());
    one->Write("folder", "/b"); // all that it has, as at its end
    one->Write("size", "10");
    EXPECT_TRUE(one->Flush());
    EXPECT_EQ(read(MakeSettingsStore(file)), std::pair(std::string("/b"), std::string("12")));
    std::remove(file.c_str());
    EXPECT_TRUE(one->Flush()); // what somebody took away comes back
    EXPECT_EQ(read(MakeSettingsStore(file)), std::pair(std::string("/b"), std::string("10")));
}

TEST(SettingsStore, SaysWhenItCannotBeWritten) {
    TestFolder folder;
    folder.Write("file", "x"); // a file where a folder is needed
    const auto store = MakeSettingsStore(folder.Path() + "/file/settings.ini");
    EXPECT_FALSE(store->IsWritable());
    store->Write("key", "text");
    EXPECT_FALSE(store->Flush());
}

} // namespace
} // namespace tarn::testing
