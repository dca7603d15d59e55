#include "NoteFolder.h"

#include "notes/NoteFormats.h"

#include <filesystem>

namespace tarn::testing {
namespace {

using Texts = std::vector<std::string>;

constexpr DateTime kNow{2026, 11, 6, 20, 15, 30};

constexpr std::size_t At(NoteEntry entry) {
    return static_cast<std::size_t>(entry);
}

TEST(NoteFormats, TheFileIsReadLineByLine) {
    const FormatLists lists = ParseFormats("\xEF\xBB\xBFTelescope:TEC APO 140\r\n"
                                           "Telescope:Vixen FL102S\n"
                                           "Guide Scope:Mini Borg 50\n"
                                           "Location:RQT\n"
                                           "Observing list\n"
                                           "telescope:no\n"
                                           "Lens:AP CCDT67: spare\n"
                                           "Camera: one blank\n"
                                           "Exposure:\n"
                                           "Telescope:TEC APO 140");
    EXPECT_EQ(lists[At(NoteEntry::Telescope)],
              (Texts{"TEC APO 140", "Vixen FL102S", "TEC APO 140"}));
    EXPECT_EQ(lists[At(NoteEntry::GuideScope)], (Texts{"Mini Borg 50"}));
    EXPECT_EQ(lists[At(NoteEntry::Location)], (Texts{"RQT"}));
    EXPECT_EQ(lists[At(NoteEntry::Lens)], (Texts{"AP CCDT67"}));
    EXPECT_EQ(lists[At(NoteEntry::Camera)], (Texts{" one blank"}));
    EXPECT_EQ(lists[At(NoteEntry::Exposure)], (Texts{""}));
    EXPECT_TRUE(lists[At(NoteEntry::Mount)].empty());
}

TEST(NoteFormats, RubbishLeavesTheListsUsable) {
    std::string bytes = "Mount:a\nMount:b\x01\nMount:" + std::string(5000, 'x') +
                        "\nMount:\xE9t\xE9\nMount:\xC3\xA9\n";
    for (int i = 0; i < 10000; ++i) bytes += "Filter:" + std::to_string(i) + "\n";
    const FormatLists lists = ParseFormats(bytes);
    EXPECT_EQ(lists[At(NoteEntry::Mount)], (Texts{"a", "\xC3\xA9t\xC3\xA9", "\xC3\xA9"}));
    EXPECT_EQ(lists[At(NoteEntry::Filter)].size(), 10000U);
    std::string all;
    for (int i = 0; i < 4096; ++i) all += static_cast<char>(i * 7);
    for (const auto& list : ParseFormats(all)) EXPECT_TRUE(list.empty());
}

TEST(NoteFormats, ALoadAddsTheDatesBehindTheFilesOwn) {
    FormatLists lists;
    LoadFormats(lists, "# comments only\n", kNow);
    EXPECT_EQ(lists[At(NoteEntry::Date)],
              (Texts{"06-Nov-2026", "November 06, 2026", "11/06/2026 8:15:30 PM", "11/06/26",
                     "2026-11-06", "2026.11.06"}));
    for (int i = 0; i < 2; ++i) LoadFormats(lists, "Date:some day\n", kNow);
    EXPECT_EQ(lists[At(NoteEntry::Date)].size(), 7U);
    EXPECT_EQ(lists[At(NoteEntry::Date)].front(), "some day");
}

TEST(NoteFormats, TheProgramsFileIsCopiedOnlyWhereNoneStands) {
    NoteFolder d;
    const std::string own = d.folder.Write("own.txt", "Mount:own\n");
    const std::string users = d.At("Note_Formats.txt");
    EXPECT_EQ(ReadFormatFile(d.files, users, own), "Mount:own\n");
    EXPECT_EQ(d.Bytes("Note_Formats.txt"), "Mount:own\n");
    d.folder.Write("Note_Formats.txt", "");
    EXPECT_EQ(ReadFormatFile(d.files, users, own), "");
    EXPECT_EQ(ReadFormatFile(d.files, d.At("gone/Note_Formats.txt"), own), std::nullopt);
    EXPECT_EQ(ReadFormatFile(d.files, d.At("other.txt"), d.At("gone.txt")), std::nullopt);
    // What cannot be read is left alone.
    std::filesystem::create_directory(d.At("folder.txt"));
    EXPECT_EQ(ReadFormatFile(d.files, d.At("folder.txt"), own), std::nullopt);
}

EntryTicks AllTicked() {
    EntryTicks ticks{};
    ticks.fill(true);
    return ticks;
}

TEST(NoteFormats, TheLocationGoesByTheLenssTick) {
    EntryTicks ticks = AllTicked();
    ticks[At(NoteEntry::Lens)] = false;
    EXPECT_TRUE(ReadBack("Location: here", ticks).empty());
    ticks[At(NoteEntry::Lens)] = true;
    ticks[At(NoteEntry::Location)] = false;
    EXPECT_EQ(ReadBack("Location: here", ticks).size(), 1U);
    ticks[At(NoteEntry::Date)] = false;
    EXPECT_TRUE(ReadBack("Date: today", ticks).empty());
}

TEST(NoteFormats, ValuesBeginTwoCharactersBehindTheCaption) {
    const auto value = [](const std::string& line) {
        const auto values = ReadBack(line, AllTicked());
        return values.empty() ? std::string("(none)") : values.front().second;
    };
    EXPECT_EQ(value("Mount: a"), "a");
    EXPECT_EQ(value("Mount: a\r"), "a");
    EXPECT_EQ(value("Dates of old\r"), "of old"); // only the caption is looked at
    EXPECT_EQ(value("Mount: \r"), "");
    EXPECT_EQ(value("Mount:\r"), "(none)"); // too short to hold a value
    EXPECT_EQ(value("Mount\r"), "(none)");
    EXPECT_EQ(value("Mount"), "(none)");
    EXPECT_EQ(value("Mount:"), "(none)");
    EXPECT_EQ(value("Mount: "), "");
    EXPECT_EQ(value(" Mount: a"), "(none)");
    EXPECT_TRUE(ReadBack("", AllTicked()).empty());
}

TEST(NoteFormats, FirstLinesAreNoMoreThanThereAre) {
    EXPECT_EQ(FirstLines("a\r\nb\r\nc", 2), "a\r\nb");
    EXPECT_EQ(FirstLines("a\r\nb\r\nc", 9), "a\r\nb\r\nc");
    EXPECT_EQ(FirstLines("a\r\nb", 0), "a");
    EXPECT_EQ(FirstLines("", 3), "");
}

} // namespace
} // namespace tarn::testing
