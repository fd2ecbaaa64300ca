#include "support/CliFiles.h"
#include "support/CliRun.h"

#include <QFileInfo>

#include <gmock/gmock.h>

namespace leafwright::test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

/// Writes the tree into a PDF of three pages, out.pdf.
CliResult apply(const TempDir &dir, const QByteArray &tree) {
    saveBytes(dir.path("tree"), tree);
    const QString path = savePdf(dir, "in.pdf", 3, {"Old Entry"});
    return runCli({"apply", "-q", path, dir.path("tree"), "-o", dir.path("out.pdf")});
}

/// The same, and what the outline then is.
QJsonArray applied(const TempDir &dir, const QByteArray &tree) {
    const CliResult result = apply(dir, tree);
    EXPECT_EQ(result.exitCode, 0) << result.err.constData();
    return outlineOf(dir.path("out.pdf"));
}

QJsonObject node(const QString &title, const QJsonValue &label, const QJsonValue &index,
                 const QJsonArray &point, const QJsonArray &children = {}) {
    return {{"title", title},
            {"pageLabel", label},
            {"pageIndex", index},
            {"point", point},
            {"children", children}};
}

const QJsonArray topOfPage{306, 792};

TEST(ApplyCommand, JsonReplacesTheOutline) {
    const TempDir dir;
    const QJsonArray tree{node("One", "2", 1, {72, 700.25}, {node("Below", "3", 2, {10, 20})}),
                          node("Two", "1", 0, {0.5, -3})};
    const CliResult result = apply(dir, QJsonDocument(tree).toJson());
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(outlineOf(dir.path("out.pdf")), tree);
    EXPECT_EQ(plusLinesOf(dir.path("in.pdf")), "+ @1 Old Entry\n");
}

TEST(ApplyCommand, PlusLinesReplaceTheOutline) {
    const TempDir dir;
    const QByteArray lines =
        "+ @2 One\n"
        "++ @3 Below One\n"
        "+ @1 Two  with  blanks\n";
    EXPECT_EQ(apply(dir, lines).exitCode, 0);
    EXPECT_EQ(plusLinesOf(dir.path("out.pdf")), lines);
}

TEST(ApplyCommand, EveryFormThatOutlinePrintsReplacesTheOutline) {
    const TempDir dir;
    ASSERT_EQ(apply(dir, "+ @1 One & <Two>\n++ @3 Below \"One\"\n+ @2 1.2 Three\n").exitCode, 0);
    const QString lines = plusLinesOf(dir.path("out.pdf"));
    for (const char *format : {"json", "plus", "markdown", "html", "opml", "pdftk", "cpdf", "pdfcpu"}) {
        saveBytes(dir.path("other"), runCli({"outline", dir.path("out.pdf"), "--format", format}).out);
        const CliResult result = runCli({"apply", savePdf(dir, "in.pdf", 3), dir.path("other"), "--format",
                                         format, "-o", dir.path("again.pdf")});
        EXPECT_EQ(result.exitCode, 0) << format << result.err.constData();
        EXPECT_EQ(plusLinesOf(dir.path("again.pdf")), lines) << format;
    }
}

TEST(ApplyCommand, TheFormIsToldByExtensionAndText) {
    const TempDir dir;
    const QString path = savePdf(dir, "in.pdf", 3);
    const auto linesOf = [&](const QString &name, const QByteArray &text) {
        saveBytes(dir.path(name), text);
        const CliResult result = runCli({"apply", path, dir.path(name), "-o", dir.path("out.pdf")});
        EXPECT_EQ(result.exitCode, 0) << result.err.constData();
        return plusLinesOf(dir.path("out.pdf"));
    };
    EXPECT_EQ(linesOf("toc.md", "- [A](#page=2)\n"), "+ @2 A\n");
    EXPECT_EQ(linesOf("toc.txt", "0 \"A\" 3\n"), "+ @3 A\n");
    EXPECT_EQ(linesOf("toc", "{\"bookmarks\": [{\"title\": \"A\", \"page\": 1}]}"), "+ @1 A\n");
    EXPECT_EQ(linesOf("lines.json", "+ @2 A\n"), "+ @2 A\n") << "as always";
    EXPECT_EQ(linesOf("lines.md", "+ @3 A\n"), "+ @3 A\n") << "as always";
}

