#include "files/StandardStreams.h"

#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace leafwright {

void reserveStandardStreams() {
    for (const int number : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(number, F_GETFD) >= 0) continue;
        // The wrong way round, so that nobody takes it for an empty input, or for an output that has arrived.
        const int mode = number == STDIN_FILENO ? O_WRONLY : O_RDONLY;
        if (::open("/dev/null", mode) != number) std::abort();
    }
}

}  // namespace leafwright
