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

TEST(NotesFolder, AllStopsWhenToldAndGoesOnPastAFailure) {
    FolderDesk d;
    for (const char* name : {"1.enf", "2.enf", "3.enf"}) d.folder.Write(name, "\"q");
    d.files.onChange = [](const std::string& verb, const std::string& path) {
        return verb == "write" && path.ends_with("1.enf") ? "full" : "";
    };
    const NotesRun run = d.work.FixAll(d.files, d.Paths(), [](std::size_t n) { return n < 2; });
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
    const NotesRun run = d.work.Convert(d.files, d.Paths(), d.goOn);
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
    EXPECT_EQ(d.work.Convert(d.files, d.Paths(), d.goOn).failed.size(), 1U);
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
    EXPECT_TRUE(d.work.Update(d.files, *note, "short", &error));
    EXPECT_EQ(Trashed("up (replaced).enf").size(), 8500U);
    d.files.onChange = [](const std::string& verb, const std::string&) {
        return verb == "trash" ? "once only" : "";
    };
    EXPECT_TRUE(d.work.Update(d.files, *note, "shorter", &error));
    EXPECT_EQ(d.Names(), (std::vector<std::string>{"up.enf"})); // nothing to be kept
    EXPECT_EQ(d.Bytes("up.enf"), "shorter");
}

} // namespace
} // namespace tarn::testing
