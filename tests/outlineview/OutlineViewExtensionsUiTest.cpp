#include "outlineview/OutlineFixture.h"
#include "support/LogRecorder.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::LogRecorder;
using test::Outline;

TEST(SelectedItems, AreInRowOrder) {
    Outline outline("A(B) C");
    outline.view.expandItem(outline.node("A"));
    outline.controller->setSelectedNodes(outline.nodes({"C", "B"}));
    EXPECT_EQ(test::titles(selectedItems(outline.view)), "B C");
}

TEST(SelectedItems, AreNoneWithoutASelection) {
    const Outline outline("A");
    EXPECT_TRUE(selectedItems(outline.view).empty());
}

const QString viewLog = "leafwright.outlineview.debug=true";

TEST(SetSelectedItems, ReplacesTheSelectionAndLogsTheRows) {
    Outline outline("A(B) C D");
    outline.view.selectRowIndexes({1});
    const LogRecorder log(viewLog);
    setSelectedItems(outline.view, outline.nodes({"D", "B", "A"}));
    EXPECT_EQ(outline.selection(), "A D");
    EXPECT_EQ(log.messages(), (QStringList{"==> row [2] for item [pg[1] D at (0,0) [#children=0]]",
                                           "==> row [-1] for item [pg[1] B at (0,0) [#children=0]]",
                                           "==> row [0] for item [pg[1] A at (0,0) [#children=1]]",
                                           "select index paths [0 2]"}));
}

TEST(SetSelectedItems, WritesNeighboursAsARange) {
    Outline outline("A B C D E");
    const LogRecorder log(viewLog);
    setSelectedItems(outline.view, outline.nodes({"A", "B", "C", "E"}));
    EXPECT_EQ(log.messages().last(), "select index paths [0-2 4]");
}

TEST(SetSelectedItems, AnEmptyListClearsTheSelectionAndIsLogged) {
    Outline outline("A");
    outline.view.selectRowIndexes({0});
    const LogRecorder log(viewLog);
    setSelectedItems(outline.view, {});
    EXPECT_EQ(outline.selection(), "");
    EXPECT_EQ(log.messages(), QStringList{"select index paths []"});
}

struct CopyingDelegate : OutlineViewDelegate {
    void copySelectedItemsToClipboard(QObject *sender) override { senders.push_back(sender); }
    std::vector<QObject *> senders;
};

TEST(OKNSOutlineView, CopyAsksTheDelegateInItsOwnName) {
    Outline outline("A");
    CopyingDelegate delegate;
    outline.view.setDelegate(&delegate);
    outline.view.copy(nullptr);
    EXPECT_EQ(delegate.senders, std::vector<QObject *>{&outline.view});
}

TEST(OKNSOutlineView, TheCopyKeyCopies) {
    Outline outline("A");
    CopyingDelegate delegate;
    outline.view.setDelegate(&delegate);
    outline.show();
    outline.view.selectRowIndexes({0});
    QTest::keyClick(&outline.view, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(delegate.senders.size(), 1u);
}

TEST(OKNSOutlineView, CopyWithoutADelegateOrAnAnswerDoesNothing) {
    Outline outline("A");
    outline.view.copy(nullptr);
    OutlineViewDelegate silent;
    outline.view.setDelegate(&silent);
    outline.view.copy(nullptr);
}

}  // namespace
}  // namespace leafwright
