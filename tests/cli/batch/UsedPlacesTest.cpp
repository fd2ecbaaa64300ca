#include "cli/batch/UsedPlaces.h"
#include "support/CliFiles.h"

#include <QDir>
#include <QFile>

#include <gmock/gmock.h>
#include <sys/stat.h>

namespace leafwright::test {
namespace {

using cli::UsedPlaces;
using testing::HasSubstr;

class UsedPlacesOfJobs : public testing::Test {
protected:
    void SetUp() override {
        for (const char *name : {"a.pdf", "b.pdf"})
            saveBytes(dir.path(name), "x");
    }
    /// @param pdf empty for none
    std::string add(const QString &file, const QString &pdf, const QStringList &written = {},
                    const QStringList &readBesides = {}) {
        const auto problem = places.add(pathsOf(QStringList{file} + readBesides),
                                        pdf.isEmpty() ? pdf : dir.path(pdf), pathsOf(written));
        return problem.value_or("none").toStdString();
    }

    QStringList pathsOf(const QStringList &names) const {
        QStringList paths;
        for (const QString &name : names)
            paths.append(dir.path(name));
        return paths;
    }

    TempDir dir;
    UsedPlaces places;
};

TEST_F(UsedPlacesOfJobs, OfTheirOwnAreFine) {
    EXPECT_EQ(add("a.pdf", "a.out"), "none");
    EXPECT_EQ(add("b.pdf", "b.out", {"b.json"}), "none");
    EXPECT_EQ(add("a.pdf", "a.deeper", {}), "none") << "one file may be done in several ways";
    EXPECT_EQ(add("a.pdf", ""), "none");
}

TEST_F(UsedPlacesOfJobs, APdfMayTakeThePlaceOfItsFile) {
    EXPECT_EQ(add("a.pdf", "a.pdf"), "none");
    EXPECT_THAT(add("a.pdf", "a.out"), HasSubstr("another job writes to this file"));
}

TEST_F(UsedPlacesOfJobs, ResultsDoNotMeet) {
    EXPECT_EQ(add("a.pdf", "out"), "none");
    EXPECT_THAT(add("b.pdf", "out"), HasSubstr("two results would be written to"));
    EXPECT_THAT(add("b.pdf", "./out"), HasSubstr("two results would be written to"));
    saveBytes(dir.path("out"), "the first one's");
    EXPECT_THAT(add("b.pdf", "out"), HasSubstr("two results would be written to"));
    EXPECT_THAT(add("b.pdf", "b.out", {"b.out"}), HasSubstr("two results would be written to"));
}

TEST_F(UsedPlacesOfJobs, ResultsDoNotMeetThroughLinks) {
    ASSERT_TRUE(QDir(dir.path(".")).mkdir("folder"));
    ASSERT_TRUE(QFile::link(dir.path("folder"), dir.path("link")));
    ASSERT_TRUE(QFile::link(dir.path("folder/out"), dir.path("dangling")));
    EXPECT_EQ(add("a.pdf", "folder/out"), "none");
    EXPECT_THAT(add("b.pdf", "link/out"), HasSubstr("two results would be written to"));
    EXPECT_THAT(add("b.pdf", "dangling"), HasSubstr("two results would be written to"));
}

TEST_F(UsedPlacesOfJobs, WhatOneReadsNoOtherWrites) {
    EXPECT_EQ(add("a.pdf", "a.out"), "none");
    EXPECT_THAT(add("b.pdf", "a.pdf"), HasSubstr("is read, and would be overwritten"));
    EXPECT_THAT(add("a.out", "c.out"), HasSubstr("another job writes to this file"));
    EXPECT_THAT(add("a.pdf", "a.pdf"), HasSubstr("is read, and would be overwritten"));
    EXPECT_THAT(add("b.pdf", "b.out", {"b.pdf"}), HasSubstr("is read, and would be overwritten"));
}

TEST_F(UsedPlacesOfJobs, WhatIsReadBesidesNoJobWrites) {
    EXPECT_EQ(add("a.pdf", "a.out", {}, {"tree"}), "none");
    EXPECT_EQ(add("b.pdf", "b.out", {}, {"tree"}), "none") << "all may read the same";
    EXPECT_THAT(add("b.pdf", "tree"), HasSubstr("is read, and would be overwritten"));
    EXPECT_THAT(add("b.pdf", "other", {}, {"other"}), HasSubstr("is read, and would be overwritten"));
    EXPECT_THAT(add("b.pdf", "c.out", {}, {"a.out"}), HasSubstr("a.out, which is read"));
}

TEST_F(UsedPlacesOfJobs, StreamsTakeNoResults) {
    for (const char *stream : {"/dev/stdout", "-"})
        EXPECT_THAT(places.add({dir.path("a.pdf")}, stream, {})->toStdString(), HasSubstr("is a stream"));
    ASSERT_EQ(::mkfifo(dir.path("pipe").toUtf8().constData(), 0600), 0);
    EXPECT_THAT(add("a.pdf", "", {"pipe"}), HasSubstr("is a stream"));
}

TEST_F(UsedPlacesOfJobs, WhatIsReservedNoJobWrites) {
    EXPECT_EQ(places.reserve(dir.path("log")), std::nullopt);
    EXPECT_THAT(add("a.pdf", "log"), HasSubstr("is read, and would be overwritten"));
    EXPECT_THAT(add("a.pdf", "a.out", {"log"}), HasSubstr("is read, and would be overwritten"));
}

}  // namespace
}  // namespace leafwright::test
