#include "document/commands/OtherProgramsFixture.h"
#include "support/ObjectDiff.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::contentOf;
using test::PdfBuilder;
using testing::AllOf;
using testing::HasSubstr;

using Reloading = test::OtherProgramsFixture;

TEST_F(Reloading, LoadingTheNewPagesKeepsTheOutline) {
    for (const bool inPlace : {true, false}) {
        inPlace ? overwrite() : replace();
        waitForBar();
        bar()->findChild<QPushButton *>()->click();
        EXPECT_EQ(bar(), nullptr);
        EXPECT_EQ(document.pdfDoc()->pageCount(), 5);
        EXPECT_EQ(document.pdfview()->document(), document.pdfDoc());
        EXPECT_EQ(test::treeText(document.root()), edited());
        EXPECT_TRUE(document.isDocumentEdited());
        perform("saveDocument:");
        EXPECT_TRUE(contentOf(path()).startsWith(other));
        EXPECT_EQ(outlineOf(path()), edited());
        EXPECT_TRUE(platform.alerts.isEmpty());
        other = savedAs("other.pdf", pages(5, "C"));
    }
}

TEST_F(Reloading, ARenamedEntryKeepsWhatItHasInTheNewFile) {
    PdfBuilder pdf = pages(5, "B");
    test::addOutline(pdf, {{"(A)", "[" + pdf.pageReference(1) + " /XYZ 72 700 2.5] /Private (own)"}});
    other = savedAs("other.pdf", pdf);
    replace();
    document.otherPrograms().loadNewPages();
    const auto number = document.root().children()[0]->entry().number;
    ASSERT_EQ(number, test::openPdf(path())->outlineRoot().childAtIndex(0).entry().number);
    perform("saveDocument:");
    EXPECT_EQ(outlineOf(path()), edited());
    EXPECT_THAT(test::objectsOf(path()).at(number.value()),
                AllOf(HasSubstr("/Title (Edited)"), HasSubstr("/Private (own)"), HasSubstr("72 700 2.5")));
}

TEST_F(Reloading, ThePageThatIsShownStaysByItsLabel) {
    document.pdfview()->goToPage(document.pdfDoc()->page(1));
    replace();
    document.otherPrograms().loadNewPages();
    EXPECT_EQ(document.pdfview()->currentPage(), document.pdfDoc()->page(1));
}

TEST_F(Reloading, NothingBeforeNewPagesCanBeTakenBack) {
    document.edits().remove(document.root(), 0);
    replace();
    document.otherPrograms().loadNewPages();
    EXPECT_FALSE(document.edits().canUndo()) << "what is away stands for an entry of the file before";
    EXPECT_EQ(test::treeText(document.root()), "");
}

TEST_F(Reloading, LabelsThatNoNewPageHasAreTold) {
    document.edits().insert(document.root(), 1, test::makeItem({"Third", "3", {1, 1}}));
    other = savedAs("other.pdf", pages(2, "B"));
    replace();
    document.otherPrograms().loadNewPages();
    const NoticeBar *lost = document.myWindow()->notices()->bar("lostTargets");
    ASSERT_NE(lost, nullptr);
    EXPECT_THAT(lost->text().toStdString(),
                HasSubstr("1 entries have page labels that no page has any more (3)"));
}

TEST_F(Reloading, ReloadingAsksWhatBecomesOfAnEditedOutline) {
    replace();
    enum Answer { Keep, Take, Cancel };
    platform.answers = {Cancel, Keep, Take};
    perform("reloadFromDisk:");
    ASSERT_EQ(platform.alerts.size(), 1);
    EXPECT_EQ(platform.alerts[0].buttons, (QStringList{"Keep Outline", "Take Outline of File", "Cancel"}));
    EXPECT_EQ(document.pdfDoc()->pageCount(), 3);
    perform("reloadFromDisk:");
    EXPECT_EQ(document.pdfDoc()->pageCount(), 5);
    EXPECT_EQ(test::treeText(document.root()), edited());
    perform("reloadFromDisk:");
    EXPECT_EQ(test::treeText(document.root()), "+ [2] B (72,700)\n");
    EXPECT_FALSE(document.isDocumentEdited());
    perform("reloadFromDisk:");
    EXPECT_EQ(platform.alerts.size(), 3) << "nothing could be lost";
    EXPECT_EQ(test::treeText(document.root()), "+ [2] B (72,700)\n");
}

TEST_F(Reloading, ReloadingAsksForAnOutlineThatOnlyTheFileBeforeHas) {
    perform("saveDocument:");
    replace();
    platform.answers = {0};
    perform("reloadFromDisk:");
    EXPECT_EQ(test::treeText(document.root()), edited());
    EXPECT_TRUE(document.isDocumentEdited());
}

TEST_F(Reloading, WhatCannotBeLoadedIsToldAndAllStays) {
    test::writeFile(dir.path("other.pdf"), "no PDF");
    replace();
    document.otherPrograms().loadNewPages();
    ASSERT_EQ(platform.alerts.size(), 1);
    EXPECT_EQ(platform.alerts[0].message, "Unable to load “a.pdf”");
    ASSERT_TRUE(QFile::remove(path()));
    document.otherPrograms().loadNewPages();
    EXPECT_EQ(platform.alerts.size(), 2);
    EXPECT_EQ(document.pdfDoc()->pageCount(), 3);
    EXPECT_EQ(test::treeText(document.root()), edited());
}

}  // namespace
}  // namespace leafwright
