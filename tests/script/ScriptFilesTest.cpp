#include "script/ScriptFiles.h"
#include "support/CliFiles.h"

#include <QDir>

#include <gtest/gtest.h>
#include <unistd.h>

namespace leafwright::script {
namespace {

using test::bytesOf;
using test::saveBytes;

class FilesOfAScript : public testing::Test {
protected:
    test::TempDir dir;
    QString base = QDir::cleanPath(dir.path({}));
    ScriptFiles files{base};
    QStringList notices;
};

TEST_F(FilesOfAScript, ACopyStandsInForTheFileUntilItIsPublished) {
    saveBytes(dir.path("a.pdf"), "before");
    const auto made = files.copyOf("a.pdf");
    const auto *copy = std::get_if<QString>(&made);
    ASSERT_TRUE(copy);
    EXPECT_TRUE(copy->endsWith("/a.pdf")) << "documents go by their files' names";
    saveBytes(*copy, "after");
    EXPECT_EQ(bytesOf(dir.path("a.pdf")), "before");
    EXPECT_EQ(files.placeToRead("a.pdf"), *copy);
    EXPECT_EQ(files.placeFor(dir.path("a.pdf")), *copy) << "by whatever name";
    EXPECT_EQ(files.publish(notices), std::nullopt);
    EXPECT_EQ(bytesOf(dir.path("a.pdf")), "after");
}

TEST_F(FilesOfAScript, AMissingFileHasNoCopy) {
    const auto made = files.copyOf("no.pdf");
    const auto *error = std::get_if<PDFError>(&made);
    ASSERT_TRUE(error);
    EXPECT_EQ(error->kind, PDFError::Kind::FileMissing);
}

TEST_F(FilesOfAScript, ACopyIsNeverWrittenOverAnything) {
    saveBytes(dir.path("a.pdf"), "before");
    saveBytes(files.placeFor("a.pdf"), "of the script");
    const auto made = files.copyOf("a.pdf");
    const auto *error = std::get_if<PDFError>(&made);
    ASSERT_TRUE(error);
    EXPECT_TRUE(error->message.endsWith(": File exists")) << qPrintable(error->message);
    EXPECT_EQ(bytesOf(files.placeFor("a.pdf")), "of the script");
}

TEST_F(FilesOfAScript, WhatTheOldFileHadAndTheNewOneHasNotIsTold) {
    saveBytes(dir.path("a.pdf"), "before");
    ASSERT_EQ(::link(QFile::encodeName(dir.path("a.pdf")), QFile::encodeName(dir.path("b.pdf"))), 0);
    saveBytes(files.placeFor("a.pdf"), "after");
    EXPECT_EQ(files.publish(notices), std::nullopt);
    EXPECT_EQ(notices, QStringList{dir.path("a.pdf") +
                                   ": it had other names (hard links), which still lead to the old file"});
}

TEST_F(FilesOfAScript, WhatWasNotChangedIsNotWritten) {
    saveBytes(dir.path("a.pdf"), "before");
    files.copyOf("a.pdf");
    QFile::setPermissions(dir.path("a.pdf"), QFile::ReadOwner);
    const QDateTime written = QFileInfo(dir.path("a.pdf")).metadataChangeTime();
    EXPECT_EQ(files.publish(notices), std::nullopt);
    EXPECT_EQ(QFileInfo(dir.path("a.pdf")).metadataChangeTime(), written);
}

TEST_F(FilesOfAScript, WhatAnotherProgramHasChangedMeanwhileStays) {
    saveBytes(dir.path("a.pdf"), "before");
    const auto copy = files.copyOf("a.pdf");
    saveBytes(dir.path("a.pdf"), "theirs");
    EXPECT_EQ(files.publish(notices), std::nullopt) << "the script has not saved it";
    EXPECT_EQ(bytesOf(dir.path("a.pdf")), "theirs");
    saveBytes(std::get<QString>(copy), "after");
    saveBytes(files.placeFor("b.pdf"), "of the script");
    const auto failure = files.publish(notices);
    ASSERT_TRUE(failure);
    EXPECT_TRUE(failure->contains("a.pdf could not be written: another program has written to it"))
        << qPrintable(*failure);
    EXPECT_EQ(bytesOf(dir.path("a.pdf")), "theirs");
    EXPECT_FALSE(QFile::exists(dir.path("b.pdf"))) << "all or nothing";
}

TEST_F(FilesOfAScript, WhereOneCantBeWrittenNoneIs) {
    saveBytes(files.placeFor("first.txt"), "first");
    saveBytes(files.placeFor("no/second.txt"), "second");
    const auto failure = files.publish(notices);
    ASSERT_TRUE(failure);
    EXPECT_TRUE(failure->contains("second.txt could not be written: ")) << qPrintable(*failure);
    EXPECT_FALSE(QFile::exists(dir.path("first.txt")));
}

TEST_F(FilesOfAScript, TwoDoNotGoToOnePlace) {
    saveBytes(dir.path("a.pdf"), "old");
    ASSERT_TRUE(QFile::link(dir.path("a.pdf"), dir.path("link.pdf")));
    saveBytes(files.placeFor("a.pdf"), "one");
    saveBytes(files.placeFor("link.pdf"), "other");
    EXPECT_EQ(files.publish(notices),
              dir.path("link.pdf") + " could not be written: something else is to be written there too");
    EXPECT_EQ(bytesOf(dir.path("a.pdf")), "old");
}

TEST_F(FilesOfAScript, GoUpFromWhereALinkLeads) {
    ASSERT_TRUE(QDir(base).mkpath("real/sub"));
    ASSERT_TRUE(QFile::link(base + "/real/sub", base + "/link"));
    saveBytes(base + "/a.pdf", "here");
    saveBytes(base + "/real/a.pdf", "there");
    const auto made = files.copyOf("link/../a.pdf");
    const auto *copy = std::get_if<QString>(&made);
    ASSERT_TRUE(copy);
    EXPECT_EQ(bytesOf(*copy), "there");
}

TEST_F(FilesOfAScript, PathsAreToldAlikeInEveryRun) {
    const QString place = files.placeFor("sub/out.pdf");
    EXPECT_EQ(files.told(place), "sub/out.pdf");
    EXPECT_EQ(files.told(files.placeFor("/elsewhere/b.pdf")), "/elsewhere/b.pdf");
    EXPECT_EQ(files.told(files.temporaryDirectory() + "/a.pdf"), "<temporary>/a.pdf");
    EXPECT_EQ(files.told(base + "/c.pdf"), "c.pdf");
}

TEST_F(FilesOfAScript, TwoOfOneNameDoNotMeet) {
    EXPECT_NE(files.placeFor("a/x.pdf"), files.placeFor("b/x.pdf"));
}

}  // namespace
}  // namespace leafwright::script