TEST(ApplyCommand, UnknownFormsAndTheOneForPeopleAreWrongUsage) {
    const TempDir dir;
    saveBytes(dir.path("tree"), "+ @1 A\n");
    for (const char *format : {"xml", "text"}) {
        const CliResult result = runCli({"apply", savePdf(dir, "in.pdf", 1), dir.path("tree"), "--format",
                                         format, "-o", dir.path("out.pdf")});
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_THAT(result.err.toStdString(), HasSubstr("is no format that can be read"));
        EXPECT_FALSE(QFileInfo::exists(dir.path("out.pdf")));
    }
}

TEST(ApplyCommand, TheOriginalStandsInFrontOfTheResult) {
    const TempDir dir;
    apply(dir, "+ @2 One\n");
    EXPECT_TRUE(bytesOf(dir.path("out.pdf")).startsWith(bytesOf(dir.path("in.pdf"))));
}

TEST(ApplyCommand, TreeMayComeFromStandardInput) {
    const TempDir dir;
    saveBytes(dir.path("tree"), "+ @2 From Standard Input\n");
    const StandardInput input(dir.path("tree"));
    EXPECT_EQ(runCli({"apply", savePdf(dir, "in.pdf", 3), "-", "-o", dir.path("out.pdf")}).exitCode, 0);
    EXPECT_EQ(plusLinesOf(dir.path("out.pdf")), "+ @2 From Standard Input\n");
}

TEST(ApplyCommand, EmptyArrayRemovesTheOutline) {
    const TempDir dir;
    EXPECT_THAT(applied(dir, "[]"), IsEmpty());
}

TEST(ApplyCommand, OnlyTheTitleIsNeeded) {
    const TempDir dir;
    EXPECT_EQ(applied(dir, R"([{"title": "Bare"}])"), (QJsonArray{node("Bare", {}, {}, {0, 0})}));
}

TEST(ApplyCommand, NodeWithoutPageStaysWithoutAndIsSaidTo) {
    const TempDir dir;
    const CliResult result = apply(dir, R"([{"title": "A", "pageLabel": null, "pageIndex": null},
                                            {"title": "B", "point": [5, 6]}])");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "leafwright-cli: 2 entries have no page; they are written without one\n");
    EXPECT_EQ(outlineOf(dir.path("out.pdf")),
              (QJsonArray{node("A", {}, {}, {0, 0}), node("B", {}, {}, {0, 0})}));
}

TEST(ApplyCommand, AnAtSignAloneIsTheEmptyLabelWhereAPageHasIt) {
    const TempDir dir;
    PdfBuilder pdf;
    pdf.addNumberedPages(3);
    pdf.setCatalogEntry("/PageLabels", "<< /Nums [0 << /S /D >> 1 << >> 2 << /P (z) >>] >>");
    pdf.save(dir.path("in.pdf"));
    saveBytes(dir.path("tree"), "+ @ Plate\n++ @z Last\n");
    const CliResult result =
        runCli({"apply", "-q", dir.path("in.pdf"), dir.path("tree"), "-o", dir.path("out.pdf")});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    QJsonObject plate = node("Plate", "", 1, topOfPage);
    plate["children"] = QJsonArray{node("Last", "z", 2, topOfPage)};
    EXPECT_EQ(outlineOf(dir.path("out.pdf")), QJsonArray{plate});
}

TEST(ApplyCommand, AnAtSignAloneIsNoPageWhereNoneHasTheEmptyLabel) {
    const TempDir dir;
    const CliResult result = apply(dir, "+ @ Part\n");
    EXPECT_EQ(result.err, "leafwright-cli: 1 entries have no page; they are written without one\n");
    EXPECT_EQ(outlineOf(dir.path("out.pdf")), (QJsonArray{node("Part", {}, {}, {0, 0})}));
}

