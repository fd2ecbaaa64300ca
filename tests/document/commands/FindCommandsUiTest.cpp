#include "document/PageFinder.h"
#include "document/commands/FindCommands.h"
#include "document/window/FindBar.h"
#include "support/OpenPdf.h"
#include "support/WindowFixture.h"

#include <QAccessible>
#include <QLineEdit>
#include <QStatusBar>
#include <QToolButton>

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::PdfBuilder;

/// Nine pages that say their number; those with an odd one say "odd" twice besides.
class Finding : public test::WindowFixture {
protected:
    void SetUp() override {
        PdfBuilder pdf;
        for (int i = 1; i <= 9; ++i) {
            const std::string parity = i % 2 == 0 ? "even" : "odd and odd";
            pdf.addPage(PdfBuilder::showText("F1", 10, 72, 700, "Page " + std::to_string(i)) +
                        PdfBuilder::showText("F1", 10, 72, 400, parity));
        }
        open(pdf);
        document.window()->activateWindow();
    }

    FindBar &bar() { return *document.myWindow()->findBar(); }
    QLineEdit &field() { return *bar().findChild<QLineEdit *>("findField"); }
    void perform(const char *selector) { ASSERT_TRUE(document.actions().perform(selector)) << selector; }
    /// Opens the bar and types a text.
    void find(const QString &text) {
        perform("findOnPages:");
        field().setText(text);
        document.findCommands().finish();
    }
    QString selected() const {
        const auto &selection = document.pdfview()->currentSelection();
        return selection ? selection->string() : QString();
    }
    int currentPage() const { return document.pdfview()->currentPage()->index(); }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(&field(), key, modifiers);
        // Qt remembers what is held down, for the next test too.
        if (modifiers) QTest::keyRelease(&field(), Qt::Key_Shift);
    }
};

TEST_F(Finding, TheFirstPlaceIsShownAndAllAreCounted) {
    find("ODD");
    EXPECT_EQ(selected(), "odd");
    EXPECT_EQ(currentPage(), 0);
    EXPECT_EQ(bar().result(), "1 of 10");
}

TEST_F(Finding, TheFirstPlaceIsLookedForFromThePageThatIsShown) {
    document.pdfview()->goToPage(document.pdfDoc()->page(3));
    find("odd");
    EXPECT_EQ(currentPage(), 4);
    EXPECT_EQ(bar().result(), "5 of 10");
}

TEST_F(Finding, WhereNothingComesAnyMoreItIsTheFirstOfAll) {
    document.pdfview()->goToPage(document.pdfDoc()->page(5));
    find("page 2");
    EXPECT_EQ(currentPage(), 1);
    EXPECT_EQ(bar().result(), "1 of 1, from the beginning again");
}

TEST_F(Finding, StepsGoFromPlaceToPlaceAndAround) {
    find("odd");
    perform("findNext:");
    EXPECT_EQ(bar().result(), "2 of 10");
    EXPECT_EQ(currentPage(), 0);
    perform("findNext:");
    EXPECT_EQ(currentPage(), 2);
    perform("findPrevious:");
    perform("findPrevious:");
    EXPECT_EQ(bar().result(), "1 of 10");
    perform("findPrevious:");
    EXPECT_EQ(bar().result(), "10 of 10, from the end again");
    EXPECT_EQ(currentPage(), 8);
    perform("findNext:");
    EXPECT_EQ(bar().result(), "1 of 10, from the beginning again");
    EXPECT_EQ(currentPage(), 0);
}

