#include "document/outline/OutlineExport.h"
#include "support/OutlineItems.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::addItems;
using testing::ElementsAre;
using testing::IsEmpty;

/// Pages "1" to "9", of which "2" is a large page whose box does not start at zero.
ExportPages ninePages() {
    return {[](const QString &label) -> std::optional<int> {
                const int number = label.toInt();
                return number >= 1 && number <= 9 ? std::optional(number - 1) : std::nullopt;
            },
            [](int index) -> std::optional<Rect> {
                if (index < 0 || index > 8) return std::nullopt;
                return index == 1 ? Rect{100, 200, 1000, 2000} : Rect{0, 0, 612, 792};
            }};
}

ExportPages noPages() {
    return {[](const QString &) { return std::optional<int>(); }, [](int) { return std::optional<Rect>(); }};
}

std::unique_ptr<PDFOutline> exported(MyOutlineItem &root) {
    return OutlineExport(ninePages()).run(root);
}

/// The tree of labels: "A B(C D)".
QString shape(const PDFOutline &entry) {
    QStringList parts;
    for (int i = 0; i < entry.numberOfChildren(); ++i) {
        const PDFOutline &child = entry.childAtIndex(i);
        parts.append(child.label() +
                     (child.numberOfChildren() > 0 ? "(" + shape(child) + ")" : QStringLiteral("")));
    }
    return parts.join(' ');
}

class OutlineExportTest : public testing::Test {
protected:
    MyOutlineItem root;
};

TEST_F(OutlineExportTest, NumbersEveryItemByItsPositions) {
    addItems(root, {{"A"}, {"B", "1", {}, {{"C"}, {"D", "1", {}, {{"E"}}}}}});
    exported(root);
    const MyOutlineItem &a = *root.children()[0];
    const MyOutlineItem &b = *root.children()[1];
    const MyOutlineItem &c = *b.children()[0];
    const MyOutlineItem &d = *b.children()[1];
    const MyOutlineItem &e = *d.children()[0];
    EXPECT_EQ(a.levelstr(), "0");
    EXPECT_EQ(b.levelstr(), "1");
    EXPECT_EQ(c.levelstr(), "1.0");
    EXPECT_EQ(d.levelstr(), "1.1");
    EXPECT_EQ(e.levelstr(), "1.1.0");
    EXPECT_EQ(a.levelnum(), 1U);
    EXPECT_EQ(d.levelnum(), 2U);
    EXPECT_EQ(e.levelnum(), 3U);
    EXPECT_EQ(e.wantedParent(), "1.1");
    EXPECT_EQ(e.attachPoint(), 0);
    EXPECT_TRUE(root.levelstr().isNull());
    EXPECT_EQ(root.levelnum(), 0U);
}

TEST_F(OutlineExportTest, NumbersAnewEveryTime) {
    addItems(root, {{"A", "1", {}, {{"B"}}}, {"C"}});
    exported(root);
    const std::unique_ptr<MyOutlineItem> a = root.removeObjectFromChildrenAtIndex(0);
    root.appendChild(a->removeObjectFromChildrenAtIndex(0));
    EXPECT_EQ(shape(*exported(root)), "C B");
    EXPECT_EQ(root.children()[1]->levelstr(), "1");
    EXPECT_EQ(root.children()[1]->levelnum(), 1U);
}

TEST_F(OutlineExportTest, LinksEveryEntryIntoItsParentAtItsPosition) {
    addItems(root, {{"A"}, {"B", "1", {}, {{"C"}, {"D"}}}});
    EXPECT_EQ(shape(*exported(root)), "A B(C D)");
}

TEST_F(OutlineExportTest, LinksTreesOfUnevenDepth) {
    addItems(root, {{"A", "1", {}, {{"B", "1", {}, {{"C"}, {"D"}}}, {"E"}, {"F", "1", {}, {{"G"}}}}},
                    {"H"},
                    {"I", "1", {}, {{"J", "1", {}, {{"K", "1", {}, {{"L"}}}}}}}});
    EXPECT_EQ(shape(*exported(root)), "A(B(C D) E F(G)) H I(J(K(L)))");
}

