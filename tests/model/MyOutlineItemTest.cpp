#include "model/MyOutlineItem.h"
#include "support/OutlineItems.h"

#include <functional>
#include <gmock/gmock.h>
#include <stdexcept>

namespace leafwright {
namespace {

using test::addItems;
using testing::ElementsAre;
using testing::IsEmpty;

/// Writes down what it is told, with what it sees of the item at that moment.
class RecordingObserver final : public OutlineItemObserver {
public:
    using Look = std::function<QString(const MyOutlineItem &)>;
    explicit RecordingObserver(Look look) : look_(std::move(look)) {}

    void willChangeValueForKey(const MyOutlineItem &item, QLatin1String key) override {
        notices.append("will " + QString(key) + " " + look_(item));
    }
    void didChangeValueForKey(const MyOutlineItem &item, QLatin1String key) override {
        notices.append("did " + QString(key) + " " + look_(item));
    }

    QStringList notices;

private:
    Look look_;
};

QString countOfChildren(const MyOutlineItem &item) {
    return QString::number(item.children().size());
}

TEST(MyOutlineItem, NewItemHasItsDefaults) {
    const MyOutlineItem item;
    EXPECT_EQ(item.pageTitle(), "Untitled");
    EXPECT_EQ(item.pageLabel(), "1");
    EXPECT_THAT(item.children(), IsEmpty());
    EXPECT_TRUE(item.levelstr().isNull());
    EXPECT_EQ(item.levelnum(), 0U);
    EXPECT_TRUE(item.pluslevelstr().isNull());
    EXPECT_EQ(item.pointOnPage(), QPointF(0, 0));
    EXPECT_EQ(item.initiallevel(), 0U);
    EXPECT_EQ(item.entry(), OutlineEntry());
}

TEST(MyOutlineItem, TitleAndLabelAreMeantForUndo) {
    EXPECT_THAT(MyOutlineItem::allProperties(), ElementsAre("pageTitle", "pageLabel"));
}

TEST(MyOutlineItem, KeepsWhatIsSet) {
    MyOutlineItem item;
    item.setPageTitle("Introduction");
    item.setPageLabel("iv");
    item.setLevelstr("0.1.4");
    item.setLevelnum(3);
    item.setPluslevelstr("+++");
    item.setPointOnPage({72.5, 700.25});
    item.setInitiallevel(UINT64_MAX);
    item.setEntry({.number = 17, .bold = true});
    EXPECT_EQ(item.pageTitle(), "Introduction");
    EXPECT_EQ(item.pageLabel(), "iv");
    EXPECT_EQ(item.levelstr(), "0.1.4");
    EXPECT_EQ(item.levelnum(), 3U);
    EXPECT_EQ(item.pluslevelstr(), "+++");
    EXPECT_EQ(item.pointOnPage(), QPointF(72.5, 700.25));
    EXPECT_EQ(item.initiallevel(), UINT64_MAX);
    EXPECT_EQ(item.entry(), (OutlineEntry{.number = 17, .bold = true}));
}

TEST(MyOutlineItem, AbsentLabelIsNotAnEmptyOne) {
    MyOutlineItem item;
    item.setPageLabel(QString());
    EXPECT_TRUE(item.pageLabel().isNull());
    item.setPageLabel("");
    EXPECT_TRUE(item.pageLabel().isEmpty());
    EXPECT_FALSE(item.pageLabel().isNull());
}

TEST(MyOutlineItem, EverySetterAnnouncesItsKey) {
    MyOutlineItem item;
    RecordingObserver observer([](const MyOutlineItem &) { return QString(); });
    item.addObserver(&observer);
    const auto noticesOf = [&](auto &&change) {
        observer.notices.clear();
        change();
        return observer.notices;
    };
    EXPECT_THAT(noticesOf([&] { item.setPageTitle("T"); }), ElementsAre("will pageTitle ", "did pageTitle "));
    EXPECT_THAT(noticesOf([&] { item.setPageLabel("2"); }), ElementsAre("will pageLabel ", "did pageLabel "));
    EXPECT_THAT(noticesOf([&] { item.setChildren({}); }), ElementsAre("will children ", "did children "));
    EXPECT_THAT(noticesOf([&] { item.takeChildren(); }), ElementsAre("will children ", "did children "));
    EXPECT_THAT(noticesOf([&] { item.setLevelstr("0"); }), ElementsAre("will levelstr ", "did levelstr "));
    EXPECT_THAT(noticesOf([&] { item.setLevelnum(1); }), ElementsAre("will levelnum ", "did levelnum "));
    EXPECT_THAT(noticesOf([&] { item.setPluslevelstr("+"); }),
                ElementsAre("will pluslevelstr ", "did pluslevelstr "));
    EXPECT_THAT(noticesOf([&] {
                    item.setPointOnPage({1, 2});
                }),
                ElementsAre("will pointOnPage ", "did pointOnPage "));
    EXPECT_THAT(noticesOf([&] { item.setInitiallevel(1); }),
                ElementsAre("will initiallevel ", "did initiallevel "));
    EXPECT_THAT(noticesOf([&] { item.setEntry({.bold = true}); }), ElementsAre("will entry ", "did entry "));
    EXPECT_THAT(noticesOf([&] { item.setImportedPage(1); }),
                ElementsAre("will importedPage ", "did importedPage "));
}

TEST(MyOutlineItem, NoticesComeBeforeAndAfterTheChange) {
    MyOutlineItem item;
    RecordingObserver observer([](const MyOutlineItem &changed) { return changed.pageTitle(); });
    item.addObserver(&observer);
    item.setPageTitle("New");
    EXPECT_THAT(observer.notices, ElementsAre("will pageTitle Untitled", "did pageTitle New"));
}

TEST(MyOutlineItem, InsertionIsBracketedByOnePairOfNotices) {
    MyOutlineItem item;
    RecordingObserver observer(countOfChildren);
    item.addObserver(&observer);
    item.insertObjectInChildrenAtIndex(std::make_unique<MyOutlineItem>(), 0);
    EXPECT_THAT(observer.notices, ElementsAre("will children 0", "did children 1"));
}

TEST(MyOutlineItem, RemovalIsBracketedByOnePairOfNotices) {
    MyOutlineItem item;
    addItems(item, {{"A"}, {"B"}});
    RecordingObserver observer(countOfChildren);
    item.addObserver(&observer);
    const auto removed = item.removeObjectFromChildrenAtIndex(0);
    EXPECT_EQ(removed->pageTitle(), "A");
    EXPECT_EQ(item.children().front()->pageTitle(), "B");
    EXPECT_THAT(observer.notices, ElementsAre("will children 2", "did children 1"));
}

TEST(MyOutlineItem, InsertionPutsTheItemAtItsIndex) {
    MyOutlineItem item;
    addItems(item, {{"A"}, {"C"}});
    item.insertObjectInChildrenAtIndex(test::makeItem({"B"}), 1);
    item.insertObjectInChildrenAtIndex(test::makeItem({"D"}), 3);
    item.insertObjectInChildrenAtIndex(test::makeItem({"0"}), 0);
    EXPECT_EQ(test::treeText(item),
              "+ [1] 0 (0,0)\n+ [1] A (0,0)\n+ [1] B (0,0)\n+ [1] C (0,0)\n+ [1] D (0,0)\n");
}

TEST(MyOutlineItem, RemovalTakesTheItemAtItsIndex) {
    MyOutlineItem item;
    addItems(item, {{"A"}, {"B"}, {"C"}});
    EXPECT_EQ(item.removeObjectFromChildrenAtIndex(1)->pageTitle(), "B");
    EXPECT_EQ(item.removeObjectFromChildrenAtIndex(1)->pageTitle(), "C");
    EXPECT_EQ(test::treeText(item), "+ [1] A (0,0)\n");
}

TEST(MyOutlineItem, AnIndexOutOfRangeThrowsAndIsNotAnnounced) {
    MyOutlineItem item;
    addItems(item, {{"A"}});
    RecordingObserver observer(countOfChildren);
    item.addObserver(&observer);
    EXPECT_THROW(item.insertObjectInChildrenAtIndex(std::make_unique<MyOutlineItem>(), 2), std::out_of_range);
    EXPECT_THROW(item.removeObjectFromChildrenAtIndex(1), std::out_of_range);
    EXPECT_EQ(item.children().size(), 1U);
    EXPECT_THAT(observer.notices, IsEmpty());
}

TEST(MyOutlineItem, SeveralChildrenComeAndGoAsOneChange) {
    MyOutlineItem item;
    addItems(item, {{"A"}, {"B"}, {"C"}, {"D"}});
    RecordingObserver observer(countOfChildren);
    item.addObserver(&observer);
    MyOutlineItem::Children gone = item.removeChildrenAtIndex(1, 2);
    EXPECT_EQ(test::treeText(item), "+ [1] A (0,0)\n+ [1] D (0,0)\n");
    EXPECT_EQ(observer.notices.size(), 2) << "before and after";
    item.insertChildrenAtIndex(std::move(gone), 2);
    EXPECT_EQ(test::treeText(item), "+ [1] A (0,0)\n+ [1] D (0,0)\n+ [1] B (0,0)\n+ [1] C (0,0)\n");
    EXPECT_EQ(observer.notices.size(), 4);
    item.removeObserver(&observer);
}

TEST(MyOutlineItem, SeveralChildrenOutOfRangeStayWhereTheyAre) {
    MyOutlineItem item;
    addItems(item, {{"A"}, {"B"}});
    MyOutlineItem::Children coming;
    coming.push_back(test::makeItem({"X"}));
    EXPECT_THROW(item.insertChildrenAtIndex(std::move(coming), 3), std::out_of_range);
    ASSERT_EQ(coming.size(), 1U);  // NOLINT(bugprone-use-after-move): nothing was moved
    EXPECT_EQ(coming.front()->pageTitle(), "X");
    EXPECT_THROW(item.removeChildrenAtIndex(1, 2), std::out_of_range);
    EXPECT_THROW(item.removeChildrenAtIndex(3, 0), std::out_of_range);
    EXPECT_EQ(item.children().size(), 2U);
}

TEST(MyOutlineItem, AppendingTellsNobody) {
    MyOutlineItem item;
    RecordingObserver observer(countOfChildren);
    item.addObserver(&observer);
    item.appendChild(std::make_unique<MyOutlineItem>());
    EXPECT_EQ(item.children().size(), 1U);
    EXPECT_THAT(observer.notices, IsEmpty());
}

TEST(MyOutlineItem, TakingTheChildrenLeavesNone) {
    MyOutlineItem item;
    addItems(item, {{"A"}, {"B"}});
    const MyOutlineItem::Children taken = item.takeChildren();
    EXPECT_EQ(taken.size(), 2U);
    EXPECT_THAT(item.children(), IsEmpty());
}

TEST(MyOutlineItem, RemovedObserverIsToldNothing) {
    MyOutlineItem item;
    RecordingObserver first(countOfChildren);
    RecordingObserver second(countOfChildren);
    item.addObserver(&first);
    item.addObserver(&second);
    item.removeObserver(&first);
    item.setPageTitle("New");
    EXPECT_THAT(first.notices, IsEmpty());
    EXPECT_EQ(second.notices.size(), 2);
}

TEST(MyOutlineItem, ChangesOfAChildAreNotTheParents) {
    MyOutlineItem item;
    addItems(item, {{"A"}});
    RecordingObserver observer(countOfChildren);
    item.addObserver(&observer);
    item.children().front()->setPageTitle("B");
    EXPECT_THAT(observer.notices, IsEmpty());
}

TEST(MyOutlineItem, DescriptionShowsLabelTitlePointAndChildren) {
    const auto item = test::makeItem({"Introduction", "12", {72, 700}, {{"A"}, {"B"}, {"C"}}});
    EXPECT_EQ(item->description(), "pg[12] Introduction at (72,700) [#children=3]");
}

TEST(MyOutlineItem, DescriptionRoundsThePoint) {
    EXPECT_EQ(test::makeItem({"T", "1", {72.5, 699.51}})->description(), "pg[1] T at (72,700) [#children=0]");
}

TEST(MyOutlineItem, DescriptionLeavesPercentSignsAlone) {
    EXPECT_EQ(test::makeItem({"100%1 %2", "%3"})->description(), "pg[%3] 100%1 %2 at (0,0) [#children=0]");
}

TEST(MyOutlineItem, DeepTreesAreDestroyedWithoutRecursion) {
    auto top = std::make_unique<MyOutlineItem>();
    MyOutlineItem *last = top.get();
    for (int depth = 0; depth < 300'000; ++depth)
        last = &last->appendChild(std::make_unique<MyOutlineItem>());
    last->setPageTitle("Bottom");
    EXPECT_EQ(top->itemsMatchingText("Bottom")->front(), last);
    top.reset();
}

TEST(MyOutlineItem, ACopySaysTheSameAndIsSomebodyElse) {
    MyOutlineItem item("A", {"iv", QPointF(1, 2), 3});
    item.setEntry({.number = 7, .bold = true});
    item.appendChild(std::make_unique<MyOutlineItem>("B", PageTarget{QString()}));
    item.setIdentity(9);
    const auto copy = item.copy();
    EXPECT_EQ(copy->plusDescriptionForLevel(0), item.plusDescriptionForLevel(0));
    EXPECT_EQ(copy->pointOnPage(), QPointF(1, 2));
    EXPECT_EQ(copy->importedPage(), 3);
    EXPECT_EQ(copy->entry(), item.entry());
    EXPECT_EQ(copy->identity(), 0u);
    EXPECT_TRUE(copy->children()[0]->pageLabel().isNull());
    EXPECT_NE(copy->children()[0].get(), item.children()[0].get());
}

}  // namespace
}  // namespace leafwright
