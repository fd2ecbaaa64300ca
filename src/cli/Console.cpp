#include "cli/Console.h"

#include "files/FileName.h"
#include "texts/Translated.h"

#include <unistd.h>

namespace leafwright::cli {

namespace {

constexpr Translated translated{"Console"};

constexpr char prefix[] = "leafwright-cli: ";
constexpr char clearedLine[] = "\r\x1b[K";

}  // namespace

void Console::write(const QByteArray &bytes) {
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), results_);
}

void Console::message(const QString &text) {
    const std::lock_guard lock(mutex_);
    // A message takes the place of the progress bar, which is drawn again below it.
    const QByteArray line =
        (barShown_ ? QByteArray(clearedLine) : QByteArray()) + prefix + fileNameBytes(text) + '\n';
    std::fwrite(line.constData(), 1, static_cast<size_t>(line.size()), messages_);
    std::fflush(messages_);
}

QString Console::messageText(const QByteArray &said) {
    QByteArray text = said.trimmed();
    if (text.startsWith(prefix)) text = text.sliced(qsizetype{sizeof prefix} - 1);
    return fileNameText(text);
}

void Console::relay(const QByteArray &said) {
    const std::lock_guard lock(mutex_);
    if (barShown_) std::fputs(clearedLine, messages_);
    std::fwrite(said.constData(), 1, static_cast<size_t>(said.size()), messages_);
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

std::optional<QString> Console::flush() {
    if (std::fflush(results_) == 0 && std::ferror(results_) == 0) return std::nullopt;
    return translated("the result could not be written to standard output");
}

}  // namespace leafwright::cli
