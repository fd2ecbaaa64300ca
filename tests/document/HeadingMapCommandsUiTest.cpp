#include "document/AutoTOCCommands.h"
#include "document/AutoTOCProgress.h"
#include "document/HeadingMapCommands.h"
#include "document/PrintedPageCommands.h"
#include "support/TreeWindowFixture.h"

#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QTableView>

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::PdfBuilder;

const QString mapKey = "LastUsedH1H2H3MapString";

class HeadingMap : public test::TreeWindowFixture {
protected:
    void SetUp() override {
        PdfBuilder pdf;
        for (int chapter = 0; chapter < 2; ++chapter) {
            std::string content = PdfBuilder::showText("F2", 24, 72, 700, "Chapter title") +
                                  PdfBuilder::showText("F2", 16, 72, 660, "Section title");
            for (int line = 0; line < 20; ++line)
                content +=
                    PdfBuilder::showText("F1", 10, 72, 620 - 12 * line, "Body text that fills the page.");
            pdf.addPage(content);
        }
        open(pdf);
    }

    QString map() {
        QStringList rows;
        for (const LevelRecord &record : document.listH1H2H3Config())
            rows.append(record.level + " " + QString::number(record.font ? record.font->pointSize() : 0));
        return rows.join(", ");
    }
    void selectText(const QString &text) {
        const PDFPage &page = *document.pdfDoc()->page(0);
        const int at = static_cast<int>(page.text()->attributedString.string.indexOf(text));
        ASSERT_GE(at, 0);
        document.pdfview()->setCurrentSelection(page.selectionForRange({at, static_cast<int>(text.size())}));
    }
    QTableView &table() { return *document.myWindow()->tableViewH1H2H3Config(); }
    QString writeMap(const QByteArray &text) {
        test::writeFile(dir.path("map.txt"), text);
        return dir.path("map.txt");
    }
};

TEST_F(HeadingMap, SelectedTextIsMappedToALevel) {
    perform("resetH1H2H3FontsMap:");
    EXPECT_EQ(map(), "");
    selectText("Section title");
    perform("useSelectionforH2:");
    selectText("Chapter title");
    perform("useSelectionforH1:");
    EXPECT_EQ(map(), "H1 24, H2 16");
    EXPECT_EQ(table().model()->rowCount(), 2);
}

TEST_F(HeadingMap, AFontThatIsMappedKeepsItsLevel) {
    EXPECT_EQ(map(), "H1 24, H2 16");
    selectText("Section title");
    perform("useSelectionforH3:");
    EXPECT_EQ(map(), "H1 24, H2 16");
}

TEST_F(HeadingMap, SelectedRowsAreDeleted) {
    table().selectRow(0);
    perform("buttonDeleteSelectedH1H2H3RowsClicked:");
    EXPECT_EQ(map(), "H2 16");
    EXPECT_EQ(table().model()->rowCount(), 1);
}

TEST_F(HeadingMap, ASelectedRowSelectsItsRunsOnThePages) {
    table().selectRow(1);
    const auto &selection = document.pdfview()->currentSelection();
    ASSERT_TRUE(selection);
    EXPECT_TRUE(selection->string().contains("Section title"));
    EXPECT_FALSE(selection->string().contains("Chapter"));
    table().clearSelection();
    EXPECT_FALSE(document.pdfview()->currentSelection());
}

TEST_F(HeadingMap, ASavedMapIsLoadedAgain) {
    platform.filesToChoose = {dir.path("saved.txt"), dir.path("saved.txt")};
    perform("buttonClickedSaveH1H2H3Map:");
    EXPECT_TRUE(platform.userDefaults().stringForKey(mapKey).isNull()) << "saving does not remember";
    perform("resetH1H2H3FontsMap:");
    perform("buttonClickedLoadH1H2H3Map:");
    EXPECT_EQ(map(), "H1 24, H2 16");
    EXPECT_EQ(platform.userDefaults().stringForKey(mapKey).toUtf8(), test::contentOf(dir.path("saved.txt")));
    EXPECT_EQ(platform.savePanels[0].allowedFileTypes, QStringList{"txt"});
    EXPECT_EQ(platform.openPanels[0].allowedFileTypes, QStringList{"txt"});
}

