#include "autotoc/AutoTOC.h"
#include "autotoc/CalibratingAutoTOC.h"
#include "autotoc/MiniTOC.h"
#include "bench/BenchPdf.h"
#include "pdf/ReadAhead.h"

#include <benchmark/benchmark.h>

namespace leafwright::bench {

namespace {

constexpr int maxDepth = 3;

/// The document with the text of all its pages read.
std::unique_ptr<PDFDocument> openAndRead() {
    auto document = openBenchPdf();
    readAllPages(*document);
    return document;
}

void fontCensus(benchmark::State &state) {
    const auto document = openAndRead();
    for (auto _ : state)
        benchmark::DoNotOptimize(calcFontsInDocument(*document));
}
BENCHMARK(fontCensus)->Unit(benchmark::kMillisecond);

void headingMap(benchmark::State &state) {
    const FontCensus census = calcFontsInDocument(*openAndRead());
    for (auto _ : state)
        benchmark::DoNotOptimize(headingsfromFonts(census));
}
BENCHMARK(headingMap)->Unit(benchmark::kMicrosecond);

void autoTOC(benchmark::State &state) {
    const auto document = openAndRead();
    const HeadingLevelMap map = headingsfromFonts(calcFontsInDocument(*document));
    for (auto _ : state) {
        auto top = runAutoTOCwithH1H2H3Map(*document, map, maxDepth);
        benchmark::DoNotOptimize(top);
    }
}
BENCHMARK(autoTOC)->Unit(benchmark::kMillisecond);

void calibratingAutoTOC(benchmark::State &state) {
    const auto document = openAndRead();
    const FontStringCensus census = fontStringCensus(calcFontsInDocument(*document));
    const CalibratedLevels levels(headingFontStrings(census, FrequencyFilters()));
    for (auto _ : state) {
        auto top = runCalibratingAutoTOC(*document, levels, maxDepth);
        benchmark::DoNotOptimize(top);
    }
}
BENCHMARK(calibratingAutoTOC)->Unit(benchmark::kMillisecond);

void miniTOC(benchmark::State &state) {
    const auto document = openAndRead();
    const QStringList pattern = fontPattern(document->pageText(0)->attributedString.part({0, 1}));
    for (auto _ : state) {
        auto top = runMiniTOC(*document, pattern);
        benchmark::DoNotOptimize(top);
    }
}
BENCHMARK(miniTOC)->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace leafwright::bench
