#include "support/Corpus.h"

#include "support/Paths.h"

#include <QDir>
#include <QFileInfo>

namespace leafwright::test {

namespace {

const char *const standIn = "NotAtHand";

}  // namespace

std::vector<std::string> corpusNames() {
    std::vector<std::string> names;
    for (const QString &file : QDir(corpusPath()).entryList({"*.pdf"}, QDir::Files, QDir::Name)) {
        names.push_back(file.chopped(4).toStdString());
    }
    if (names.empty()) names.emplace_back(standIn);
    return names;
}

std::string corpusTestName(const testing::TestParamInfo<std::string> &test) {
    std::string name;
    for (const char c : test.param) {
        const bool allowed =
            (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
        name += allowed ? std::string(1, c) : "_x" + QByteArray(1, c).toHex().toStdString();
    }
    return name;
}

void CorpusTest::SetUp() {
    if (!QFileInfo::exists(pdf())) GTEST_SKIP() << "no such file: " << qPrintable(pdf());
}

QString CorpusTest::pdf() {
    return corpusPath(QString::fromStdString(GetParam()) + ".pdf");
}

QString CorpusTest::expectation() {
    return corpusPath(QString::fromStdString(GetParam()) + ".expected.json");
}

}  // namespace leafwright::test
