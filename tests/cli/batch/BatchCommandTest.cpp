#include "support/CliFiles.h"
#include "support/CliRun.h"
#include "support/Paths.h"

#include <QDir>
#include <QFileInfo>

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

namespace leafwright::test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;

/// What a batch in this process has made of its lines.
struct BatchResult {
    int exitCode;
    std::string messages;
    QMap<QString, QJsonObject> lines;  ///< By file; "" where a line could not be understood.
};

class Batches : public testing::Test {
protected:
    BatchResult run(const QStringList &arguments, const QByteArray &jobs) {
        saveBytes(dir.path("jobs"), jobs);
        const StandardInput input(dir.path("jobs"));
        const CliResult result = runCli(QStringList{"batch"} + arguments);
        BatchResult batch{result.exitCode, result.err.toStdString(), {}};
        count = 0;
        for (const QByteArray &line : result.out.split('\n')) {
            if (line.isEmpty()) continue;
            const QJsonObject object = parsedJson(line).object();
            batch.lines.insert(object["file"].toString(), object);
            ++count;
        }
        return batch;
    }
    static QString statusOf(const BatchResult &batch, const QString &file) {
        return batch.lines[file]["status"].toString();
    }
    static std::string messageOf(const BatchResult &batch, const QString &file) {
        return batch.lines[file]["message"].toString().toStdString();
    }
    QStringList logLines() const { return QString(bytesOf(dir.path("log"))).split('\n', Qt::SkipEmptyParts); }

    TempDir dir;
    QString out = dir.path("out");
    int count = 0;  ///< Lines of the last run.
};

TEST_F(Batches, DoEveryLineAndTellWhatCameOfIt) {
    const QString one = savePdfWithHeadings(dir, "one.pdf");
    const QString two = savePdfWithHeadings(dir, "two.pdf");
    const BatchResult batch = run({"--out-dir", out, "autotoc"},
                                  one.toUtf8() + "\n\n{\"file\": \"" + two.toUtf8() + "\", \"out\": \"" +
                                      dir.path("2.pdf").toUtf8() + "\", \"max-depth\": 1}\n");
    EXPECT_EQ(batch.exitCode, 0);
    EXPECT_EQ(batch.messages, "leafwright-cli: 2 jobs done\n");
    EXPECT_EQ(count, 2);
    const QJsonObject line = batch.lines[one];
    EXPECT_EQ(line.keys().join(' '), "entries file job message out pages peakMB seconds status");
    EXPECT_EQ(line["status"], "done");
    EXPECT_EQ(line["out"], out + "/one.pdf");
    EXPECT_EQ(line["pages"], 2);
    EXPECT_EQ(line["entries"], 5);
    EXPECT_GT(line["peakMB"].toDouble(), 1);
    EXPECT_GE(line["seconds"].toDouble(), 0);
    EXPECT_TRUE(line["message"].isNull());
    EXPECT_EQ(plusLinesOf(out + "/one.pdf"), outlineOfHeadings);
    EXPECT_EQ(batch.lines[two]["entries"], 2);
    EXPECT_EQ(plusLinesOf(dir.path("2.pdf")), "+ @1 Chapter One\n+ @2 Chapter Two\n");
}

TEST_F(Batches, HandBackWhatIsPrinted) {
    const QString file = savePdf(dir, "a.pdf", 2, {"A \"line\"\nwith more"});
    const BatchResult info = run({"info"}, file.toUtf8());
    EXPECT_EQ(info.lines[file]["result"].toObject()["pages"], 2);
    const BatchResult outline = run({"outline"}, file.toUtf8());
    EXPECT_EQ(outline.lines[file]["result"].toArray().size(), 1);
    EXPECT_EQ(outline.lines[file]["entries"], 1);
    const BatchResult text = run({"outline", "--format", "text"}, file.toUtf8());
    EXPECT_TRUE(text.lines[file]["result"].isString());
    const BatchResult written = run({"--out-dir", out, "fonts"}, file.toUtf8());
    EXPECT_FALSE(written.lines[file].contains("result"));
    EXPECT_EQ(parsedJson(bytesOf(out + "/a.json")).object().keys().join(' '), "census map");
}