TEST_F(OutlineExportTest, MoreThanTenSiblingsStayInOrder) {
    QStringList names;
    for (int i = 0; i < 25; ++i) {
        names.append("N" + QString::number(i));
        addItems(root, {{names.back()}});
    }
    EXPECT_EQ(shape(*exported(root)), names.join(' '));
}

TEST_F(OutlineExportTest, AnItemNamedRootIsAnItemLikeAnyOther) {
    addItems(root, {{"Root", "1", {}, {{"A"}}}, {"B"}});
    EXPECT_EQ(shape(*exported(root)), "Root(A) B");
}

TEST_F(OutlineExportTest, AnEmptyTreeGivesARootWithoutChildren) {
    EXPECT_EQ(exported(root)->numberOfChildren(), 0);
}

TEST_F(OutlineExportTest, LabelsLeadToTheirPages) {
    addItems(root, {{"A", "3", {72, 700}, {{"B", "9", {10, 20}}}}});
    const auto outline = exported(root);
    EXPECT_EQ(outline->childAtIndex(0).destination(), (PDFDestination{2, {72, 700}}));
    EXPECT_EQ(outline->childAtIndex(0).childAtIndex(0).destination(), (PDFDestination{8, {10, 20}}));
}

TEST_F(OutlineExportTest, UnknownLabelsLeadToTheFirstPage) {
    addItems(root, {{"A", "xii", {72, 700}, {{"B", "", {10, 20}}}}});
    const auto outline = exported(root);
    EXPECT_EQ(outline->childAtIndex(0).destination(), (PDFDestination{0, {72, 700}}));
    EXPECT_EQ(outline->childAtIndex(0).childAtIndex(0).destination(), (PDFDestination{0, {10, 20}}));
    EXPECT_EQ(root.children()[0]->pageLabel(), "xii");
}

TEST_F(OutlineExportTest, ZeroPointsBecomeTheMiddleOfTheTopEdgeAlsoInTheModel) {
    addItems(root, {{"A", "1", {}, {{"B", "1"}}}});
    const auto outline = exported(root);
    EXPECT_EQ(outline->childAtIndex(0).destination(), (PDFDestination{0, {306, 792}}));
    EXPECT_EQ(outline->childAtIndex(0).childAtIndex(0).destination(), (PDFDestination{0, {306, 792}}));
    EXPECT_EQ(test::treeText(root), "+ [1] A (306,792)\n++ [1] B (306,792)\n");
}

TEST_F(OutlineExportTest, TheDefaultPointMindsOnlyTheBottomOfTheBox) {
    addItems(root, {{"A", "2"}});
    EXPECT_EQ(exported(root)->childAtIndex(0).destination(), (PDFDestination{1, {500, 2200}}));
}

TEST_F(OutlineExportTest, PointsWithOneZeroCoordinateAreKept) {
    addItems(root, {{"A", "1", {0, 10}}, {"B", "1", {10, 0}}, {"C", "1", {0, 1e-9}}});
    exported(root);
    EXPECT_EQ(test::treeText(root), "+ [1] A (0,10)\n+ [1] B (10,0)\n+ [1] C (0,1e-09)\n");
}

TEST_F(OutlineExportTest, ThePointThatIsAlreadyTheDefaultStays) {
    addItems(root, {{"A", "1", {306, 792}}});
    EXPECT_EQ(exported(root)->childAtIndex(0).destination(), (PDFDestination{0, {306, 792}}));
}

TEST_F(OutlineExportTest, AnAbsentLabelLeadsNowhereBeforeAndAfter) {
    addItems(root, {{"A", QString(), {}, {{"B", "2", {1, 2}}}}});
    root.children()[0]->setEntry({.number = 42, .italic = true});
    const auto outline = exported(root);
    EXPECT_FALSE(outline->childAtIndex(0).destination());
    EXPECT_EQ(outline->childAtIndex(0).entry(), (OutlineEntry{.number = 42, .italic = true}));
    EXPECT_TRUE(outline->childAtIndex(0).childAtIndex(0).destination());
    EXPECT_EQ(test::treeText(root), "+ - A (0,0)\n++ [2] B (1,2)\n");
}

