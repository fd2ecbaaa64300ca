#include "cli/Console.h"

#include "files/FileName.h"

#include <unistd.h>

namespace leafwright::cli {

void Console::write(const QByteArray &bytes) {
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), results_);
}

void Console::message(const QString &text) {
    const std::lock_guard lock(mutex_);
    // A message takes the place of the progress bar, which is drawn again below it.
    const QByteArray line =
        (barShown_ ? QByteArray("\r\x1b[K") : QByteArray()) + "leafwright-cli: " + fileNameBytes(text) + '\n';
    std::fwrite(line.constData(), 1, static_cast<size_t>(line.size()), messages_);
    std::fflush(messages_);
}

void Console::writeRaw(const QByteArray &bytes) {
    const std::lock_guard lock(mutex_);
    barShown_ = true;
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), messages_);
    std::fflush(messages_);
}

bool Console::isTerminal() const {
    return ::isatty(::fileno(messages_)) == 1;
}

bool Console::flush() {
    return std::fflush(results_) == 0 && std::ferror(results_) == 0;
}

}  // namespace leafwright::cli
