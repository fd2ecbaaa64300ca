#include "support/CliFiles.h"
#include "support/CliRun.h"
#include "support/Paths.h"

#include <gmock/gmock.h>

namespace leafwright::test {
namespace {

using testing::HasSubstr;
using testing::Not;

/// Commands that write entries of the file again, on pages labelled 1, 2, 1, 2 with headings, of which the
/// second has an entry.
class KeepPages : public testing::Test {
protected:
    void SetUp() override { makePdf("<< /Nums [0 << /S /D >> 2 << /S /D >>] >>"); }
    void makePdf(const std::string &pageLabels) {
        PdfBuilder builder;
        for (int page = 0; page < 4; ++page) {
            builder.addPage(
                PdfBuilder::showText("F2", 18, 72, 700, "Some heading") +
                PdfBuilder::showText("F1", 10, 72, 660, "Body text that is longer than headings."));
        }
        builder.setCatalogEntry("/PageLabels", pageLabels);
        addOutline(builder, {{"(Kept)", "[" + builder.pageReference(1) + " /XYZ 72 700 null]"}});
        builder.save(dir.path("in.pdf"));
        saveBytes(dir.path("steps.json"), "[]");
        saveBytes(dir.path("tree.json"), runCli({"outline", dir.path("in.pdf")}).out);
    }

    /// Runs a command on the file. @return the 0-based page of the first entry in what it writes
    int pageAfter(QStringList arguments, const QStringList &options = {}) {
        arguments += QStringList{"-q", "-o", dir.path("out.pdf")} + options;
        result = runCli(arguments);
        EXPECT_EQ(result.exitCode, 0) << result.err.constData();
        return outlineOf(dir.path("out.pdf"))[0].toObject()["pageIndex"].toInt(-1);
    }
    QList<QStringList> commands() const {
        return {{"autotoc", dir.path("in.pdf"), "--keep"},
                {"minitoc", dir.path("in.pdf"), "--page", "1", "--text", "Some heading"},
                {"apply", dir.path("in.pdf"), dir.path("tree.json")},
                {"run", dir.path("steps.json"), dir.path("in.pdf")}};
    }

    TempDir dir;
    CliResult result;
};

TEST_F(KeepPages, WithoutTheOptionEntriesThatLeadElsewhereAreTold) {
    for (const QStringList &command : commands()) {
        EXPECT_EQ(pageAfter(command), 3) << command[0].toStdString();
        const bool findsHeadings = command[0].endsWith("toc");
        EXPECT_THAT(
            result.err.toStdString(),
            HasSubstr(findsHeadings
                          ? "in.pdf: 3 entries lead elsewhere now, to the last page with their label: "
                            "“Kept” (page 2, now 4), “Some heading” (page 1, now 3), “Some heading” "
                            "(page 2, now 4); --keep-pages keeps their pages"
                          : "in.pdf: 1 entries lead elsewhere now, to the last page with their label: "
                            "“Kept” (page 2, now 4); --keep-pages keeps their pages"))
            << command[0].toStdString();
    }
}

TEST_F(KeepPages, WithTheOptionTheyStay) {
    for (const QStringList &command : commands()) {
        EXPECT_EQ(pageAfter(command, {"--keep-pages"}), 1) << command[0].toStdString();
        EXPECT_EQ(result.err, "") << command[0].toStdString();
    }
}

TEST_F(KeepPages, AnIndexWithAnotherLabelIsNoPageToKeep) {
    saveBytes(dir.path("tree.json"), R"([{"title": "Edited", "pageLabel": "1", "pageIndex": 1}])");
    EXPECT_EQ(pageAfter({"apply", dir.path("in.pdf"), dir.path("tree.json")}, {"--keep-pages"}), 2);
    EXPECT_EQ(result.err, "");
}

TEST_F(KeepPages, AnIndexWithoutALabelIsOne) {
    saveBytes(dir.path("tree.json"), R"([{"title": "New", "pageIndex": 1}])");
    EXPECT_EQ(pageAfter({"apply", dir.path("in.pdf"), dir.path("tree.json")}), 3);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("“New” (page 2, now 4)"));
    EXPECT_EQ(pageAfter({"apply", dir.path("in.pdf"), dir.path("tree.json")}, {"--keep-pages"}), 1);
}

TEST_F(KeepPages, FilesOfABatchKeepThemToo) {
    const QStringList batch{"autotoc", "-q", dir.path("in.pdf"), "--keep", "--out-dir", dir.path("out")};
    ProgramResult told = runProgram(commandLineProgram(), batch);
    EXPECT_EQ(told.exitCode, 0);
    EXPECT_THAT(told.err.toStdString(), HasSubstr("in.pdf: 3 entries lead elsewhere now"));
    EXPECT_EQ(outlineOf(dir.path("out/in.pdf"))[0].toObject()["pageIndex"].toInt(), 3);
    told = runProgram(commandLineProgram(), batch + QStringList("--keep-pages"));
    EXPECT_EQ(told.exitCode, 0);
    EXPECT_EQ(told.err, "");
    EXPECT_EQ(outlineOf(dir.path("out/in.pdf"))[0].toObject()["pageIndex"].toInt(), 1);
}

TEST_F(KeepPages, ContentsThatAreAddedLeaveThemWhereTheyAre) {
    const QString book = savePdfWithContents(dir, "book.pdf", "<< /Nums [0 << /S /D >> 2 << /S /D >>] >>");
    EXPECT_EQ(pageAfter({"contents", book, "--keep"}), 3);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("“Old Entry” (page 2, now 4)"));
    EXPECT_EQ(pageAfter({"contents", book, "--keep"}, {"--keep-pages"}), 1);
    EXPECT_EQ(result.err, "");
}

