#include "document/commands/FindContentsFixture.h"

#include <QLabel>
#include <QSpinBox>

namespace leafwright {
namespace {

/// What the tree shows as taken, in the form of an outline; nothing taken may be below what is struck out.
QString takenBelow(const QTreeWidgetItem &item) {
    QStringList parts;
    for (int i = 0; i < item.childCount(); ++i) {
        const QTreeWidgetItem &child = *item.child(i);
        const QString below = takenBelow(child);
        if (child.checkState(0) == Qt::Unchecked) {
            EXPECT_TRUE(child.font(0).strikeOut());
            EXPECT_EQ(below, "") << child.text(0).toStdString();
            continue;
        }
        EXPECT_FALSE(child.font(0).strikeOut());
        parts.append(below.isEmpty() ? child.text(0) : child.text(0) + " (" + below + ')');
    }
    return parts.join(' ');
}

class RejectedEntries : public FindContentsWindow {
protected:
    QString shown() { return takenBelow(*entries().invisibleRootItem()); }
    QString summary() { return part<QLabel>("contentsSummary").text(); }
};

TEST_F(RejectedEntries, WhatIsBelowThemIsShownWhereItWillBe) {
    find();
    EXPECT_EQ(shown(), book);
    chapter(1).setCheckState(0, Qt::Unchecked);
    const QString without =
        "1 Soil (1.1 What is in the Ground 1.2 Compost 2.1 Rain 2.2 Wells) 3 Light (3.1 Shade 3.2 Glass)";
    EXPECT_EQ(shown(), without);
    EXPECT_TRUE(summary().startsWith("Entries: 8,")) << summary().toStdString();
    EXPECT_EQ(section(0, 2).text(0), "2 Water") << "in its place among the others, to be accepted again";
    take();
    EXPECT_EQ(outline(), without);
}

TEST_F(RejectedEntries, BringInNoneThatIsTooDeep) {
    find();
    part<QSpinBox>("depth").setValue(1);
    chapter(0).setCheckState(0, Qt::Unchecked);
    EXPECT_EQ(shown(), "2 Water 3 Light");
    EXPECT_TRUE(summary().startsWith("Entries: 2,")) << summary().toStdString();
    EXPECT_EQ(entries().topLevelItemCount(), 3);
    take();
    EXPECT_EQ(outline(), "2 Water 3 Light");
}

TEST_F(RejectedEntries, AcceptedAgainAreWhereTheyWere) {
    find();
    chapter(1).setCheckState(0, Qt::Unchecked);
    section(0, 2).setCheckState(0, Qt::Checked);
    EXPECT_EQ(shown(), book);
    EXPECT_TRUE(summary().startsWith("Entries: 9,")) << summary().toStdString();
    take();
    EXPECT_EQ(outline(), book);
}

TEST_F(RejectedEntries, StayTheOneThatIsLookedAt) {
    find();
    document.window()->show();
    entries().setFocus();
    entries().setCurrentItem(&chapter(1));
    for (const Qt::CheckState state : {Qt::Unchecked, Qt::Checked}) {
        QTest::keyClick(&entries(), Qt::Key_Space);
        QCoreApplication::processEvents();
        ASSERT_TRUE(entries().currentItem());
        EXPECT_EQ(entries().currentItem()->text(0), "2 Water");
        EXPECT_EQ(entries().currentItem()->checkState(0), state);
    }
    EXPECT_EQ(shown(), book);
}

}  // namespace
}  // namespace leafwright
