#include "document/MyDocument.h"
#include "document/commands/BatchRenaming.h"
#include "document/commands/SelectionCommands.h"
#include "document/commands/StructuralEdits.h"
#include "outlineview/OKNSOutlineView.h"
#include "support/PdfBuilder.h"
#include "support/RecordingPlatform.h"
#include "tree/TreeController.h"

#include <QApplication>
#include <QTemporaryDir>
#include <QWidget>

#include <benchmark/benchmark.h>
#include <stdexcept>

// The commands that people feel when an outline is large, in a document's real window. Each ends when all
// that follows from it is done: commands enabled and disabled, the view laid out and drawn.

namespace leafwright::bench {

namespace {

/// How the items are arranged.
enum class Shape : int64_t {
    Flat,    ///< All at the top level.
    Nested,  ///< Each hundred of them as one with 9 below it, and 10 below each of those.
};

constexpr size_t manyItems = 50'000;
constexpr size_t mostItems = 100'000;

MyOutlineItem::Children makeItems(Shape shape, size_t itemCount) {
    MyOutlineItem::Children top;
    size_t made = 0;
    const auto add = [&made](MyOutlineItem::Children &to) -> MyOutlineItem & {
        to.push_back(std::make_unique<MyOutlineItem>());
        to.back()->setPageTitle(QStringLiteral("the section %1 of all").arg(made++));
        return *to.back();
    };
    while (made < itemCount) {
        MyOutlineItem &chapter = add(top);
        if (shape == Shape::Flat) continue;
        MyOutlineItem::Children sections;
        for (int i = 0; i < 9; ++i) {
            MyOutlineItem &section = add(sections);
            MyOutlineItem::Children paragraphs;
            for (int j = 0; j < 10; ++j)
                add(paragraphs);
            section.setChildren(std::move(paragraphs));
        }
        chapter.setChildren(std::move(sections));
    }
    return top;
}

/// A document with so many items, all of them shown in its window.
class LargeDocument {
public:
    explicit LargeDocument(Shape shape, size_t itemCount = manyItems) {
        test::PdfBuilder pdf;
        pdf.addNumberedPages(3);
        pdf.save(dir_.filePath(QStringLiteral("large.pdf")));
        if (!document.readFromURL(dir_.filePath(QStringLiteral("large.pdf"))))
            throw std::runtime_error("cannot open what was just written");
        insert(makeItems(shape, itemCount));
        document.makeWindowControllers();
        document.finishLoading();
        for (const TreeNode *node : document.treecontroller().arrangedObjects().childNodes())
            document.outlineview()->expandItem(*node, true);
        settle();
    }

    /// Handles what is due, and draws the outline. As long as anything is due, it is handled.
    void settle() {
        QCoreApplication::processEvents();
        benchmark::DoNotOptimize(document.outlineview()->grab());
    }
    void perform(const char *selector) {
        if (!document.actions().perform(QString::fromLatin1(selector)))
            throw std::runtime_error(std::string("not enabled: ") + selector);
        settle();
    }
    /// All that is shown, as Select All does; or every other, which takes as many ranges.
    void select(bool all) {
        std::vector<TreeNode *> nodes;
        const OKNSOutlineView &view = *document.outlineview();
        for (int row = 0; row < view.numberOfRows(); row += all ? 1 : 2)
            nodes.push_back(view.itemAtRow(row));
        document.treecontroller().setSelectedNodes(nodes);
        settle();
    }

private:
    void insert(MyOutlineItem::Children items) {
        {
            const OutlineEdits::Transaction edit(document.edits(), QStringLiteral("many"));
            for (size_t i = 0; i < items.size(); ++i)
                document.edits().insert(document.root(), i, std::move(items[i]));
        }
        document.edits().forgetHistory();
    }

    QTemporaryDir dir_;
    test::RecordingPlatform platform_;

public:
    MyDocument document{platform_};
};

void selectAllRows(benchmark::State &state) {
    LargeDocument large(Shape{state.range(0)});
    for (auto _ : state) {
        large.perform("selectTOCAll:");
        state.PauseTiming();
        large.document.treecontroller().setSelectedNodes({});
        large.settle();
        state.ResumeTiming();
    }
}

void titleCase(benchmark::State &state) {
    LargeDocument large(Shape{state.range(0)});
    large.select(state.range(1) != 0);
    for (auto _ : state) {
        large.perform("changeCaseToTitleCase:");
        state.PauseTiming();
        large.perform("changeCaseToLowerCase:");
        state.ResumeTiming();
    }
}

void findAndReplace(benchmark::State &state) {
    LargeDocument large(Shape{state.range(0)});
    large.select(state.range(1) != 0);
    const QString words[] = {QStringLiteral("section"), QStringLiteral("paragraph")};
    size_t round = 0;
    for (auto _ : state) {
        large.document.batchRenaming().renameSelectedTOCItemsWithFindTerm(words[round % 2], true,
                                                                          words[(round + 1) % 2]);
        ++round;
        large.settle();
    }
}

void moveSelectedDown(benchmark::State &state) {
    LargeDocument large(Shape{state.range(0)});
    large.select(state.range(1) != 0);
    for (auto _ : state)
        large.perform("moveDown:");
}

/// A step back over a command and a step forward again, each drawn, in an outline of 100,000 items.
void stepOver(benchmark::State &state, const char *command, bool all) {
    LargeDocument large(Shape{state.range(0)}, mostItems);
    const bool forward = state.range(1) != 0;
    if (all) {
        large.select(true);
    } else {
        large.document.treecontroller().setSelectionIndexPaths({{2}});
    }
    large.perform(command);
    if (forward) large.perform("stepBack:");
    for (auto _ : state) {
        large.perform(forward ? "stepForward:" : "stepBack:");
        state.PauseTiming();
        large.perform(forward ? "stepBack:" : "stepForward:");
        state.ResumeTiming();
    }
}

BENCHMARK(selectAllRows)->ArgName("nested")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
#define LEAFWRIGHT_EDITING_BENCHMARK(function) \
    BENCHMARK(function)                        \
        ->ArgNames({"nested", "all"})          \
        ->ArgsProduct({{0, 1}, {1, 0}})        \
        ->Unit(benchmark::kMillisecond)
LEAFWRIGHT_EDITING_BENCHMARK(titleCase);
LEAFWRIGHT_EDITING_BENCHMARK(findAndReplace);
LEAFWRIGHT_EDITING_BENCHMARK(moveSelectedDown);
#define LEAFWRIGHT_STEP_BENCHMARK(name, command, all) \
    BENCHMARK_CAPTURE(stepOver, name, command, all)   \
        ->ArgNames({"nested", "forward"})             \
        ->ArgsProduct({{0, 1}, {0, 1}})               \
        ->Unit(benchmark::kMillisecond)
LEAFWRIGHT_STEP_BENCHMARK(oneRenamed, "changeCaseToUpperCase:", false);
LEAFWRIGHT_STEP_BENCHMARK(oneMoved, "moveUp:", false);
LEAFWRIGHT_STEP_BENCHMARK(oneRemoved, "removeOutlineItems:", false);
LEAFWRIGHT_STEP_BENCHMARK(allRenamed, "changeCaseToUpperCase:", true);
LEAFWRIGHT_STEP_BENCHMARK(allRemoved, "removeOutlineItems:", true);

}  // namespace

}  // namespace leafwright::bench
