// Each call of the disk, of the settings and of the picture readers fails once in turn, in every
// command: nothing of the user's is lost, nothing half is left, the user is told, the program goes
// on.
#include "FaultWorld.h"
#include "FullDisk.h"

#include "widgets/PictureBox.h"

#include <QComboBox>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdarg>
#include <set>

namespace tarn::testing {
FaultPoint theFault;
} // namespace tarn::testing

namespace {

// A file of the pictures' folder that is opened to be read.
bool OpenFails(const char* path, bool forReading) {
    auto& fault = tarn::testing::theFault;
    if (!forReading || fault.kind != tarn::testing::FaultPoint::Open) return false;
    if (!std::string(path).starts_with(fault.root + "/")) return false;
    if (!fault.Fails(tarn::testing::FaultPoint::Open, "open", path)) return false;
    errno = EIO;
    return true;
}

} // namespace

// The readers open their files by themselves and through libraries: here is where all of them pass.
extern "C" {
int open64(const char* path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = va_arg(rest, mode_t);
    va_end(rest);
    if (OpenFails(path, (flags & (O_ACCMODE | O_DIRECTORY)) == O_RDONLY)) return -1;
    return static_cast<int>(::syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}
int open(const char* path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = va_arg(rest, mode_t);
    va_end(rest);
    return open64(path, flags, mode);
}
FILE* fopen(const char* path, const char* mode) {
    static const auto real =
        reinterpret_cast<FILE* (*)(const char*, const char*)>(::dlsym(RTLD_NEXT, "fopen"));
    return OpenFails(path, mode[0] == 'r') ? nullptr : real(path, mode);
}
}

namespace tarn::testing {
namespace {

using World = FaultWorld;
using Act = std::function<void(World&)>;
constexpr std::array<int, 4> kBytesLeft{0, 100, 1000, 10000}; // on the full disk
constexpr char kTyped[] = "typed just now";
constexpr std::initializer_list<Qt::Key> kKeys{Qt::Key_N, Qt::Key_Y, Qt::Key_N}; // of a show

void Paste(World& w, QAction* how) {
    w.c.SelectAllButton->trigger();
    how->trigger();
    w.house.navigation.OpenFolder(w.target.Path(), {});
    w.c.PasteButton->trigger();
}
void Drop(World& w, bool copy) {
    w.dialogs.answers = {"Keep both"};
    const auto dropped =
        w.house.fileops.PutFiles({{w.At("a.jpg"), w.At("b.jpg")}, w.target.Path(), copy});
    w.house.shell.Tell(dropped);
}
void Overwrite(World& w, QAction* entry) {
    w.Answer({w.target.Path(), "Overwrite"}, entry);
}
void LayPage(World& w, const char* how) {
    w.c.CreateAppendHtmlFile->trigger();
    w.Press("frmHtmlLayout", how, {w.At("page.html"), "OK"});
    w.Press("frmHtmlLayout", "CommandOk");
    w.Press("frmHtmlLayout", "HtmlAddAllButton");
    w.Press("frmHtmlLayout", "QuitButton");
}
void Gallery(World& w, const char* how) {
    w.Answer({w.At("index.html"), "OK"}, w.c.HtmlThumbButton);
    w.Press("frmHtmlThumb", "GenThumbButton");
    w.Press("frmHtmlThumb", how);
    w.Press("frmHtmlThumb", "QuitButton");
}
void NewDate(World& w) {
    w.c.FixPictureDateButton->trigger();
    if (auto* box = w.In<QLineEdit>("frmDate", "SetDateText"))
        box->setText(QStringLiteral("2009:09:09 09:09:09"));
    w.Press("frmDate", "SetButton");
}
void RenameAll(World& w) {
    w.c.RenamePicturesButton->trigger();
    if (auto* all = w.In<QCheckBox>("frmRenameFiles", "CheckAll")) all->setChecked(true);
    for (const auto& [box, text] : {std::pair("RenameInputFilter", "a"), {"RenameFilter", "z"}})
        if (auto* edit = w.In<QLineEdit>("frmRenameFiles", box))
            edit->setText(QString::fromLatin1(text));
    w.Press("frmRenameFiles", "RenameCommand");
}
void DateTakenBack(World& w) {
    w.s.AutoSetFileDates = true;
    w.GoTo("b.jpg");
    w.Press("frmMain", "DateStripUndoButton");
}
void Exit(World& w) {
    w.Type(kTyped);
    w.c.Exit->trigger();
}

// A world that is started, unless the command is the start.
const std::vector<std::pair<const char*, Act>> kCommands{
    {"start", [](World& w) { w.house.Start(w.At("a.jpg"), {}); }},
    {"refresh", [](World& w) { w.house.navigation.RefreshDirButton_Click(); }},
    {"step", [](World& w) { w.Key(Qt::Key_N), w.Key(Qt::Key_N), w.Key(Qt::Key_P); }},
    {"back", [](World& w) { w.GoTo("b.jpg"), w.c.FileBackButton->click(); }},
    {"folder", [](World& w) { w.house.navigation.OpenFolder(w.target.Path(), {}); }},
    {"note filter",
     [](World& w) {
         w.c.NoteFilterCombo->setCurrentIndex(1), emit w.c.NoteFilterCombo->activated(1);
     }},
    {"full size", [](World& w) { w.c.OneToOneButton->click(), w.c.CloseOneToOneButton->click(); }},
    {"zoom", [](World& w) { w.Key(Qt::Key_Plus), w.Key(Qt::Key_N), w.Key(Qt::Key_Minus); }},
    {"show", [](World& w) { w.RunShow(w.c.SlideButton, kKeys); }},
    {"show of four", [](World& w) { w.RunShow(w.c.Slides4Button, kKeys); }},
    {"images of a file",
     [](World& w) {
         w.c.FCheck->click(), w.GoTo("cube.fits");
         w.c.NextImageButton->trigger(), w.c.PrevImageButton->trigger();
     }},
    {"text file", [](World& w) { w.c.TCheck->click(), w.GoTo("t.txt"); }},
    {"mark by key",
     [](World& w) {
         w.Key(Qt::Key_K);
         EXPECT_TRUE(w.house.marks.Flush());
         QCoreApplication::processEvents();
     }},
    {"night and sharpest of bursts",
     [](World& w) {
         w.Key(Qt::Key_G), w.c.BurstButton->trigger(), w.c.UndoButton->trigger();
         EXPECT_TRUE(w.house.marks.Flush());
         QCoreApplication::processEvents();
     }},
    {"night report",
     [](World& w) {
         w.c.NightReportButton->trigger();
         w.Press("frmNightReport", "ReportPageButton", {w.At("report.html")});
     }},
    {"sky panel", [](World& w) { w.Key(Qt::Key_W), w.Key(Qt::Key_N); }},
    {"circles and corners", [](World& w) { w.Key(Qt::Key_Q), w.Key(Qt::Key_X), w.Key(Qt::Key_N); }},
    {"rejected to wastebasket",
     [](World& w) { w.Key(Qt::Key_J), w.Answer({"Yes"}, w.c.RejectedDeleteButton); }},
    {"rejected into sub folder",
     [](World& w) { w.Key(Qt::Key_J), w.Answer({"rejected"}, w.c.RejectedFolderButton); }},
    {"kept to copy folder",
     [](World& w) {
         w.Key(Qt::Key_K), w.Answer({"Yes", "Keep both"}, w.c.KeptCopyButton);
     }},
    {"delete", [](World& w) { w.Key(Qt::Key_Delete); }},
    {"delete only", [](World& w) { w.c.DeleteOnlyButton->trigger(); }},
    {"delete and undo", [](World& w) { w.Key(Qt::Key_Delete), w.c.UndoButton->trigger(); }},
    {"delete, undo and redo",
     [](World& w) { w.Key(Qt::Key_Delete), w.c.UndoButton->trigger(), w.c.RedoButton->trigger(); }},
    {"history",
     [](World& w) {
         w.Key(Qt::Key_Delete), w.c.HistoryButton->trigger();
         w.Press("frmHistory", "HistoryUndoButton");
     }},
    {"delete fits", [](World& w) { w.c.DeleteAllFitsButton->trigger(); }},
    {"mark",
     [](World& w) {
         w.house.marks.SetMarks({w.At("a.jpg"), w.At("b.jpg")}, Decide(Decision::Reject));
         EXPECT_TRUE(w.house.marks.Flush());
         QCoreApplication::processEvents();
     }},
    {"rename", [](World& w) { w.Rename("b.jpg"); }},
    {"rename and undo", [](World& w) { w.Rename("z.jpg"), w.c.UndoButton->trigger(); }},
    {"duplicate", [](World& w) { w.Duplicate("b.jpg"); }},
    {"batch rename", RenameAll},
    {"copy and paste", [](World& w) { Paste(w, w.c.CopyButton); }},
    {"cut and paste", [](World& w) { Paste(w, w.c.CutButton); }},
    {"drop", [](World& w) { Drop(w, false); }},
    {"drop as copies", [](World& w) { Drop(w, true); }},
    {"copy to", [](World& w) { w.c.CopyImageButton3->click(); }},
    {"move to", [](World& w) { w.c.MoveToButton->click(); }},
    {"move and undo", [](World& w) { w.c.MoveToButton->click(), w.c.UndoButton->trigger(); }},
    {"move to other disk",
     [](World& w) { w.s.CopyImageFolder = w.other.Path(), w.c.MoveToButton->click(); }},
    {"convert", [](World& w) { w.c.ConvertButton->trigger(); }},
    {"convert into folder", [](World& w) { w.c.CJMButton->click(); }},
    {"create folder", [](World& w) { w.Answer({"new"}, w.c.CreateFolderButton); }},
    {"export", [](World& w) { Overwrite(w, w.c.ExportFilesButton[1]); }},
    {"import", [](World& w) { Overwrite(w, w.c.ImportButton); }},
    {"import notes", [](World& w) { Overwrite(w, w.c.ImportNotesFilesButton); }},
    {"set file date", [](World& w) { w.Key(Qt::Key_F6); }},
    {"file dates", [](World& w) { w.Answer({"OK"}, w.c.SyncDatesButton); }},
    {"new date", NewDate},
    {"date taken back", DateTakenBack},
    {"save note", [](World& w) { w.Type(kTyped), w.c.SaveNotesButton->click(); }},
    {"save note, step", [](World& w) { w.Type(kTyped), w.c.SaveNotes2Button->click(); }},
    {"save changed note",
     [](World& w) { w.ChangeNote(), w.Type(kTyped), w.c.SaveNotesButton->click(); }},
    {"unsaved note", [](World& w) { w.Type(kTyped), w.Key(Qt::Key_N); }},
    {"clear, restore note",
     [](World& w) { w.c.ClearNotesButton->click(), w.c.RestoreNotesButton->click(); }},
    {"delete note", [](World& w) { w.c.DeleteNotesButton->click(); }},
    {"note manager",
     [](World& w) {
         w.c.DisplayNotesFolderButton->trigger(), w.Press("frmNotesFolder", "UpdateButton");
     }},
    {"composer",
     [](World& w) {
         w.c.CommandNotesNew->click(), w.Press("FrmNewNotes", "CommandSet"),
             w.Press("FrmNewNotes", "CommandSave");
     }},
    {"thumbnails", [](World& w) { w.c.GenerateThumbButton->trigger(); }},
    {"one thumbnail", [](World& w) { w.c.GenerateThumbCButton->trigger(); }},
    {"delete thumbnails",
     [](World& w) {
         w.c.GenerateThumbButton->trigger(), w.Answer({"OK"}, w.c.ThumbFolderDeleteButton);
     }},
    {"sheet", [](World& w) { w.Answer({w.paper}, w.c.Printc4Button); }},
    {"data sheet", [](World& w) { w.Answer({w.paper}, w.c.PrintButton); }},
    {"page", [](World& w) { LayPage(w, "CreateButton_1"); }},
    {"page, appended",
     [](World& w) { LayPage(w, "CreateButton_1"), LayPage(w, "CreateButton_2"); }},
    {"delete pages", [](World& w) { w.Answer({"OK"}, w.c.HtmlDeleteButton); }},
    {"gallery", [](World& w) { Gallery(w, "HtmlThumbnailButton"); }},
    {"gallery anew",
     [](World& w) { Gallery(w, "HtmlThumbnailButton"), Gallery(w, "HtmlFramesThumbnailButton"); }},
    {"save settings", [](World& w) { w.c.SaveSettingsButton->trigger(); }},
    {"remove settings", [](World& w) { w.c.RemoveRegButton->trigger(); }},
    {"exit", Exit},
};

// What nobody is told, and why that does no harm. The picture on show is the right one in any case.
enum class Differs { OnScreen, OnDisk }; // on the disk nothing, or also there
struct Silent {
    const char* command; // empty: any
    const char* call;    // a part of the call's text
    Differs differs;
    const char* why;
};
constexpr Silent kSilent[] = {
    {"", "read notes/", Differs::OnScreen,
     "a note that cannot be read counts as none; a save keeps it in the wastebasket"},
    {"", "look ", Differs::OnScreen, "the date stands empty in the panel"},
    {"", "open pictures/", Differs::OnScreen,
     "the reader of camera data shows no message; the panel keeps its rows"},
    {"note filter", "names notes", Differs::OnScreen,
     "no note is known, none is listed; the next refresh asks again"},
    {"start", "read notes_folder", Differs::OnScreen,
     "the default: no notes are shown, none is written"},
    {"thumbnails", "read notes/", Differs::OnDisk, "the thumbnail has no note"},
    {"delete thumbnails", "read notes/", Differs::OnDisk, "the thumbnail has no note"},
    {"gallery", "read notes/", Differs::OnDisk, "the thumbnail has no note"},
    {"gallery anew", "read notes/", Differs::OnDisk, "the thumbnail has no note"},
    {"convert", "any case notes/", Differs::OnDisk, "a note may stand there: it is kept"},
    {"convert into folder", "any case notes/", Differs::OnDisk,
     "a note may stand there: it is kept"},
    {"save changed note", "exists notes/a (replaced)", Differs::OnDisk,
     "the kept note takes the next number"},
    {"save changed note", "trash notes/a (replaced)", Differs::OnDisk,
     "the kept note stays beside the new one"},
    {"gallery anew", "trash pictures/ImageT", Differs::OnDisk,
     "pages of the old gallery stay, or new ones take their places"},
    {"gallery anew", "names pictures", Differs::OnDisk, "pages of the old gallery stay"},
    {"drop", "exists target/", Differs::OnDisk, "the file takes the next number"},
    {"drop as copies", "exists target/", Differs::OnDisk, "the copy takes the next number"},
    {"kept to copy folder", "exists target/", Differs::OnDisk, "the copy takes the next number"},
    {"start", "bytes left", Differs::OnDisk,
     "only the test's own settings are waiting to be written"},
};

bool IsSilent(const std::string& command, const std::string& call, Differs differs) {
    return std::any_of(std::begin(kSilent), std::end(kSilent), [&](const Silent& each) {
        return (!*each.command || command == each.command) && differs <= each.differs &&
               call.find(each.call) != std::string::npos;
    });
}

// A page that is laid by hand grows entry by entry, its end is written last.
bool GrowsInPlace(const std::string& path, const std::string& call) {
    return path == "pictures/page.html" && call.starts_with("extend");
}

// What a run without faults came to.
struct Outcome {
    Tree files;
    std::string told;
    std::string state; // what stands on the screen
    std::string pane;  // the current file and the picture that is shown for it
};

std::set<std::string> Contents(const Tree& tree) {
    std::set<std::string> contents;
    for (const auto& [path, bytes] : tree) contents.insert(bytes);
    return contents;
}

// By its end: dates make it differ from run to run.
bool HasItsEnd(const std::string& path, const std::string& bytes) {
    for (const auto& [type, end] : {std::pair<std::string, std::string>{".jpg", "\xFF\xD9"},
                                    {".html", "</html>\r\n"},
                                    {"report.html", "</html>\n"},
                                    {".xmp", "</x:xmpmeta>\n"},
                                    {".pdf", "%%EOF\n"},
                                    {".trashinfo", "\n"}})
        if (path.ends_with(type) && bytes.ends_with(end)) return true;
    return path.starts_with("state/");
}

struct Sweep {
    int calls = 0;
    int told = 0;
    int harmless = 0;
    std::vector<std::string> untold;
    std::vector<std::string> faults;
};

class Checked {
public:
    Checked(const char* command, const Act& act) : m_command(command), m_act(act) {
        World w;
        Run(w, FaultPoint::None, 0);
        m_whole = {w.Everything(), w.Told(), Screen(w), Pane(w)};
    }

    // Call after call, until a run in which none fails.
    Sweep All(FaultPoint::Kind kind) {
        Sweep sweep;
        for (int number = 1; kind != FaultPoint::Full || number <= int(kBytesLeft.size());
             ++number) {
            World w;
            Run(w, kind, number);
            if (theFault.what.empty()) return sweep;
            ++sweep.calls;
            const std::string name = std::string(m_command) + ", call " + std::to_string(number) +
                                     " (" + w.Short(theFault.what) + ")";
            const Tree after = w.Everything();
            for (const std::string& fault : Lost(w, after))
                sweep.faults.push_back(name + ": " + fault);
            if (w.Told() != m_whole.told)
                ++sweep.told;
            else if (IsHarmless(w, after))
                ++sweep.harmless;
            else
                sweep.untold.push_back(name + " " + m_whole.state + " -> " + Screen(w));
            if (const std::string why = w.GoesOn(); !why.empty())
                sweep.faults.push_back(name + ": does not go on: " + why);
        }
        return sweep;
    }

private:
    static void Settle(World& w) {
        w.house.ahead.WaitUntilDone();
        EXPECT_TRUE(w.house.marks.Flush());
        (void)QTest::qWaitFor([&] { return w.house.marks.AllRead(); }, 2000);
    }
    void Run(World& w, FaultPoint::Kind kind, int number) {
        const bool starts = std::string(m_command) == "start";
        if (!starts) w.Start(w.At("a.jpg"));
        Settle(w);
        m_before = w.Everything();
        w.said.clear();
        theFault.Arm(kind, number);
        if (kind == FaultPoint::Full && number > 0) {
            const FullDisk full(w.target.Path(), kBytesLeft[std::size_t(number - 1)]);
            theFault.what = std::to_string(kBytesLeft[std::size_t(number - 1)]) + " bytes left";
            m_act(w);
        } else {
            m_act(w);
        }
        Settle(w);
        theFault.Disarm();
    }
    // Each picture of the world has a width of its own; under a text none is seen.
    static std::string Pane(const World& w) {
        const bool seen = w.s.Kind == tarn::FileKind::Picture;
        return w.s.FileNameOnly + " " + std::to_string(seen ? w.c.Picture1->Picture().width() : 0);
    }
    static std::string Screen(const World& w) {
        return w.Short(Pane(w) + "|" + w.s.NoteText + "|" +
                       std::to_string(w.c.FileListBox->Count()) + "|" + w.Row(1));
    }
    bool IsHarmless(const World& w, const Tree& after) const {
        const bool same = AreAsWithout(after);
        if (same && Screen(w) == m_whole.state) return true;
        return Pane(w) == m_whole.pane && IsSilent(m_command, w.Short(theFault.what),
                                                   same ? Differs::OnScreen : Differs::OnDisk);
    }
    bool AreAsWithout(const Tree& after) const {
        if (after.size() != m_whole.files.size()) return false;
        return std::all_of(after.begin(), after.end(), [&](const auto& file) {
            const auto whole = m_whole.files.find(file.first);
            return whole != m_whole.files.end() &&
                   (whole->second == file.second || HasItsEnd(file.first, file.second));
        });
    }
    std::vector<std::string> Lost(const World& w, const Tree& after) const {
        std::vector<std::string> faults;
        const auto now = Contents(after);
        const auto then = Contents(m_before);
        const auto whole = Contents(m_whole.files);
        for (const auto& [path, bytes] : m_before) {
            if (now.count(bytes) || path.starts_with("state/")) continue;
            // What the command itself replaces or takes away must have been replaced whole.
            const auto stands = after.find(path);
            const bool replaced = stands != after.end() && IsWhole(w, path, stands->second);
            if (whole.count(bytes) || (m_whole.files.count(path) && !replaced))
                faults.push_back("LOST " + path);
        }
        for (const auto& [path, bytes] : after) {
            if (path.find("/.tarn-") != std::string::npos) faults.push_back("left over: " + path);
            if (!then.count(bytes) && !IsWhole(w, path, bytes) &&
                !GrowsInPlace(path, theFault.what))
                faults.push_back("half: " + path);
        }
        if (UsesText()) {
            bool found = !w.events.ProgramEnds() &&
                         (w.s.NoteText + w.s.NotesSave).find(kTyped) != std::string::npos;
            for (const std::string& bytes : now)
                found = found || bytes.find(kTyped) != std::string::npos;
            if (!found) faults.push_back("LOST the text");
        }
        return faults;
    }
    // As without a fault, or the note that stands in the box.
    bool IsWhole(const World& w, const std::string& path, const std::string& bytes) const {
        for (const auto& [other, whole] : m_whole.files)
            if (whole == bytes) return true;
        return HasItsEnd(path, bytes) || (path.ends_with(".enf") && bytes == w.s.NoteText);
    }
    bool UsesText() const {
        for (const auto& [path, bytes] : m_whole.files)
            if (bytes.find(kTyped) != std::string::npos) return true;
        return false;
    }

    const char* m_command;
    const Act& m_act;
    Tree m_before;
    Outcome m_whole;
};

constexpr std::size_t kParts = 9; // of the commands, each a test of its own
using KindAndPart = std::tuple<FaultPoint::Kind, std::size_t>;
class Faults : public ::testing::TestWithParam<KindAndPart> {};

TEST_P(Faults, NoneLosesAnything) {
    Sweep sum;
    int commands = 0;
    const auto [kind, part] = GetParam();
    for (std::size_t i = part; i < kCommands.size(); i += kParts) {
        const auto& [name, act] = kCommands[i];
        const Sweep one = Checked(name, act).All(kind);
        std::printf("%-22s %4d calls fail, %4d told, %4d harmless, %4zu untold, %zu faults\n", name,
                    one.calls, one.told, one.harmless, one.untold.size(), one.faults.size());
        for (const auto& each : one.untold) std::printf("    untold: %s\n", each.c_str());
        for (const auto& each : one.faults) std::printf("    FAULT: %s\n", each.c_str());
        std::fflush(stdout);
        ++commands;
        sum.calls += one.calls;
        sum.told += one.told;
        sum.harmless += one.harmless;
        sum.untold.insert(sum.untold.end(), one.untold.begin(), one.untold.end());
        sum.faults.insert(sum.faults.end(), one.faults.begin(), one.faults.end());
    }
    std::printf("TOTAL %d commands, %d calls fail, %d told, %d harmless, %zu untold, %zu faults\n",
                commands, sum.calls, sum.told, sum.harmless, sum.untold.size(), sum.faults.size());
    EXPECT_TRUE(sum.faults.empty());
    EXPECT_TRUE(sum.untold.empty());
}

std::string KindName(const ::testing::TestParamInfo<KindAndPart>& param) {
    static const char* const names[] = {"None", "Change", "Ask", "Settings", "Open", "Full"};
    const auto [kind, part] = param.param;
    return names[kind] + std::to_string(part);
}

INSTANTIATE_TEST_SUITE_P(Each, Faults,
                         ::testing::Combine(::testing::Values(FaultPoint::Change, FaultPoint::Ask,
                                                              FaultPoint::Settings,
                                                              FaultPoint::Open, FaultPoint::Full),
                                            ::testing::Range(std::size_t(0), kParts)),
                         KindName);

} // namespace
} // namespace tarn::testing
