#include "tree/TreeFixture.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <ranges>

namespace leafwright {
namespace {

/// An entry as a plain value, with its children. The naive outline is one of these, and what was before is a
/// copy that somebody kept.
struct Naive {
    quint64 identity = 0;
    QString title;
    QString label;
    std::optional<int> page;
    QPointF point;
    bool bold = false;
    std::vector<Naive> children;

    friend bool operator==(const Naive &, const Naive &) = default;
};

Naive naiveOf(const MyOutlineItem &item) {
    Naive naive{item.identity(),
                item.pageTitle(),
                item.pageLabel(),
                item.importedPage(),
                item.pointOnPage(),
                item.entry().bold,
                {}};
    for (const auto &child : item.children())
        naive.children.push_back(naiveOf(*child));
    return naive;
}

std::vector<Naive *> all(Naive &top) {
    std::vector<Naive *> found{&top};
    for (Naive &child : top.children)
        for (Naive *each : all(child))
            found.push_back(each);
    return found;
}

/// Transactions in any order on an outline with its tree, taken back and done again, beside a naive outline.
class RandomTransactions : public testing::TestWithParam<bool> {
protected:
    size_t below(size_t limit) { return std::uniform_int_distribution<size_t>(0, limit - 1)(random); }

    Naive *find(quint64 identity) {
        for (Naive *each : all(naive))
            if (each->identity == identity) return each;
        return nullptr;
    }
    MyOutlineItem &itemOf(quint64 identity) {
        std::vector<MyOutlineItem *> pending{&root};
        while (!pending.empty()) {
            MyOutlineItem *item = pending.back();
            pending.pop_back();
            if (item->identity() == identity) return *item;
            for (const auto &child : item->children())
                pending.push_back(child.get());
        }
        throw std::runtime_error("no such item");
    }
    Naive &any() {
        const std::vector<Naive *> everything = all(naive);
        return *everything[below(everything.size())];
    }

    void insert() {
        Naive &parent = any();
        auto item = test::newItem(QString::number(++made));
        for (size_t count = below(3); count > 0; --count)
            item->appendChild(test::newItem(QString::number(++made)));
        const MyOutlineItem &inserted = *item;
        const size_t position = below(parent.children.size() + 1);
        edits.insert(itemOf(parent.identity), position, std::move(item));
        ++steps;
        const Naive coming = naiveOf(inserted);  // with its identities, which nobody else may have
        for (const Naive *each : all(naive))
            ASSERT_NE(each->identity, coming.identity);
        parent.children.insert(parent.children.begin() + qsizetype(position), coming);
    }
    void remove() {
        Naive &parent = any();
        if (parent.children.empty()) return;
        const size_t position = below(parent.children.size());
        edits.remove(itemOf(parent.identity), position);
        ++steps;
        parent.children.erase(parent.children.begin() + qsizetype(position));
    }
    void removeAll() {
        Naive &parent = any();
        if (parent.children.empty()) return;
        edits.removeAll(itemOf(parent.identity));
        parent.children.clear();
        ++steps;
    }
    /// Moves entries to a gap through the tree, as commands do: in one piece, in several, or all at once.
    void move(size_t most) {
        std::vector<quint64> moving;
        for (const Naive *each : all(naive))
            if (each != &naive && below(2) == 0 && moving.size() < most) moving.push_back(each->identity);
        Naive &target = any();
        const quint64 targetIdentity = target.identity;
        const size_t gap = below(target.children.size() + 1);
        std::vector<TreeNode *> nodes;
        for (const quint64 identity : moving)
            nodes.push_back(controller.nodeForItem(itemOf(identity)));
        const TreeNode *targetNode = controller.nodeForItem(itemOf(targetIdentity));
        const quint64 structure = controller.structureRevision();
        if (!controller.moveNodes(nodes, targetNode->indexPath().indexPathByAddingIndex(gap))) return;
        if (controller.structureRevision() != structure) ++steps;
        target.children.insert(target.children.begin() + qsizetype(gap), Naive{});  // holds the gap
        // From the last on, since what was moved from below another that moves stands beside it afterwards.
        std::vector<Naive> taken;
        for (const quint64 identity : std::views::reverse(moving)) {
            taken.insert(taken.begin(), *find(identity));
            erase(naive, identity);
        }
        std::vector<Naive> &siblings = find(targetIdentity)->children;
        auto place = std::ranges::find(siblings, quint64{0}, &Naive::identity);
        place = siblings.erase(place);
        siblings.insert(place, taken.begin(), taken.end());
        moves += int(moving.size());
    }
    static void erase(Naive &top, quint64 identity) {
        std::erase_if(top.children, [&](const Naive &child) { return child.identity == identity; });
        for (Naive &child : top.children)
            erase(child, identity);
    }
    void setValue() {
        Naive &chosen = any();
        MyOutlineItem &item = itemOf(chosen.identity);
        const QString text = QString::number(++made);
        const Naive before = chosen;
        switch (below(4)) {
            case 0:
                edits.setPageTitle(item, chosen.title = text);
                break;
            case 1:
                edits.setPageLabel(item, chosen.label = below(4) == 0 ? QString() : text);
                chosen.page.reset();
                break;
            case 2:
                edits.setPointOnPage(item, chosen.point = QPointF(double(below(3)), 1));
                break;
            default:
                chosen.bold = !chosen.bold;
                edits.setEntry(item, {.bold = chosen.bold});
        }
        if (!(chosen == before)) ++steps;  // a value that was that already is no step
    }
    void step() {
        const size_t size = all(naive).size();
        switch (below(10)) {
            case 0:
            case 1:
            case 2:
                return insert();
            case 3:
                return size > 40 ? remove() : insert();
            case 4:
                return size > 90 ? removeAll() : insert();
            case 5:
                return move(1);
            case 6:
                return move(5);
            case 7:
                return move(80);
            default:
                return setValue();
        }
    }

