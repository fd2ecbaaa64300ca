#include "document/ViewMemory.h"
#include "files/UnfinishedFiles.h"
#include "support/CliFiles.h"
#include "support/CliRun.h"
#include "support/EnvironmentVariable.h"
#include "support/Paths.h"
#include "support/WindowFixture.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

#include <cerrno>
#include <cstdio>
#include <gmock/gmock.h>

namespace leafwright::test {
namespace {

using testing::AnyOf;
using testing::HasSubstr;

constexpr const char *fileVariable = "LEAFWRIGHT_VIEWED_FILE";
constexpr const char *folderVariable = "LEAFWRIGHT_VIEWS_FOLDER";

/// Not a test: the program that looks at the fifth page of a file, and closes its window.
TEST(ViewFaultsProgram, DISABLED_Closes) {
    const QString file = qEnvironmentVariable(fileVariable);
    if (file.isEmpty()) return;
    RecordingPlatform platform;
    MyDocument document(platform);
    new ViewMemory(document, qEnvironmentVariable(folderVariable));
    ASSERT_TRUE(document.readFromURL(file));
    document.makeWindowControllers();
    document.finishLoading();
    document.pdfview()->goToPage(document.pdfDoc()->page(4));
    std::printf("\n%s, %d alerts\n", document.myWindow()->close() ? "closed" : "open",
                static_cast<int>(platform.alerts.size()));
    std::fflush(stdout);
}

/// Lets every call fail in turn that is made on the files in which views are remembered.
class ViewFaults : public testing::Test {
protected:
    void SetUp() override {
        PdfBuilder pdf;
        pdf.addNumberedPages(9);
        pdf.save(file);
        content = bytesOf(file);
    }
    /// As it is after the window was closed once, on the fifth page; then somebody notes the third.
    void rememberTheThirdPage() {
        QDir(folder).removeRecursively();
        ASSERT_TRUE(QDir().mkpath(QFileInfo(folder).path()));
        run(-1, 0);
        ASSERT_EQ(names().size(), 1);
        const QString path = folder + '/' + names().front();
        saveBytes(path, bytesOf(path).replace("\"page\":4", "\"page\":2"));
    }
    /// @param call which fails; -1 for none @param error 0 kills the program there
    std::string run(qsizetype call, int error) {
        QFile::remove(dir.path("log"));
        const EnvironmentVariable library("LD_PRELOAD", faultLibrary().toUtf8());
        const EnvironmentVariable root("LEAFWRIGHT_FAULT_ROOT", QFileInfo(folder).path().toUtf8());
        const EnvironmentVariable log("LEAFWRIGHT_FAULT_LOG", dir.path("log").toUtf8());
        const EnvironmentVariable at("LEAFWRIGHT_FAULT_AT", QByteArray::number(call));
        const EnvironmentVariable with("LEAFWRIGHT_FAULT_ERROR", QByteArray::number(error));
        const EnvironmentVariable viewed(fileVariable, file.toUtf8());
        const EnvironmentVariable views(folderVariable, folder.toUtf8());
        const ProgramResult result = runProgram(
            "/proc/self/exe",
            {"--gtest_also_run_disabled_tests", "--gtest_filter=ViewFaultsProgram.DISABLED_Closes"});
        return result.out.toStdString();
    }
    QStringList names() const { return QDir(folder).entryList(QDir::Files | QDir::Hidden); }
    /// The page that is remembered; -1 for none.
    int remembered() const {
        for (const QString &name : names())
            if (name.endsWith(".json"))
                return QJsonDocument::fromJson(bytesOf(folder + '/' + name)).object()["page"].toInt(-2);
        return -1;
    }
    /// @param mayLeave whether the program was killed, or could not remove what it had begun
    void expectNothingElse(bool mayLeave) const {
        EXPECT_EQ(bytesOf(file), content);
        for (const QString &name : names())
            EXPECT_TRUE(name.endsWith(".json") || (mayLeave && isNameOfUnfinishedFile(name.toUtf8())))
                << qPrintable(name);
    }

    TempDir dir;
    QString file = dir.path("a.pdf");
    QByteArray content;
    QString folder = QFileInfo(dir.path(".")).canonicalFilePath() + "/state/views";
};

TEST_F(ViewFaults, LeaveTheOldViewOrTheNewOne) {
    rememberTheThirdPage();
    run(-1, 0);
    EXPECT_EQ(remembered(), 4);
    const qsizetype calls = bytesOf(dir.path("log")).count('\n');
    ASSERT_GT(calls, 8);
    const QList<QByteArray> made = bytesOf(dir.path("log")).split('\n');
    for (qsizetype call = 0; call < calls; ++call) {
        for (const int error : {EIO, ENOSPC, 0}) {
            rememberTheThirdPage();
            const std::string said = run(call, error);
            SCOPED_TRACE(std::to_string(error) + " at call " + std::to_string(call));
            EXPECT_THAT(remembered(), AnyOf(2, 4));
            if (error != 0) {
                EXPECT_THAT(said, HasSubstr("\nclosed, 0 alerts"));
            }
            expectNothingElse(error == 0 || made[call].contains("unlink"));
        }
    }
}

TEST_F(ViewFaults, OfTheFirstViewLeaveNoneOrAWholeOne) {
    ASSERT_TRUE(QDir().mkpath(QFileInfo(folder).path()));
    run(-1, 0);
    const qsizetype calls = bytesOf(dir.path("log")).count('\n');
    ASSERT_GT(calls, 5);
    for (qsizetype call = 0; call < calls; ++call) {
        for (const int error : {ENOSPC, 0}) {
            QDir(folder).removeRecursively();
            const std::string said = run(call, error);
            SCOPED_TRACE(std::to_string(error) + " at call " + std::to_string(call));
            EXPECT_THAT(remembered(), AnyOf(-1, 4));
            if (error != 0) {
                EXPECT_THAT(said, HasSubstr("\nclosed, 0 alerts"));
            }
            expectNothingElse(error == 0);
        }
    }
}

}  // namespace
}  // namespace leafwright::test
