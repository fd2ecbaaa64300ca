#include "support/CaseDocument.h"
#include "support/CliFiles.h"
#include "support/CliRun.h"
#include "support/JsonMatch.h"
#include "support/Paths.h"

#include <QDir>

#include <gmock/gmock.h>

namespace leafwright::test {
namespace {

// A case is a folder of tests/scripts. Its document.json says what PDF to make, see CaseDocument.h, or by
// {"like": NAME} which of those in tests/documents, and what other "files" stand beside it: PDFs that are
// described likewise, and texts. Its steps.json is the script. Its expected.json tells
//
//     "why"        what the case is about, in a sentence or two
//     "arguments"  of the command, beside the script and "document.pdf"
//     "records"    what the report holds, by the number of the step, 0 for the loading; see JsonMatch.h
//     "error"      the message, where the script is to stop
//     "files"      what is there at the end: the text of a file, or of a PDF {"outline": ...}; null where
//                  there is to be none, "as before" for the document as it was
//
// Nothing else has to be written for a new case.

QString casePath(const std::string &name, const QString &file = {}) {
    return projectPath("tests/scripts/" + QString::fromStdString(name) + '/' + file);
}

std::vector<std::string> caseNames() {
    std::vector<std::string> names;
    for (const QString &name : QDir(casePath({})).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name))
        names.push_back(name.toStdString());
    return names;
}

QJsonDocument readJson(const QString &path) {
    return parsedJson(bytesOf(path));
}

std::string textOf(const QJsonValue &step) {
    return QJsonDocument(step.toObject()).toJson(QJsonDocument::Compact).toStdString();
}

QStringList textsOf(const QJsonValue &array) {
    return array.toVariant().toStringList();
}

class ScriptCase : public testing::TestWithParam<std::string> {
protected:
    /// What a run left behind.
    struct Run {
        CliResult result;
        QByteArray report;
        QByteArray original;
    };

    void SetUp() override {
        description = readJson(casePath(GetParam(), "document.json")).object();
        expected = readJson(casePath(GetParam(), "expected.json")).object();
        const QStringList known{"why", "arguments", "records", "error", "files"};
        for (const QString &member : expected.keys())
            EXPECT_TRUE(known.contains(member))
                << "expected.json has an unknown member \"" << qPrintable(member) << '"';
        EXPECT_FALSE(expected["why"].toString().trimmed().isEmpty()) << "expected.json does not say why";
    }
    void TearDown() override { QDir::setCurrent(folderBefore); }

    Run run(const TempDir &dir) {
        QDir::setCurrent(dir.path({}));
        saveCaseDocument(description, "document.pdf");
        const QJsonObject files = description["files"].toObject();
        for (auto file = files.begin(); file != files.end(); ++file) {
            if (file->isString()) {
                saveBytes(file.key(), file->toString().toUtf8());
            } else {
                saveCaseDocument(file->toObject(), file.key());
            }
        }
        Run done;
        done.original = bytesOf("document.pdf");
        done.result = runCli(QStringList{"run", casePath(GetParam(), "steps.json"), "document.pdf",
                                         "--report", "report.json"} +
                             textsOf(expected["arguments"]));
        if (done.result.exitCode == 0) done.report = bytesOf("report.json");
        return done;
    }

    void compareRecords(const QByteArray &report) {
        const QJsonArray records = parsedJson(report).array();
        const QJsonArray steps = readJson(casePath(GetParam(), "steps.json")).array();
        ASSERT_EQ(records.size(), steps.size() + 1) << "one for the loading, one a step";
        const QJsonObject wanted = expected["records"].toObject();
        for (auto record = wanted.begin(); record != wanted.end(); ++record) {
            const int number = record.key().toInt();
            ASSERT_LT(number, records.size());
            const QString where = "record " + record.key();
            EXPECT_EQ(mismatch(record.value(), records[number], where), "")
                << "after " << (number == 0 ? "loading" : textOf(steps[number - 1])) << ":\n"
                << QJsonDocument(records[number].toObject()).toJson().toStdString();
        }
    }

    void compareFile(const QString &name, const QJsonValue &wanted, const QByteArray &original) {
        if (wanted.isNull()) {
            EXPECT_FALSE(QFile::exists(name)) << qPrintable(name);
        } else if (wanted == QJsonValue("as before")) {
            EXPECT_TRUE(bytesOf(name) == original) << qPrintable(name);
        } else if (wanted.isString()) {
            EXPECT_EQ(QString::fromUtf8(bytesOf(name)), wanted.toString());
        } else {
            EXPECT_EQ(mismatch(wanted, QJsonObject{{"outline", outlineOf(name)}}, name), "");
        }
    }

    void compareFiles(const QByteArray &original) {
        const QJsonObject wanted = expected["files"].toObject();
        for (auto file = wanted.begin(); file != wanted.end(); ++file)
            compareFile(file.key(), file.value(), original);
    }

    QJsonObject description;
    QJsonObject expected;

private:
    QString folderBefore = QDir::currentPath();
};

TEST_P(ScriptCase, GivesWhatIsExpected) {
    const TempDir second;
    const Run again = run(second);
    const TempDir dir;
    const Run done = run(dir);
    EXPECT_TRUE(done.report == again.report) << "the same steps twice give the same report";
    if (expected.contains("error")) {
        EXPECT_EQ(done.result.exitCode, 1);
        EXPECT_THAT(done.result.err.toStdString(),
                    testing::HasSubstr(expected["error"].toString().toStdString()));
        EXPECT_FALSE(QFile::exists("report.json"));
        EXPECT_TRUE(bytesOf("document.pdf") == done.original) << "a script that stops writes nothing";
    } else {
        ASSERT_EQ(done.result.exitCode, 0) << done.result.err.constData();
        compareRecords(done.report);
    }
    compareFiles(done.original);
}

INSTANTIATE_TEST_SUITE_P(Scripts, ScriptCase, testing::ValuesIn(caseNames()),
                         [](const testing::TestParamInfo<std::string> &test) {
                             return QString::fromStdString(test.param).replace('-', '_').toStdString();
                         });

}  // namespace
}  // namespace leafwright::test