TEST_F(Batches, BadJobsCostOnlyThemselves) {
    const QString good = savePdfWithHeadings(dir, "good.pdf");
    const QString bad = dir.path("bad.pdf");
    saveBytes(bad, "This is no PDF.\n");
    const QString missing = dir.path("missing.pdf");
    const BatchResult batch =
        run({"--out-dir", out, "autotoc"},
            "{nonsense\n" + bad.toUtf8() + '\n' + missing.toUtf8() + '\n' + good.toUtf8() + '\n');
    EXPECT_EQ(batch.exitCode, 1);
    EXPECT_EQ(count, 4);
    EXPECT_EQ(statusOf(batch, good), "done");
    EXPECT_EQ(statusOf(batch, bad), "failed");
    EXPECT_THAT(messageOf(batch, bad), HasSubstr("this is not a PDF that can be read"));
    EXPECT_EQ(messageOf(batch, missing), "No such file or directory");
    EXPECT_THAT(messageOf(batch, ""), HasSubstr("line 1: this is no JSON"));
    EXPECT_THAT(batch.messages, EndsWith("leafwright-cli: 3 of 4 jobs failed\n"));
    EXPECT_EQ(QDir(out).entryList(QDir::Files | QDir::Hidden), QStringList("good.pdf"));
}

TEST_F(Batches, LinesWithoutEndCostOnlyThemselves) {
    const QString good = savePdfWithHeadings(dir, "good.pdf");
    const BatchResult batch = run({"info"}, QByteArray(8 << 20, '[') + '\n' + good.toUtf8());
    EXPECT_EQ(statusOf(batch, good), "done");
    EXPECT_EQ(messageOf(batch, ""), "line 1 is too long for a job");
}

TEST_F(Batches, JobThatTakesTooLongIsGivenUp) {
    const QString file = savePdf(dir, "a.pdf", 1);
    const QString good = savePdf(dir, "b.pdf", 1);
    ASSERT_EQ(::mkfifo(dir.path("pipe").toUtf8().constData(), 0600), 0);
    saveBytes(dir.path("tree"), "+ @1 New\n");
    const auto line = [](const QString &name, const QString &tree) {
        return QJsonDocument(QJsonObject{{"file", name}, {"out", name + ".out"}, {"tree", tree}})
                   .toJson(QJsonDocument::Compact) +
               '\n';
    };
    const BatchResult batch = run({"--jobs", "1", "--timeout", "2", "apply"},
                                  line(file, dir.path("pipe")) + line(good, dir.path("tree")));
    EXPECT_EQ(batch.exitCode, 1);
    EXPECT_EQ(messageOf(batch, file), "given up after 2 s");
    EXPECT_EQ(statusOf(batch, good), "done");
    EXPECT_FALSE(QFileInfo::exists(file + ".out"));
}

TEST_F(Batches, JobThatTakesTooMuchMemoryFails) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "it takes more memory itself than there is";
#endif
    const QString file = savePdfWithHeadings(dir, "a.pdf");
    const BatchResult batch = run({"--memory", "1", "fonts"}, file.toUtf8());
    EXPECT_EQ(batch.exitCode, 1);
    EXPECT_EQ(statusOf(batch, file), "failed");
    EXPECT_NE(messageOf(batch, file), "");
    EXPECT_EQ(run({"--memory", "4000", "fonts"}, file.toUtf8()).exitCode, 0);
}

TEST_F(Batches, ResultsThatMeetAreRefused) {
    const QString one = savePdfWithHeadings(dir, "same.pdf");
    ASSERT_TRUE(QDir(dir.path(".")).mkdir("sub"));
    const QString other = savePdfWithHeadings(dir, "sub/same.pdf");
    const BatchResult batch = run({"--out-dir", out, "autotoc"}, one.toUtf8() + '\n' + other.toUtf8() + '\n');
    EXPECT_EQ(batch.exitCode, 1);
    EXPECT_EQ(statusOf(batch, one), "done");
    EXPECT_THAT(messageOf(batch, other), HasSubstr("two results would be written to"));
}