TEST(ApplyCommand, PageIndexCountsWithoutALabelOnly) {
    const TempDir dir;
    EXPECT_EQ(applied(dir, R"([{"title": "A", "pageIndex": 2, "point": [1, 2]},
                               {"title": "B", "pageIndex": 2, "pageLabel": "2", "point": [1, 2]},
                               {"title": "C", "pageIndex": 99, "pageLabel": "1", "point": [1, 2]}])"),
              (QJsonArray{node("A", "3", 2, {1, 2}), node("B", "2", 1, {1, 2}), node("C", "1", 0, {1, 2})}));
}

TEST(ApplyCommand, NoParticularSpotBecomesTheMiddleOfThePagesTopEdge) {
    const TempDir dir;
    EXPECT_EQ(applied(dir, R"([{"title": "A", "pageLabel": "2"},
                               {"title": "B", "pageLabel": "2", "point": [0, 0]},
                               {"title": "C", "pageLabel": "2", "point": null},
                               {"title": "D", "pageLabel": "2", "point": [0, 1]}])"),
              (QJsonArray{node("A", "2", 1, topOfPage), node("B", "2", 1, topOfPage),
                          node("C", "2", 1, topOfPage), node("D", "2", 1, {0, 1})}));
}

TEST(ApplyCommand, UnknownLabelLeadsToTheFirstPageAndIsSaidTo) {
    const TempDir dir;
    const CliResult result = apply(dir, "+ @2 Known\n++ @xii Unknown\n");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(
        result.err,
        "leafwright-cli: \"Unknown\": no page is labelled \"xii\"; the entry leads to the first page\n");
    EXPECT_EQ(plusLinesOf(dir.path("out.pdf")), "+ @2 Known\n++ @1 Unknown\n");
}

TEST(ApplyCommand, ManyUnknownLabelsAreSummedUp) {
    const TempDir dir;
    QByteArray lines;
    for (int i = 0; i < 13; ++i)
        lines += "+ @nowhere Entry\n";
    const CliResult result = apply(dir, lines);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err.count("no page is labelled"), 10);
    EXPECT_THAT(result.err.toStdString(),
                HasSubstr("3 more entries with unknown page labels lead to the first page"));
}

TEST(ApplyCommand, OfPagesWithOneLabelItIsTheLast) {
    const TempDir dir;
    PdfBuilder pdf;
    pdf.addNumberedPages(3);
    pdf.setCatalogEntry("/PageLabels", "<< /Nums [0 << /P (same) >> 2 << /P (other) >>] >>");
    pdf.save(dir.path("in.pdf"));
    saveBytes(dir.path("tree"), "+ @same Entry\n");
    EXPECT_EQ(runCli({"apply", dir.path("in.pdf"), dir.path("tree"), "-o", dir.path("out.pdf")}).exitCode, 0);
    EXPECT_EQ(outlineOf(dir.path("out.pdf")), (QJsonArray{node("Entry", "same", 1, topOfPage)}));
}

TEST(ApplyCommand, PrintedPageNumbersAreFoundInTheText) {
    const TempDir dir;
    PdfBuilder pdf;
    for (int page = 0; page < 12; ++page) {
        // The first two pages are the cover, so that page 3 has "1" printed on it.
        const std::string printed = page < 2 ? "" : std::to_string(page - 1);
        pdf.addPage(PdfBuilder::showText("F1", 10, 72, 700, "Some words of the text " + printed));
    }
    pdf.save(dir.path("in.pdf"));
    saveBytes(dir.path("tree"), "+ @p5 Lower\n+ @P6 Upper\n");
    const CliResult result =
        runCli({"apply", "-q", dir.path("in.pdf"), dir.path("tree"), "-o", dir.path("out.pdf")});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(plusLinesOf(dir.path("out.pdf")), "+ @7 Lower\n+ @8 Upper\n");
}

