#include "bench/MainThread.h"

#include <QElapsedTimer>
#include <QFile>

#include <cstdio>
#include <ctime>

namespace leafwright::bench {

namespace {

/// What nobody sees: one picture of a screen that shows 60 a second.
constexpr qint64 stallNanoseconds = 16'000'000;

/// What the calling thread has worked so far; waiting for a core does not count.
qint64 workNanoseconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return qint64{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

}  // namespace

bool MeasuringApplication::notify(QObject *receiver, QEvent *event) {
    if (depth_ > 0) return QApplication::notify(receiver, event);
    const char *const name = receiver->metaObject()->className();
    const QEvent::Type type = event->type();
    QElapsedTimer timer;
    timer.start();
    const qint64 before = workNanoseconds();
    ++depth_;
    const bool handled = QApplication::notify(receiver, event);
    --depth_;
    const qint64 taken = timer.nsecsElapsed();
    const qint64 work = workNanoseconds() - before;
    longest_ = std::max(longest_, taken);
    if (work > mostWork_) {
        mostWork_ = work;
        mostWorkIn_ = QByteArray(name) + ", event " + QByteArray::number(type);
    }
    ++events_;
    if (taken > stallNanoseconds) ++stalls_;
    if (work > stallNanoseconds) ++stallsByWork_;
    return handled;
}

void MeasuringApplication::report(const char *what) {
    std::printf("%-30s %6d events, longest %6.2f ms, %d over 16 ms; most work %6.2f ms (%s), %d over 16 ms\n",
                what, events_, double(longest_) / 1e6, stalls_, double(mostWork_) / 1e6,
                mostWorkIn_.constData(), stallsByWork_);
    std::fflush(stdout);
    longest_ = mostWork_ = 0;
    events_ = stalls_ = stallsByWork_ = 0;
    mostWorkIn_.clear();
}

void waitUntil(const std::function<bool()> &holds) {
    while (!holds())
        everyTick(1, [](int) {});
}

double memory(const QByteArray &name) {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) return 0;
    const QList<QByteArray> lines = status.readAll().split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith(name + ':')) return line.simplified().split(' ').at(1).toDouble() / 1024;
    }
    return 0;
}

}  // namespace leafwright::bench
