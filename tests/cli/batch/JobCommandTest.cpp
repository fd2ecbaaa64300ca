#include "cli/batch/JobCommand.h"
#include "support/CliFiles.h"

#include <gmock/gmock.h>

namespace leafwright::test {
namespace {

using cli::BatchJob;
using cli::JobCommand;
using testing::HasSubstr;
using testing::StartsWith;

JobCommand commandOf(const QStringList &words, const QString &folder = {}) {
    return std::get<JobCommand>(JobCommand::read(words, folder));
}

std::string refusalOf(const QStringList &words) {
    const auto read = JobCommand::read(words, {});
    const auto *problem = std::get_if<QString>(&read);
    return problem ? problem->toStdString() : "none";
}

JobCommand::Task taskOf(const QStringList &words, const BatchJob &job, const QString &folder = {}) {
    const auto task = commandOf(words, folder).taskOf(job);
    if (const auto *problem = std::get_if<QString>(&task)) ADD_FAILURE() << problem->toStdString();
    return std::holds_alternative<JobCommand::Task>(task) ? std::get<JobCommand::Task>(task)
                                                          : JobCommand::Task{};
}

std::string problemOf(const QStringList &words, const BatchJob &job) {
    const auto task = commandOf(words).taskOf(job);
    const auto *problem = std::get_if<QString>(&task);
    return problem ? problem->toStdString() : "none";
}

TEST(JobCommand, AddsItsOptionsToThoseOfTheJob) {
    const BatchJob job{"a.pdf", "b.pdf", {{"max-depth", 2}, {"keep", true}}};
    EXPECT_EQ(taskOf({"autotoc", "--wrap"}, job).work.arguments,
              (QStringList{"autotoc", "--output=b.pdf", "--max-depth=2", "--keep", "--wrap", "--", "a.pdf"}));
}

TEST(JobCommand, OptionsOfTheJobTakeThePlaceOfItsOwn) {
    const QStringList words{"autotoc", "--max-depth", "5", "--keep"};
    EXPECT_EQ(taskOf(words, {"a.pdf", "b.pdf", {{"max-depth", "1"}, {"keep", false}}}).work.arguments,
              (QStringList{"autotoc", "--output=b.pdf", "--max-depth=1", "--", "a.pdf"}));
    EXPECT_EQ(taskOf(words, {"a.pdf", "b.pdf", {{"max-depth", QJsonValue()}}}).work.arguments,
              (QStringList{"autotoc", "--output=b.pdf", "--keep", "--", "a.pdf"}));
}

TEST(JobCommand, HasArgumentsBesideTheFile) {
    EXPECT_EQ(taskOf({"apply", "all.json"}, {"a.pdf", "b.pdf"}).work.arguments,
              (QStringList{"apply", "--output=b.pdf", "--", "a.pdf", "all.json"}));
    EXPECT_EQ(taskOf({"apply"}, {"a.pdf", "b.pdf", {{"tree", "own.json"}}}).work.arguments,
              (QStringList{"apply", "--output=b.pdf", "--", "a.pdf", "own.json"}));
    EXPECT_EQ(taskOf({"run", "steps.json"}, {"a.pdf"}).work.arguments,
              (QStringList{"run", "--", "steps.json", "a.pdf"}));
    EXPECT_EQ(taskOf({"apply", "all.json"}, {"a.pdf", "b.pdf"}).read, QStringList("all.json"));
    EXPECT_EQ(taskOf({"autotoc"}, {"a.pdf", "b.pdf", {{"map", "a.map"}}}).read, QStringList("a.map"));
    EXPECT_EQ(problemOf({"apply"}, {"a.pdf", "b.pdf"}), "\"tree\" is missing");
    EXPECT_EQ(problemOf({"apply", "all.json"}, {"a.pdf", "b.pdf", {{"tree", 5}}}), "\"tree\" wants a path");
    EXPECT_EQ(problemOf({"apply"}, {"a.pdf", "b.pdf", {{"tree", "-"}}}), "standard input has the jobs");
}

TEST(JobCommand, ResultsGoToTheFolderUnderTheNamesOfTheirFiles) {
    EXPECT_EQ(taskOf({"autotoc"}, {"x/a.pdf"}, "done").out, "done/a.pdf");
    EXPECT_EQ(taskOf({"autotoc"}, {"x/a.pdf", "y/b.pdf"}, "done").out, "y/b.pdf");
    EXPECT_EQ(taskOf({"info"}, {"x/a.b.pdf"}, "done").work.printTo, "done/a.b.json");
    EXPECT_EQ(taskOf({"outline", "--format", "plus"}, {"x/a.pdf"}, "done").work.printTo, "done/a.txt");
    EXPECT_EQ(taskOf({"outline", "--format", "text"}, {"x/a.pdf"}, "done").work.printTo, "done/a.txt");
    EXPECT_EQ(taskOf({"outline", "--format", "markdown"}, {"x/a.pdf"}, "done").work.printTo, "done/a.md");
    EXPECT_EQ(taskOf({"outline", "--format", "pdfcpu"}, {"x/a.pdf"}, "done").work.printTo, "done/a.pdfcpu");
    EXPECT_EQ(taskOf({"info"}, {"x/a.pdf"}).work.printTo, "") << "what is printed is handed back";
    EXPECT_EQ(problemOf({"contents"}, {"a.pdf"}), "\"out\" is missing, and there is no --out-dir");
}

TEST(JobCommand, TellsWhatIsWrittenBesides) {
    EXPECT_EQ(taskOf({"contents"}, {"a.pdf", "b.pdf", {{"report", "r.json"}}}).written,
              QStringList("r.json"));
    EXPECT_EQ(taskOf({"contents"}, {"a.pdf", "b.pdf"}).pdf, "b.pdf");
    EXPECT_EQ(taskOf({"info"}, {"a.pdf", "b.json"}).written, QStringList("b.json"));
    EXPECT_EQ(taskOf({"info"}, {"a.pdf", "b.json"}).pdf, "");
}

TEST(JobCommand, KnowsWhetherJsonIsPrinted) {
    EXPECT_TRUE(taskOf({"info"}, {"a.pdf"}).printsJson);
    EXPECT_TRUE(taskOf({"outline"}, {"a.pdf"}).printsJson);
    EXPECT_TRUE(taskOf({"outline", "--format", "pdfcpu"}, {"a.pdf"}).printsJson);
    EXPECT_FALSE(taskOf({"outline", "--format", "text"}, {"a.pdf"}).printsJson);
    EXPECT_TRUE(taskOf({"outline", "--format", "text"}, {"a.pdf", {}, {{"format", "json"}}}).printsJson);
    EXPECT_FALSE(taskOf({"contents"}, {"a.pdf", "b.pdf", {{"explain", true}}}).printsJson);
    const JobCommand::Task report = taskOf({"contents"}, {"a.pdf", "b.pdf", {{"report", "-"}}});
    EXPECT_TRUE(report.printsJson);
    EXPECT_EQ(report.written, QStringList()) << "its line has it";
}

TEST(JobCommand, JobsThatCantBeUnderstoodAreRefused) {
    EXPECT_EQ(problemOf({"autotoc"}, {"a.pdf", "b.pdf", {{"depth", 2}}}), "autotoc has no option \"depth\"");
    EXPECT_EQ(problemOf({"autotoc"}, {"a.pdf", "b.pdf", {{"out-dir", "x"}}}),
              "autotoc has no option \"out-dir\"");
    EXPECT_EQ(problemOf({"run"}, {"a.pdf", "b.pdf", {{"list", true}}}), "run has no option \"list\"");
    EXPECT_EQ(problemOf({"autotoc"}, {"a.pdf", "b.pdf", {{"keep", "yes"}}}), "\"keep\" wants true or false");
    EXPECT_EQ(problemOf({"autotoc"}, {"a.pdf", "b.pdf", {{"map", true}}}),
              "\"map\" wants a text or a number");
    EXPECT_EQ(problemOf({"autotoc"}, {"a.pdf", "b.pdf", {{"map", ""}}}), "--map: the value is empty");
}

TEST(JobCommand, CommandsThatCantBeForAllJobsAreRefused) {
    EXPECT_THAT(refusalOf({"labels"}), StartsWith("\"labels\" is no command of a batch; there are autotoc "));
    EXPECT_THAT(refusalOf({"batch"}), HasSubstr("no command of a batch"));
    EXPECT_THAT(refusalOf({"autotoc", "--depth", "2"}), HasSubstr("depth"));
    EXPECT_EQ(refusalOf({"autotoc", "-o", "x.pdf"}),
              "--output is not for all jobs; each says it in its line");
    EXPECT_EQ(refusalOf({"contents", "--report", "r"}),
              "--report is not for all jobs; each says it in its line");
    EXPECT_EQ(refusalOf({"autotoc", "a.pdf"}), "\"a.pdf\": the files are told by standard input");
    EXPECT_EQ(refusalOf({"run", "-"}), "standard input has the jobs");
}

TEST(JobCommand, SignaturesTellJobsApart) {
    const QStringList words{"autotoc"};
    const QByteArray one = taskOf(words, {"a.pdf", "b.pdf"}).signature;
    EXPECT_EQ(taskOf(words, {"a.pdf", "b.pdf"}).signature, one);
    EXPECT_NE(taskOf(words, {"c.pdf", "b.pdf"}).signature, one);
    EXPECT_NE(taskOf(words, {"a.pdf", "c.pdf"}).signature, one);
    EXPECT_NE(taskOf({"autotoc", "--keep"}, {"a.pdf", "b.pdf"}).signature, one);
    EXPECT_NE(taskOf({"contents"}, {"a.pdf", "b.pdf"}).signature, one);
}

TEST(JobCommand, SignaturesTellOfWhatIsReadBesides) {
    const TempDir dir;
    const QString read = dir.path("read");
    saveBytes(read, "one");
    const auto signatures = [&read] {
        return QByteArrayList{
            taskOf({"apply", read}, {"a.pdf", "b.pdf"}).signature,
            taskOf({"run"}, {"a.pdf", "b.pdf", {{"steps", read}}}).signature,
            taskOf({"autotoc", "--map", read}, {"a.pdf", "b.pdf"}).signature,
        };
    };
    const QByteArrayList before = signatures();
    EXPECT_EQ(signatures(), before);
    saveBytes(read, "other");
    const QByteArrayList after = signatures();
    for (qsizetype i = 0; i < before.size(); ++i)
        EXPECT_NE(after[i], before[i]) << i;
}

TEST(JobCommand, RecognitionOfTextHasNoTimeLimitOfItsOwn) {
    EXPECT_EQ(commandOf({"contents"}).usualTimeLimit().count(), 60);
    EXPECT_EQ(commandOf({"contents", "--ocr"}).usualTimeLimit().count(), 0);
}

}  // namespace
}  // namespace leafwright::test