TEST_F(OutlineExportTest, WithoutPagesEntriesLeadNowhere) {
    addItems(root, {{"A", "1"}, {"B", "1", {3, 4}}});
    const auto outline = OutlineExport(noPages()).run(root);
    EXPECT_EQ(shape(*outline), "A B");
    EXPECT_FALSE(outline->childAtIndex(0).destination());
    EXPECT_FALSE(outline->childAtIndex(1).destination());
    EXPECT_EQ(test::treeText(root), "+ [1] A (0,0)\n+ [1] B (3,4)\n");
}

TEST_F(OutlineExportTest, LabelsAreAskedForInTreeOrder) {
    addItems(root, {{"A", "1", {}, {{"B", "2"}, {"C", QString()}}}, {"D", "p3"}});
    ExportPages pages = ninePages();
    QStringList asked;
    pages.getRealPageArrayIndex = [&asked](const QString &label) {
        asked.append(label);
        return std::optional(0);
    };
    OutlineExport(pages).run(root);
    EXPECT_THAT(asked, ElementsAre("1", "2", "p3"));
}

/// Watches one item for the key of its point.
class PointObserver final : public OutlineItemObserver {
public:
    void willChangeValueForKey(const MyOutlineItem &, QLatin1String) override {}
    void didChangeValueForKey(const MyOutlineItem &item, QLatin1String key) override {
        if (key == QLatin1String("pointOnPage")) points.push_back(item.pointOnPage());
    }
    std::vector<QPointF> points;
};

TEST_F(OutlineExportTest, TheDefaultPointIsAnnounced) {
    addItems(root, {{"A", "1"}});
    PointObserver observer;
    root.children()[0]->addObserver(&observer);
    exported(root);
    EXPECT_THAT(observer.points, ElementsAre(QPointF(306, 792)));
    exported(root);
    EXPECT_EQ(observer.points.size(), 1U);
}

/// @return the deepest item
MyOutlineItem &addChain(MyOutlineItem &root, quint64 depth) {
    MyOutlineItem *last = &root;
    for (quint64 i = 0; i < depth; ++i)
        last = &last->appendChild(std::make_unique<MyOutlineItem>());
    return *last;
}

// The texts of all numbers together would take 80 GB.
TEST_F(OutlineExportTest, TreesOfAnyDepthAreExported) {
    constexpr quint64 levels = 200'000;
    const MyOutlineItem &last = addChain(root, levels);
    EXPECT_EQ(exported(root)->countOfDescendants(), qsizetype{levels});
    EXPECT_EQ(last.levelnum(), levels);
    EXPECT_EQ(last.levelstr(), QString("0.").repeated(levels - 1) + "0");
}

TEST_F(OutlineExportTest, ARemovedItemKeepsItsNumber) {
    addItems(root, {{"A"}, {"B", "1", {}, {{"C"}}}});
    exported(root);
    const auto item = root.children()[1]->removeObjectFromChildrenAtIndex(0);
    root.removeObjectFromChildrenAtIndex(1);
    exported(root);
    EXPECT_EQ(item->levelstr(), "1.0");
}

TEST_F(OutlineExportTest, ImportedItemsLeadToThePageOfTheirLabelOrKeepTheirs) {
    addItems(root, {{"Imported", "3", {5, 6}}, {"Edited", "3", {5, 6}}, {"New", "3", {5, 6}}});
    root.children()[0]->setImportedPage(1);
    root.children()[1]->setImportedPage(1);
    root.children()[1]->setPageLabel("4");
    const auto pagesWith = [&](bool keepsImported) {
        ExportPages pages = ninePages();
        pages.keepsImported = keepsImported;
        const auto outline = OutlineExport(pages).run(root);
        std::vector<int> indexes;
        for (int i = 0; i < outline->numberOfChildren(); ++i)
            indexes.push_back(outline->childAtIndex(i).destination()->pageIndex);
        return indexes;
    };
    EXPECT_THAT(pagesWith(false), ElementsAre(2, 3, 2));
    EXPECT_THAT(pagesWith(true), ElementsAre(1, 3, 2));
}

}  // namespace
}  // namespace leafwright
