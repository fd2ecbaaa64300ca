#include "pdf/PDFDocument.h"
#include "support/CliFiles.h"
#include "support/CliRun.h"
#include "support/Corpus.h"
#include "support/Paths.h"

#include <QDir>

#include <gtest/gtest.h>

namespace leafwright::test {
namespace {

/// Finds headings, renames and moves everything, saves under another name, and goes back to that.
const QString script = projectPath("bench/script.json");

/// The titles of JSON nodes in tree order, with their depth. Recursive: the parser of the JSON has a limit.
QStringList titlesOf(const QJsonArray &nodes, int depth = 0) {
    QStringList titles;
    for (const QJsonValue node : nodes) {
        titles.append(QString::number(depth) + ' ' + node["title"].toString());
        titles.append(titlesOf(node["children"].toArray(), depth + 1));
    }
    return titles;
}

class ScriptOnCorpus : public CorpusTest {
protected:
    static bool isEditable() {
        const auto opened = PDFDocument::open(pdf());
        const auto *document = std::get_if<std::unique_ptr<PDFDocument>>(&opened);
        return document && !(*document)->isEncrypted();
    }
    void TearDown() override { QDir::setCurrent(folderBefore); }

    TempDir dir;

private:
    QString folderBefore = QDir::currentPath();
};

TEST_P(ScriptOnCorpus, HeadingsAreFoundRenamedMovedSavedAndReverted) {
    if (!isEditable()) GTEST_SKIP() << "it can't be edited";
    const QString file = pdf();
    const QByteArray original = bytesOf(file);
    QDir::setCurrent(dir.path({}));
    const CliResult result = runCli({"run", script, file, "--report", "report.json"});
    ASSERT_EQ(result.exitCode, 0) << result.err.constData();
    EXPECT_TRUE(bytesOf(file) == original);

    const QJsonArray records = parsedJson(bytesOf("report.json")).array();
    ASSERT_EQ(records.size(), 9);
    const QStringList saved = titlesOf(records[7]["outline"].toArray());
    EXPECT_FALSE(records[7]["edited"].toBool());
    EXPECT_FALSE(saved.isEmpty()) << "there is the entry above the headings at least";
    EXPECT_EQ(titlesOf(records[8]["outline"].toArray()), saved);
    EXPECT_TRUE(records[8]["edited"].toBool());
    EXPECT_EQ(titlesOf(outlineOf("other.pdf")), saved);
}

LEAFWRIGHT_FOR_CORPUS(ScriptOnCorpus);

}  // namespace
}  // namespace leafwright::test