TEST(ApplyCommand, TitlesOfAllKindsSurvive) {
    const TempDir dir;
    const QJsonArray tree{
        node("", "1", 0, topOfPage),
        node(QString::fromUtf8("Emoji \xF0\x9F\x98\x80 and accents \xC3\xA9"), "1", 0, topOfPage),
        node(QString::fromUtf8("\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D"), "1", 0, topOfPage),  // Hebrew
        node("Two\nlines\tand a tab", "1", 0, topOfPage),
        node("(parentheses) \\ \"quotes\" <tags>", "1", 0, topOfPage),
        node("  blanks around  ", "1", 0, topOfPage),
        node(QString(70'000, u'x'), "1", 0, topOfPage)};
    EXPECT_EQ(applied(dir, QJsonDocument(tree).toJson()), tree);
}

TEST(ApplyCommand, LoneSurrogatesSurvive) {
    const TempDir dir;
    EXPECT_EQ(apply(dir, R"([{"title": "A\ud83dB", "pageLabel": "1"}])").exitCode, 0);
    const CliResult result = runCli({"outline", dir.path("out.pdf")});
    EXPECT_THAT(result.out.toStdString(), HasSubstr(R"("title": "A\ud83dB")"));
}

TEST(ApplyCommand, StylesAndActionsAreWritten) {
    const TempDir dir;
    const CliResult result =
        apply(dir, R"([{"title": "A", "pageLabel": "2", "bold": true, "italic": true, "open": true,
                              "color": [1, 0.5, 0], "children": [{"title": "B", "pageLabel": "1"}]},
                             {"title": "C", "action": {"type": "URI", "uri": "about:blank"}},
                             {"title": "D", "action": {"type": "GoToR", "file": "other.pdf"}},
                             {"title": "E", "pageLabel": "3", "action": {"type": "URI", "uri": "about:blank"}},
                             {"title": "F", "action": {"type": "Launch"}, "entry": 99999}])");
    ASSERT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.err.toStdString(),
                HasSubstr("1 entries did something that only the file has that they come from; they are "
                          "written without it\n"));
    const QJsonArray nodes = parsedJson(runCli({"outline", dir.path("out.pdf")}).out).array();
    EXPECT_EQ(nodes[0]["bold"], true);
    EXPECT_EQ(nodes[0]["italic"], true);
    EXPECT_EQ(nodes[0]["open"], true);
    EXPECT_EQ(nodes[0]["color"], (QJsonArray{1, 0.5, 0}));
    EXPECT_EQ(nodes[0]["children"][0]["bold"], false);
    EXPECT_EQ(nodes[1]["action"], (QJsonObject{{"type", "URI"}, {"uri", "about:blank"}}));
    EXPECT_EQ(nodes[2]["action"], (QJsonObject{{"type", "GoToR"}, {"file", "other.pdf"}}));
    EXPECT_EQ(nodes[3]["action"], QJsonValue()) << "a page wins";
    EXPECT_EQ(nodes[3]["pageLabel"], "3");
    EXPECT_EQ(nodes[4]["action"], QJsonValue()) << "only with the entry that has it";
}

/// Two entries with something of their own, of which only the file knows.
QString saveWithOwnThings(const TempDir &dir, const QString &name, const std::string &first,
                          const std::string &second) {
    PdfBuilder pdf;
    pdf.addNumberedPages(1);
    const std::vector<int> entries = addOutline(pdf, {{"(A)", ""}, {"(B)", ""}});
    const std::string action = " /A << /S /JavaScript /JS (x) >> /Private (mine) ";
    pdf.replaceObject(entries[0], "<< /Title (" + first + ")" + action + "/Next " +
                                      PdfBuilder::reference(entries[1]) + " >>");
    pdf.replaceObject(entries[1], "<< /Title (" + second + ")" + action + " >>");
    pdf.save(dir.path(name));
    return dir.path(name);
}

