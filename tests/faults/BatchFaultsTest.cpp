#include "support/CliFiles.h"
#include "support/CliRun.h"
#include "support/EnvironmentVariable.h"
#include "support/Paths.h"

#include <QDir>
#include <QFileInfo>

#include <cerrno>
#include <gmock/gmock.h>

namespace leafwright::test {
namespace {

using testing::ContainsRegex;

/// Lets every call fail in turn that a batch with a log makes on its files, or kills the batch there, and
/// starts it again.
class BatchFaults : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(QDir(root).mkpath("work"));
        QByteArray jobs;
        for (const char *name : {"a.pdf", "b.pdf"})
            jobs +=
                savePdfWithHeadings(dir, QLatin1String("root/work/") + QLatin1String(name)).toUtf8() + '\n';
        saveBytes(dir.path("jobs"), jobs);
    }

    ProgramResult run() const {
        return runProgram(
            "/bin/sh",
            {"-c", "exec \"$0\" batch --jobs 1 --log \"$1/log\" --out-dir \"$1/out\" autotoc < \"$2\"",
             commandLineProgram(), root + "/work", dir.path("jobs")});
    }
    ProgramResult runWithFault(qsizetype call, int error) const {
        QFile::remove(dir.path("calls"));
        const EnvironmentVariable library("LD_PRELOAD", faultLibrary().toUtf8());
        const EnvironmentVariable folder("LEAFWRIGHT_FAULT_ROOT", root.toUtf8());
        const EnvironmentVariable log("LEAFWRIGHT_FAULT_LOG", dir.path("calls").toUtf8());
        const EnvironmentVariable at("LEAFWRIGHT_FAULT_AT", QByteArray::number(call));
        const EnvironmentVariable number("LEAFWRIGHT_FAULT_ERROR", QByteArray::number(error));
        return run();
    }
    QByteArrayList calls() const { return bytesOf(dir.path("calls")).trimmed().split('\n'); }
    QString out(const QString &name) const { return root + "/work/out/" + name; }
    void removeResults() const {
        QDir(root + "/work/out").removeRecursively();
        QFile::remove(root + "/work/log");
    }
    QStringList doneFiles() const {
        QStringList files;
        for (const QByteArray &line : bytesOf(root + "/work/log").split('\n')) {
            const QJsonObject object = QJsonDocument::fromJson(line).object();
            if (object["status"] == "done") files.append(QFileInfo(object["file"].toString()).fileName());
        }
        files.sort();
        return files;
    }
    /// Every result is there, and in the log once.
    void expectAllIsDone() const {
        EXPECT_EQ(doneFiles(), (QStringList{"a.pdf", "b.pdf"}));
        for (const char *name : {"a.pdf", "b.pdf"})
            EXPECT_EQ(bytesOf(out(name)), whole) << name;
    }
    void expectTruth(const ProgramResult &result) const {
        for (const char *name : {"a.pdf", "b.pdf"})
            EXPECT_TRUE(!QFile::exists(out(name)) || bytesOf(out(name)) == whole) << name;
        if (result.exitCode == 0) return expectAllIsDone();
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_THAT((result.err + result.out).toStdString(),
                    ContainsRegex("Input/output error|No space left|quota|crashed|killed"));
    }

    TempDir dir;
    QString root = QFileInfo(dir.path(".")).canonicalFilePath() + "/root";
    QByteArray whole;
};

TEST_F(BatchFaults, AreToldAndTheNextStartGoesOnWhereItWas) {
    const ProgramResult sound = runWithFault(-1, 0);
    ASSERT_EQ(sound.exitCode, 0) << sound.err.constData();
    whole = bytesOf(out("a.pdf"));
    ASSERT_EQ(plusLinesOf(out("a.pdf")), outlineOfHeadings);
    expectAllIsDone();
    std::vector<std::pair<qsizetype, int>> cases;
    for (qsizetype i = 0; i < calls().size(); ++i)
        for (const int error : {EIO, ENOSPC, 0})
            cases.emplace_back(i, error);
    ASSERT_GT(cases.size(), 60U);
    // LEAFWRIGHT_FAULTS=all tries every one. Otherwise as many as take some seconds, from first to last.
    const size_t count = qgetenv("LEAFWRIGHT_FAULTS") == "all" ? cases.size() : 60;
    std::printf("%zu faults, of which %zu are tried\n", cases.size(), count);
    for (size_t i = 0; i < count; ++i) {
        const auto &[call, error] = cases[i * cases.size() / count];
        removeResults();
        const ProgramResult result = runWithFault(call, error);
        SCOPED_TRACE("error " + std::to_string(error) + " at call " + std::to_string(call) + ", " +
                     calls().value(call).toStdString() + ": " + result.err.toStdString());
        if (error != 0) expectTruth(result);
        const ProgramResult again = run();
        EXPECT_EQ(again.exitCode, 0) << again.err.constData() << again.out.constData();
        expectAllIsDone();
    }
}

}  // namespace
}  // namespace leafwright::test
