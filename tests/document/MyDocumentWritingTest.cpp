#include "support/DocumentFixture.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::addItems;
using test::PdfBuilder;
using testing::ElementsAre;

/// A document of nine pages with an outline of two entries.
class MyDocumentWriting : public test::DocumentFixture {
protected:
    void SetUp() override {
        PdfBuilder pdf;
        pdf.addNumberedPages(9);
        addOutline(pdf, {{"(Old)", "[" + pdf.pageReference(0) + " /XYZ 10 20 null]"},
                         {"(Older)", "[" + pdf.pageReference(1) + " /XYZ 30 40 null]"}});
        load(pdf);
        original = outlineOf(document.pdfURL());
    }

    QString out() const { return dir.path("out.pdf"); }

    void writePreview() { ASSERT_FALSE(document.writeNewPDFOutline(out(), MyDocument::savePreviewPDF)); }
    void writeFinal() { ASSERT_FALSE(document.writeNewPDFOutline(out(), MyDocument::saveFinalPDF)); }

    QString original;
};

TEST_F(MyDocumentWriting, TheTypesHaveTheirNames) {
    EXPECT_EQ(MyDocument::savePreviewPDF, "SavePreviewPDF");
    EXPECT_EQ(MyDocument::saveFinalPDF, "SaveFinalPDF");
}

TEST_F(MyDocumentWriting, TheTreeBecomesTheOutlineOfTheFile) {
    addItems(document.root(), {{"New", "3", {50, 60}, {{"Below", "9", {70.5, 80.25}}}}});
    writeFinal();
    EXPECT_EQ(outlineOf(out()),
              "+ [1] Old (10,20)\n+ [2] Older (30,40)\n+ [3] New (50,60)\n++ [9] Below (70.5,80.25)\n");
    EXPECT_EQ(outlineOf(document.pdfURL()), original);
}

TEST_F(MyDocumentWriting, AnEmptyTreeLeavesNoEntries) {
    document.root().takeChildren();
    writeFinal();
    EXPECT_EQ(outlineOf(out()), "");
    EXPECT_FALSE(std::get<0>(PDFDocument::open(out()))->hasOutline());
}

TEST_F(MyDocumentWriting, TheOutlineInMemoryIsTheOneWritten) {
    addItems(document.root(), {{"New", "3"}});
    writePreview();
    EXPECT_EQ(document.pdfDoc()->outlineRoot().childAtIndex(2).label(), "New");
}

TEST_F(MyDocumentWriting, TheFinalSaveClearsTheEditedState) {
    document.updateChangeCount(MyDocument::Change::Done);
    writeFinal();
    EXPECT_FALSE(document.isDocumentEdited());
}

TEST_F(MyDocumentWriting, APreviewLeavesTheEditedState) {
    writePreview();
    EXPECT_FALSE(document.isDocumentEdited());
    document.updateChangeCount(MyDocument::Change::Done);
    writePreview();
    EXPECT_TRUE(document.isDocumentEdited());
}

TEST_F(MyDocumentWriting, AnyOtherTypeLeavesTheEditedState) {
    document.updateChangeCount(MyDocument::Change::Done);
    ASSERT_FALSE(document.writeNewPDFOutline(out(), "SaveSomehow"));
    EXPECT_TRUE(document.isDocumentEdited());
    EXPECT_EQ(outlineOf(out()), original);
}

TEST_F(MyDocumentWriting, EveryWriteEndsTheLockOfTheOutline) {
    document.setLockTOCediting(true);
    writePreview();
    EXPECT_FALSE(document.lockTOCediting());
    document.setLockTOCediting(true);
    writeFinal();
    EXPECT_FALSE(document.lockTOCediting());
}

TEST_F(MyDocumentWriting, APreviewKeepsTheDefaultPointInTheModel) {
    addItems(document.root(), {{"New", "3"}});
    writePreview();
    EXPECT_EQ(document.root().children()[2]->pointOnPage(), QPointF(306, 792));
    EXPECT_TRUE(outlineOf(out()).endsWith("+ [3] New (306,792)\n"));
}

TEST_F(MyDocumentWriting, UnknownLabelsLeadToTheFirstPage) {
    addItems(document.root(), {{"New", "xii", {5, 6}}});
    writeFinal();
    EXPECT_TRUE(outlineOf(out()).endsWith("+ [1] New (5,6)\n"));
    EXPECT_EQ(document.root().children()[2]->pageLabel(), "xii");
}

