#include "outlineview/OutlineView.h"

#include <QCoreApplication>

#include <benchmark/benchmark.h>

namespace leafwright::bench {

namespace {

constexpr size_t siblings = 100'000;

MyOutlineItem::Children manyItems() {
    MyOutlineItem::Children items;
    for (size_t i = 0; i < siblings; ++i) {
        items.push_back(std::make_unique<MyOutlineItem>());
        items.back()->setPageTitle(QStringLiteral("Section %1").arg(i));
    }
    return items;
}

/// 100,000 siblings, in a view on the screen if that is wanted. A step ends when the view has been drawn.
class ManySiblings {
public:
    explicit ManySiblings(bool shown) {
        root.setChildren(manyItems());
        if (!shown) return;
        view.setTreeController(&controller);
        view.resize(400, 800);
        view.show();
        draw();
    }
    ~ManySiblings() { view.setTreeController(nullptr); }

    TreeNode &at(size_t row) { return *controller.arrangedObjects().childNodes()[row]; }
    void draw() {
        if (!view.isVisible()) return;
        QCoreApplication::processEvents();
        benchmark::DoNotOptimize(view.grab());
    }

    MyOutlineItem root;
    OutlineEdits edits{root};
    TreeController controller{edits};
    OutlineView view;
};

void insertSibling(benchmark::State &state) {
    ManySiblings tree(state.range(0) != 0);
    for (auto _ : state) {
        tree.controller.insertObjectAtArrangedObjectIndexPath(std::make_unique<MyOutlineItem>(), {0});
        benchmark::DoNotOptimize(tree.at(siblings).row());
        tree.draw();
    }
}

void removeSibling(benchmark::State &state) {
    ManySiblings tree(state.range(0) != 0);
    for (auto _ : state) {
        tree.controller.removeObjectAtArrangedObjectIndexPath({0});
        benchmark::DoNotOptimize(tree.at(tree.root.children().size() - 1).row());
        tree.draw();
        state.PauseTiming();
        tree.root.insertObjectInChildrenAtIndex(std::make_unique<MyOutlineItem>(), 0);
        tree.draw();
        state.ResumeTiming();
    }
}

void moveSibling(benchmark::State &state) {
    ManySiblings tree(state.range(0) != 0);
    for (auto _ : state) {
        tree.controller.moveNode(tree.at(0), {siblings});
        benchmark::DoNotOptimize(tree.at(0).row());
        tree.draw();
    }
}

/// One moves while all are selected.
void moveSelectedSibling(benchmark::State &state) {
    ManySiblings tree(state.range(0) != 0);
    tree.controller.setSelectedNodes(tree.controller.arrangedObjects().childNodes());
    for (auto _ : state) {
        tree.controller.moveNode(tree.at(0), {siblings});
        tree.draw();
    }
}

/// All but the first become its children, and its siblings again.
void moveAllSiblings(benchmark::State &state) {
    ManySiblings tree(state.range(0) != 0);
    const std::vector<TreeNode *> moving(tree.controller.arrangedObjects().childNodes().begin() + 1,
                                         tree.controller.arrangedObjects().childNodes().end());
    bool inside = false;
    for (auto _ : state) {
        tree.controller.moveNodes(moving, inside ? IndexPath{1} : IndexPath{0, 0});
        inside = !inside;
        tree.draw();
    }
}

/// Every other moves to the front, which takes as many places in the list as there are.
void moveEveryOther(benchmark::State &state) {
    ManySiblings tree(state.range(0) != 0);
    for (auto _ : state) {
        state.PauseTiming();
        std::vector<TreeNode *> odd;
        for (size_t row = 1; row < siblings; row += 2)
            odd.push_back(&tree.at(row));
        state.ResumeTiming();
        tree.controller.moveNodes(odd, {0});
        tree.draw();
    }
}

void loadAll(benchmark::State &state) {
    ManySiblings tree(state.range(0) != 0);
    for (auto _ : state) {
        state.PauseTiming();
        MyOutlineItem::Children items = manyItems();
        tree.root.setChildren({});
        tree.draw();
        state.ResumeTiming();
        tree.root.setChildren(std::move(items));
        tree.draw();
    }
}

void selectAll(benchmark::State &state) {
    ManySiblings tree(state.range(0) != 0);
    for (auto _ : state) {
        tree.controller.setSelectedNodes(tree.controller.arrangedObjects().childNodes());
        benchmark::DoNotOptimize(tree.controller.selectedNodes());
        tree.draw();
        tree.controller.setSelectedNodes({});
    }
}

/// As the items of one level among those of others are.
void selectEveryOther(benchmark::State &state) {
    ManySiblings tree(state.range(0) != 0);
    std::vector<TreeNode *> odd;
    for (size_t row = 1; row < siblings; row += 2)
        odd.push_back(&tree.at(row));
    for (auto _ : state) {
        tree.controller.setSelectedNodes(odd);
        benchmark::DoNotOptimize(tree.controller.selectedNodes());
        tree.draw();
        tree.controller.setSelectedNodes({});
    }
}

#define LEAFWRIGHT_TREE_BENCHMARK(function) \
    BENCHMARK(function)->ArgName("shown")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)
LEAFWRIGHT_TREE_BENCHMARK(insertSibling);
LEAFWRIGHT_TREE_BENCHMARK(removeSibling);
LEAFWRIGHT_TREE_BENCHMARK(moveSibling);
LEAFWRIGHT_TREE_BENCHMARK(moveSelectedSibling);
LEAFWRIGHT_TREE_BENCHMARK(moveAllSiblings);
LEAFWRIGHT_TREE_BENCHMARK(moveEveryOther);
LEAFWRIGHT_TREE_BENCHMARK(loadAll);
LEAFWRIGHT_TREE_BENCHMARK(selectAll);
LEAFWRIGHT_TREE_BENCHMARK(selectEveryOther);

}  // namespace

}  // namespace leafwright::bench
