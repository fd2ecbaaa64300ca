#include "support/CliFiles.h"
#include "support/CliRun.h"
#include "support/Corpus.h"

#include <qpdf/QPDFOutlineDocumentHelper.hh>
#include <qpdf/QPDFPageDocumentHelper.hh>

#include <gmock/gmock.h>

namespace leafwright::test {
namespace {

class CorpusHeadings : public CorpusTest {};

TEST_P(CorpusHeadings, SavedAndPrintedMapGiveTheItemsOfTheGuessedOne) {
    const TempDir dir;
    const CliResult fonts = runCli({"fonts", pdf(), "--save-map", dir.path("saved")});
    const QString guessed = dir.path("guessed.pdf");
    if (runCli({"autotoc", pdf(), "-o", guessed}).exitCode != 0) {
        GTEST_SKIP() << "this file can't be edited";
    }
    const bool hasHeadings = !parsedJson(fonts.out)["map"].toArray().isEmpty();
    saveBytes(dir.path("printed"), fonts.out);
    for (const char *map : {"saved", "printed"}) {
        SCOPED_TRACE(map);
        const QString out = dir.path(QString(map) + ".pdf");
        const CliResult result = runCli({"autotoc", pdf(), "-o", out, "--map", dir.path(map)});
        EXPECT_EQ(result.exitCode, hasHeadings ? 0 : 1) << result.err.constData();
        EXPECT_EQ(QFile::exists(out), hasHeadings);
        if (hasHeadings) {
            EXPECT_EQ(runCli({"outline", out}).out, runCli({"outline", guessed}).out);
        }
    }
}

LEAFWRIGHT_FOR_CORPUS(CorpusHeadings);

/// An outline as QPDF reads it, in the words of `outline --format json` less label and point.
QJsonArray nodesOf(const std::vector<QPDFOutlineObjectHelper> &entries,
                   const std::map<QPDFObjGen, int> &pages) {
    QJsonArray nodes;
    for (QPDFOutlineObjectHelper entry : entries) {
        nodes.append(QJsonObject{{"title", QString::fromStdString(entry.getTitle())},
                                 {"pageIndex", pages.at(entry.getDestPage().getObjGen())},
                                 {"children", nodesOf(entry.getKids(), pages)}});
    }
    return nodes;
}

QJsonArray outlineByQpdf(const QString &path) {
    QPDF pdf;
    pdf.processFile(QFile::encodeName(path).constData());
    std::map<QPDFObjGen, int> pages;
    for (QPDFPageObjectHelper &page : QPDFPageDocumentHelper(pdf).getAllPages()) {
        const auto index = static_cast<int>(pages.size());
        pages[page.getObjectHandle().getObjGen()] = index;
    }
    return nodesOf(QPDFOutlineDocumentHelper(pdf).getTopLevelOutlines(), pages);
}

QJsonArray withoutLabelsAndPoints(const QJsonArray &nodes) {
    QJsonArray result;
    for (const QJsonValue &node : nodes) {
        result.append(QJsonObject{{"title", node["title"]},
                                  {"pageIndex", node["pageIndex"]},
                                  {"children", withoutLabelsAndPoints(node["children"].toArray())}});
    }
    return result;
}

class CorpusManuals : public CorpusTest {};

TEST_P(CorpusManuals, OtherReadersFindTheHeadingsToo) {
    const TempDir dir;
    const QString out = dir.path("out.pdf");
    ASSERT_EQ(runCli({"autotoc", pdf(), "-o", out}).exitCode, 0);
    EXPECT_TRUE(bytesOf(out).startsWith(bytesOf(pdf())));
    EXPECT_EQ(runProgram("qpdf", {"--check", out}).exitCode, 0);  // as for the original

    const QJsonArray outline = withoutLabelsAndPoints(outlineOf(out));
    EXPECT_GT(outline.size(), 5);
    EXPECT_EQ(outlineByQpdf(out), outline);

    const ProgramResult info = runProgram("pdfinfo", {out});
    EXPECT_EQ(info.exitCode, 0);
    EXPECT_EQ(info.err, "");
    EXPECT_EQ(info.out.count("Pages:"), 1);
}

INSTANTIATE_TEST_SUITE_P(Corpus, CorpusManuals, testing::Values("R-exts", "gnuplot"), corpusTestName);

}  // namespace
}  // namespace leafwright::test
