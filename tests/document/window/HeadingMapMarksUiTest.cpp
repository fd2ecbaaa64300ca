#include "document/commands/HeadingsWindowFixture.h"
#include "document/window/FindBar.h"
#include "document/window/HeadingMapMarks.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::PdfBuilder;

class HeadingMapMarksOnPages : public test::HeadingsWindowFixture {
protected:
    void SetUp() override {
        PdfBuilder pdf;
        for (int chapter = 0; chapter < 12; ++chapter)
            pdf.addPage(chapterPage());
        open(pdf);
        document.window()->show();
        QCoreApplication::processEvents();
    }
    /// The pages with marks, once they are as expected or have been waited for in vain: "4 5".
    QString marked(const QString &expected) {
        const auto now = [this] {
            QStringList pages;
            for (const PDFSelection &selection : document.pdfview()->highlightedSelections())
                for (const PDFPage *page : selection.pages())
                    pages.append(QString::number(page->index()));
            return pages.join(' ');
        };
        (void)QTest::qWaitFor([&] { return now() == expected; }, 10'000);
        return now();
    }
    QString seen() {
        QStringList pages;
        const auto [first, last] = document.pdfview()->visiblePages();
        for (int i = first; i <= last; ++i)
            pages.append(QString::number(i));
        return pages.join(' ');
    }
    void goTo(int page) { document.pdfview()->goToPage(document.pdfDoc()->page(page)); }
};

TEST_F(HeadingMapMarksOnPages, FollowThePagesBesideTheSelection) {
    table().selectRow(0);
    const QString selected = document.pdfview()->currentSelection()->string();
    EXPECT_EQ(marked(""), "") << "what is selected needs no mark";
    goTo(6);
    EXPECT_EQ(marked(seen()), seen());
    EXPECT_TRUE(document.pdfview()->highlightedSelections()[0].string().startsWith("Chapter title"));
    EXPECT_EQ(document.pdfview()->currentSelection()->string(), selected) << "that stays as it was set";
    goTo(9);
    EXPECT_EQ(marked(seen()), seen());
}

TEST_F(HeadingMapMarksOnPages, GoWithTheRow) {
    table().selectRow(0);
    goTo(6);
    EXPECT_EQ(marked(seen()), seen());
    table().clearSelection();
    EXPECT_EQ(marked(""), "");
}

TEST_F(HeadingMapMarksOnPages, TakeThePlaceOfASelectionThatGoes) {
    table().selectRow(1);
    document.pdfview()->clearSelection();
    EXPECT_EQ(marked(seen()), seen());
    EXPECT_TRUE(document.pdfview()->highlightedSelections()[0].string().startsWith("Section title"));
    EXPECT_FALSE(document.pdfview()->currentSelection());
}

TEST_F(HeadingMapMarksOnPages, AreNotTakenForWhatIsFound) {
    table().selectRow(0);
    goTo(6);
    ASSERT_EQ(marked(seen()), seen());
    document.actions().perform("findOnPages:");
    EXPECT_EQ(marked(""), "");
    document.myWindow()->findBar()->dismiss();
    EXPECT_EQ(marked(seen()), seen());
}

TEST_F(HeadingMapMarksOnPages, AreNotSetAnewWhereNothingElseIsToBeMarked) {
    table().selectRow(0);
    goTo(6);
    ASSERT_EQ(marked(seen()), seen());
    document.pdfview()->setHighlightedSelections({});
    document.myWindow()->headingMapMarks()->update();
    EXPECT_TRUE(document.pdfview()->highlightedSelections().empty());
}

TEST_F(HeadingMapMarksOnPages, AreThereInPagesThatTakeThePlaceOfOthers) {
    table().selectRow(0);
    goTo(6);
    ASSERT_EQ(marked(seen()), seen());
    save(chapters());
    ASSERT_TRUE(document.actions().perform("reloadFromDisk:"));
    ASSERT_EQ(document.pdfDoc()->pageCount(), 2);
    document.finishLoading();
    EXPECT_EQ(marked(seen()), seen());
}

}  // namespace
}  // namespace leafwright
