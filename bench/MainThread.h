#pragma once

#include <QApplication>
#include <QEventLoop>
#include <QTimer>

#include <functional>

namespace leafwright::bench {

/// An application that measures how long each event keeps the main thread busy. Who looks at a screen that
/// shows 60 pictures a second notices one that takes longer than such a picture.
class MeasuringApplication final : public QApplication {
public:
    using QApplication::QApplication;

    bool notify(QObject *receiver, QEvent *event) override;
    /// Prints what was measured since the last report: by the clock, and by what the thread worked, which is
    /// what counts while other programs want the same cores.
    void report(const char *what);

private:
    int depth_ = 0;
    int events_ = 0;
    int stalls_ = 0;
    int stallsByWork_ = 0;
    qint64 longest_ = 0;
    qint64 mostWork_ = 0;
    QByteArray mostWorkIn_;
};

/// Does a step on every tick of the screen, `count` times; what is left of a tick is for drawing.
template <typename Step>
void everyTick(int count, Step step) {
    constexpr int stepMilliseconds = 16;
    QEventLoop loop;
    QTimer timer;
    int done = 0;
    QObject::connect(&timer, &QTimer::timeout, &loop, [&] {
        step(done);
        if (++done == count) loop.quit();
    });
    timer.start(stepMilliseconds);
    loop.exec();
}

/// Lets events come until a condition holds. It is asked on every tick.
void waitUntil(const std::function<bool()> &holds);

/// A line of what the system says of this process, such as "VmHWM", in MB.
double memory(const QByteArray &name);

/// Scrolls a page view with thumbnails through a whole document and back, and zooms. @return whether it could
bool scrollPages(MeasuringApplication &application, const QString &path, int ticks);
/// Uses the window of a document whose outline has 50,000 entries. @return whether it could
bool useWindow(MeasuringApplication &application, const QString &path, int ticks);

}  // namespace leafwright::bench
