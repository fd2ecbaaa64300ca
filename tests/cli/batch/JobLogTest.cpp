#include "cli/batch/JobLog.h"
#include "cli/batch/JobResult.h"
#include "support/CliFiles.h"

#include <QDir>
#include <QFile>

#include <gmock/gmock.h>

namespace leafwright::test {
namespace {

using cli::JobLog;
using cli::JobMark;
using cli::JobResult;
using cli::logLineOf;
using testing::EndsWith;
using testing::HasSubstr;
using Known = JobLog::Known;

const JobMark mark{1'000, 1'700'000'000'123'456'789};

QByteArray doneLine(const QByteArray &signature, const JobMark &of = mark) {
    return logLineOf({.file = "a.pdf", .status = JobResult::Status::Done}, signature, of);
}

class JobLogs : public testing::Test {
protected:
    void openLog(JobLog &log) const { ASSERT_EQ(log.open(path), std::nullopt); }
    /// What a log of this content is refused for.
    std::string refusalOf(const QByteArray &content) const {
        saveBytes(path, content);
        JobLog log;
        const auto problem = log.open(path);
        EXPECT_FALSE(log.isOpen());
        EXPECT_EQ(bytesOf(path), content) << "it stays as it is";
        return problem.value_or("none").toStdString();
    }

    TempDir dir;
    QString path = dir.path("log");
};

TEST_F(JobLogs, KnowWhatIsDone) {
    {
        JobLog log;
        openLog(log);
        EXPECT_EQ(log.begin("one", mark), Known::No);
        EXPECT_EQ(log.add(doneLine("one")), std::nullopt);
        EXPECT_EQ(log.add(logLineOf({.file = "b.pdf"}, "two", mark)), std::nullopt);
        EXPECT_EQ(log.finish(), std::nullopt);
    }
    JobLog log;
    openLog(log);
    EXPECT_EQ(log.begin("one", mark), Known::Done);
    EXPECT_EQ(log.begin("two", mark), Known::No) << "it had failed";
    EXPECT_EQ(log.begin("three", mark), Known::No);
    EXPECT_EQ(log.begin("three", mark), Known::Begun);
}

TEST_F(JobLogs, FileThatHasChangedIsNotDone) {
    saveBytes(path, doneLine("one") + doneLine("two"));
    JobLog log;
    openLog(log);
    EXPECT_EQ(log.begin("one", {mark.size, mark.modified + 1}), Known::No);
    EXPECT_EQ(log.begin("two", {mark.size + 1, mark.modified}), Known::No);
}

TEST_F(JobLogs, LastLineThatWasCutOffIsTakenOut) {
    const QByteArray whole = doneLine("one");
    const QByteArray next = doneLine("two");
    for (qsizetype length = 1; length < next.size(); ++length) {
        saveBytes(path, whole + next.first(length));
        JobLog log;
        ASSERT_EQ(log.open(path), std::nullopt) << length;
        ASSERT_EQ(bytesOf(path), whole) << length;
        EXPECT_EQ(log.begin("two", mark), Known::No);
        EXPECT_EQ(log.add(next), std::nullopt);
        EXPECT_EQ(bytesOf(path), whole + next);
    }
}

TEST_F(JobLogs, OnlyLineThatWasCutOffIsTakenOutWhereItIsALogs) {
    const QByteArray line = doneLine("one");
    const QByteArray own = ", \"size\": ";
    const qsizetype certain = line.indexOf(own) + own.size();
    for (qsizetype length = 1; length < line.size(); ++length) {
        if (length < certain) {
            ASSERT_THAT(refusalOf(line.first(length)), HasSubstr("cut off before it could be told"))
                << length;
            continue;
        }
        saveBytes(path, line.first(length));
        JobLog log;
        ASSERT_EQ(log.open(path), std::nullopt) << length;
        ASSERT_EQ(bytesOf(path), "") << length;
    }
}

TEST_F(JobLogs, FilesOfOtherKindsAreRefused) {
    EXPECT_THAT(refusalOf("{"), HasSubstr("cut off before it could be told"));
    for (const char *content :
         {R"({"file": "thesis.tex", "chapters": [1]})", R"({"file": "a.pdf", "out": "zz.pdf"})",
          R"({"a": 1})", R"({"file": "a.pdf", "out": null, "status": "published", "seconds": 1)",
          R"({"file": "a.pdf", "out": null, "status": "done", "seconds": 1, "pages": 1, "entries": null, )"
          R"("peakMB": 9.5, "message": null, "job": "one", "result": 1})"})
        EXPECT_THAT(refusalOf(content), EndsWith("its last line is not what a batch has written"));
    const QByteArray job = R"({"file": "a.pdf", "out": "a.json"})";
    EXPECT_THAT(refusalOf(job + '\n' + job), EndsWith("line 1 is not what a batch has written"));
    const QByteArray other = R"({"name": "x", "status": "failed"})";
    EXPECT_THAT(refusalOf(other + '\n' + job.first(15)), HasSubstr("cut off before it could be told"));
}

TEST_F(JobLogs, LastLineThatWasCutOffMayHaveAnyNames) {
    const QByteArray whole = doneLine("one");
    const QByteArray next =
        logLineOf({.file = QStringLiteral("a \"ü\"\\.pdf"), .seconds = 0.001, .message = "one\ntwo"}, {}, {});
    for (qsizetype length = 1; length < next.size(); ++length) {
        saveBytes(path, whole + next.first(length));
        JobLog log;
        ASSERT_EQ(log.open(path), std::nullopt) << length;
        ASSERT_EQ(bytesOf(path), whole) << length;
    }
}

TEST_F(JobLogs, ThatAreDamagedAreRefused) {
    const QByteArray line = doneLine("one");
    EXPECT_THAT(refusalOf("This is no log.\n"), EndsWith("line 1 is not what a batch has written"));
    EXPECT_THAT(refusalOf(line + "\n" + line), EndsWith("line 2 is not what a batch has written"));
    EXPECT_THAT(refusalOf(line + line.first(20) + line), EndsWith("line 2 is not what a batch has written"));
    EXPECT_THAT(refusalOf(line + QByteArray(512, '\0')),
                EndsWith("its last line is not what a batch has written"));
    EXPECT_THAT(refusalOf(line + "{\"file\": \"a" + QByteArray(9, '\0')),
                EndsWith("its last line is not what a batch has written"));
    EXPECT_THAT(refusalOf(line + "a.pdf"), EndsWith("its last line is not what a batch has written"));
    EXPECT_THAT(refusalOf(QByteArray(line).replace("\"job\": \"one\"", "\"job\": null")),
                EndsWith("line 1 is not what a batch has written"));
    EXPECT_THAT(refusalOf(QByteArray(line).replace("\"size\": 1000", "\"size\": null")),
                EndsWith("line 1 is not what a batch has written"));
    EXPECT_THAT(refusalOf(QByteArray(5 << 20, 'x')), HasSubstr("too long"));
}

TEST_F(JobLogs, TakeTheLineOfAJobThatCouldNotBeUnderstood) {
    saveBytes(path, logLineOf({.file = {}, .message = "line 1: nonsense"}, {}, {}));
    JobLog log;
    openLog(log);
}

TEST_F(JobLogs, AreOneBatchesAtATime) {
    JobLog log;
    openLog(log);
    JobLog other;
    EXPECT_THAT(other.open(path)->toStdString(), EndsWith("another batch is writing to it"));
}

TEST_F(JobLogs, AreFiles) {
    JobLog log;
    EXPECT_THAT(log.open(dir.path("."))->toStdString(), HasSubstr("the log can't be used"));
    EXPECT_THAT(log.open("/dev/null")->toStdString(), EndsWith("it is no file"));
    EXPECT_THAT(log.open(dir.path("none/log"))->toStdString(), EndsWith("No such file or directory"));
}

TEST_F(JobLogs, LineForWhichThereIsNoRoomLeavesNothing) {
    const QByteArray line = doneLine("one");
    JobLog log;
    openLog(log);
    ASSERT_EQ(log.add(line), std::nullopt);
    {
        const FileSizeLimit limit(static_cast<unsigned long>(line.size()) + 10);
        EXPECT_THAT(log.add(line)->toStdString(), HasSubstr("the log can't be used"));
    }
    EXPECT_EQ(bytesOf(path), line);
    EXPECT_EQ(log.add(line), std::nullopt);
    EXPECT_EQ(bytesOf(path), line + line);
}

}  // namespace
}  // namespace leafwright::test
