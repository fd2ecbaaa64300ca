#include "cli/batch/BatchJob.h"
#include "files/FileName.h"

#include <gmock/gmock.h>

namespace leafwright::test {
namespace {

using cli::BatchJob;
using cli::readJob;
using testing::HasSubstr;

BatchJob jobOf(const QByteArray &line) {
    const auto read = readJob(line);
    if (const auto *problem = std::get_if<QString>(&read)) ADD_FAILURE() << problem->toStdString();
    return std::holds_alternative<BatchJob>(read) ? std::get<BatchJob>(read) : BatchJob{};
}

std::string problemOf(const QByteArray &line) {
    const auto read = readJob(line);
    const auto *problem = std::get_if<QString>(&read);
    return problem ? problem->toStdString() : "none";
}

TEST(BatchJob, IsAPathAsItStands) {
    EXPECT_EQ(jobOf("a b.pdf").file, "a b.pdf");
    EXPECT_EQ(jobOf(" [1].pdf ").file, " [1].pdf ") << "blanks may be part of a name";
    EXPECT_EQ(fileNameBytes(jobOf("caf\xE9.pdf").file), "caf\xE9.pdf") << "which need not be UTF-8";
    EXPECT_TRUE(jobOf("a.pdf").out.isNull());
}

TEST(BatchJob, IsAnObjectWithOptions) {
    const BatchJob job = jobOf(R"( {"file": "a.pdf", "out": "b.pdf", "max-depth": 2, "keep": true})");
    EXPECT_EQ(job.file, "a.pdf");
    EXPECT_EQ(job.out, "b.pdf");
    EXPECT_EQ(job.options, (QJsonObject{{"max-depth", 2}, {"keep", true}}));
}

TEST(BatchJob, HasBytesOfANameAsLoneSurrogates) {
    EXPECT_EQ(fileNameBytes(jobOf(R"({"file": "caf\udce9.pdf"})").file), "caf\xE9.pdf");
}

TEST(BatchJob, ThatCantBeUnderstoodIsRefused) {
    EXPECT_THAT(problemOf("{"), HasSubstr("this is no JSON"));
    EXPECT_THAT(problemOf(R"({"file": "a.pdf"} and more)"), HasSubstr("this is no JSON"));
    EXPECT_THAT(problemOf("{\"file\": \"caf\xE9.pdf\"}"), HasSubstr("this is no JSON"));
    EXPECT_THAT(problemOf(QByteArray(100'000, '{')), HasSubstr("this is no JSON"));
    EXPECT_THAT(problemOf(R"({"out": "a.pdf"})"), HasSubstr("\"file\" is missing"));
    EXPECT_THAT(problemOf(R"({"file": ""})"), HasSubstr("\"file\" wants a path"));
    EXPECT_THAT(problemOf(R"({"file": ["a.pdf"]})"), HasSubstr("\"file\" wants a path"));
    EXPECT_THAT(problemOf(R"({"file": "a.pdf", "out": 1})"), HasSubstr("\"out\" wants a path"));
    EXPECT_THAT(problemOf(R"({"file": "a\u0000.pdf"})"), HasSubstr("no path has a null character"));
    EXPECT_THAT(problemOf(QByteArray("a\0b.pdf", 7)), HasSubstr("no path has a null character"));
}

}  // namespace
}  // namespace leafwright::test
