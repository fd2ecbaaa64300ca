#include "document/commands/AutoTOCCommands.h"
#include "document/commands/ContentsCommands.h"
#include "document/commands/FindCommands.h"
#include "document/window/ContentsProposal.h"
#include "document/window/FindBar.h"
#include "pdf/mupdf/FileStream.h"
#include "support/BookPdf.h"
#include "support/OpenPdf.h"
#include "support/RawPdf.h"
#include "support/TooManyNames.h"
#include "support/WindowFixture.h"
#include "widgets/NoticeBars.h"

#include <QLineEdit>
#include <QPushButton>

#include <cerrno>
#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::contentOf;
using test::PdfBuilder;
using testing::HasSubstr;

/// What the window does with a file that it could not read whole.
class ReadProblem : public test::WindowFixture {
protected:
    /// What the bar of a name says; empty without one.
    std::string textOf(const QString &name) const {
        const NoticeBar *bar = document.myWindow()->notices()->bar(name);
        return bar ? bar->text().toStdString() : std::string();
    }
    /// The same with pages that take many reads.
    static PdfBuilder longer(PdfBuilder pdf) {
        for (int i = 0; i < 4; ++i) {
            pdf.addPage(PdfBuilder::showText("F1", 12, 72, 700, "Page " + std::to_string(i)));
            pdf.addNoise(100'000);
        }
        return pdf;
    }
    /// Has another program cut the file short, and the document meet that.
    void cutShort() {
        ASSERT_TRUE(QFile::resize(document.pdfURL(), 1000));
        for (int i = 0; i < document.pdfDoc()->pageCount(); ++i)
            document.pdfDoc()->page(i)->characterBoxes();
        ASSERT_TRUE(document.pdfDoc()->readProblem());
        ASSERT_EQ(textOf("readProblem"), "");
    }
    void perform(const char *selector) { ASSERT_TRUE(document.actions().perform(selector)); }

    const std::string notAll = "Not all of this PDF could be read: it was cut short by another program";
};

TEST_F(ReadProblem, FileIsNotSavedOver) {
    PdfBuilder pdf = longer({});
    addOutline(pdf, {{"(One)", "[" + pdf.pageReference(0) + " /XYZ 72 700 null]"}});
    open(pdf);
    EXPECT_EQ(textOf("readProblem"), "");

    cutShort();
    const QString path = document.pdfURL();
    const QByteArray rest = contentOf(path);

    document.root().children()[0]->setPageTitle("New");
    document.updateChangeCount(Document::Change::Done);
    enum Answer { LoadNewPages, Cancel };
    platform.answers = {Cancel};
    ASSERT_TRUE(document.actions().perform("saveDocument:"));
    EXPECT_EQ(contentOf(path), rest);
    EXPECT_TRUE(document.isDocumentEdited());
    EXPECT_THAT(textOf("changedOnDisk"), HasSubstr("Another program has written to “a.pdf”"));
    EXPECT_EQ(platform.alerts.size(), 1);
}

TEST_F(ReadProblem, FileThatCouldNotBeReadWholeIsNotSaved) {
    PdfBuilder pdf = longer({});
    // So many that one read does not have all of them.
    std::vector<test::OutlineEntry> entries;
    for (int i = 0; i < 300; ++i)
        entries.push_back({"(Entry " + std::to_string(i) + ' ' + std::string(200, 'x') + ')',
                           "[" + pdf.pageReference(0) + " /Fit]"});
    addOutline(pdf, entries);
    const QString path = save(pdf);
    const QByteArray whole = contentOf(path);
    const qint64 title = whole.lastIndexOf("(Entry 250 ");
    registerDefaults(platform.userDefaults());
    ASSERT_TRUE(document.readFromURL(path));
    {
        const mupdf::FailingReads failing(
            [title](qint64 from, qint64 length) { return from <= title && title < from + length ? EIO : 0; });
        document.makeWindowControllers();
    }
    document.finishLoading();
    EXPECT_EQ(textOf("readProblem"),
              "Not all of this PDF could be read: Input/output error. It can't be saved, for what is missing "
              "would be lost.");

    document.updateChangeCount(Document::Change::Done);
    perform("saveDocument:");
    EXPECT_EQ(contentOf(path), whole);
    EXPECT_TRUE(document.isDocumentEdited());
    ASSERT_TRUE(document.writeError());
    EXPECT_EQ(textOf("failedWrite"), path.toStdString() +
                                         " could not be written: the file could not be read whole, and "
                                         "nothing is to be lost: Input/output error");
    EXPECT_EQ(document.myWindow()->notices()->bar("failedWrite")->findChild<QPushButton *>(), nullptr)
        << "it would fail at any other place as well";
}

TEST_F(ReadProblem, HeadingsThatAreMadeAnOutlineMayLackSome) {
    open(longer(test::makeBook()));
    cutShort();
    document.autoTOCCommands().runAutoTOCwithH1H2H3Map();
    EXPECT_THAT(textOf("readProblem"), HasSubstr(notAll));
}

TEST_F(ReadProblem, WhatIsFoundOnThePagesMayNotBeAll) {
    open(longer(test::makeBook()));
    cutShort();
    perform("findOnPages:");
    const auto search = [&](const char *text) {
        document.myWindow()->findBar()->findChild<QLineEdit *>("findField")->setText(text);
        document.findCommands().finish();
    };
    search("nowhere");
    EXPECT_THAT(textOf("readProblem"), HasSubstr(notAll));
    document.myWindow()->notices()->removeNotice("readProblem");
    search("nowhere else");
    EXPECT_EQ(textOf("readProblem"), "") << "once is enough";
}

TEST_F(ReadProblem, ContentsThatAreTakenMayLackSome) {
    open(longer(test::makeBook()));
    perform("findContents:");
    cutShort();
    ASSERT_TRUE(document.contentsCommands().proposal());
    document.contentsCommands().proposal()->pressButton(1);
    EXPECT_THAT(textOf("readProblem"), HasSubstr(notAll));
}

TEST_F(ReadProblem, ContentsThatAreCompletedMayLackSome) {
    open(longer(test::makeBook()));
    document.root().children()[0]->setPageTitle("Light");
    document.root().children()[0]->setPageLabel("8");
    perform("completeContents:");
    cutShort();
    ASSERT_TRUE(document.contentsCommands().proposal());
    document.contentsCommands().proposal()->pressButton(1);
    EXPECT_THAT(textOf("readProblem"), HasSubstr(notAll));
}

TEST_F(ReadProblem, ContentsThatLackNothingMayLackSome) {
    open(longer(test::makeBook()));
    cutShort();
    perform("completeContents:");
    ASSERT_EQ(platform.alerts.size(), 1);
    EXPECT_EQ(platform.alerts[0].message, "Nothing is missing.");
    EXPECT_THAT(textOf("readProblem"), HasSubstr(notAll));
}

TEST_F(ReadProblem, FileThatTakesTooMuchMemoryOpensAndSaysSo) {
    constexpr int pages = 3000;
    QByteArray kids;
    for (int i = 0; i < pages; ++i)
        kids += "3 0 R ";
    test::RawPdf pdf;
    pdf.object(1, "<< /Type /Catalog /Pages 2 0 R /PageLabels << /Nums [0 << /S /D /P 5 0 R >>] >> >>")
        .object(2, "<< /Type /Pages /Count " + QByteArray::number(pages) + " /Kids [" + kids + "] >>")
        .object(3, "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 612 792] /Resources << >> >>")
        .object(5, '(' + QByteArray(60'000, 'x') + ')');
    test::writeFile(dir.path("a.pdf"), pdf.endWithTable().bytes());
    registerDefaults(platform.userDefaults());
    ASSERT_TRUE(document.readFromURL(dir.path("a.pdf")));
    document.makeWindowControllers();
    EXPECT_EQ(document.pdfDoc()->pageCount(), pages);
    EXPECT_THAT(textOf("readProblem"), HasSubstr("Not all of this PDF could be read: it takes more memory"));
    document.finishLoading();
}

TEST_F(ReadProblem, WhatIsNotWrittenMayBeTooMuch) {
    PdfBuilder pdf;
    pdf.addNumberedPages(1);
    test::addTooManyNames(pdf);
    open(pdf);
    document.pdfDoc()->engine().marks();
    document.tellReadProblem();
    EXPECT_THAT(textOf("readProblem"), HasSubstr("What is made of its text may not be all."));
    document.updateChangeCount(Document::Change::Done);
    ASSERT_TRUE(document.actions().perform("saveDocument:"));
    EXPECT_FALSE(document.isDocumentEdited());
}

TEST_F(ReadProblem, CommandThatRunsOutOfMemoryEndsAlone) {
    PdfBuilder pdf;
    pdf.addNumberedPages(1);
    open(pdf);
    ActionTable table;
    table.handle("undo:", [](QObject *) { throw std::bad_alloc(); });
    EXPECT_THROW(table.perform("undo:"), std::bad_alloc);
    bool told = false;
    table.setWhenOutOfMemory([&told] { told = true; });
    EXPECT_TRUE(table.perform("undo:"));
    EXPECT_TRUE(told);
}

}  // namespace
}  // namespace leafwright
