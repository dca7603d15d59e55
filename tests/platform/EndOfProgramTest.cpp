#include "platform/EndOfProgram.h"

#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <chrono>

namespace tarn::testing {
namespace {

TEST(EndOfProgram, ComesAlsoWhereAReadNeverReturns) {
    int silent[2];
    ASSERT_EQ(::pipe(silent), 0);
    const auto before = std::chrono::steady_clock::now();
    const pid_t child = ::fork();
    if (child == 0) {
        EndWithin(1, 3);
        char byte = 0;
        for (;;) (void)!::read(silent[0], &byte, 1); // as from a disk that does not answer
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 3);
    EXPECT_GE(std::chrono::steady_clock::now() - before, std::chrono::milliseconds(900));
    ::close(silent[0]);
    ::close(silent[1]);
}

} // namespace
} // namespace tarn::testing
