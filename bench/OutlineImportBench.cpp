#include "bench/BenchPdf.h"
#include "document/outline/OutlineImport.h"

#include <benchmark/benchmark.h>

namespace leafwright::bench {

namespace {

void reportEntries(benchmark::State &state, const PDFOutline &outline) {
    const auto entries = static_cast<double>(outline.countOfDescendants());
    state.counters["entries"] = benchmark::Counter(entries);
}

void readOutline(benchmark::State &state) {
    const auto document = openBenchPdf();
    for (auto _ : state) {
        auto outline = document->engine().readOutline();
        benchmark::DoNotOptimize(outline);
    }
    reportEntries(state, document->outlineRoot());
}
BENCHMARK(readOutline)->Unit(benchmark::kMicrosecond);

void addItems(benchmark::State &state) {
    const auto document = openBenchPdf();
    const PDFOutline &outline = document->outlineRoot();
    for (auto _ : state) {
        MyOutlineItem root;
        benchmark::DoNotOptimize(addOutlineChildren(outline, root, *document));
    }
    reportEntries(state, outline);
}
BENCHMARK(addItems)->Unit(benchmark::kMicrosecond);

}  // namespace

}  // namespace leafwright::bench
