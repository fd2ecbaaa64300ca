#include "cli/ProgressBar.h"

#include <sys/ioctl.h>
#include <unistd.h>

namespace leafwright::cli {

namespace {

constexpr int barWidth = 24;
constexpr int fallbackWidth = 80;

int terminalWidth() {
    winsize size{};
    return ::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : fallbackWidth;
}

}  // namespace

ProgressBar::ProgressBar(Console &console, int total)
    : console_(console), total_(std::max(1, total)), shown_(total > 1 && console.isTerminal()) {
    draw(QString());
}

ProgressBar::~ProgressBar() {
    if (shown_) console_.writeRaw("\r\x1b[K");
}

void ProgressBar::advance(const QString &name) {
    const std::lock_guard lock(mutex_);
    ++done_;
    draw(name);
}

void ProgressBar::draw(const QString &name) {
    if (!shown_) return;
    const int filled = barWidth * done_ / total_;
    const QString bar = QStringLiteral("[%1%2] %3/%4  ")
                            .arg(QString(filled, u'#'), QString(barWidth - filled, u'.'))
                            .arg(done_)
                            .arg(total_);
    const QString line = (bar + name).left(std::max(0, terminalWidth() - 1));
    console_.writeRaw("\r\x1b[K" + line.toUtf8());
}

}  // namespace leafwright::cli
