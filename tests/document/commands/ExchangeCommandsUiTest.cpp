#include "document/commands/ExchangeCommands.h"
#include "support/CliFiles.h"
#include "support/WindowFixture.h"
#include "widgets/NoticeBars.h"

#include <QFileInfo>

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

namespace leafwright {
namespace {

using test::bytesOf;
using test::PdfBuilder;
using test::saveBytes;
using testing::AllOf;
using testing::EndsWith;
using testing::StartsWith;

/// An outline of "One" with "Two" below it, on three pages.
class Exchange : public test::WindowFixture {
protected:
    enum Answer { Replace, Add, Cancel };

    void SetUp() override {
        PdfBuilder pdf;
        pdf.addNumberedPages(3);
        addOutline(pdf, {{"(One)",
                          "[" + pdf.pageReference(0) + " /XYZ 72 700 null]",
                          {{"(Two)", "[" + pdf.pageReference(1) + " /XYZ 72 600 null]"}}}});
        open(pdf);
        original = bytesOf(document.pdfURL());
    }

    void perform(const char *selector, const QString &path) {
        platform.filesToChoose.append(path);
        ASSERT_TRUE(document.actions().perform(selector));
    }
    void importFrom(const QString &path, Answer answer) {
        platform.answers.append(answer);
        perform("importOutline:", path);
    }
    QString outline() { return test::treeText(document.root()); }
    /// What a bar says; null without it.
    QString notice(const char *name) {
        const NoticeBar *bar = document.myWindow()->notices()->bar(name);
        return bar ? bar->text() : QString();
    }

