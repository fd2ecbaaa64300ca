#include "outlineview/OutlineCellDelegate.h"
#include "outlineview/OutlineFixture.h"

#include <QColor>
#include <QImage>

#include <gtest/gtest.h>

namespace leafwright {
namespace {

/// How the rows of an outline look, told from the row of a plain title.
class OutlineCells : public testing::Test {
protected:
    /// The item of a row, which is changed as a user would change it.
    void change(const char *title, const std::function<void(OutlineEntry &)> &change) {
        MyOutlineItem &item = *outline.controller->nodeForIndex(outline.index(title)).representedObject();
        OutlineEntry entry = item.entry();
        change(entry);
        outline.edits.setEntry(item, entry);
    }
    QImage pictureOf(const char *title) {
        QImage all = outline.view.viewport()->grab().toImage();
        return all.copy(outline.view.visualRect(outline.index(title)));
    }
    /// How many points of a row are more red than anything else.
    static int redIn(const QImage &picture) {
        int count = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x) {
                const QColor color = picture.pixelColor(x, y);
                count += color.red() > color.green() + 60 && color.red() > color.blue() + 60 ? 1 : 0;
            }
        return count;
    }

    test::Outline outline{"Aaaaaaaa Bbbbbbbb"};
};

TEST_F(OutlineCells, TitlesAreBoldAndItalicAsViewersShowThem) {
    const QImage plain = pictureOf("Aaaaaaaa");
    change("Aaaaaaaa", [](OutlineEntry &entry) { entry.bold = true; });
    const QImage bold = pictureOf("Aaaaaaaa");
    EXPECT_NE(bold, plain);
    change("Aaaaaaaa", [](OutlineEntry &entry) { entry.italic = true; });
    const QImage both = pictureOf("Aaaaaaaa");
    EXPECT_NE(both, bold);
    change("Aaaaaaaa", [](OutlineEntry &entry) { entry.bold = false; });
    EXPECT_NE(pictureOf("Aaaaaaaa"), plain);
    EXPECT_NE(pictureOf("Aaaaaaaa"), both);
    change("Aaaaaaaa", [](OutlineEntry &entry) { entry.italic = false; });
    EXPECT_EQ(pictureOf("Aaaaaaaa"), plain);
}

TEST_F(OutlineCells, TitlesHaveTheirColor) {
    const QImage other = pictureOf("Bbbbbbbb");
    EXPECT_EQ(redIn(pictureOf("Aaaaaaaa")), 0);
    change("Aaaaaaaa", [](OutlineEntry &entry) { entry.color = OutlineEntry::Color{1, 0, 0}; });
    EXPECT_GT(redIn(pictureOf("Aaaaaaaa")), 10);
    EXPECT_EQ(pictureOf("Bbbbbbbb"), other);
}

TEST_F(OutlineCells, WhereAnEntryLeadsThatHasNoPageStandsBehindItsTitle) {
    change("Aaaaaaaa", [](OutlineEntry &entry) {
        entry.action = OutlineEntry::Action{"URI", "https://example.org"};
    });
    MyOutlineItem &item = *outline.controller->nodeForIndex(outline.index("Aaaaaaaa")).representedObject();
    outline.edits.setPageLabel(item, "1");
    const QImage withPage = pictureOf("Aaaaaaaa");
    EXPECT_EQ(outline.index("Aaaaaaaa").data(TreeController::ElsewhereRole).toString(), "");
    outline.edits.setPageLabel(item, QString());
    EXPECT_EQ(outline.index("Aaaaaaaa").data(TreeController::ElsewhereRole).toString(),
              "→ https://example.org");
    EXPECT_EQ(outline.index("Aaaaaaaa").data(Qt::ToolTipRole).toString(), "→ https://example.org");
    EXPECT_NE(pictureOf("Aaaaaaaa"), withPage);
    EXPECT_EQ(outline.index("Bbbbbbbb").data(Qt::ToolTipRole).toString(), "");
    change("Aaaaaaaa", [](OutlineEntry &entry) { entry.action = OutlineEntry::Action{"Launch", {}}; });
    EXPECT_EQ(outline.index("Aaaaaaaa").data(TreeController::ElsewhereRole).toString(), "→ Launch");
}

TEST_F(OutlineCells, ALabelThatNoPageHasIsRed) {
    outline.controller->setLabelCheck([](const MyOutlineItem &item) { return item.pageLabel() == "xii"; });
    MyOutlineItem &item = *outline.controller->nodeForIndex(outline.index("Aaaaaaaa")).representedObject();
    const auto label = [this] {
        const QImage all = outline.view.viewport()->grab().toImage();
        return all.copy(outline.view.visualRect(outline.index("Aaaaaaaa", TreeController::PageColumn)));
    };
    EXPECT_EQ(redIn(label()), 0);
    outline.edits.setPageLabel(item, "xii");
    EXPECT_GT(redIn(label()), 5);
    EXPECT_EQ(redIn(pictureOf("Aaaaaaaa")), 0) << "the title is as it was";
    outline.edits.setPageLabel(item, "xi");
    EXPECT_EQ(redIn(label()), 0);
}

}  // namespace
}  // namespace leafwright