TEST_F(Batches, NamesNeedNotBeUtf8) {
    const QByteArray name = dir.path("caf").toUtf8() + "\xE9.pdf";
    ASSERT_EQ(::rename(savePdf(dir, "a.pdf", 1).toUtf8().constData(), name.constData()), 0);
    saveBytes(dir.path("jobs"), name + '\n');
    const StandardInput input(dir.path("jobs"));
    const CliResult result = runCli({"batch", "info"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.out.toStdString(), HasSubstr("caf\\udce9.pdf\""));
    ::unlink(name.constData());  // which QTemporaryDir can not
}

TEST_F(Batches, WithALogGoOnWhereTheyWere) {
    const QString one = savePdfWithHeadings(dir, "one.pdf");
    const QString two = savePdfWithHeadings(dir, "two.pdf");
    const QStringList arguments{"--log", dir.path("log"), "--out-dir", out, "autotoc"};
    EXPECT_EQ(run(arguments, one.toUtf8()).exitCode, 0);
    const BatchResult second = run(arguments, one.toUtf8() + '\n' + two.toUtf8());
    EXPECT_EQ(second.exitCode, 0);
    EXPECT_EQ(statusOf(second, one), "skipped");
    EXPECT_EQ(statusOf(second, two), "done");
    EXPECT_EQ(logLines().size(), 2) << "each once";
}

TEST_F(Batches, WithALogDoAgainWhatHasChanged) {
    const QString file = savePdfWithHeadings(dir, "one.pdf");
    const QStringList arguments{"--log", dir.path("log"), "--out-dir", out, "autotoc"};
    EXPECT_EQ(run(arguments, file.toUtf8()).exitCode, 0);
    EXPECT_EQ(statusOf(run(arguments + QStringList{"--keep"}, file.toUtf8()), file), "done");
    savePdfWithContents(dir, "one.pdf");
    EXPECT_EQ(statusOf(run(arguments, file.toUtf8()), file), "done");
    EXPECT_EQ(statusOf(run(arguments, file.toUtf8()), file), "skipped");
    QFile::remove(out + "/one.pdf");
    EXPECT_EQ(statusOf(run(arguments, file.toUtf8()), file), "done") << "its result is gone";
}

TEST_F(Batches, WithALogDoAgainWhereWhatWasWrittenBesidesIsGone) {
    const QString file = savePdfWithHeadings(dir, "one.pdf");
    const QByteArray line = QJsonDocument(QJsonObject{{"file", file}, {"save-map", dir.path("map")}})
                                .toJson(QJsonDocument::Compact);
    const QStringList arguments{"--log", dir.path("log"), "--out-dir", out, "fonts"};
    EXPECT_EQ(statusOf(run(arguments, line), file), "done");
    EXPECT_EQ(statusOf(run(arguments, line), file), "skipped");
    ASSERT_TRUE(QFile::remove(dir.path("map")));
    EXPECT_EQ(statusOf(run(arguments, line), file), "done");
    EXPECT_TRUE(QFileInfo::exists(dir.path("map")));
}

TEST_F(Batches, WithALogDoAgainWhereWhatIsReadBesidesHasChanged) {
    const QString file = savePdf(dir, "a.pdf", 1);
    const QStringList arguments{"--log", dir.path("log"), "--out-dir", out, "apply", dir.path("tree")};
    saveBytes(dir.path("tree"), "+ @1 First\n");
    EXPECT_EQ(statusOf(run(arguments, file.toUtf8()), file), "done");
    EXPECT_EQ(statusOf(run(arguments, file.toUtf8()), file), "skipped");
    saveBytes(dir.path("tree"), "+ @1 Second\n");
    EXPECT_EQ(statusOf(run(arguments, file.toUtf8()), file), "done");
    EXPECT_EQ(plusLinesOf(out + "/a.pdf"), "+ @1 Second\n");
}

TEST_F(Batches, WithALogTryAgainWhatFailed) {
    const QString file = dir.path("late.pdf");
    const QStringList arguments{"--log", dir.path("log"), "info"};
    EXPECT_EQ(run(arguments, file.toUtf8()).exitCode, 1);
    savePdf(dir, "late.pdf", 1);
    EXPECT_EQ(statusOf(run(arguments, file.toUtf8()), file), "done");
    EXPECT_EQ(logLines().size(), 2);
}

TEST_F(Batches, WithALogDoOneJobOnce) {
    const QString file = savePdf(dir, "a.pdf", 1);
    const QByteArray line = file.toUtf8() + '\n';
    EXPECT_EQ(run({"--log", dir.path("log"), "info"}, line + line + line).exitCode, 0);
    EXPECT_EQ(count, 3);
    EXPECT_EQ(logLines().size(), 1);
}

TEST_F(Batches, WithALogWriteOverNoFile) {
    const QString file = savePdfWithHeadings(dir, "a.pdf");
    const QByteArray line = "{\"file\": \"" + file.toUtf8() + "\", \"out\": \"" + file.toUtf8() + "\"}\n";
    const BatchResult batch = run({"--log", dir.path("log"), "autotoc"}, line);
    EXPECT_THAT(messageOf(batch, file), HasSubstr("no file is written over"));
    EXPECT_EQ(plusLinesOf(file), "+ @2 Old Entry\n");
    EXPECT_EQ(run({"autotoc"}, line).exitCode, 0) << "without one it may";
    EXPECT_EQ(plusLinesOf(file), outlineOfHeadings);
}

TEST_F(Batches, LogThatIsDamagedKeepsThemFromBeginning) {
    const QString file = savePdfWithHeadings(dir, "a.pdf");
    saveBytes(dir.path("log"), "This is no log.\n");
    const BatchResult batch = run({"--log", dir.path("log"), "--out-dir", out, "autotoc"}, file.toUtf8());
    EXPECT_EQ(batch.exitCode, 1);
    EXPECT_EQ(count, 0);
    EXPECT_THAT(batch.messages, HasSubstr("line 1 is not what a batch has written"));
    EXPECT_FALSE(QFileInfo::exists(out + "/a.pdf"));
    EXPECT_EQ(bytesOf(dir.path("log")), "This is no log.\n");
}

TEST_F(Batches, LogIsNotWhatTheyRead) {
    const QString file = savePdf(dir, "a.pdf", 1);
    const BatchResult batch = run({"--log", dir.path("jobs"), "info"}, file.toUtf8() + '\n');
    EXPECT_EQ(batch.exitCode, 1);
    EXPECT_THAT(batch.messages, HasSubstr("is read, and would be overwritten"));
}

TEST_F(Batches, WriteNoJobOverTheirOwnFiles) {
    const QString file = savePdf(dir, "a.pdf", 1);
    const QByteArray start = "{\"file\": \"" + file.toUtf8() + "\", \"out\": \"";
    for (const char *name : {"log", "jobs"}) {
        const BatchResult batch =
            run({"--log", dir.path("log"), "info"}, start + dir.path(name).toUtf8() + "\"}\n");
        EXPECT_EQ(batch.exitCode, 1);
        EXPECT_THAT(messageOf(batch, file), HasSubstr("is read, and would be overwritten"));
        QFile::remove(dir.path("log"));
    }
}

TEST_F(Batches, WrongUsageIsToldBeforeAnythingIsRead) {
    const auto problemOf = [this](const QStringList &arguments) {
        const BatchResult batch = run(arguments, "a.pdf\n");
        EXPECT_EQ(batch.exitCode, 2);
        EXPECT_EQ(count, 0);
        return batch.messages;
    };
    EXPECT_THAT(problemOf({}), HasSubstr("COMMAND... is missing"));
    EXPECT_THAT(problemOf({"labels"}), HasSubstr("\"labels\" is no command of a batch"));
    EXPECT_THAT(problemOf({"--jobs", "0", "info"}), HasSubstr("--jobs wants a number from 1"));
    EXPECT_THAT(problemOf({"--memory", "some", "info"}), HasSubstr("--memory wants a number"));
    EXPECT_THAT(problemOf({"--timeout", "soon", "info"}), HasSubstr("--timeout wants a number"));
    EXPECT_THAT(problemOf({"autotoc", "--depth", "2"}), HasSubstr("depth"));
    EXPECT_THAT(problemOf({"info", "a.pdf"}), HasSubstr("the files are told by standard input"));
}

TEST_F(Batches, NothingToDoIsDone) {
    EXPECT_EQ(run({"info"}, "").exitCode, 0);
    EXPECT_EQ(count, 0);
}

}  // namespace
}  // namespace leafwright::test
