#include "document/commands/FindCommands.h"
#include "document/window/FindBar.h"
#include "support/OpenPdf.h"
#include "support/WindowFixture.h"

#include <QLineEdit>

#include <gmock/gmock.h>

namespace leafwright {
namespace {

/// A document whose file has an entry, and no page that it could lead to.
class WithoutPages : public test::WindowFixture {
protected:
    void SetUp() override {
        test::PdfBuilder pdf;
        addOutline(pdf, {{"(One)", ""}});
        open(pdf);
        document.myWindow()->show();
        QCoreApplication::processEvents();
    }
};

TEST_F(WithoutPages, EveryCommandThatAsksNothingMayBeGiven) {
    for (const char *selector : {"nextPage:",
                                 "prevPage:",
                                 "goBack:",
                                 "goForward:",
                                 "zoomIn:",
                                 "zoomOut:",
                                 "zoomToFit:",
                                 "zoomToPage:",
                                 "zoomToActualSize:",
                                 "nextPageLabelLocation:",
                                 "copy:",
                                 "useSelectionforH1:",
                                 "addSelectedTextAsTOCSibling:",
                                 "selectTOCAll:",
                                 "moveToPageOfOutlineItem:",
                                 "resetH1H2H3FontsMap:",
                                 "addChildOutlineItem:",
                                 "dumpFontsOnCurrentPage:",
                                 "debugPrintFontsInDocument:",
                                 "findOnPages:",
                                 "findNext:",
                                 "filterOutline:",
                                 "revealCurrentEntry:"}) {
        SCOPED_TRACE(selector);
        select({{0}});
        if (document.actions().validateUserInterfaceItem(selector)) document.actions().perform(selector);
        QCoreApplication::processEvents();
    }
    document.myWindow()->grab();
    EXPECT_GE(document.root().children().size(), 1U);
    EXPECT_THAT(platform.alerts, testing::IsEmpty());
}

TEST_F(WithoutPages, NothingIsFoundOnThem) {
    ASSERT_TRUE(document.actions().perform("findOnPages:"));
    FindBar &bar = *document.myWindow()->findBar();
    bar.findChild<QLineEdit *>("findField")->setText("one");
    document.findCommands().finish();
    EXPECT_EQ(bar.result(), "Not found");
    ASSERT_TRUE(document.actions().perform("findNext:"));
    EXPECT_EQ(platform.beeps, 1);
}

TEST_F(WithoutPages, AnEditedOutlineIsSavedWithoutDestinations) {
    document.root().children()[0]->setPageTitle("New");
    document.updateChangeCount(Document::Change::Done);
    ASSERT_TRUE(document.actions().perform("saveDocument:"));
    EXPECT_FALSE(document.isDocumentEdited());

    const auto saved = test::openPdf(dir.path("a.pdf"));
    ASSERT_EQ(saved->outlineRoot().numberOfChildren(), 1);
    EXPECT_EQ(saved->outlineRoot().childAtIndex(0).label(), "New");
    EXPECT_EQ(saved->outlineRoot().childAtIndex(0).destination(), std::nullopt);
}

}  // namespace
}  // namespace leafwright
