#include "bench/BenchPdf.h"

#include <benchmark/benchmark.h>

namespace leafwright::bench {

namespace {

void openFile(benchmark::State &state) {
    for (auto _ : state) {
        auto document = openBenchPdf();
        benchmark::DoNotOptimize(document);
        state.PauseTiming();
        document.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(openFile)->UseRealTime()->Unit(benchmark::kMillisecond);

void closeFile(benchmark::State &state) {
    for (auto _ : state) {
        state.PauseTiming();
        auto document = openBenchPdf();
        state.ResumeTiming();
        document.reset();
    }
}
BENCHMARK(closeFile)->UseRealTime()->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace leafwright::bench
