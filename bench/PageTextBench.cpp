#include "bench/BenchPdf.h"

#include <atomic>
#include <benchmark/benchmark.h>
#include <thread>

namespace leafwright::bench {

namespace {

void readPages(const PDFDocument &document, int threads) {
    std::atomic<int> next = 0;
    const auto read = [&document, &next] {
        for (int i = next++; i < document.pageCount(); i = next++)
            document.pageText(i);
    };
    std::vector<std::jthread> helpers;
    for (int k = 1; k < threads; ++k)
        helpers.emplace_back(read);
    read();
}

/// The text of all pages, read for the first time: a document keeps what it has read.
void pageText(benchmark::State &state) {
    int pages = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto document = openBenchPdf();
        pages = document->pageCount();
        state.ResumeTiming();
        readPages(*document, static_cast<int>(state.range(0)));
        state.PauseTiming();
        document.reset();
        state.ResumeTiming();
    }
    using benchmark::Counter;
    state.counters["per_page"] = Counter(pages, Counter::kIsIterationInvariantRate | Counter::kInvert);
}
BENCHMARK(pageText)->ArgName("threads")->Arg(1)->Arg(2)->UseRealTime()->Unit(benchmark::kMillisecond);

/// The boxes of single characters, which are not kept: a whole page is read for a selection on it.
void characterBoxes(benchmark::State &state) {
    const auto document = openBenchPdf();
    int page = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(document->engine().characterBoxes(page));
        page = (page + 1) % document->pageCount();
    }
}
BENCHMARK(characterBoxes)->UseRealTime()->Unit(benchmark::kMicrosecond);

}  // namespace

}  // namespace leafwright::bench
