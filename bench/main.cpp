#include "bench/BenchPdf.h"

#include <QApplication>

#include <benchmark/benchmark.h>
#include <cstdio>

int main(int argc, char **argv) {
    // Views are measured, too, and drawn in memory.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    try {
        // Made or opened up front, so that a wrong path shows at once.
        const auto document = leafwright::bench::openBenchPdf();
        benchmark::AddCustomContext("pages", std::to_string(document->pageCount()));
    } catch (const std::exception &error) {
        std::fprintf(stderr, "leafwright-bench: %s\n", error.what());
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