TEST_F(MyDocumentWriting, PrintedNumbersLeadToTheirPages) {
    document.setPrintedPageOffset(4);
    addItems(document.root(), {{"New", "P3", {5, 6}}});
    writeFinal();
    EXPECT_TRUE(outlineOf(out()).endsWith("+ [7] New (5,6)\n"));
    EXPECT_EQ(document.root().children()[2]->pageLabel(), "P3");
}

TEST_F(MyDocumentWriting, AnEntryThatLeadsNowhereStillDoes) {
    addItems(document.root(), {{"New", QString()}});
    writeFinal();
    EXPECT_TRUE(outlineOf(out()).endsWith("+ - New (0,0)\n"));
}

TEST_F(MyDocumentWriting, TheDocumentsOwnFileMayBeWrittenAgainAndAgain) {
    for (const char *title : {"One", "Two", "Three"}) {
        addItems(document.root(), {{title, "3", {5, 6}}});
        ASSERT_FALSE(document.writeNewPDFOutline(document.pdfURL(), MyDocument::saveFinalPDF));
        EXPECT_EQ(outlineOf(document.pdfURL()), test::treeText(document.root()));
    }
    EXPECT_EQ(document.root().children().size(), 5U);
}

TEST_F(MyDocumentWriting, AFailedSaveTellsWhyAndLeavesTheDocumentEdited) {
    document.updateChangeCount(MyDocument::Change::Done);
    document.setLockTOCediting(true);
    const auto error = document.writeNewPDFOutline(dir.path("no/such/folder.pdf"), MyDocument::saveFinalPDF);
    ASSERT_TRUE(error);
    EXPECT_EQ(error->kind, PDFError::Kind::WriteFailed);
    EXPECT_TRUE(error->message.contains("folder.pdf"));
    EXPECT_TRUE(document.isDocumentEdited());
    EXPECT_FALSE(document.lockTOCediting());
}

class WriteRecorder final : public PDFWriteObserver {
public:
    void documentBeginWrite(int pageCount) override { notices.append("begin " + QString::number(pageCount)); }
    void documentEndPageWrite(int pageIndex) override { notices.append(QString::number(pageIndex)); }
    void documentEndWrite() override { notices.append("end"); }
    QStringList notices;
};

TEST_F(MyDocumentWriting, EveryPageIsAnnouncedWhileWriting) {
    WriteRecorder recorder;
    document.setWriteObserver(&recorder);
    ASSERT_FALSE(document.writeNewPDFOutline(out(), MyDocument::saveFinalPDF));
    EXPECT_THAT(recorder.notices, ElementsAre("begin 9", "0", "1", "2", "3", "4", "5", "6", "7", "8", "end"));
}

TEST_F(MyDocumentWriting, TheEndOfAFailedWriteIsAnnouncedToo) {
    WriteRecorder recorder;
    document.setWriteObserver(&recorder);
    ASSERT_TRUE(document.writeNewPDFOutline(dir.path("no/such/folder.pdf"), MyDocument::saveFinalPDF));
    EXPECT_EQ(recorder.notices.first(), "begin 9");
    EXPECT_EQ(recorder.notices.last(), "end");
}

TEST_F(MyDocumentWriting, ActionsOfEntriesSurviveTheirEdit) {
    PdfBuilder pdf;
    pdf.addNumberedPages(1);
    const int root = pdf.addObject("null");
    const int link = pdf.addObject("<< /Title (Web) /Parent " + PdfBuilder::reference(root) +
                                   " /A << /S /URI /URI (http://example.com/) >> >>");
    pdf.replaceObject(root, "<< /Type /Outlines /Count 1 /First " + PdfBuilder::reference(link) + " /Last " +
                                PdfBuilder::reference(link) + " >>");
    pdf.setCatalogEntry("/Outlines", PdfBuilder::reference(root));
    MyDocument other(platform);
    load(other, save(pdf));
    other.root().children()[0]->setPageTitle("Home page");
    ASSERT_FALSE(other.writeNewPDFOutline(out(), MyDocument::saveFinalPDF));

    EXPECT_EQ(outlineOf(out()), "+ - Home page (0,0)\n");
    QPDF written;
    written.processFile(QFile::encodeName(out()).constData());
    QPDFObjectHandle entry = written.getRoot().getKey("/Outlines").getKey("/First");
    EXPECT_EQ(entry.getKey("/A").getKey("/URI").getStringValue(), "http://example.com/");
}

}  // namespace
}  // namespace leafwright