TEST_F(HeadingMap, AFileWithoutAMapBeepsAndChangesNothing) {
    platform.filesToChoose = {writeMap("; note\n")};
    perform("buttonClickedLoadH1H2H3Map:");
    EXPECT_EQ(platform.beeps, 1);
    EXPECT_EQ(map(), "H1 24, H2 16");
    EXPECT_TRUE(platform.userDefaults().stringForKey(mapKey).isNull());
}

TEST_F(HeadingMap, LinesThatAreNoneAreIgnored) {
    platform.filesToChoose = {writeMap("H1/16.0/\"Helvetica\" +B\n; note\n")};
    perform("buttonClickedLoadH1H2H3Map:");
    EXPECT_EQ(map(), "H1 16");
}

TEST_F(HeadingMap, AnEmptyRememberedMapIsNoneAndClearsNothing) {
    EXPECT_FALSE(document.headingMapCommands().loadH1H2H3MapSavedInUserDefaults());
    platform.userDefaults().setValue(mapKey, QString(""));
    EXPECT_FALSE(document.headingMapCommands().loadH1H2H3MapSavedInUserDefaults());
    EXPECT_EQ(map(), "H1 24, H2 16");
}

TEST_F(HeadingMap, AutoTOCPutsTheHeadingsUnderANewItemAndSelectsIt) {
    document.autoTOCCommands().runAutoTOCwithH1H2H3Map();
    const QString expected = "AutoTOC3 (Chapter title (Section title) Chapter title (Section title))";
    EXPECT_EQ(outline(), expected);
    EXPECT_EQ(selected(), "AutoTOC3");
    EXPECT_TRUE(document.isDocumentEdited());
    document.autoTOCCommands().runAutoTOCwithH1H2H3Map();
    EXPECT_EQ(outline(), expected + " " + expected) << "what is there stays";
}

TEST_F(HeadingMap, AutoTOCAsksFirstAndThenShowsItsSteps) {
    perform("runGuessPDF:");
    ASSERT_NE(document.openSheet(), nullptr);
    document.openSheet()->pressButton(0);
    QCoreApplication::processEvents();
    EXPECT_EQ(outline(), "");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    perform("runGuessPDF:");
    document.openSheet()->pressButton(1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return outline().startsWith("AutoTOC3 (Chapter"); }, 10000));
}

TEST_F(HeadingMap, AutoTOCGuessesAnEmptyMap) {
    perform("resetH1H2H3FontsMap:");
    document.autoTOCCommands().runAutoTOCWithFeedback();
    EXPECT_EQ(map(), "H1 24, H2 16");
    EXPECT_TRUE(outline().startsWith("AutoTOC3 (Chapter"));
}

TEST_F(HeadingMap, TheDeepestLevelIsASetting) {
    platform.userDefaults().setValue("autotocMaxDepth", 1);
    document.autoTOCCommands().runAutoTOCwithH1H2H3Map();
    EXPECT_EQ(outline(), "AutoTOC1 (Chapter title Chapter title)");
}

TEST_F(HeadingMap, WithTheLastMapTheHeadingsComeToTheTopLevel) {
    platform.userDefaults().setValue(mapKey, "H1/24.0/\"Helvetica\" +B\n");
    perform("buttonClickedBotForAutoTOC:");
    EXPECT_EQ(outline(), "Chapter title Chapter title");
}

TEST_F(HeadingMap, WithoutALastMapThatBeeps) {
    perform("buttonClickedBotForAutoTOC:");
    EXPECT_EQ(platform.beeps, 1);
    EXPECT_EQ(outline(), "");
}

