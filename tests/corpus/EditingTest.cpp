#include "support/CliFiles.h"
#include "support/CliRun.h"
#include "support/Corpus.h"

#include <gmock/gmock.h>

namespace leafwright::test {
namespace {

/// How bad `qpdf --check` finds a file: 0 for nothing to say, 1 for warnings, 2 for errors.
int badness(const QString &path) {
    const int exitCode = runProgram("qpdf", {"--check", path}).exitCode;
    constexpr int onlyWarnings = 3;
    if (exitCode == 0) return 0;
    return exitCode == onlyWarnings ? 1 : 2;
}

/// Checking takes longer than all else here, so a file made from a damaged one is compared only when it has
/// to be.
bool isNoWorse(const QString &made, const QString &original) {
    const int found = badness(made);
    return found == 0 || found <= badness(original);
}

/// The outline with what writing may change made equal: the page where the label repeats (it is the last
/// one's then), and a point where there was none.
QJsonArray asWritten(const QJsonArray &nodes, const QJsonArray &labels, const QJsonArray &written) {
    QJsonArray result;
    for (int i = 0; i < nodes.size(); ++i) {
        QJsonObject node = nodes[i].toObject();
        const QJsonObject other = written[i].toObject();
        const bool somewhere = node["pageIndex"].isDouble();
        const auto count = std::count(labels.begin(), labels.end(), node["pageLabel"]);
        if (somewhere && count > 1) node["pageIndex"] = other["pageIndex"];
        if (somewhere && node["point"].toArray() == QJsonArray{0, 0}) node["point"] = other["point"];
        node["children"] = asWritten(node["children"].toArray(), labels, other["children"].toArray());
        result.append(node);
    }
    return result;
}

class CorpusEditing : public CorpusTest {
protected:
    /// Writes the file's own outline into a copy.
    static CliResult applyOwnOutline(const TempDir &dir, const QString &from, const QString &to) {
        saveBytes(dir.path("tree"), runCli({"outline", from}).out);
        return runCli({"apply", from, dir.path("tree"), "-o", to});
    }
};

TEST_P(CorpusEditing, OwnOutlineWrittenBackIsTheSame) {
    const TempDir dir;
    const QString out = dir.path("out.pdf");
    const CliResult result = applyOwnOutline(dir, pdf(), out);
    const QJsonObject info = QJsonDocument::fromJson(runCli({"info", pdf()}).out).object();
    if (info.isEmpty() || info["encrypted"].toBool()) {
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_FALSE(QFile::exists(out));
        return;
    }
    ASSERT_EQ(result.exitCode, 0) << result.err.constData();

    const QJsonArray labels = parsedJson(runCli({"labels", pdf()}).out).array();
    const QJsonArray written = outlineOf(out);
    EXPECT_EQ(written, asWritten(outlineOf(pdf()), labels, written));
    EXPECT_EQ(parsedJson(runCli({"labels", out}).out).array(), labels);
    EXPECT_TRUE(isNoWorse(out, pdf()));
    EXPECT_TRUE(info["repaired"].toBool() || bytesOf(out).startsWith(bytesOf(pdf())));

    ASSERT_EQ(applyOwnOutline(dir, out, dir.path("again.pdf")).exitCode, 0);
    EXPECT_EQ(outlineOf(dir.path("again.pdf")), written);
}

LEAFWRIGHT_FOR_CORPUS(CorpusEditing);

}  // namespace
}  // namespace leafwright::test
