#include "cli/batch/LineReader.h"

#include "cli/Interruption.h"

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <poll.h>
#include <unistd.h>

namespace leafwright::cli {

LineReader::Got LineReader::next(QByteArray &line) {
    qsizetype searched = start_;
    for (;;) {
        const qsizetype end = buffer_.indexOf('\n', searched);
        const qsizetype length = (end < 0 ? buffer_.size() : end) - start_;
        if (length > longest_) return passOver(line);
        if (end >= 0 || (atEnd_ && length > 0)) {
            line = buffer_.mid(start_, length);
            start_ += length + (end < 0 ? 0 : 1);
            ++number_;
            cutOff_ = end < 0;
            return Got::Line;
        }
        if (atEnd_) return Got::End;
        searched = buffer_.size() - start_;
        buffer_.remove(0, start_);
        start_ = 0;
        if (const Got got = fill(); got != Got::Line) return got;
    }
}

/// Adds what there is to the buffer. @return Line, also at the end
LineReader::Got LineReader::fill() {
    constexpr qsizetype blockSize = 1 << 16;
    pollfd waiting[] = {
        {descriptor_, POLLIN, 0}, {Interruption::descriptor(), POLLIN, 0}, {stop_, POLLIN, 0}};
    while (::poll(waiting, std::size(waiting), -1) < 0)
        if (errno != EINTR) return Got::Failed;
    if (waiting[1].revents != 0 || waiting[2].revents != 0) return Got::Interrupted;
    const qsizetype size = buffer_.size();
    buffer_.resize(size + blockSize);
    ssize_t count = 0;
    do {
        count = ::read(descriptor_, buffer_.data() + size, static_cast<size_t>(blockSize));
    } while (count < 0 && errno == EINTR);
    buffer_.truncate(size + std::max<ssize_t>(count, 0));
    atEnd_ = count == 0;
    return count < 0 ? Got::Failed : Got::Line;
}

/// Leaves out the rest of a line of which too much is in the buffer.
LineReader::Got LineReader::passOver(QByteArray &line) {
    line.clear();
    ++number_;
    for (;;) {
        const qsizetype end = buffer_.indexOf('\n', start_);
        if (end >= 0 || atEnd_) {
            start_ = end < 0 ? buffer_.size() : end + 1;
            return Got::TooLong;
        }
        buffer_.clear();
        start_ = 0;
        if (const Got got = fill(); got != Got::Line) return got;
    }
}

}  // namespace leafwright::cli
