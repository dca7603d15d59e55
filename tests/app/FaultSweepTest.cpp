// Each call of the disk, of the settings and of the picture readers fails once in turn, in every
// command: nothing of the user's is lost, nothing half is left, the user is told, the program goes
// on.
#include "FaultCommands.h"
#include "FullDisk.h"

#include "widgets/PictureBox.h"

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
constexpr std::array<int, 4> kBytesLeft{0, 100, 1000, 10000}; // on the full disk

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
    {"sum saved", "open pictures/L", Differs::OnDisk,
     "frames left out are listed in the window; the header lacks times of one that is gone by "
     "then"},
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

// A sum is that of the frames that can be read: its window lists the others.
bool IsOfFewerFrames(const std::string& path, const std::string& call) {
    return path == "target/sum.fits" && call.starts_with("open ");
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
    Checked(const char* command, const FaultAct& act) : m_command(command), m_act(act) {
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
                sweep.untold.push_back(name + " " + m_whole.state + " -> " + Screen(w) +
                                       Differing(after));
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
    bool AreAsWithout(const Tree& after) const { return Differing(after).empty(); }
    // The files that are not as without a fault.
    std::string Differing(const Tree& after) const {
        std::string differing;
        for (const auto& [path, bytes] : after) {
            const auto whole = m_whole.files.find(path);
            if (whole == m_whole.files.end())
                differing += ", " + path + " too much";
            else if (whole->second != bytes && !HasItsEnd(path, bytes))
                differing += ", " + path + " other";
        }
        for (const auto& [path, bytes] : m_whole.files)
            if (!after.count(path)) differing += ", " + path + " missing";
        return differing;
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
                !GrowsInPlace(path, theFault.what) && !IsOfFewerFrames(path, theFault.what))
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
    const FaultAct& m_act;
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
    for (std::size_t i = part; i < FaultCommands().size(); i += kParts) {
        const auto& [name, act] = FaultCommands()[i];
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
