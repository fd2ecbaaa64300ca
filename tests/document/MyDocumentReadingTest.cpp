#include "support/DocumentFixture.h"

#include <QDir>

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::PdfBuilder;
using testing::ElementsAre;
using testing::IsEmpty;

class TwoPages : public PdfBuilder {
public:
    TwoPages() { addNumberedPages(2); }
};

class MyDocumentReading : public test::DocumentFixture {
protected:
    QString write(const QByteArray &content) const {
        QFile file(dir.path("broken.pdf"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }

    void expectTheAlert() const {
        EXPECT_EQ(platform.beeps, 1);
        ASSERT_EQ(platform.alerts.size(), 1);
        EXPECT_EQ(platform.alerts[0].message, "Unable to open PDF");
        EXPECT_EQ(platform.alerts[0].informativeText, "Unfortunately, Leafwright cannot display this PDF.");
        EXPECT_THAT(platform.alerts[0].buttons, ElementsAre("OK"));
    }

    void expectSilence() const {
        EXPECT_EQ(platform.beeps, 0);
        EXPECT_THAT(platform.alerts, IsEmpty());
    }
};

TEST_F(MyDocumentReading, ANewDocumentHasAnUntitledRootAndNothingToSave) {
    EXPECT_EQ(document.root().pageTitle(), "Untitled");
    EXPECT_EQ(document.root().pageLabel(), "1");
    EXPECT_THAT(document.root().children(), IsEmpty());
    EXPECT_EQ(document.pdfDoc(), nullptr);
    EXPECT_FALSE(document.isDocumentEdited());
    EXPECT_EQ(document.printedPageOffset(), 0U);
    EXPECT_FALSE(document.userHasCheckedPrintedPageNumbers());
}

TEST_F(MyDocumentReading, AMissingFileFailsSilently) {
    EXPECT_FALSE(document.readFromURL(dir.path("nowhere.pdf")));
    expectSilence();
    EXPECT_EQ(document.openError()->kind, PDFError::Kind::FileMissing);
}

TEST_F(MyDocumentReading, AFileInAFileIsMissing) {
    const QString path = save(TwoPages());
    EXPECT_FALSE(document.readFromURL(path + "/inner.pdf"));
    expectSilence();
}

TEST_F(MyDocumentReading, ABrokenFileBeepsAndAlerts) {
    const QString path = write("this is no PDF");
    EXPECT_FALSE(document.readFromURL(path));
    expectTheAlert();
    EXPECT_EQ(document.pdfURL(), path);
    EXPECT_EQ(document.pdfDoc(), nullptr);
    EXPECT_EQ(document.openError()->kind, PDFError::Kind::NotAPDF);
}

TEST_F(MyDocumentReading, AnEmptyFileBeepsAndAlerts) {
    EXPECT_FALSE(document.readFromURL(write("")));
    expectTheAlert();
}

TEST_F(MyDocumentReading, AFolderBeepsAndAlerts) {
    ASSERT_TRUE(QDir().mkdir(dir.path("folder.pdf")));
    EXPECT_FALSE(document.readFromURL(dir.path("folder.pdf")));
    expectTheAlert();
}

TEST_F(MyDocumentReading, AGoodFileIsOpen) {
    const QString path = save(TwoPages());
    EXPECT_TRUE(document.readFromURL(path));
    expectSilence();
    EXPECT_EQ(document.pdfURL(), path);
    ASSERT_TRUE(document.pdfDoc());
    EXPECT_EQ(document.pdfDoc()->pageCount(), 2);
    EXPECT_FALSE(document.openError());
}

TEST_F(MyDocumentReading, WhatWasOpenGoesWhenAnotherFileIsBroken) {
    ASSERT_TRUE(document.readFromURL(save(TwoPages())));
    EXPECT_FALSE(document.readFromURL(write("this is no PDF")));
    EXPECT_EQ(document.pdfDoc(), nullptr);
}

TEST_F(MyDocumentReading, AnErrorIsForgottenWhenTheNextFileIsGood) {
    EXPECT_FALSE(document.readFromURL(write("this is no PDF")));
    EXPECT_TRUE(document.readFromURL(save(TwoPages())));
    EXPECT_FALSE(document.openError());
}

TEST_F(MyDocumentReading, PlainFilesMayBeEdited) {
    document.setLockTOCediting(true);
    document.setAllowTOCediting(false);
    load(TwoPages());
    EXPECT_TRUE(document.allowTOCediting());
    EXPECT_FALSE(document.lockTOCediting());
}

TEST_F(MyDocumentReading, LockedFilesMayNotBeEdited) {
    PdfBuilder::Options options;
    options.userPassword = "user";
    options.ownerPassword = "owner";
    ASSERT_TRUE(document.readFromURL(save(TwoPages(), options)));
    document.prepareForEditing();
    EXPECT_TRUE(document.pdfDoc()->isLocked());
    EXPECT_FALSE(document.allowTOCediting());
    document.importOutline();
    EXPECT_THAT(document.root().children(), IsEmpty());
}

TEST_F(MyDocumentReading, EncryptedFilesMayNotBeEdited) {
    PdfBuilder::Options options;
    options.ownerPassword = "owner";
    ASSERT_TRUE(document.readFromURL(save(TwoPages(), options)));
    document.prepareForEditing();
    EXPECT_FALSE(document.pdfDoc()->isLocked());
    EXPECT_TRUE(document.pdfDoc()->isEncrypted());
    EXPECT_FALSE(document.allowTOCediting());
}

TEST_F(MyDocumentReading, PreparingForgetsWhatWasKnownOfAnotherFile) {
    document.setPrintedPageOffset(4);
    document.setUserHasCheckedPrintedPageNumbers(true);
    document.listH1H2H3Config().push_back(levelRecord(1, Font()));
    load(TwoPages());
    EXPECT_EQ(document.printedPageOffset(), 0U);
    EXPECT_FALSE(document.userHasCheckedPrintedPageNumbers());
    EXPECT_THAT(document.listH1H2H3Config(), IsEmpty());
}

TEST_F(MyDocumentReading, PagesWithoutLabelsAreMappedByTheirNumbers) {
    load(TwoPages());
    EXPECT_EQ(document.pdfMapPageLabelToIndex(), (PageLabelMap{{"1", 0}, {"2", 1}}));
}

TEST_F(MyDocumentReading, OfPagesWithOneLabelTheLastIsMapped) {
    PdfBuilder pdf;
    pdf.addNumberedPages(5);
    pdf.setCatalogEntry("/PageLabels",
                        "<< /Nums [0 << /P (iv) >> 1 << /S /D >> 3 << /P (iv) >> 4 << /S /D /St 3 >>] >>");
    load(pdf);
    EXPECT_EQ(document.pdfMapPageLabelToIndex(), (PageLabelMap{{"1", 1}, {"2", 2}, {"iv", 3}, {"3", 4}}));
}

TEST_F(MyDocumentReading, AFileWithoutAnOutlineHasAnEmptyTree) {
    load(TwoPages());
    EXPECT_THAT(document.root().children(), IsEmpty());
    EXPECT_FALSE(document.isDocumentEdited());
}

TEST_F(MyDocumentReading, TheOutlineBecomesTheTree) {
    PdfBuilder pdf;
    pdf.addNumberedPages(6);
    test::setRomanThenDecimalLabels(pdf);
    addOutline(pdf, {{"(Preface)", "[" + pdf.pageReference(1) + " /XYZ 72 700 null]"},
                     {"(Chapter)",
                      "[" + pdf.pageReference(4) + " /XYZ 10.5 20 null]",
                      {{"(Section)", "[" + pdf.pageReference(5) + " /FitH 300]"}}}});
    load(pdf);
    EXPECT_EQ(test::treeText(document.root()),
              "+ [ii] Preface (72,700)\n+ [1] Chapter (10.5,20)\n++ [2] Section (0,300)\n");
    EXPECT_FALSE(document.isDocumentEdited());
}

TEST_F(MyDocumentReading, AnEntryWithoutASpotMakesTheDocumentEdited) {
    PdfBuilder pdf;
    pdf.addNumberedPages(1);
    addOutline(pdf, {{"(Chapter)",
                      "[" + pdf.pageReference(0) + " /XYZ 10 20 null]",
                      {{"(Section)", "[" + pdf.pageReference(0) + " /XYZ 0 0 null]"}}}});
    load(pdf);
    EXPECT_TRUE(document.isDocumentEdited());
    EXPECT_EQ(test::treeText(document.root()), "+ [1] Chapter (10,20)\n++ [1] Section (0,0)\n");
}

TEST_F(MyDocumentReading, AnEntryThatFitsThePageMakesTheDocumentEdited) {
    PdfBuilder pdf;
    pdf.addNumberedPages(1);
    addOutline(pdf, {{"(Chapter)", "[" + pdf.pageReference(0) + " /Fit]"}});
    load(pdf);
    EXPECT_TRUE(document.isDocumentEdited());
}

TEST_F(MyDocumentReading, AnEntryThatLeadsNowhereLeavesTheDocumentUnedited) {
    PdfBuilder pdf;
    pdf.addNumberedPages(1);
    addOutline(pdf, {{"(Chapter)", ""}, {"(Name)", "(nowhere)"}, {"(Number)", "[99 /Fit]"}});
    load(pdf);
    EXPECT_FALSE(document.isDocumentEdited()) << "a save would have no spot to give it";
    EXPECT_EQ(test::treeText(document.root()), "+ - Chapter (0,0)\n+ - Name (0,0)\n+ - Number (0,0)\n");
}

/// Writes down, for every insertion below the root, how the tree looks when it is told.
class TreeObserver final : public OutlineItemObserver {
public:
    void willChangeValueForKey(const MyOutlineItem &, QLatin1String key) override {
        notices.append("will " + QString(key));
    }
    void didChangeValueForKey(const MyOutlineItem &item, QLatin1String key) override {
        notices.append("did " + QString(key) + " " + test::treeText(item).simplified());
    }
    QStringList notices;
};

TEST_F(MyDocumentReading, EveryTopLevelEntryIsAnnouncedWithAllBelowIt) {
    PdfBuilder pdf;
    pdf.addNumberedPages(1);
    const std::string destination = "[" + pdf.pageReference(0) + " /XYZ 1 2 null]";
    addOutline(pdf, {{"(A)", destination, {{"(B)", destination}}}, {"(C)", destination}});
    TreeObserver observer;
    document.root().addObserver(&observer);
    load(pdf);
    EXPECT_THAT(observer.notices,
                ElementsAre("will children", "did children + [1] A (1,2) ++ [1] B (1,2)", "will children",
                            "did children + [1] A (1,2) ++ [1] B (1,2) + [1] C (1,2)"));
}

}  // namespace
}  // namespace leafwright
