#include "support/CliFiles.h"
#include "support/CliRun.h"
#include "support/Corpus.h"

#include <gmock/gmock.h>

namespace leafwright::test {
namespace {

/// A file of which another reader says something else, and who is right.
struct KnownDifference {
    const char *file;
    const char *reason;
};
const std::vector<KnownDifference> knownDifferences{
    {"bug1978317",
     "We are right to open it: its one cross-reference stream, of 65,564 entries, is sound, and QPDF reads "
     "the whole file without complaint. The other reader gives up."},
};

bool differs(const std::string &file) {
    return std::any_of(knownDifferences.begin(), knownDifferences.end(),
                       [&](const KnownDifference &known) { return known.file == file; });
}

/// An outline as lines that can be compared at a glance: depth, title and 0-based page of each entry.
QStringList linesOf(const QJsonArray &nodes, const QString &pageKey, int depth = 0) {
    QStringList lines;
    for (const QJsonValue &node : nodes) {
        const QJsonValue page = node[pageKey];
        lines.append(
            QStringLiteral("%1 %2 -> %3")
                .arg(depth)
                .arg(node["title"].toString(), page.isDouble() ? QString::number(page.toInt()) : "-"));
        lines += linesOf(node["children"].toArray(), pageKey, depth + 1);
    }
    return lines;
}

/// The labels that another reader found; it has none where the pages have just their numbers.
QJsonArray expectedLabels(const QJsonObject &expected) {
    if (expected["labels"].isArray()) return expected["labels"].toArray();
    QJsonArray labels;
    for (int page = 1; page <= expected["pages"].toInt(); ++page)
        labels.append(QString::number(page));
    return labels;
}

/// Whether what we read is what another reader found. @param said gets where it is not
bool agrees(const QString &pdf, const QJsonObject &expected, QString &said) {
    const CliResult labels = runCli({"labels", pdf});
    const CliResult outline = runCli({"outline", pdf});
    const bool read = labels.exitCode == 0 && outline.exitCode == 0;
    if (read == expected.contains("error")) {
        said = read ? "it can be read" : QString::fromUtf8(labels.err + outline.err);
        return false;
    }
    if (!read) return true;
    const QJsonArray ourLabels = parsedJson(labels.out).array();
    const QStringList ourLines = linesOf(parsedJson(outline.out).array(), "pageIndex");
    const QStringList theirLines = linesOf(expected["outline"].toArray(), "page");
    if (ourLabels != expectedLabels(expected)) {
        said = QStringLiteral("labels: ") + QJsonDocument(ourLabels).toJson(QJsonDocument::Compact);
        return false;
    }
    said = ourLines.join(u'\n') + "\nthe other reader:\n" + theirLines.join(u'\n');
    return ourLines == theirLines;
}

class CorpusReading : public CorpusTest {};

TEST_P(CorpusReading, AgreesWithAnotherReader) {
    if (!QFile::exists(expectation())) GTEST_SKIP() << "no other reader has been asked";
    QString said;
    const bool same = agrees(pdf(), parsedJson(bytesOf(expectation())).object(), said);
    EXPECT_EQ(same, !differs(GetParam()))
        << (same ? "they agree now; the known difference is none any more" : qPrintable(said));
}

LEAFWRIGHT_FOR_CORPUS(CorpusReading);

class CorpusCommands : public CorpusTest {};

TEST_P(CorpusCommands, SucceedOrFailWithAMessage) {
    const TempDir dir;
    const QString out = dir.path("out.pdf");
    for (const QStringList &command : {QStringList{"info", pdf()},
                                       {"labels", pdf()},
                                       {"outline", pdf()},
                                       {"outline", pdf(), "--format", "plus"},
                                       {"outline", pdf(), "--format", "text"},
                                       {"fonts", pdf()},
                                       {"text", pdf()},
                                       {"autotoc", pdf(), "-o", out}}) {
        SCOPED_TRACE(qPrintable(command.first()));
        const CliResult result = runCli(command);
        if (result.exitCode == 0) continue;
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_TRUE(result.err.startsWith("leafwright-cli: " + pdf().toUtf8() + ": "))
            << result.err.constData();
        EXPECT_EQ(result.out, "");
        EXPECT_FALSE(QFile::exists(out));
    }
}

LEAFWRIGHT_FOR_CORPUS(CorpusCommands);

/// How many letters there are on each page on the average, as `text` prints them.
double lettersPerPage(const QString &pdf) {
    const QByteArrayList pages = runCli({"text", pdf}).out.split('\n');
    double letters = 0;
    int count = 0;
    for (const QByteArray &page : pages) {
        if (page.isEmpty()) continue;
        const QString text = parsedJson(page).object()["text"].toString();
        letters += static_cast<double>(std::ranges::count_if(text, [](QChar c) { return c.isLetter(); }));
        ++count;
    }
    return count > 0 ? letters / count : 0;
}

class CorpusContents : public CorpusTest {
protected:
    CliResult run(const QString &command) const {
        return runCli({command, pdf(), "-o", dir.path("out.pdf"), "--timeout", "20"});
    }
    std::string message(const char *text) const {
        return "leafwright-cli: " + pdf().toStdString() + ": " + text + "\n";
    }

    TempDir dir;
};

TEST_P(CorpusContents, AreFoundOrItIsSaidWhyNot) {
    // A document with few letters more or less may be read otherwise by the two.
    constexpr double few = 60;
    const CliResult result = run("contents");
    const std::string said = result.err.toStdString();
    const double letters = result.exitCode == 0 ? few : lettersPerPage(pdf());
    if (result.exitCode == 0) {
        EXPECT_TRUE(bytesOf(dir.path("out.pdf")).startsWith(bytesOf(pdf()).left(1024)));
        if (said.find("no headings were found") != std::string::npos) {
            EXPECT_EQ(outlineOf(dir.path("out.pdf")), outlineOf(pdf()));
        } else {
            EXPECT_FALSE(outlineOf(dir.path("out.pdf")).isEmpty());
        }
        return;
    }
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_FALSE(QFile::exists(dir.path("out.pdf")));
    if (said == message("page images without text; run text recognition first")) {
        EXPECT_LT(letters, few);
    } else {
        // What keeps such a file from being read keeps any command from it.
        EXPECT_EQ(said, run("autotoc").err.toStdString());
        EXPECT_THAT(said, testing::Not(testing::HasSubstr("given up")));
    }
}

TEST_P(CorpusContents, FilesWithoutTextAreToldSo) {
    const CliResult text = runCli({"text", pdf()});
    const bool hasPages = text.exitCode == 0 && !text.out.trimmed().isEmpty();
    if (!hasPages || lettersPerPage(pdf()) > 0) GTEST_SKIP() << "this one has text, or can't be read";
    if (run("autotoc").exitCode != 0) GTEST_SKIP() << "this file can't be edited";
    QFile::remove(dir.path("out.pdf"));
    const CliResult result = run("contents");
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err.toStdString(), message("page images without text; run text recognition first"));
    EXPECT_FALSE(QFile::exists(dir.path("out.pdf")));
}

LEAFWRIGHT_FOR_CORPUS(CorpusContents);

}  // namespace
}  // namespace leafwright::test
