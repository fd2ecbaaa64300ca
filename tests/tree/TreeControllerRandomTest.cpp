#include "tree/TreeFixture.h"

#include <gtest/gtest.h>
#include <map>
#include <random>
#include <set>

namespace leafwright {
namespace {

/// A tree that does everything the long way.
struct Naive {
    QString title;
    const MyOutlineItem *item = nullptr;
    Naive *parent = nullptr;
    std::vector<std::unique_ptr<Naive>> children;
    bool selected = false;
};

class RandomOperations : public testing::Test {
protected:
    size_t below(size_t limit) { return std::uniform_int_distribution<size_t>(0, limit - 1)(random); }

    std::vector<Naive *> all(Naive &top) {
        std::vector<Naive *> found{&top};
        for (const auto &child : top.children) {
            const std::vector<Naive *> deeper = all(*child);
            found.insert(found.end(), deeper.begin(), deeper.end());
        }
        return found;
    }
    std::vector<Naive *> allButRoot() {
        std::vector<Naive *> found = all(naive);
        found.erase(found.begin());
        return found;
    }
    Naive *any() {
        const std::vector<Naive *> found = allButRoot();
        return found.empty() ? nullptr : found[below(found.size())];
    }
    static IndexPath path(const Naive &node) {
        if (!node.parent) return {};
        const auto &siblings = node.parent->children;
        const auto place = std::find_if(siblings.begin(), siblings.end(),
                                        [&](const auto &sibling) { return sibling.get() == &node; });
        return path(*node.parent).indexPathByAddingIndex(static_cast<size_t>(place - siblings.begin()));
    }
    TreeNode &node(const Naive &wanted) { return *controller.nodeForItem(*wanted.item); }
    MyOutlineItem &item(const Naive &wanted) { return *node(wanted).representedObject(); }

    void selectOnly(const std::vector<Naive *> &nodes) {
        for (Naive *any : allButRoot())
            any->selected = false;
        for (Naive *chosen : nodes)
            chosen->selected = true;
    }

    void insert() {
        const std::vector<Naive *> everything = all(naive);
        Naive *parent = everything[below(everything.size())];
        const size_t place = below(parent->children.size() + 1);
        auto added = std::make_unique<Naive>();
        added->title = QString::number(++made);
        added->parent = parent;
        auto newItem = test::newItem(added->title);
        added->item = newItem.get();
        Naive *shown =
            parent->children.insert(parent->children.begin() + qsizetype(place), std::move(added))->get();
        if (below(2) == 0) {
            item(*parent).insertObjectInChildrenAtIndex(std::move(newItem), place);
        } else {
            controller.insertObjectAtArrangedObjectIndexPath(std::move(newItem),
                                                             path(*parent).indexPathByAddingIndex(place));
            selectOnly({shown});
        }
        kept.emplace(shown->item, controller.indexForNode(node(*shown), int(below(2))));
    }

    void remove() {
        Naive *doomed = any();
        if (!doomed) return;
        const IndexPath place = path(*doomed);
        Naive *parent = doomed->parent;
        for (const Naive *gone : all(*doomed))
            kept.erase(gone->item);
        const QPersistentModelIndex index = controller.indexForNode(node(*doomed));
        if (below(2) == 0) {
            item(*parent).removeObjectFromChildrenAtIndex(place.lastIndex());
        } else {
            controller.removeObjectAtArrangedObjectIndexPath(place);
        }
        EXPECT_FALSE(index.isValid());
        parent->children.erase(parent->children.begin() + qsizetype(place.lastIndex()));
    }

    /// A marker holds the gap while the moved are taken out one by one.
    bool moveNaively(const std::vector<Naive *> &list, Naive &target, size_t gap) {
        for (const Naive *above = &target; above; above = above->parent) {
            if (std::find(list.begin(), list.end(), above) != list.end()) return false;
        }
        target.children.insert(target.children.begin() + qsizetype(gap), nullptr);
        std::vector<std::unique_ptr<Naive>> taken;
        for (Naive *moving : list) {
            auto &siblings = moving->parent->children;
            const auto place = std::find_if(siblings.begin(), siblings.end(),
                                            [&](const auto &sibling) { return sibling.get() == moving; });
            taken.push_back(std::move(*place));
            siblings.erase(place);
            moving->parent = &target;
        }
        auto marker = std::find(target.children.begin(), target.children.end(), nullptr);
        marker = target.children.erase(marker);
        target.children.insert(marker, std::make_move_iterator(taken.begin()),
                               std::make_move_iterator(taken.end()));
        return true;
    }