    void transaction() {
        const bool isCounted = GetParam() || below(4) != 0;
        const bool movesMuch = below(10) == 0;
        const quint64 before = edits.revision();
        steps = 0;
        {
            const OutlineEdits::Transaction edit(
                edits, QString::number(++made),
                isCounted ? OutlineEdits::Counting::Yes : OutlineEdits::Counting::No);
            for (size_t count = movesMuch ? 40 : below(5); count > 0; --count)
                movesMuch ? move(1) : step();
        }
        ASSERT_EQ(edits.revision() != before, isCounted);
        if (steps == 0) return;  // nothing to be taken back by itself
        states.resize(at + 1);
        states.push_back(naive);
        ++at;
    }
    void undo() {
        ASSERT_EQ(edits.canUndo(), at > 0);
        if (at == 0) return;
        edits.undo();
        naive = states[--at];
        ++undone;
    }
    void redo() {
        ASSERT_EQ(edits.canRedo(), at + 1 < states.size());
        if (at + 1 == states.size()) return;
        edits.redo();
        naive = states[++at];
    }

    void check() {
        ASSERT_TRUE(naiveOf(root) == naive);
        ASSERT_EQ(test::written(controller.arrangedObjects()), test::written(root));
        ASSERT_EQ(edits.isEdited(), edits.revision() != saved);
        if (!GetParam()) return;
        const auto known = byRevision.emplace(edits.revision(), naive).first;
        ASSERT_TRUE(known->second == naive) << "revision " << edits.revision() << " was another outline";
    }

    std::mt19937 random{20261122};
    MyOutlineItem root;
    OutlineEdits edits{root};
    TreeController controller{edits};
    QAbstractItemModelTester tester{&controller, QAbstractItemModelTester::FailureReportingMode::Fatal};
    Naive naive = naiveOf(root);
    std::vector<Naive> states{naive};  ///< By how many transactions can be taken back.
    size_t at = 0;
    std::map<quint64, Naive> byRevision;
    quint64 saved = 0;
    int made = 0;
    int steps = 0;
    int moves = 0;
    int undone = 0;
};

TEST_P(RandomTransactions, AreTakenBackAndDoneAgainAsByANaiveOutline) {
    for (int round = 0; round < 3'000; ++round) {
        switch (below(8)) {
            case 0:
            case 1:
                undo();
                break;
            case 2:
                redo();
                break;
            case 3:
                edits.setSavedRevision(saved = edits.revision());
                break;
            default:
                transaction();
        }
        check();
        if (HasFatalFailure()) FAIL() << "after round " << round;
    }
    EXPECT_GT(moves, 1'000);
    EXPECT_GT(undone, 500);
}

/// With the parameter every transaction is counted, and a revision is one outline for ever.
INSTANTIATE_TEST_SUITE_P(Counted, RandomTransactions, testing::Bool());

}  // namespace
}  // namespace leafwright