    QByteArray original;
    const QString old = "+ [1] One (72,700)\n++ [2] Two (72,600)\n";
};

TEST_F(Exchange, ExportProposesTheNameOfThePdf) {
    perform("exportOutline:", dir.path("out.plus"));
    ASSERT_EQ(platform.savePanels.size(), 1);
    EXPECT_EQ(platform.savePanels[0].path, dir.path("a.json"));
    EXPECT_EQ(platform.savePanels[0].allowedFileTypes.first(), "json");
    EXPECT_EQ(bytesOf(dir.path("out.plus")), "+ @1 One\n++ @2 Two\n");
    EXPECT_EQ(notice("failedExport"), QString());
    EXPECT_FALSE(document.isDocumentEdited());
}

TEST_F(Exchange, ExportWritesWhatIsEdited) {
    document.edits().setPageTitle(*document.root().children()[0], "Renamed & more");
    document.edits().setPageLabel(*document.root().children()[0], "xii");
    perform("exportOutline:", dir.path("out.html"));
    EXPECT_TRUE(bytesOf(dir.path("out.html")).contains("<a title=\"xii\">Renamed &#38; more</a>"));
}

TEST_F(Exchange, AnEntryWithoutAPageLeadsToNoneWhateverLabelsThereAre) {
    PdfBuilder pdf;
    pdf.addNumberedPages(2);
    pdf.setCatalogEntry("/PageLabels", "<< /Nums [0 << /S /D >> 1 << >>] >>");
    addOutline(pdf, {{"(Part)", ""}, {"(Plate)", "[" + pdf.pageReference(1) + " /Fit]"}});
    MyDocument other(platform);
    pdf.save(dir.path("plates.pdf"));
    load(other, dir.path("plates.pdf"));
    platform.filesToChoose.append(dir.path("out.cpdf"));
    ASSERT_TRUE(other.actions().perform("exportOutline:"));
    EXPECT_EQ(bytesOf(dir.path("out.cpdf")), "0 \"Part\" 0\n0 \"Plate\" 2\n");
}

TEST_F(Exchange, LabelsThatAFormCantKeepAreTold) {
    document.edits().setPageLabel(*document.root().children()[0], "xii");
    perform("exportOutline:", dir.path("out.cpdf"));
    EXPECT_EQ(bytesOf(dir.path("out.cpdf")), "0 \"One\" 0 open\n1 \"Two\" 2 \"[2 /XYZ 72 600 null]\"\n");
    EXPECT_EQ(notice("failedExport"),
              dir.path("out.cpdf") +
                  QString::fromUtf8(": this form counts pages, and no page is known to have the label of 1 "
                                    "entries, the first of which is “xii”. They lead nowhere there."));
    EXPECT_EQ(platform.beeps, 0);
    perform("exportOutline:", dir.path("out.md"));
    EXPECT_EQ(notice("failedExport"), QString()) << "it keeps them";
}

TEST_F(Exchange, ExportReplacesAnOldFileAndKeepsItsRights) {
    saveBytes(dir.path("out.plus"), "old");
    QFile::setPermissions(dir.path("out.plus"), QFile::ReadOwner | QFile::WriteOwner);
    const auto rights = QFile::permissions(dir.path("out.plus"));
    perform("exportOutline:", dir.path("out.plus"));
    EXPECT_EQ(bytesOf(dir.path("out.plus")), "+ @1 One\n++ @2 Two\n");
    EXPECT_EQ(QFile::permissions(dir.path("out.plus")), rights);
}

TEST_F(Exchange, NothingIsExportedOverThePdf) {
    ASSERT_EQ(::link(QFile::encodeName(document.pdfURL()), QFile::encodeName(dir.path("hard.json"))), 0);
    ASSERT_TRUE(QFile::link(document.pdfURL(), dir.path("soft.json")));
    for (const char *name : {"hard.json", "soft.json", "./hard.json"}) {
        perform("exportOutline:", dir.path(name));
        EXPECT_THAT(notice("failedExport").toStdString(),
                    EndsWith(" was not written: it is the PDF that is open."))
            << name;
    }
    perform("exportOutline:", document.pdfURL());
    EXPECT_FALSE(notice("failedExport").isEmpty());
    EXPECT_EQ(bytesOf(document.pdfURL()), original);
    EXPECT_EQ(platform.beeps, 4);
}

TEST_F(Exchange, ANameThatTellsNoFormIsRefused) {
    perform("exportOutline:", dir.path("out.txt"));
    EXPECT_EQ(notice("failedExport"),
              dir.path("out.txt") +
                  " was not written: the end of its name does not say in which form. Names may end "
                  "in one of these: json, plus, md, html, opml, pdftk, cpdf, pdfcpu.");
    EXPECT_FALSE(QFileInfo::exists(dir.path("out.txt")));
    perform("exportOutline:", dir.path("out.cpdf"));
    EXPECT_EQ(notice("failedExport"), QString()) << "until the next";
}

TEST_F(Exchange, AFullDiskLeavesTheOldFileAndIsTold) {
    saveBytes(dir.path("out.json"), "old");
    {
        const test::FileSizeLimit limit(10);
        perform("exportOutline:", dir.path("out.json"));
    }
    EXPECT_EQ(notice("failedExport"), dir.path("out.json") + " could not be written: File too large");
    EXPECT_EQ(bytesOf(dir.path("out.json")), "old");
    EXPECT_EQ(QDir(dir.path({})).entryList(QDir::Files | QDir::Hidden), (QStringList{"a.pdf", "out.json"}));
}

TEST_F(Exchange, ImportReplacesInOneStep) {
    saveBytes(dir.path("toc.txt"), "+ @2 New\n++ @3 Below\n");
    importFrom(dir.path("toc.txt"), Replace);
    EXPECT_EQ(outline(), "+ [2] New (0,0)\n++ [3] Below (0,0)\n");
    EXPECT_TRUE(document.isDocumentEdited());
    ASSERT_TRUE(document.actions().perform("stepBack:"));
    EXPECT_EQ(outline(), old);
    EXPECT_FALSE(document.isDocumentEdited());
    ASSERT_TRUE(document.actions().perform("stepForward:"));
    EXPECT_EQ(outline(), "+ [2] New (0,0)\n++ [3] Below (0,0)\n");
}

TEST_F(Exchange, ImportAddsBehindWhatIsThere) {
    saveBytes(dir.path("toc.md"), "- [New](#page=3)\n");
    importFrom(dir.path("toc.md"), Add);
    EXPECT_EQ(outline(), old + "+ [3] New (0,0)\n");
}

TEST_F(Exchange, ImportedLabelsThatNoPageHasAreTold) {
    saveBytes(dir.path("toc.txt"), "+ @2 New\n++ @xii Below\n++ @xiii Further\n+ @ Nowhere\n");
    importFrom(dir.path("toc.txt"), Replace);
    EXPECT_EQ(outline(),
              "+ [2] New (0,0)\n++ [xii] Below (0,0)\n++ [xiii] Further (0,0)\n+ - Nowhere (0,0)\n");
    EXPECT_EQ(
        notice("failedImport"),
        QString::fromUtf8("No page is known to have the label of 2 imported entries, the first of which is "
                          "“xii”. When they are saved, they lead to the first page."));
    saveBytes(dir.path("toc.txt"), "+ @2 New\n");
    importFrom(dir.path("toc.txt"), Replace);
    EXPECT_EQ(notice("failedImport"), QString());
}

TEST_F(Exchange, AddedEntriesAreNotThoseOfTheFile) {
    perform("exportOutline:", dir.path("out.json"));
    importFrom(dir.path("out.json"), Add);
    EXPECT_EQ(outline(), old + old);
    EXPECT_TRUE(document.root().children()[0]->entry().number);
    EXPECT_FALSE(document.root().children()[1]->entry().number);
    importFrom(dir.path("out.json"), Replace);
    EXPECT_EQ(outline(), old);
    EXPECT_TRUE(document.root().children()[0]->entry().number) << "it keeps what it has in the file";
}

TEST_F(Exchange, ImportKnowsWhatThePreviewHasNot) {
    perform("exportOutline:", dir.path("out.json"));
    const auto number = document.root().children()[0]->children()[0]->entry().number;
    ASSERT_TRUE(number);
    document.edits().removeAll(*document.root().children()[0]);
    ASSERT_TRUE(document.actions().perform("openPDFInDefaultApp:"));
    importFrom(dir.path("out.json"), Replace);
    EXPECT_EQ(outline(), old);
    EXPECT_EQ(document.root().children()[0]->children()[0]->entry().number, number);
    ASSERT_TRUE(document.actions().perform("saveDocument:"));
    EXPECT_TRUE(document.outline().hasOutlineOfFileInMemory());
}

TEST_F(Exchange, WhatImportedEntriesDoNoMoreIsTold) {
    saveBytes(dir.path("toc.json"), R"([{"title": "Play", "action": {"type": "JavaScript"}, "entry": 99999},
                                        {"title": "Web", "action": {"type": "URI", "uri": "about:blank"}}])");
    importFrom(dir.path("toc.json"), Replace);
    EXPECT_EQ(notice("failedImport"),
              "1 imported entries did something that only the file has that they come "
              "from. They lead nowhere now.");
    EXPECT_EQ(platform.beeps, 0);
}

TEST_F(Exchange, ActionsBesidePagesAndUnknownKeysAreTold) {
    saveBytes(
        dir.path("toc.json"),
        R"([{"title": "A", "pageLabel": "2", "action": {"type": "URI", "uri": "about:blank"}, "kids": []}])");
    importFrom(dir.path("toc.json"), Replace);
    EXPECT_THAT(
        notice("failedImport").toStdString(),
        AllOf(StartsWith(dir.path("toc.json").toStdString() + ": keys that are not known were passed "),
              EndsWith("\n1 imported entries have an action beside their page. They lead to the page, "
                       "without the action.")));
}

TEST_F(Exchange, AnEmptyListIsAWishToHaveNoOutline) {
    saveBytes(dir.path("toc.json"), "[]");
    importFrom(dir.path("toc.json"), Replace);
    EXPECT_EQ(outline(), "");
    EXPECT_EQ(notice("failedImport"), QString());
}

TEST_F(Exchange, CancellingChangesNothing) {
    saveBytes(dir.path("toc.txt"), "+ @2 New\n");
    importFrom(dir.path("toc.txt"), Cancel);
    platform.filesToChoose.append(std::nullopt);
    EXPECT_TRUE(document.actions().perform("importOutline:"));
    EXPECT_EQ(outline(), old);
    EXPECT_FALSE(document.isDocumentEdited());
    EXPECT_EQ(platform.beeps, 0);
}

TEST_F(Exchange, WhatCantBeReadIsToldAndChangesNothing) {
    const auto refusal = [&](const char *name, const QByteArray &text) {
        saveBytes(dir.path(name), text);
        importFrom(dir.path(name), Replace);
        EXPECT_EQ(outline(), old);
        return notice("failedImport").remove(dir.path(name));
    };
    EXPECT_EQ(refusal("a.txt", "+ @1 A\nProse\n"), ": line 2: not of the form \"+ @12 Title\"");
    EXPECT_EQ(refusal("b.txt", "+ @1 Caf\xE9\n"), ": line 1: the text is not UTF-8");
    EXPECT_EQ(refusal("c.txt", "Prose\n"), ": what it holds is in none of the forms that its name allows");
    EXPECT_EQ(refusal("d.json", "+ @1 A\n"), ": what it holds is in none of the forms that its name allows");
    const QString nothing = ": there is no entry in it; [] in JSON says that no outline is wanted";
    EXPECT_EQ(refusal("e.md", " \n"), nothing);
    EXPECT_EQ(refusal("e.md", "\xEF\xBB\xBF"), nothing);
    EXPECT_EQ(refusal("e.txt", "\n"), nothing);
    EXPECT_EQ(refusal("e.opml", "<opml></opml>"), nothing);
    EXPECT_EQ(refusal("e.json", "{\"bookmarks\": []}"), nothing);
    EXPECT_EQ(refusal("f.cpdf", "0 \"A\" 7\n"), ": line 1: there is no page 7; the pages are 1 to 3");
    EXPECT_EQ(platform.beeps, 10);
    EXPECT_FALSE(document.isDocumentEdited());
    EXPECT_FALSE(document.edits().canUndo());
    saveBytes(dir.path("good.txt"), "+ @1 A\n");
    importFrom(dir.path("good.txt"), Replace);
    EXPECT_EQ(notice("failedImport"), QString()) << "until the next";
}

TEST_F(Exchange, AFolderAndAPipeAreRefused) {
    importFrom(dir.path("."), Replace);
    EXPECT_THAT(notice("failedImport").toStdString(), EndsWith("the file can't be read: Is a directory"));
    ASSERT_EQ(::mkfifo(QFile::encodeName(dir.path("pipe.json")), S_IRUSR | S_IWUSR), 0);
    importFrom(dir.path("pipe.json"), Replace);
    EXPECT_FALSE(notice("failedImport").isEmpty());
    EXPECT_EQ(outline(), old);
}

TEST_F(Exchange, WhereEditingIsLockedNothingIsImported) {
    document.setLockTOCediting(true);
    EXPECT_FALSE(document.actions().validateUserInterfaceItem("importOutline:"));
    EXPECT_FALSE(document.actions().perform("importOutline:"));
    EXPECT_TRUE(document.actions().validateUserInterfaceItem("exportOutline:"));
}

TEST_F(Exchange, DeepOutlinesAreImportedAndSaved) {
    constexpr int levels = 10'000;
    QByteArray text;
    for (int i = 1; i <= levels; ++i)
        text += "BookmarkBegin\nBookmarkTitle: L\nBookmarkLevel: " + QByteArray::number(i) +
                "\nBookmarkPageNumber: 1\n";
    saveBytes(dir.path("deep.pdftk"), text);
    importFrom(dir.path("deep.pdftk"), Replace);
    EXPECT_EQ(notice("failedImport"), QString());
    ASSERT_TRUE(document.actions().perform("saveDocument:"));
    perform("exportOutline:", dir.path("again.pdftk"));
    EXPECT_EQ(bytesOf(dir.path("again.pdftk")), text);
}

}  // namespace
}  // namespace leafwright