TEST(ApplyCommand, WhatEntriesOfAnotherFileAreNumberedIsNotTakenForTheirs) {
    const TempDir dir;
    const QString old = saveWithOwnThings(dir, "old.pdf", "Intro", "Body");
    const QString now = saveWithOwnThings(dir, "now.pdf", "Body", "Intro");
    saveBytes(dir.path("tree"), runCli({"outline", old}).out);
    const CliResult result = runCli({"apply", now, dir.path("tree"), "-o", dir.path("out.pdf")});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.err.toStdString(),
                HasSubstr("tree: the outline was made of another file, or of an earlier "
                          "edition: what only the entries of this file have is not kept\n"));
    EXPECT_THAT(result.err.toStdString(), HasSubstr("2 entries did something"));
    const QJsonArray nodes = parsedJson(runCli({"outline", dir.path("out.pdf")}).out).array();
    ASSERT_EQ(nodes.size(), 2);
    EXPECT_EQ(nodes[0]["title"], "Intro");
    EXPECT_EQ(nodes[0]["action"], QJsonValue());
}

TEST(ApplyCommand, EntriesThatAreAllRenamedAreStillTheFiles) {
    const TempDir dir;
    const QString path = saveWithOwnThings(dir, "in.pdf", "Intro", "Body");
    saveBytes(dir.path("tree"),
              runCli({"outline", path}).out.replace("Intro", "INTRO").replace("Body", "BODY"));
    const CliResult result = runCli({"apply", "-q", path, dir.path("tree"), "-o", dir.path("out.pdf")});
    EXPECT_EQ(result.err, "");
    const QJsonArray nodes = parsedJson(runCli({"outline", dir.path("out.pdf")}).out).array();
    EXPECT_EQ(nodes[1]["title"], "BODY");
    EXPECT_EQ(nodes[1]["action"], (QJsonObject{{"type", "JavaScript"}}));
}

TEST(ApplyCommand, ColoursAndPlacesThatOnlyAFileHasAreTakenBack) {
    const TempDir dir;
    PdfBuilder pdf;
    pdf.addNumberedPages(1);
    const std::vector<int> entries = addOutline(pdf, {{"(A)", ""}});
    pdf.replaceObject(entries[0],
                      "<< /Title (A) /C [2 0 -1] /Dest [" + pdf.pageReference(0) + " /FitH 100000000] >>");
    pdf.save(dir.path("in.pdf"));
    const QByteArray tree = runCli({"outline", dir.path("in.pdf")}).out;
    const auto failure = [&](const QByteArray &text) {
        saveBytes(dir.path("tree"), text);
        return runCli({"apply", "-q", dir.path("in.pdf"), dir.path("tree"), "-o", dir.path("out.pdf")}).err;
    };
    EXPECT_EQ(failure(tree), "");
    EXPECT_EQ(runCli({"outline", dir.path("out.pdf")}).out, tree);
    EXPECT_THAT(failure(QByteArray(tree).replace("[2, 0, -1]", "[2, 1, -1]")).toStdString(),
                HasSubstr("\"color\" must be"));
    EXPECT_THAT(failure(QByteArray(tree).replace("1e+08", "2e+08")).toStdString(),
                HasSubstr("\"point\" must be"));
}

TEST(ApplyCommand, WhatTheFileLacksOfAnActionIsNotAskedFor) {
    const TempDir dir;
    PdfBuilder pdf;
    pdf.addNumberedPages(1);
    const std::vector<int> entries = addOutline(pdf, {{"(A)", ""}});
    for (const char *type : {"URI", "GoToR", "Launch"}) {
        pdf.replaceObject(entries[0], std::string("<< /Title (A) /A << /S /") + type + " >> >>");
        pdf.save(dir.path("in.pdf"));
        saveBytes(dir.path("tree"), runCli({"outline", dir.path("in.pdf")}).out);
        const CliResult result =
            runCli({"apply", dir.path("in.pdf"), dir.path("tree"), "-o", dir.path("out.pdf")});
        EXPECT_EQ(result.exitCode, 0) << type << result.err.constData();
        EXPECT_EQ(runCli({"outline", dir.path("out.pdf")}).out, bytesOf(dir.path("tree"))) << type;
    }
}