    void move(size_t count) {
        std::vector<Naive *> list = allButRoot();
        if (list.empty()) return;
        if (below(2) == 0) std::shuffle(list.begin(), list.end(), random);
        const size_t first = below(list.size());
        list.erase(list.begin(), list.begin() + qsizetype(first));
        list.resize(std::min(list.size(), count));
        const std::vector<Naive *> everything = all(naive);
        Naive *target = everything[below(everything.size())];
        const size_t gap = below(target->children.size() + 1);
        const IndexPath place = path(*target).indexPathByAddingIndex(gap);
        std::vector<TreeNode *> nodes;
        for (const Naive *moving : list)
            nodes.push_back(&node(*moving));
        const bool expected = moveNaively(list, *target, gap);
        const bool answer =
            nodes.size() == 1 ? controller.moveNode(*nodes[0], place) : controller.moveNodes(nodes, place);
        EXPECT_EQ(answer, expected);
        (answer ? moves : refusals) += 1;
    }

    void rename() {
        Naive *renamed = any();
        if (!renamed) return;
        renamed->title += u'\'';
        if (below(2) == 0) {
            item(*renamed).setPageTitle(renamed->title);
        } else {
            EXPECT_TRUE(controller.setData(controller.indexForNode(node(*renamed)), renamed->title));
        }
    }

    void select() {
        std::vector<Naive *> chosen;
        const size_t oneIn = 1 + below(4);
        for (Naive *candidate : allButRoot()) {
            if (below(oneIn) == 0) chosen.push_back(candidate);
        }
        selectOnly(chosen);
        std::vector<TreeNode *> nodes;
        for (const Naive *selected : chosen)
            nodes.push_back(&node(*selected));
        if (below(2) == 0) std::shuffle(nodes.begin(), nodes.end(), random);
        controller.setSelectedNodes(nodes);
    }

    void compare(const Naive &wanted, const TreeNode &found) {
        ASSERT_EQ(found.representedObject(), wanted.item);
        ASSERT_EQ(found.childCount(), wanted.children.size());
        ASSERT_EQ(wanted.item->children().size(), wanted.children.size());
        for (size_t row = 0; row < wanted.children.size(); ++row) {
            const TreeNode &child = *found.childNodes()[row];
            ASSERT_EQ(child.parentNode(), &found);
            ASSERT_EQ(child.row(), row);
            ASSERT_EQ(wanted.item->children()[row].get(), wanted.children[row]->item);
            ASSERT_EQ(controller.indexForNode(child).data().toString(), wanted.children[row]->title);
            compare(*wanted.children[row], child);
        }
    }

    void check() {
        compare(naive, controller.arrangedObjects());
        std::vector<TreeNode *> selected;
        const std::vector<Naive *> everything = allButRoot();
        ASSERT_EQ(controller.nodeCount(), everything.size());
        for (const Naive *candidate : everything) {
            if (candidate->selected) selected.push_back(&node(*candidate));
        }
        ASSERT_EQ(test::titles(controller.selectedNodes()), test::titles(selected));
        for (const auto &[keptItem, index] : kept) {
            ASSERT_TRUE(index.isValid());
            TreeNode *there = controller.nodeForItem(*keptItem);
            ASSERT_EQ(QModelIndex(index), controller.indexForNode(*there, index.column()));
            ASSERT_EQ(controller.descendantNodeAtIndexPath(there->indexPath()), there);
        }
    }

    std::mt19937 random{20240917};
    MyOutlineItem root;
    OutlineEdits edits{root};
    TreeController controller{edits};
    QAbstractItemModelTester tester{&controller, QAbstractItemModelTester::FailureReportingMode::Fatal};
    Naive naive{{}, &root, nullptr, {}, false};
    std::map<const MyOutlineItem *, QPersistentModelIndex> kept;
    int made = 0;
    int moves = 0;
    int refusals = 0;
};

TEST_F(RandomOperations, GiveWhatANaiveTreeGives) {
    for (int step = 0; step < 10'000; ++step) {
        const size_t size = controller.nodeCount();
        switch (below(11)) {
            case 0:
            case 1:
                insert();
                break;
            case 2:
                if (size > 40)
                    remove();
                else
                    insert();
                break;
            case 3:
                if (size > 90) remove();
                break;
            case 4:
            case 5:
                move(1);
                break;
            case 6:
                move(2 + below(6));
                break;
            case 7:
                move(2 + below(100));
                break;
            case 8:
                rename();
                break;
            case 9: {
                const TreeController::ManyMoves together(controller);
                for (size_t count = below(6); count > 0; --count)
                    move(1 + below(3));
                break;
            }
            default:
                select();
        }
        check();
        if (HasFatalFailure() || HasFailure()) FAIL() << "after step " << step;
    }
    EXPECT_GT(moves, 1'000);
    EXPECT_GT(refusals, 100);
}

}  // namespace
}  // namespace leafwright
