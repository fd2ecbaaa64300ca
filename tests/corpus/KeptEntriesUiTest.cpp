#include "support/CliFiles.h"
#include "support/CliRun.h"
#include "support/Corpus.h"
#include "support/ObjectDiff.h"

#include <gmock/gmock.h>
#include <set>

namespace leafwright::test {
namespace {

/// What becomes of the entries of real files that nobody has edited.
class CorpusKeptEntries : public CorpusTest {
protected:
    void SetUp() override {
        CorpusTest::SetUp();
        if (IsSkipped()) return;
        const QJsonObject info = QJsonDocument::fromJson(runCli({"info", pdf()}).out).object();
        if (!info["hasOutline"].toBool() || info["encrypted"].toBool() || info["repaired"].toBool())
            GTEST_SKIP() << "has no outline that could be kept";
        labels_ = parsedJson(runCli({"labels", pdf()}).out).array();
    }

    /// Nothing but where some entries lead: those to no particular spot are given one, and those of a label
    /// that several pages have, or that is read as a printed page number, lead to another page.
    void expectIsKept(const CliResult &result) const {
        ASSERT_EQ(result.exitCode, 0) << result.err.constData();
        std::set<int> led;
        collectLed(parsedJson(runCli({"outline", pdf()}).out).array(), led);
        for (const int number : changedObjects(pdf(), out)) {
            EXPECT_TRUE(led.contains(number)) << number;
            for (const std::string &key : changedKeys(pdf(), out, number))
                EXPECT_TRUE(key == "/Dest" || key == "/A") << number << ' ' << key;
        }
    }

    const TempDir dir;
    const QString out = dir.path("out.pdf");

private:
    void collectLed(const QJsonArray &nodes, std::set<int> &led) const {
        for (const QJsonValue &node : nodes) {
            const QString label = node["pageLabel"].toString();
            const bool isLed = node["pageIndex"].isDouble() &&
                               (node["point"].toArray() == QJsonArray{0, 0} || label.startsWith(u'p') ||
                                std::count(labels_.begin(), labels_.end(), label) > 1);
            if (isLed) led.insert(node["entry"].toInt());
            collectLed(node["children"].toArray(), led);
        }
    }

    QJsonArray labels_;
};

TEST_P(CorpusKeptEntries, OutlineThatIsAppliedAgainChangesNothing) {
    saveBytes(dir.path("tree"), runCli({"outline", pdf()}).out);
    expectIsKept(runCli({"apply", pdf(), dir.path("tree"), "-o", out}));
}

TEST_P(CorpusKeptEntries, SavingTheWindowsOutlineChangesNothing) {
    saveBytes(dir.path("steps.json"), "[]");
    expectIsKept(runCli({"run", dir.path("steps.json"), pdf(), "-o", out}));
}

LEAFWRIGHT_FOR_CORPUS(CorpusKeptEntries);

}  // namespace
}  // namespace leafwright::test
