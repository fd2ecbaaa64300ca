#include "document/commands/HeadingsWindowFixture.h"
#include "outlineview/LegibleColor.h"
#include "widgets/DimmedSelection.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

const QColor highlight(0x30, 0x8c, 0xc6);

/// A palette that does not know whether a view has the keyboard.
QPalette paletteOf(const QColor &base, const QColor &text) {
    QPalette palette;
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::Highlight, highlight);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

QPalette lightPalette() {
    return paletteOf(Qt::white, Qt::black);
}

QPalette darkPalette() {
    return paletteOf(QColor(0x20, 0x23, 0x26), Qt::white);
}

/// What becomes of a palette in a view.
QPalette dimmed(const QPalette &palette, bool hasKeyboard = false) {
    QStyleOptionViewItem option;
    option.palette = palette;
    option.state.setFlag(QStyle::State_Active, hasKeyboard);
    dimSelection(option);
    return option.palette;
}

QColor inactive(const QPalette &palette, QPalette::ColorRole role) {
    return palette.color(QPalette::Inactive, role);
}

TEST(DimmedSelection, StandsOutLessAndCanBeReadInLightAndDark) {
    for (const QPalette &palette : {lightPalette(), darkPalette()}) {
        const QPalette result = dimmed(palette);
        const QColor base = palette.color(QPalette::Base);
        const QColor ground = inactive(result, QPalette::Highlight);
        EXPECT_LT(contrast(ground, base), contrast(highlight, base));
        EXPECT_GT(contrast(ground, base), 1.2) << "seen all the same";
        EXPECT_GE(contrast(inactive(result, QPalette::HighlightedText), ground), 4.5);
        EXPECT_EQ(result.color(QPalette::Active, QPalette::Highlight), highlight);
        EXPECT_EQ(inactive(result, QPalette::Base), base);
    }
}

TEST(DimmedSelection, IsNoneWhereTheKeyboardIs) {
    EXPECT_EQ(dimmed(lightPalette(), true), lightPalette());
}

TEST(DimmedSelection, IsLeftToADesktopThatTellsThemApart) {
    QPalette palette = lightPalette();
    palette.setColor(QPalette::Inactive, QPalette::Highlight, Qt::lightGray);
    EXPECT_EQ(dimmed(palette), palette);
}

class DimmedSelectionOfAWindow : public test::HeadingsWindowFixture {
protected:
    void SetUp() override {
        HeadingsWindowFixture::SetUp();
        setOutline("One");
        document.finishHeadingMap();  // or it comes amid a test, and selects nothing
        document.window()->show();
        document.window()->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(document.window()));
    }
    /// The colour at the right edge of a row, where no text is.
    static QColor groundOf(QAbstractItemView &view, const QRect &row) {
        return view.viewport()->grab().toImage().pixelColor(row.right() - 2, row.center().y());
    }
    /// Whether a row has the colour of selected ones, dimmed or not. Styles shade what they fill.
    static void expectGround(QAbstractItemView &view, const QRect &row, const QPalette &palette) {
        const auto expect = [&](const QColor &wanted) {
            const QColor seen = groundOf(view, row);
            EXPECT_LT(std::abs(seen.red() - wanted.red()) + std::abs(seen.green() - wanted.green()) +
                          std::abs(seen.blue() - wanted.blue()),
                      20)
                << view.objectName().toStdString() << ": " << seen.name().toStdString() << " for "
                << wanted.name().toStdString();
        };
        view.setFocus();
        expect(palette.color(QPalette::Active, QPalette::Highlight));
        view.window()->findChild<LabelPDFView *>()->setFocus();
        expect(inactive(dimmed(palette), QPalette::Highlight));
    }
    QRect rowOf(const QAbstractItemView &view) { return view.visualRect(view.model()->index(0, 0)); }
};

TEST_F(DimmedSelectionOfAWindow, IsThatOfTheViewsWithoutTheKeyboard) {
    for (const QPalette &palette : {lightPalette(), darkPalette()}) {
        document.window()->setPalette(palette);
        select({{0}});
        OKNSOutlineView &outline = *document.outlineview();
        expectGround(outline, rowOf(outline), palette);
        expectGround(*document.pdfthumbs(), rowOf(*document.pdfthumbs()), palette);
        // Not selectRow(), which goes by the modifier keys that another test has held down.
        table().selectionModel()->select(table().model()->index(0, 0),
                                         QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        expectGround(table(), rowOf(table()), palette);
    }
}

TEST_F(DimmedSelectionOfAWindow, LeavesTheMarkOfTheEntryThatIsReadAsItIs) {
    OKNSOutlineView &outline = *document.outlineview();
    document.window()->setPalette(lightPalette());
    outline.setMarkedItem(node({0}));
    document.pdfview()->setFocus();
    const auto mark = [&] {
        return outline.viewport()->grab().toImage().pixelColor(1, rowOf(outline).center().y());
    };
    EXPECT_EQ(mark(), highlight);
    select({{0}});
    EXPECT_GE(contrast(mark(), inactive(dimmed(lightPalette()), QPalette::Highlight)), 3)
        << "seen on a dimmed row";
}

}  // namespace
}  // namespace leafwright
