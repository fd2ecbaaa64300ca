#include "support/DocumentFixture.h"

namespace leafwright {
namespace {

using test::PdfBuilder;

/// A document of twelve pages labelled from "45" on, so that the page in the middle is "51".
class PrintedPageNumbers : public test::DocumentFixture {
protected:
    void loadWithTexts(const std::string &textA, const std::string &textB) {
        PdfBuilder pdf;
        for (int i = 0; i < 12; ++i) {
            const std::string &text = i == 6 ? textA : i == 8 ? textB : "Nothing of note";
            pdf.addPage(PdfBuilder::showText("F1", 10, 72, 700, text));
        }
        pdf.setCatalogEntry("/PageLabels", "<< /Nums [0 << /S /D /St 45 >>] >>");
        load(pdf);
    }

    /// Counts how often the document asks for the offset.
    void watchQuestions() {
        document.setPrintedPageNumbersHandler([this] { ++questions; });
    }

    int questions = 0;
};

TEST_F(PrintedPageNumbers, TheEstimateIsTheOffset) {
    loadWithTexts("Some text of a page 43", "Some text of a page 45");
    document.estimatePrintedPageOffset();
    EXPECT_EQ(document.printedPageOffset(), 8U);
    EXPECT_EQ(document.getRealPageArrayIndex("p43"), 6);
    EXPECT_EQ(document.getRealPageArrayIndex("51"), 6);
}

TEST_F(PrintedPageNumbers, ANegativeOffsetIsSignExtended) {
    loadWithTexts("Some text of a page 143", "Some text of a page 145");
    document.estimatePrintedPageOffset();
    EXPECT_EQ(document.printedPageOffset(), static_cast<quint64>(-92));
    EXPECT_EQ(document.getRealPageArrayIndex("p143"), 6);
}

TEST_F(PrintedPageNumbers, WithoutAnEstimateTheOffsetStays) {
    loadWithTexts("Some text of a page", "Some text of a page");
    document.estimatePrintedPageOffset();
    EXPECT_EQ(document.printedPageOffset(), 0U);
}

TEST_F(PrintedPageNumbers, AnEstimateThatComesAfterTheUsersAnswerIsNotTaken) {
    for (const quint64 answer : {3, 0}) {  // 0: printed numbers are the labels; or no numbers were given
        loadWithTexts("Some text of a page 43", "Some text of a page 45");
        document.setPrintedPageOffset(answer);
        document.estimatePrintedPageOffset();
        EXPECT_EQ(document.printedPageOffset(), answer);
    }
}

TEST_F(PrintedPageNumbers, AnAnswerIsForOneFile) {
    loadWithTexts("Some text of a page 43", "Some text of a page 45");
    document.setPrintedPageOffset(3);
    loadWithTexts("Some text of a page 43", "Some text of a page 45");
    EXPECT_EQ(document.printedPageOffset(), 0U);
    document.estimatePrintedPageOffset();
    EXPECT_EQ(document.printedPageOffset(), 8U);
}

TEST_F(PrintedPageNumbers, LabelsAreTakenAsTheyAre) {
    PdfBuilder pdf;
    pdf.addNumberedPages(5);
    test::setRomanThenDecimalLabels(pdf);
    load(pdf);
    EXPECT_EQ(document.getRealPageArrayIndex("iv"), 3);
    EXPECT_EQ(document.getRealPageArrayIndex("IV"), std::nullopt);
    EXPECT_EQ(document.getRealPageArrayIndex("1"), 4);
    EXPECT_EQ(document.getRealPageArrayIndex("17"), std::nullopt);
}

TEST_F(PrintedPageNumbers, NumbersWithAPInEitherCaseAreMovedByTheOffset) {
    loadWithTexts("", "");
    document.setPrintedPageOffset(4);
    EXPECT_EQ(document.getRealPageArrayIndex("P43"), 2);
    EXPECT_EQ(document.getRealPageArrayIndex("p43"), 2);
    EXPECT_EQ(document.getRealPageArrayIndex("p1"), std::nullopt);
}

TEST_F(PrintedPageNumbers, APageLabelledWithAPIsReadAsANumberAllTheSame) {
    PdfBuilder pdf;
    pdf.addNumberedPages(3);
    pdf.setCatalogEntry("/PageLabels", "<< /Nums [0 << /P (p) /S /D >> 2 << /S /D >>] >>");
    load(pdf);
    EXPECT_EQ(document.pdfMapPageLabelToIndex().value("p1"), 0);
    EXPECT_EQ(document.getRealPageArrayIndex("p1"), 2);
}

TEST_F(PrintedPageNumbers, AnUnknownOffsetIsAskedFor) {
    loadWithTexts("", "");
    watchQuestions();
    document.getRealPageArrayIndex("p46");
    document.getRealPageArrayIndex("P46");
    EXPECT_EQ(questions, 2);
}

TEST_F(PrintedPageNumbers, OrdinaryLabelsNeedNoOffset) {
    loadWithTexts("", "");
    watchQuestions();
    document.getRealPageArrayIndex("46");
    document.getRealPageArrayIndex("unknown");
    document.getRealPageArrayIndex("");
    EXPECT_EQ(questions, 0);
}

TEST_F(PrintedPageNumbers, AKnownOffsetIsNotAskedFor) {
    loadWithTexts("", "");
    watchQuestions();
    document.setPrintedPageOffset(1);
    document.getRealPageArrayIndex("p46");
    EXPECT_EQ(questions, 0);
}

TEST_F(PrintedPageNumbers, ACheckedOffsetOfZeroIsNotAskedFor) {
    loadWithTexts("", "");
    watchQuestions();
    document.setUserHasCheckedPrintedPageNumbers(true);
    EXPECT_EQ(document.getRealPageArrayIndex("p46"), 1);
    EXPECT_EQ(questions, 0);
}

TEST_F(PrintedPageNumbers, TheLabelIsResolvedWithTheOffsetThatTheQuestionLeaves) {
    loadWithTexts("", "");
    document.setPrintedPageNumbersHandler([this] { document.setPrintedPageOffset(8); });
    EXPECT_EQ(document.getRealPageArrayIndex("p43"), 6);
}

TEST_F(PrintedPageNumbers, WithoutAHandlerTheOffsetCountsAsNone) {
    loadWithTexts("", "");
    EXPECT_EQ(document.getRealPageArrayIndex("p51"), 6);
}

}  // namespace
}  // namespace leafwright