TEST_F(HeadingMap, TheProgressSheetGoesThroughItsSteps) {
    AutoTOCProgress progress(document.myWindow(), platform);
    const auto line = [&](int step) {
        const auto *text = progress.sheet().findChild<QLabel *>(QString("guessPDFText%1").arg(step));
        const auto *indicator =
            progress.sheet().findChild<QProgressBar *>(QString("guessPDFIndicator%1").arg(step));
        return (text->isHidden() ? "-" : "[" + text->text() + "]") + (indicator->isHidden() ? "" : "*");
    };
    const auto lines = [&] { return line(1) + " " + line(2) + " " + line(3); };
    progress.guessPDFStep1Begins();
    EXPECT_EQ(lines(), "-* [] []");
    progress.guessPDFStep2Begins();
    EXPECT_EQ(lines(), "[✔] -* []");
    progress.guessPDFStep3Begins();
    EXPECT_EQ(lines(), "[✔] [✔] -*");
    const qint64 before = platform.clock;
    progress.guessPDFStep3Ends("Failed");
    EXPECT_EQ(lines(), "[✘] [✘] [✘]");
    EXPECT_EQ(platform.clock - before, 1000);
    EXPECT_FALSE(progress.sheet().isVisible());
}

class PrintedPage : public test::TreeWindowFixture {
protected:
    void SetUp() override {
        PdfBuilder pdf;
        pdf.addNumberedPages(9);
        pdf.setCatalogEntry("/PageLabels", "<< /Nums [0 << /S /r >> 2 << /S /D >>] >>");
        open(pdf);
    }
    QString proposed() {
        perform("runPrintedPageSheet:");
        const QString text = field()->text();
        document.openSheet()->pressButton(0);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return text;
    }
    QLineEdit *field() {
        return qobject_cast<QLineEdit *>(document.openSheet()->field("printedPageTextField"));
    }
    void showPage(int index) { document.pdfview()->goToPage(document.pdfDoc()->page(index)); }
    qint32 offset() { return static_cast<qint32>(document.printedPageOffset()); }
};

TEST_F(PrintedPage, TheSheetProposesWhatTheOffsetPredictsOrTheLabel) {
    showPage(6);  // label 5
    EXPECT_EQ(proposed(), "5");
    document.setPrintedPageOffset(2);
    EXPECT_EQ(proposed(), "3");
    document.setPrintedPageOffset(8);
    EXPECT_EQ(proposed(), "5") << "not -3";
}

TEST_F(PrintedPage, AConfirmedNumberGivesTheOffset) {
    showPage(6);
    perform("runPrintedPageSheet:");
    field()->setText("2");
    document.openSheet()->pressButton(1);
    EXPECT_EQ(offset(), 3);
    EXPECT_TRUE(document.userHasCheckedPrintedPageNumbers());
}

TEST_F(PrintedPage, WhatIsNoNumberIsToldAndMakesTheOffsetUnknown) {
    showPage(6);
    for (const char *text : {"iv", "0"}) {
        document.setPrintedPageOffset(8);
        document.printedPageCommands().takePrintedPage(text);
        EXPECT_EQ(offset(), 0);
    }
    EXPECT_EQ(platform.beeps, 2);
    ASSERT_EQ(platform.alerts.size(), 2);
    EXPECT_EQ(platform.alerts[0].message, "Could not interpret printed page number");
    EXPECT_EQ(platform.alerts[0].informativeText,
              "Both the page label and printed page number must be integers.");
    EXPECT_EQ(platform.alerts[0].buttons, QStringList{"OK"});
    EXPECT_FALSE(document.userHasCheckedPrintedPageNumbers());
}

TEST_F(PrintedPage, ACancelledSheetChangesNothing) {
    showPage(6);
    document.setPrintedPageOffset(8);
    perform("runPrintedPageSheet:");
    field()->setText("1");
    document.openSheet()->pressButton(0);
    EXPECT_EQ(offset(), 8);
}

TEST_F(PrintedPage, AnUnknownOffsetIsAskedForAtTheMiddlePageOnce) {
    EXPECT_FALSE(document.getRealPageArrayIndex("p400"));
    EXPECT_EQ(document.pdfview()->currentPage()->index(), 4);
    const Sheet *sheet = document.openSheet();
    ASSERT_NE(sheet, nullptr);
    document.getRealPageArrayIndex("p401");
    EXPECT_EQ(document.openSheet(), sheet) << "one question at a time";
}

TEST_F(PrintedPage, OnceConfirmedItIsNotAskedForAgain) {
    document.setUserHasCheckedPrintedPageNumbers(true);
    document.getRealPageArrayIndex("p3");
    EXPECT_EQ(document.openSheet(), nullptr);
}

}  // namespace
}  // namespace leafwright
