#include "document/outline/OutlineExport.h"

#include <QHash>

#include <benchmark/benchmark.h>

namespace leafwright::bench {

namespace {

constexpr int itemCount = 100'000;
constexpr int pageCount = 2'000;
constexpr Rect letter{0, 0, 612, 792};

/// A tree in which every item but the last ones has the same number of children.
void fill(MyOutlineItem &root, size_t siblings) {
    std::vector<MyOutlineItem *> parents{&root};
    for (int i = 0; i < itemCount; ++i) {
        MyOutlineItem &parent = *parents[static_cast<size_t>(i) / siblings];
        MyOutlineItem &item = parent.appendChild(std::make_unique<MyOutlineItem>());
        item.setPageTitle(QStringLiteral("Section %1").arg(i));
        item.setPageLabel(QString::number(i % pageCount + 1));
        item.setPointOnPage({72, 700});
        parents.push_back(&item);
    }
}

QHash<QString, int> labelMap() {
    QHash<QString, int> indexes;
    for (int page = 0; page < pageCount; ++page)
        indexes.insert(QString::number(page + 1), page);
    return indexes;
}

/// Numbers and links 100,000 items, in trees of different width; no file is involved.
void numberAndLink(benchmark::State &state) {
    MyOutlineItem root;
    fill(root, static_cast<size_t>(state.range(0)));
    const QHash<QString, int> labels = labelMap();
    const auto indexOf = [&labels](const QString &label) -> std::optional<int> {
        const auto found = labels.constFind(label);
        return found == labels.constEnd() ? std::nullopt : std::optional(*found);
    };
    for (auto _ : state) {
        OutlineExport outlineExport({indexOf, [](int /*index*/) { return std::optional(letter); }});
        std::unique_ptr<PDFOutline> outline = outlineExport.run(root);
        state.PauseTiming();
        outline.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(numberAndLink)->ArgName("siblings")->Arg(2)->Arg(10)->Arg(itemCount)->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace leafwright::bench
