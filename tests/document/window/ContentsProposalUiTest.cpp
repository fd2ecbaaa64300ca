#include "document/commands/FindContentsFixture.h"

#include <QCheckBox>
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

class ShownEntries : public FindContentsWindow {
protected:
    QString shown() { return takenBelow(*entries().invisibleRootItem()); }
};

class RejectedEntries : public ShownEntries {
protected:
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
    ASSERT_EQ(chapter(0).childCount(), 5);
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
    ASSERT_EQ(chapter(0).childCount(), 5);
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

/// A window with a book whose printed contents leave out what is below the sections.
class BriefContents : public ShownEntries {
protected:
    void SetUp() override {
        const auto show = test::PdfBuilder::showText;
        const std::vector<std::string> chapters = {"Soil", "Water", "Light", "Wind"};
        const auto text = [&](int y) {
            std::string lines;
            for (int line = 0; line < 10; ++line)
                lines += show("F1", 10, 72, y - 12 * line,
                              "There is much to say, and so it is said in plain words.");
            return lines;
        };
        test::PdfBuilder pdf;
        std::string contents = show("F2", 20, 72, 720, "Contents") + show("F1", 10, 300, 40, "1");
        for (size_t i = 0; i < chapters.size(); ++i) {
            const int y = 680 - 32 * static_cast<int>(i);
            const std::string number = std::to_string(i + 2);
            contents += show("F1", 10, 72, y, chapters[i] + " . . . . . .") + show("F1", 10, 500, y, number);
            contents += show("F1", 10, 90, y - 16, "Of " + chapters[i] + "s . . . . .");
            contents += show("F1", 10, 500, y - 16, number);
        }
        pdf.addPage(contents);
        for (size_t i = 0; i < chapters.size(); ++i)
            pdf.addPage(show("F2", 20, 72, 720, chapters[i]) + text(690) +
                        show("F2", 15, 72, 540, "Of " + chapters[i] + "s") + text(510) +
                        show("F2", 12, 72, 360, "Why " + chapters[i]) + text(330) +
                        show("F1", 10, 300, 40, std::to_string(i + 2)));
        open(pdf);
    }
};

TEST_F(BriefContents, DeeperBringsInWhatTheyLeaveOut) {
    setOutline("");
    find();
    const QString printed = "Soil (Of Soils) Water (Of Waters) Light (Of Lights) Wind (Of Winds)";
    const QString all =
        "Soil (Of Soils (Why Soil)) Water (Of Waters (Why Water)) Light (Of Lights (Why Light)) "
        "Wind (Of Winds (Why Wind))";
    EXPECT_EQ(shown(), printed);
    part<QCheckBox>("deeper").setChecked(true);
    EXPECT_EQ(shown(), all);
    part<QCheckBox>("deeper").setChecked(false);
    EXPECT_EQ(shown(), printed);
    part<QCheckBox>("deeper").setChecked(true);
    take();
    EXPECT_EQ(outline(), all);
}

}  // namespace
}  // namespace leafwright