TEST_F(Finding, ReturnStepsWithinTheBar) {
    find("odd");
    key(Qt::Key_Return);
    EXPECT_EQ(bar().result(), "2 of 10");
    key(Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(bar().result(), "1 of 10");
    bar().findChild<QToolButton *>("findNextButton")->click();
    EXPECT_EQ(bar().result(), "2 of 10");
    bar().findChild<QToolButton *>("findPreviousButton")->click();
    EXPECT_EQ(bar().result(), "1 of 10");
}

TEST_F(Finding, WhatIsNowhereIsToldAndStepsBeep) {
    find("nowhere");
    EXPECT_EQ(bar().result(), "Not found");
    EXPECT_EQ(platform.beeps, 0);
    perform("findNext:");
    EXPECT_EQ(platform.beeps, 1);
    EXPECT_EQ(currentPage(), 0);
}

TEST_F(Finding, AnotherTextIsSearchedAtOnce) {
    find("odd");
    field().setText("even");
    document.findCommands().finish();
    EXPECT_EQ(bar().result(), "1 of 4");
    EXPECT_EQ(selected(), "even");
    field().clear();
    document.findCommands().finish();
    EXPECT_EQ(bar().result(), "");
}

TEST_F(Finding, OnlyTheLastOfManyTextsCounts) {
    perform("findOnPages:");
    for (const char *text : {"o", "od", "odd", "eve", "even"})
        field().setText(text);
    document.findCommands().finish();
    QCoreApplication::processEvents();
    EXPECT_EQ(bar().result(), "1 of 4");
    EXPECT_EQ(document.findCommands().finder()->hits().count(), 4U);
}

TEST_F(Finding, ComesByItselfWithoutAnybodyWaiting) {
    perform("findOnPages:");
    field().setText("odd");
    EXPECT_TRUE(QTest::qWaitFor([&] { return bar().result() == "1 of 10"; }, 60'000));
}

TEST_F(Finding, EscapeClosesTheBarAndGivesTheKeyboardBack) {
    document.pdfview()->setFocus();
    find("odd");
    EXPECT_EQ(document.window()->focusWidget(), &field());
    key(Qt::Key_Escape);
    EXPECT_FALSE(bar().isOpen());
    EXPECT_EQ(document.window()->focusWidget(), document.pdfview());
    EXPECT_EQ(selected(), "odd") << "for what comes next";
}

TEST_F(Finding, StepsNeedNoBar) {
    find("odd");
    key(Qt::Key_Escape);
    perform("findNext:");
    EXPECT_FALSE(bar().isOpen());
    EXPECT_EQ(document.myWindow()->statusBar()->currentMessage(), "2 of 10");
}

TEST_F(Finding, AfterTheBarWasClosedNothingComesUnlessItIsAskedFor) {
    perform("findOnPages:");
    field().setText("odd");
    key(Qt::Key_Escape);
    document.findCommands().finish();
    QCoreApplication::processEvents();
    EXPECT_EQ(selected(), "");
    perform("findNext:");
    document.findCommands().finish();
    EXPECT_EQ(selected(), "odd");
}

TEST_F(Finding, AStepWithoutATextAsksForOne) {
    perform("findNext:");
    EXPECT_TRUE(bar().isOpen());
    EXPECT_EQ(document.window()->focusWidget(), &field());
}

TEST_F(Finding, TheTextOfLastTimeIsThereToBeTypedOver) {
    find("odd");
    key(Qt::Key_Escape);
    document.pdfview()->clearSelection();
    perform("findOnPages:");
    document.findCommands().finish();
    EXPECT_EQ(field().selectedText(), "odd");
    EXPECT_EQ(bar().result(), "1 of 10");
}

TEST_F(Finding, SelectedWordsAreWhatIsLookedFor) {
    document.pdfview()->setCurrentSelection(document.pdfDoc()->page(1)->selectionForRange({7, 4}));
    perform("findOnPages:");
    document.findCommands().finish();
    EXPECT_EQ(field().text(), "even");
    document.pdfview()->setCurrentSelection(document.pdfDoc()->page(1)->selectionForRange({0, 11}));
    perform("findOnPages:");
    EXPECT_EQ(field().text(), "even") << "lines are not";
}

TEST_F(Finding, ThePlaceStaysWhenTheBarIsAskedForAgain) {
    find("odd");
    perform("findNext:");
    perform("findOnPages:");
    document.findCommands().finish();
    EXPECT_EQ(bar().result(), "2 of 10");
    key(Qt::Key_Escape);
    perform("findOnPages:");
    document.findCommands().finish();
    EXPECT_EQ(bar().result(), "2 of 10");
    EXPECT_EQ(field().selectedText(), "odd");
    perform("findNext:");
    EXPECT_EQ(bar().result(), "3 of 10");
}

TEST_F(Finding, WhoTypesOnGoesBackInOneStep) {
    find("p");
    EXPECT_EQ(currentPage(), 0);
    for (const char *text : {"page 5", "page 8", "page 9"}) {
        field().setText(text);
        document.findCommands().finish();
    }
    EXPECT_EQ(currentPage(), 8);
    perform("goBack:");
    EXPECT_EQ(currentPage(), 0);
    EXPECT_FALSE(document.pdfview()->canGoBack());
}

TEST_F(Finding, StepsCanBeGoneBack) {
    find("even");
    EXPECT_EQ(currentPage(), 1);
    perform("findNext:");
    EXPECT_EQ(currentPage(), 3);
    perform("goBack:");
    EXPECT_EQ(currentPage(), 1);
    perform("goBack:");
    EXPECT_EQ(currentPage(), 0);
}

TEST_F(Finding, WhatComesAmidAQuestionIsShownBehindIt) {
    perform("findOnPages:");
    field().setText("odd");
    {
        const Document::Busy busy(document);
        document.findCommands().finish();
        EXPECT_EQ(selected(), "");
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(selected(), "odd");
    EXPECT_EQ(bar().result(), "1 of 10");
}

TEST_F(Finding, TheKeysOfTheFilterLeadToItFromTheBarAndBack) {
    document.window()->show();
    find("odd");
    ASSERT_TRUE(QTest::qWaitForWindowActive(document.window()));
    key(Qt::Key_K, Qt::ControlModifier);
    EXPECT_EQ(document.window()->focusWidget(), document.window()->findChild<QLineEdit *>("filterField"));
    EXPECT_EQ(field().text(), "odd");
    QTest::keyClick(document.window()->focusWidget(), Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(document.window()->focusWidget(), &field());
    key(Qt::Key_F3);
    EXPECT_EQ(bar().result(), "2 of 10");
}

TEST_F(Finding, AllPlacesAreMarkedWhileTheBarIsOpen) {
    document.window()->resize(1'200, 900);
    document.pdfview()->setScaleFactor(1);
    document.pdfview()->goToPage(document.pdfDoc()->page(0));
    find("odd and");
    document.pdfview()->clearSelection();
    const auto colour = [&] {
        // The blank between the words.
        const auto text = document.pdfDoc()->page(0)->characterBoxes();
        const Rect blank = text.at(10);
        const QPointF point = document.pdfview()->convertPointFromPage(
            {blank.x + blank.width / 2, blank.y + blank.height / 2}, *document.pdfDoc()->page(0));
        return document.pdfview()->viewport()->grab().toImage().pixelColor(point.toPoint());
    };
    ASSERT_EQ(document.pdfDoc()->page(0)->text()->attributedString.string.mid(7, 7), "odd and");
    EXPECT_TRUE(QTest::qWaitFor([&] { return colour() != QColor(Qt::white); }, 60'000));
    key(Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([&] { return colour() == QColor(Qt::white); }, 60'000));
}

TEST_F(Finding, WhatIsToldCanBeHeard) {
    find("odd");
    QAccessibleInterface *heard = QAccessible::queryAccessibleInterface(&field());
    EXPECT_EQ(heard->text(QAccessible::Name), "Text to be found on the pages");
    EXPECT_EQ(heard->text(QAccessible::Description), "1 of 10");
    for (const QToolButton *button : bar().findChildren<QToolButton *>())
        if (!button->objectName().isEmpty() && !button->objectName().startsWith("_q_")) {
            EXPECT_FALSE(button->accessibleName().isEmpty()) << button->objectName().toStdString();
        }
}

TEST_F(Finding, NewPagesAreSearchedAnew) {
    find("odd");
    PdfBuilder pdf;
    pdf.addPage(PdfBuilder::showText("F1", 10, 72, 700, "one odd page"));
    pdf.save(dir.path("other.pdf"));
    ASSERT_TRUE(QFile::remove(document.pdfURL()));
    ASSERT_TRUE(QFile::rename(dir.path("other.pdf"), document.pdfURL()));
    ASSERT_TRUE(document.reload(MyDocument::Reload::TakeOutline));
    document.findCommands().finish();
    EXPECT_EQ(bar().result(), "1 of 1");
}

TEST_F(Finding, ADocumentMayGoAmidASearch) {
    auto other = std::make_unique<MyDocument>(platform);
    ASSERT_TRUE(other->readFromURL(document.pdfURL()));
    other->makeWindowControllers();
    other->actions().perform("findOnPages:");
    other->myWindow()->findBar()->findChild<QLineEdit *>("findField")->setText("odd");
    other.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(platform.beeps, 0);
}

}  // namespace
}  // namespace leafwright
