#include "bench/BenchPdf.h"
#include "document/outline/TitleFilter.h"
#include "outlineview/OutlineView.h"
#include "pageview/PDFView.h"
#include "pdf/PageSearch.h"

#include <QCoreApplication>

#include <benchmark/benchmark.h>

namespace leafwright::bench {

namespace {

constexpr int entries = 50'000;
constexpr int entriesOfAChapter = 10;

void searchAll(PageSearch &search, const QString &text) {
    search.search(text, [](const PageHits &hits) { benchmark::DoNotOptimize(hits.ranges.size()); });
}

/// A text on all pages, searched for the first time; the pages have been read.
void firstSearch(benchmark::State &state) {
    const auto document = openBenchPdf();
    for (int i = 0; i < document->pageCount(); ++i)
        document->pageText(i);
    for (auto _ : state) {
        PageSearch search(*document);
        searchAll(search, QStringLiteral("the"));
    }
}
BENCHMARK(firstSearch)->UseRealTime()->Unit(benchmark::kMillisecond);

/// The same for every time after that; with 1, for a letter that stands everywhere.
void laterSearch(benchmark::State &state) {
    const auto document = openBenchPdf();
    PageSearch search(*document);
    searchAll(search, QStringLiteral("the"));
    const QString text = state.range(0) != 0 ? QStringLiteral("e") : QStringLiteral("example");
    for (auto _ : state)
        searchAll(search, text);
}
BENCHMARK(laterSearch)->ArgName("everywhere")->Arg(0)->Arg(1)->UseRealTime()->Unit(benchmark::kMillisecond);

/// What the main thread does with the hits of a letter that stands everywhere.
void takeHits(benchmark::State &state) {
    const auto document = openBenchPdf();
    PageSearch search(*document);
    std::vector<PageHits> found;
    search.search(QStringLiteral("e"), [&found](PageHits hits) { found.push_back(std::move(hits)); });
    PDFView view;
    view.setDocument(document.get());
    for (auto _ : state) {
        FoundHits hits;
        for (const PageHits &page : found) {
            hits.add(page);
            view.addMarkedText(page.pageIndex, page.ranges);
        }
        view.clearMarkedText();
    }
    view.setDocument(nullptr);
}
BENCHMARK(takeHits)->Unit(benchmark::kMillisecond);

/// 50,000 entries in chapters of ten, in a view on the screen.
class ManyChapters {
public:
    ManyChapters() {
        MyOutlineItem::Children chapters;
        for (int i = 0; i < entries; ++i) {
            auto item = std::make_unique<MyOutlineItem>();
            item->setPageTitle(QStringLiteral("Section %1").arg(i));
            if (i % entriesOfAChapter == 0) {
                chapters.push_back(std::move(item));
            } else {
                chapters.back()->appendChild(std::move(item));
            }
        }
        root.setChildren(std::move(chapters));
        view.setTreeController(&controller);
        view.resize(400, 800);
        view.show();
        QCoreApplication::processEvents();
    }
    ~ManyChapters() { view.setTreeController(nullptr); }

    /// Every so many of the entries that are in chapters.
    std::vector<TreeNode *> someOf(int every) {
        std::vector<TreeNode *> nodes;
        int number = 0;
        for (const TreeNode *chapter : controller.arrangedObjects().childNodes())
            for (TreeNode *node : chapter->childNodes())
                if (number++ % every == 0) nodes.push_back(node);
        return nodes;
    }

    MyOutlineItem root;
    OutlineEdits edits{root};
    TreeController controller{edits};
    OutlineView view;
};

/// What the main thread does for a filter: shows one entry of so many, and draws.
void showOnly(benchmark::State &state) {
    ManyChapters outline;
    const std::vector<TreeNode *> nodes = outline.someOf(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        outline.view.showOnly(nodes);
        QCoreApplication::processEvents();
    }
}
BENCHMARK(showOnly)->ArgName("of")->Arg(1)->Arg(10)->Arg(1'000)->Unit(benchmark::kMillisecond);

void showAll(benchmark::State &state) {
    ManyChapters outline;
    const std::vector<TreeNode *> nodes = outline.someOf(1'000);
    for (auto _ : state) {
        state.PauseTiming();
        outline.view.showOnly(nodes);
        QCoreApplication::processEvents();
        state.ResumeTiming();
        outline.view.showAll();
        QCoreApplication::processEvents();
    }
}
BENCHMARK(showAll)->Unit(benchmark::kMillisecond);

/// What another thread does for it, from the second text on.
void filterTitles(benchmark::State &state) {
    QStringList titles;
    for (int i = 0; i < entries; ++i)
        titles.append(QStringLiteral("Section %1").arg(i));
    TitleFilter filter(titles);
    filter.matches(QStringLiteral("s"));
    for (auto _ : state)
        benchmark::DoNotOptimize(filter.matches(QStringLiteral("tion 49")));
}
BENCHMARK(filterTitles)->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace leafwright::bench
