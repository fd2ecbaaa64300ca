#include "pageview/PDFView.h"
#include "pageview/ThumbnailView.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QScrollBar>
#include <QTimer>

#include <cstdio>
#include <ctime>

// Scrolls a page view with thumbnails through a whole document and back, zooms, and says how long the main
// thread was ever busy with one event, and how much memory that took. Nobody should notice either.

namespace leafwright::bench {

namespace {

/// What nobody sees: one picture of a screen that shows 60 a second.
constexpr qint64 stallNanoseconds = 16'000'000;

constexpr int stepMilliseconds = 16;

/// What the calling thread has worked so far; waiting for a core does not count.
qint64 workNanoseconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return qint64{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

/// An application that measures how long each event takes.
class MeasuringApplication final : public QApplication {
public:
    using QApplication::QApplication;

    bool notify(QObject *receiver, QEvent *event) override {
        if (depth_ > 0) return QApplication::notify(receiver, event);
        QElapsedTimer timer;
        timer.start();
        const qint64 before = workNanoseconds();
        ++depth_;
        const bool handled = QApplication::notify(receiver, event);
        --depth_;
        const qint64 taken = timer.nsecsElapsed();
        longest_ = std::max(longest_, taken);
        mostWork_ = std::max(mostWork_, workNanoseconds() - before);
        ++events_;
        if (taken > stallNanoseconds) ++stalls_;
        return handled;
    }

    /// Prints what was measured since the last report.
    void report(const char *what) {
        std::printf("%-24s %8d events, longest %6.2f ms (most work in one %6.2f ms), %d over 16 ms\n", what,
                    events_, double(longest_) / 1e6, double(mostWork_) / 1e6, stalls_);
        longest_ = mostWork_ = 0;
        events_ = stalls_ = 0;
    }

private:
    int depth_ = 0;
    int events_ = 0;
    int stalls_ = 0;
    qint64 longest_ = 0;
    qint64 mostWork_ = 0;
};

/// A line of what the system says of this process, such as "VmHWM", in MB.
double memory(const QByteArray &name) {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) return 0;
    const QList<QByteArray> lines = status.readAll().split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith(name + ':')) return line.simplified().split(' ').at(1).toDouble() / 1024;
    }
    return 0;
}

/// Does a step on every tick of the screen, `count` times; what is left of a tick is for drawing.
template <typename Step>
void everyTick(int count, Step step) {
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

int run(MeasuringApplication &application, const QString &path, int ticks) {
    auto opened = PDFDocument::open(path);
    if (const auto *error = std::get_if<PDFError>(&opened)) {
        std::fprintf(stderr, "leafwright-scroll-bench: %s\n", qPrintable(error->message));
        return 1;
    }
    const auto document = std::move(std::get<std::unique_ptr<PDFDocument>>(opened));
    PDFView view;
    ThumbnailView thumbs;
    thumbs.setPDFView(&view);
    view.resize(1000, 1200);
    thumbs.resize(200, 1200);
    view.show();
    thumbs.show();
    QElapsedTimer timer;
    timer.start();
    view.setAutoScales(true);
    view.setDocument(document.get());
    std::printf("%d pages, shown after %.2f ms, %.0f MB\n", document->pageCount(),
                double(timer.nsecsElapsed()) / 1e6, memory("VmRSS"));

    qint64 images = 0;
    QScrollBar *const bar = view.verticalScrollBar();
    const auto scrollTo = [&](double part) {
        bar->setValue(static_cast<int>(part * bar->maximum()));
        images = std::max(images, view.imageBytes());
    };
    QCoreApplication::processEvents();
    application.report("opening");
    everyTick(ticks, [&](int i) { scrollTo(double(i + 1) / ticks); });
    application.report("to the end");
    everyTick(ticks, [&](int i) { scrollTo(1 - double(i + 1) / ticks); });
    application.report("and back");
    everyTick(ticks / 2, [&](int i) { bar->setValue(bar->maximum() / 3 + i * 40); });
    application.report("40 pixels a tick");
    everyTick(60, [&](int i) { i < 30 ? view.zoomIn() : view.zoomOut(); });
    application.report("zooming in and out");
    std::printf("%d pieces of work begun, images at most %.0f of %.0f MB\n",
                view.renderQueue().startedCount(), double(images) / (1 << 20),
                double(view.imageCapacity()) / (1 << 20));
    std::printf("memory at most %.0f MB, now %.0f MB\n", memory("VmHWM"), memory("VmRSS"));
    timer.restart();
    view.setDocument(nullptr);
    std::printf("closed after %.2f ms\n", double(timer.nsecsElapsed()) / 1e6);
    return 0;
}

}  // namespace

}  // namespace leafwright::bench

int main(int argc, char **argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    leafwright::bench::MeasuringApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() < 2 || arguments.size() > 3) {
        std::fprintf(stderr, "usage: leafwright-scroll-bench FILE [TICKS]\n");
        return 2;
    }
    constexpr int usualTicks = 600;
    const int ticks = arguments.size() > 2 ? arguments[2].toInt() : usualTicks;
    return leafwright::bench::run(application, arguments[1], std::max(2, ticks));
}
