#include "bench/BenchPdf.h"

#include <benchmark/benchmark.h>

namespace leafwright::bench {

namespace {

std::unique_ptr<PDFOutline> makeOutline(int entries, int pageCount) {
    constexpr int sectionsPerChapter = 49;
    auto root = std::make_unique<PDFOutline>();
    PDFOutline *chapter = nullptr;
    for (int i = 0; i < entries; ++i) {
        auto entry = std::make_unique<PDFOutline>(QStringLiteral("Section %1").arg(i));
        const auto page = static_cast<int>(qint64{i} * pageCount / entries);
        entry->setDestination(PDFDestination{page, {72, 700}});
        if (!chapter || chapter->numberOfChildren() == sectionsPerChapter) {
            chapter = &root->insertChildAtIndex(std::move(entry), root->numberOfChildren());
        } else {
            chapter->insertChildAtIndex(std::move(entry), chapter->numberOfChildren());
        }
    }
    return root;
}

/// Writes the PDF with a new outline to a file, down to the disk.
void writeEntries(benchmark::State &state) {
    const auto document = openBenchPdf();
    document->setOutlineRoot(makeOutline(static_cast<int>(state.range(0)), document->pageCount()));
    const QString path = benchFolder() + QStringLiteral("/written.pdf");
    for (auto _ : state) {
        if (const auto error = document->writeToFile(path)) {
            state.SkipWithError(error->message.toUtf8().constData());
            break;
        }
    }
}
BENCHMARK(writeEntries)
    ->ArgName("entries")
    ->Arg(5'000)
    ->Arg(100'000)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace leafwright::bench