/// Pages labelled P-1 to P-4: what begins with "p" is a printed page number, and no label of a page.
class KeepPagesOfPrefix : public KeepPages {
protected:
    void SetUp() override { makePdf("<< /Nums [0 << /S /D /P (P-) >>] >>"); }
};

TEST_F(KeepPagesOfPrefix, WithTheOptionTheyStay) {
    for (const QStringList &command : commands()) {
        EXPECT_EQ(pageAfter(command, {"--keep-pages"}), 1) << command[0].toStdString();
        EXPECT_EQ(result.err, "") << command[0].toStdString();
    }
}

TEST_F(KeepPagesOfPrefix, WithoutItTheReasonIsTold) {
    for (const QStringList &command : commands()) {
        EXPECT_EQ(pageAfter(command), 0) << command[0].toStdString();
        EXPECT_THAT(
            result.err.toStdString(),
            HasSubstr("entries lead elsewhere now, for a page label that begins with \"p\" is read as a "
                      "printed page number: “Kept” (page 2, now 1)"))
            << command[0].toStdString();
        EXPECT_THAT(result.err.toStdString(), Not(HasSubstr("the last page with their label")));
        EXPECT_THAT(result.err.toStdString(), Not(HasSubstr("no page is labelled")));
    }
}

TEST_F(KeepPagesOfPrefix, ALabelWithoutAnIndexStandsForAPrintedPageNumber) {
    saveBytes(dir.path("tree.json"), R"([{"title": "New", "pageLabel": "P-2"}])");
    EXPECT_EQ(pageAfter({"apply", dir.path("in.pdf"), dir.path("tree.json")}, {"--keep-pages"}), 0);
    EXPECT_EQ(result.err,
              "leafwright-cli: \"New\": \"P-2\" is read as a printed page number, which no page is known to "
              "have; the entry leads to the first page\n");
    saveBytes(dir.path("tree.json"), R"([{"title": "New", "pageLabel": "Q-2"}])");
    EXPECT_EQ(pageAfter({"apply", dir.path("in.pdf"), dir.path("tree.json")}, {"--keep-pages"}), 0);
    EXPECT_EQ(result.err,
              "leafwright-cli: \"New\": no page is labelled \"Q-2\"; the entry leads to the first page\n");
}

TEST_F(KeepPages, AScriptThatSavesTellsAsWell) {
    saveBytes(dir.path("steps.json"), R"([{"do": "saveDocument:"}])");
    result = runCli({"run", dir.path("steps.json"), dir.path("in.pdf")});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("“Kept” (page 2, now 4)"));
    EXPECT_EQ(outlineOf(dir.path("in.pdf"))[0].toObject()["pageIndex"].toInt(), 3);
}

}  // namespace
}  // namespace leafwright::test
