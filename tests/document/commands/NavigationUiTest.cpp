#include "document/commands/NavigationCommands.h"
#include "support/WindowFixture.h"
#include "widgets/Sheet.h"

#include <QLabel>
#include <QLineEdit>

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::PdfBuilder;

class Navigation : public test::WindowFixture {
protected:
    void SetUp() override {
        PdfBuilder pdf;
        pdf.addNumberedPages(9);
        addOutline(pdf, {{"(Three)", "[" + pdf.pageReference(2) + " /XYZ 72 400 null]"},
                         {"(Five)", "[" + pdf.pageReference(4) + " /Fit]"}});
        open(pdf);
    }

    int currentPage() const { return document.pdfview()->currentPage()->index(); }
    /// The page's point at the top of the view.
    double topOfView(int page) const {
        return document.pdfview()->convertPointToPage({0, 0}, *document.pdfDoc()->page(page)).y();
    }

    void doubleClick(const IndexPath &path, Qt::KeyboardModifiers modifiers = {}) {
        OKNSOutlineView &view = *document.outlineview();
        const QRect cell = view.visualRect(document.treecontroller().indexForNode(*node(path), 0));
        QTest::mouseClick(view.viewport(), Qt::LeftButton, modifiers, cell.center());
        QTest::mouseDClick(view.viewport(), Qt::LeftButton, modifiers, cell.center());
    }
    bool isEditing() const { return document.outlineview()->findChild<QLineEdit *>() != nullptr; }
};

TEST_F(Navigation, ADoubleClickShowsWhereTheItemLeads) {
    doubleClick({0});
    EXPECT_EQ(currentPage(), 2);
    EXPECT_NEAR(topOfView(2), 400, 2);
    EXPECT_FALSE(isEditing());
}

TEST_F(Navigation, ADoubleClickWithTheCommandKeyEditsTheTitle) {
    doubleClick({0}, Qt::ControlModifier);
    EXPECT_TRUE(isEditing());
    EXPECT_EQ(currentPage(), 0);
    EXPECT_TRUE(document.isDocumentEdited()) << "counted before anything is typed";
}

TEST_F(Navigation, WhereEditingIsLockedADoubleClickThatWouldEditDoesNothing) {
    document.updateChangeCount(Document::Change::Cleared);
    document.setLockTOCediting(true);
    doubleClick({0}, Qt::ControlModifier);
    EXPECT_FALSE(isEditing());
    EXPECT_EQ(currentPage(), 0);
    EXPECT_FALSE(document.isDocumentEdited());
    doubleClick({0});
    EXPECT_EQ(currentPage(), 2) << "the other kind still jumps";
}

TEST_F(Navigation, AnItemWithoutAParticularSpotIsShownByItsPage) {
    select({{1}});
    document.actions().perform("moveToPageOfOutlineItem:");
    EXPECT_EQ(currentPage(), 4);
    EXPECT_GE(topOfView(4), 792 - 2);
}

TEST_F(Navigation, TheBottomLeftCornerIsNoParticularSpot) {
    document.root().children()[0]->setPointOnPage({0, 0});
    document.navigation().moveToMOI(*document.root().children()[0]);
    EXPECT_EQ(currentPage(), 2);
    EXPECT_GE(topOfView(2), 792 - 2);
}

TEST_F(Navigation, AnUnknownLabelShowsTheFirstPage) {
    document.pdfview()->goToPage(document.pdfDoc()->page(6));
    MyOutlineItem item;
    item.setPageLabel("nowhere");
    document.navigation().moveToMOI(item);
    EXPECT_EQ(currentPage(), 0);
}

/// A document whose first four pages have roman labels, with the sheet that asks for a page.
class GoingToAPage : public Navigation {
protected:
    void SetUp() override {
        PdfBuilder pdf;
        pdf.addNumberedPages(9);
        test::setRomanThenDecimalLabels(pdf);
        open(pdf);
        document.actions().perform("goToPageLabel:");
    }
    QLineEdit &field() { return *qobject_cast<QLineEdit *>(document.openSheet()->field("goToPageField")); }
    QString found() { return qobject_cast<QLabel *>(document.openSheet()->field("goToPageFound"))->text(); }
};

TEST_F(GoingToAPage, TheLabelCountsAndThenTheNumber) {
    field().setText("iii");
    EXPECT_EQ(found(), "Page iii (3 of 9)");
    field().setText(" 2 ");
    EXPECT_EQ(found(), "Page 2 (6 of 9)");
    field().setText("9");
    EXPECT_EQ(found(), "Page 5 (9 of 9)");
    EXPECT_TRUE(document.openSheet()->pressButton(1));
    EXPECT_EQ(currentPage(), 8);
    EXPECT_TRUE(document.actions().perform("goBack:"));
    EXPECT_EQ(currentPage(), 0);
    EXPECT_TRUE(document.actions().perform("goForward:"));
    EXPECT_EQ(currentPage(), 8);
    EXPECT_FALSE(document.actions().perform("goForward:"));
}

TEST_F(GoingToAPage, ThatThereIsNoSuchPageIsSeenBefore) {
    EXPECT_FALSE(document.openSheet()->pressButton(1)) << "nothing was typed";
    for (const char *text : {"xx", "10", "0", "-1", "2.5"}) {
        field().setText(text);
        EXPECT_EQ(found(), "There is no such page.") << text;
        EXPECT_FALSE(document.openSheet()->pressButton(1));
    }
    EXPECT_TRUE(document.openSheet()->pressButton(0));
    EXPECT_EQ(currentPage(), 0);
}

/// A document whose last pages have no labels.
class NavigationWithoutLabels : public Navigation {
protected:
    void SetUp() override {
        PdfBuilder pdf;
        pdf.addNumberedPages(5);
        pdf.setCatalogEntry("/PageLabels", "<< /Nums [0 << /S /D >> 3 << >>] >>");
        open(pdf);
    }
};

TEST_F(NavigationWithoutLabels, AnEmptyLabelIsOneAndAnAbsentOneIsNone) {
    EXPECT_FALSE(document.pdfDoc()->page(4)->label().isNull());
    EXPECT_EQ(document.getRealPageArrayIndex(QStringLiteral("")), 4);
    EXPECT_EQ(document.getRealPageArrayIndex({}), std::nullopt);
    document.pdfview()->goToPage(document.pdfDoc()->page(1));
    document.actions().perform("moveToPageOfOutlineItem:");
    EXPECT_EQ(currentPage(), 0) << "nothing is selected";
}

TEST_F(Navigation, APrintedPageNumberGoesThroughTheOffset) {
    document.setPrintedPageOffset(4);
    document.navigation().moveToPageLabel("P3");
    EXPECT_EQ(currentPage(), 6);
}

TEST_F(Navigation, FromACornerThatIsNoneThePageLabelsGoAway) {
    document.pdfview()->setPageLabelLocation("Q9");
    document.actions().perform("nextPageLabelLocation:");
    EXPECT_EQ(document.pdfview()->pageLabelLocation(), "None");
}

}  // namespace
}  // namespace leafwright
