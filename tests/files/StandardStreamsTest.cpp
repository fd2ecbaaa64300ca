#include "files/StandardStreams.h"

#include <cerrno>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace leafwright {
namespace {

/// Runs a check in a process without standard streams. @return its status
template <typename Check>
int withoutStreams(Check &&check) {
    const pid_t child = ::fork();
    if (child == 0) {
        for (const int number : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            ::close(number);
        reserveStandardStreams();
        ::_exit(check() ? 0 : 1);
    }
    int status = -1;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    return status;
}

TEST(StandardStreams, NumbersOfClosedOnesAreNotGivenToFiles) {
    EXPECT_EQ(withoutStreams([] { return ::dup(STDIN_FILENO) > STDERR_FILENO; }), 0);
}

TEST(StandardStreams, ClosedOnesStayOutOfUse) {
    EXPECT_EQ(withoutStreams([] {
                  char byte = 0;
                  return ::read(STDIN_FILENO, &byte, 1) < 0 && errno == EBADF &&
                         ::write(STDOUT_FILENO, "x", 1) < 0 && errno == EBADF &&
                         ::write(STDERR_FILENO, "x", 1) < 0 && errno == EBADF;
              }),
              0);
}

}  // namespace
}  // namespace leafwright