TEST(ApplyCommand, ByteOrderMarkIsNoPartOfTheTree) {
    const TempDir dir;
    EXPECT_EQ(apply(dir, "\xEF\xBB\xBF[{\"title\": \"A\", \"pageLabel\": \"2\"}]").exitCode, 0);
    EXPECT_EQ(plusLinesOf(dir.path("out.pdf")), "+ @2 A\n");
    EXPECT_EQ(apply(dir, "\xEF\xBB\xBF+ @3 B\n").exitCode, 0);
    EXPECT_EQ(plusLinesOf(dir.path("out.pdf")), "+ @3 B\n");
}

TEST(ApplyCommand, JsonMayStandBehindAnyBlanks) {
    const TempDir dir;
    EXPECT_EQ(apply(dir, QByteArray(100, '\n') + R"([{"title": "A", "pageLabel": "2"}])").exitCode, 0);
    EXPECT_EQ(plusLinesOf(dir.path("out.pdf")), "+ @2 A\n");
}

TEST(ApplyCommand, OwnOutputIsAFixedPoint) {
    const TempDir dir;
    PdfBuilder pdf;
    pdf.addNumberedPages(3);
    addOutline(pdf, {{"(Fit)", "[" + pdf.pageReference(1) + " /Fit]"},
                     {"(Nowhere)", "", {{"(Below)", "[" + pdf.pageReference(2) + " /XYZ 1.25 2.5 null]"}}}});
    pdf.save(dir.path("0.pdf"));
    for (int round = 0; round < 2; ++round) {
        const QString from = dir.path(QStringLiteral("%1.pdf").arg(round));
        saveBytes(dir.path("tree"), runCli({"outline", from}).out);
        const QString to = dir.path(QStringLiteral("%1.pdf").arg(round + 1));
        ASSERT_EQ(runCli({"apply", from, dir.path("tree"), "-o", to}).exitCode, 0);
    }
    EXPECT_EQ(outlineOf(dir.path("1.pdf"))[0].toObject()["point"], topOfPage);
    EXPECT_EQ(plusLinesOf(dir.path("1.pdf")), plusLinesOf(dir.path("0.pdf")));
    EXPECT_EQ(outlineOf(dir.path("2.pdf")), outlineOf(dir.path("1.pdf")));
}

TEST(ApplyCommand, AHundredThousandItemsThereAndBack) {
    const TempDir dir;
    QByteArray tree = "[";
    for (int i = 0; i < 1000; ++i) {
        tree +=
            (i ? ",{" : "{") + QByteArray(R"("title":"Chapter","pageLabel":"1","point":[1,2],"children":[)");
        for (int k = 0; k < 99; ++k) {
            tree += (k ? ",{" : "{") + QByteArray(R"("title":"Section )") + QByteArray::number(k) +
                    R"(","pageLabel":"2","point":[3,4]})";
        }
        tree += "]}";
    }
    tree += "]";
    ASSERT_EQ(apply(dir, tree).exitCode, 0);
    const QByteArray lines = runCli({"outline", dir.path("out.pdf"), "--format", "plus"}).out;
    EXPECT_EQ(lines.count('\n'), 100'000);
    EXPECT_TRUE(lines.endsWith("++ @2 Section 98\n"));

    const QByteArray json = runCli({"outline", dir.path("out.pdf")}).out;
    ASSERT_EQ(apply(dir, json).exitCode, 0);
    EXPECT_EQ(runCli({"outline", dir.path("out.pdf")}).out, json);
}

TEST(ApplyCommand, OutputMayBeTheInput) {
    const TempDir dir;
    const QString path = savePdf(dir, "in.pdf", 2, {"Old"});
    saveBytes(dir.path("tree"), "+ @2 New\n");
    EXPECT_EQ(runCli({"apply", path, dir.path("tree"), "-o", path}).exitCode, 0);
    EXPECT_EQ(plusLinesOf(path), "+ @2 New\n");
}

}  // namespace
}  // namespace leafwright::test
