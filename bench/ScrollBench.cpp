#include "bench/MainThread.h"
#include "pageview/PDFView.h"
#include "pageview/ThumbnailView.h"

#include <QElapsedTimer>
#include <QScrollBar>

#include <cstdio>

// Scrolls through a file, then uses a window of it, and says how long the main thread was ever busy with one
// event, and how much memory that took. Nobody should notice either.

namespace leafwright::bench {

bool scrollPages(MeasuringApplication &application, const QString &path, int ticks) {
    auto opened = PDFDocument::open(path);
    if (const auto *error = std::get_if<PDFError>(&opened)) {
        std::fprintf(stderr, "leafwright-scroll-bench: %s\n", qPrintable(error->message));
        return false;
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
    return true;
}

}  // namespace leafwright::bench

int main(int argc, char **argv) {
    using namespace leafwright::bench;
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    MeasuringApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() < 2 || arguments.size() > 3) {
        std::fprintf(stderr, "usage: leafwright-scroll-bench FILE [TICKS]\n");
        return 2;
    }
    constexpr int usualTicks = 600;
    const int ticks = arguments.size() > 2 ? std::max(2, arguments[2].toInt()) : usualTicks;
    const bool done =
        scrollPages(application, arguments[1], ticks) && useWindow(application, arguments[1], ticks);
    return done ? 0 : 1;
}
