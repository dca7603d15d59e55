// A program of its own crashes, and its note is read.
#include "platform/CrashNote.h"
#include "platform/Files.h"
#include "support/TestFolder.h"

#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <csignal>
#include <cstdint>
#include <ctime>
#include <ostream>
#include <string>

namespace tarn::testing {
namespace {

// How it ended, as wait(2) tells.
int Crash(const std::string& folder, const std::string& kind) {
    const pid_t child = fork();
    if (child == 0) {
        execl(TARN_CRASHER, TARN_CRASHER, folder.c_str(), kind.c_str(), nullptr);
        _exit(127);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return status;
}

bool LeftToSanitizers(int status) {
    return WIFEXITED(status) && WEXITSTATUS(status) == 77;
}

std::string Today(std::time_t when) {
    char text[32];
    std::strftime(text, sizeof text, "%Y-%m-%d %H:", std::gmtime(&when));
    return text;
}

struct Kind {
    const char* kind;
    int signal;
    const char* named;
};

void PrintTo(const Kind& kind, std::ostream* out) {
    *out << kind.kind;
}

class CrashNote : public ::testing::TestWithParam<Kind> {};

TEST_P(CrashNote, TellsWhenWhereAndOnWhichFile) {
    const TestFolder folder;
    const std::time_t before = std::time(nullptr);
    const int status = Crash(folder.Path(), GetParam().kind);
    if (LeftToSanitizers(status)) GTEST_SKIP();
    // It still ends by its signal, as the system and the desktop expect.
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), GetParam().signal);
    const auto files = MakeFiles();
    const std::string note =
        files->Read(folder.Path() + "/crash-note.txt", SIZE_MAX, nullptr).value_or("none");
    const auto has = [&](const std::string& part) { return note.find(part) != std::string::npos; };
    EXPECT_TRUE(has("Time     " + Today(before)) || has("Time     " + Today(std::time(nullptr))))
        << note;
    EXPECT_TRUE(has(std::string("Signal   ") + GetParam().named)) << note;
    EXPECT_TRUE(has("File     /pictures/M31.fits\n\nTarn_View 9.9\nlibfault 1.2\n")) << note;
    const auto stack = note.find("Where it was:\n");
    ASSERT_NE(stack, std::string::npos);
    EXPECT_NE(note.find(TARN_CRASHER, stack), std::string::npos) << note;
}
INSTANTIATE_TEST_SUITE_P(
    Kinds, CrashNote,
    ::testing::Values(Kind{"null", SIGSEGV, "SIGSEGV"}, Kind{"stack", SIGSEGV, "SIGSEGV"},
                      Kind{"thread", SIGSEGV, "SIGSEGV"}, Kind{"two", SIGFPE, "SIGFPE"},
                      Kind{"abort", SIGABRT, "SIGABRT"}, Kind{"8", SIGFPE, "SIGFPE"},
                      Kind{"4", SIGILL, "SIGILL"}, Kind{"7", SIGBUS, "SIGBUS"}));

TEST(CrashNotes, AreTakenOnceAndKept) {
    const TestFolder folder;
    const auto files = MakeFiles();
    EXPECT_EQ(TakeCrashNote(*files, folder.Path()), "");
    folder.Write("crash-note.txt", "the first");
    const std::string first = TakeCrashNote(*files, folder.Path());
    EXPECT_EQ(TakeCrashNote(*files, folder.Path()), "");
    EXPECT_EQ(files->Read(first, SIZE_MAX, nullptr), "the first");
    // Another of the same second takes nothing from it.
    SetFileTime(folder.Write("crash-note.txt", "the second"), 2026, 1, 2, 3, 4, 5);
    const std::string second = TakeCrashNote(*files, folder.Path());
    SetFileTime(folder.Write("crash-note.txt", "the third"), 2026, 1, 2, 3, 4, 5);
    const std::string third = TakeCrashNote(*files, folder.Path());
    EXPECT_EQ(files->Read(second, SIZE_MAX, nullptr), "the second");
    EXPECT_EQ(files->Read(third, SIZE_MAX, nullptr), "the third");
}

} // namespace
} // namespace tarn::testing
