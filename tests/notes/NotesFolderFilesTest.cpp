#include "NoteFolder.h"

#include "notes/NotesFolderFiles.h"

namespace tarn::testing {
namespace {

struct FolderDesk : NoteFolder {
    NotesFolderFiles work{files, "Note_Formats.txt"};
    int asked = 0;
    NotesFolderFiles::GoOn goOn = [this](std::size_t number) {
        EXPECT_EQ(number, std::size_t(++asked));
        return true;
    };

    std::vector<std::string> Paths() const {
        std::vector<std::string> paths = Names();
        for (std::string& each : paths) each = At(each);
        return paths;
    }
};

TEST(NotesFolder, AllTakesTheQuotesOffWholeFiles) {
    FolderDesk d;
    const std::string text(9000, 'x');
    d.folder.Write("all_long.enf", "\"" + text + "\"\r\n");
    d.folder.Write("all_open.enf", "\"open");
    d.folder.Write("all_plain.enf", "plain");
    d.folder.Write("Note_Formats.txt", "\"Telescope:x\"");
    const NotesRun run = d.work.FixAll(d.Paths(), d.goOn);
    EXPECT_EQ(run.changed, (std::vector<std::string>{d.At("all_long.enf"), d.At("all_open.enf")}));
    EXPECT_TRUE(run.failed.empty());
    EXPECT_EQ(d.asked, 4);
    d.asked = 0;
    EXPECT_EQ(d.Bytes("all_long.enf"), text + "\r\n");
    EXPECT_EQ(d.Bytes("all_open.enf"), "open");
    EXPECT_EQ(d.Bytes("Note_Formats.txt"), "\"Telescope:x\"");
    EXPECT_EQ(Trashed("all_open (replaced).enf"), "\"open");
    EXPECT_TRUE(d.work.FixAll(d.Paths(), d.goOn).changed.empty());
}

TEST(NotesFolder, AllStopsWhenToldAndGoesOnPastAFailure) {
    FolderDesk d;
    for (const char* name : {"1.enf", "2.enf", "3.enf"}) d.folder.Write(name, "\"q");
    d.files.onChange = [](const std::string& verb, const std::string& path) {
        return verb == "write" && path.ends_with("1.enf") ? "full" : "";
    };
    const NotesRun run = d.work.FixAll(d.Paths(), [](std::size_t n) { return n < 2; });
    EXPECT_EQ(run.failed, (std::vector<std::string>{d.At("1.enf")}));
    EXPECT_EQ(run.error, "full");
    EXPECT_EQ(run.changed, (std::vector<std::string>{d.At("2.enf")}));
    EXPECT_EQ(d.Bytes("3.enf"), "\"q");
}

TEST(NotesFolder, ConvertRenamesTextsAndKeepsWhatStoodThere) {
    FolderDesk d;
    d.folder.Write("cv_a.txt", "a");
    d.folder.Write("cv_b.TXT", "b from txt");
    d.folder.Write("cv_b.ENF", "b that stood there");
    d.folder.Write("cv_c.jpg", "picture");
    d.folder.Write("note_formats.txt", "Telescope:x");
    const NotesRun run = d.work.Convert(d.Paths(), d.goOn);
    EXPECT_EQ(run.changed.size(), 2U);
    EXPECT_EQ(run.renamed.at(d.At("cv_b.TXT")), d.At("cv_b.enf"));
    d.asked = 0;
    EXPECT_EQ(d.Names(),
              (std::vector<std::string>{"cv_a.enf", "cv_b.enf", "cv_c.jpg", "note_formats.txt"}));
    EXPECT_EQ(d.Bytes("cv_a.enf"), "a");
    EXPECT_EQ(d.Bytes("cv_b.enf"), "b from txt");
    EXPECT_EQ(Trashed("cv_b.ENF"), "b that stood there");
    // A note that cannot be put away is not replaced.
    d.folder.Write("cv_a.txt", "again");
    d.files.onChange = [](const std::string& verb, const std::string&) {
        return verb == "trash" ? "no wastebasket" : "";
    };
    EXPECT_EQ(d.work.Convert(d.Paths(), d.goOn).failed.size(), 1U);
    EXPECT_EQ(d.Bytes("cv_a.enf"), "a");
    EXPECT_EQ(d.Bytes("cv_a.txt"), "again");
}

TEST(NotesFolder, UpdateIsHeldToTheSameStandardAsSave) {
    FolderDesk d;
    d.folder.Write("up.enf", std::string(8500, 'x'));
    auto note = d.work.Read(d.At("up.enf"));
    ASSERT_TRUE(note);
    EXPECT_EQ(note->bytes.size(), 8000U);
    std::string error;
    EXPECT_TRUE(d.work.Update(*note, "short", &error));
    EXPECT_EQ(Trashed("up (replaced).enf").size(), 8500U);
    d.files.onChange = [](const std::string& verb, const std::string&) {
        return verb == "trash" ? "once only" : "";
    };
    EXPECT_TRUE(d.work.Update(*note, "shorter", &error));
    EXPECT_EQ(d.Names(), (std::vector<std::string>{"up.enf"})); // nothing to be kept
    EXPECT_EQ(d.Bytes("up.enf"), "shorter");
    d.files.onChange = nullptr;
    EXPECT_FALSE(d.work.Read(d.At("gone.enf")));
    EXPECT_TRUE(d.work.Delete(d.At("up.enf"), &error));
    EXPECT_EQ(Trashed("up.enf"), "shorter");
}

} // namespace
} // namespace tarn::testing
