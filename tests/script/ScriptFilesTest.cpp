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
    /// Where to write a PDF.
    QString placeFor(const QString &path) {
        const auto place = files.placeFor(path, ScriptFiles::Content::PDF);
        EXPECT_TRUE(std::holds_alternative<QString>(place));
        return std::get<QString>(place);
    }
    /// Why something else may not be written there; null where it may.
    QString objectionTo(const QString &path, ScriptFiles::Content content) {
        const auto place = files.placeFor(path, content);
        const auto *refusal = std::get_if<PDFError>(&place);
        return refusal ? refusal->message : QString();
    }

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
    EXPECT_EQ(files.placeToRead(dir.path("a.pdf")), *copy);
    EXPECT_EQ(placeFor(dir.path("a.pdf")), *copy) << "by whatever name";
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
    saveBytes(placeFor("a.pdf"), "of the script");
    const auto made = files.copyOf("a.pdf");
    const auto *error = std::get_if<PDFError>(&made);
    ASSERT_TRUE(error);
    EXPECT_TRUE(error->message.endsWith(": File exists")) << qPrintable(error->message);
    EXPECT_EQ(bytesOf(placeFor("a.pdf")), "of the script");
}

TEST_F(FilesOfAScript, WhatTheOldFileHadAndTheNewOneHasNotIsTold) {
    saveBytes(dir.path("a.pdf"), "before");
    ASSERT_EQ(::link(QFile::encodeName(dir.path("a.pdf")), QFile::encodeName(dir.path("b.pdf"))), 0);
    saveBytes(placeFor("a.pdf"), "after");
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
    saveBytes(placeFor("b.pdf"), "of the script");
    const auto failure = files.publish(notices);
    ASSERT_TRUE(failure);
    EXPECT_TRUE(failure->contains("a.pdf could not be written: another program has written to it"))
        << qPrintable(*failure);
    EXPECT_EQ(bytesOf(dir.path("a.pdf")), "theirs");
    EXPECT_FALSE(QFile::exists(dir.path("b.pdf"))) << "all or nothing";
}

TEST_F(FilesOfAScript, WhereOneCantBeWrittenNoneIs) {
    saveBytes(placeFor("first.txt"), "first");
    saveBytes(placeFor("no/second.txt"), "second");
    const auto failure = files.publish(notices);
    ASSERT_TRUE(failure);
    EXPECT_TRUE(failure->contains("second.txt could not be written: ")) << qPrintable(*failure);
    EXPECT_FALSE(QFile::exists(dir.path("first.txt")));
}

TEST_F(FilesOfAScript, OnlySomeFilesAreReplacedWhereThatIsAsked) {
    for (const char *name : {"own.pdf", "other.pdf"})
        saveBytes(dir.path(name), "old");
    ASSERT_EQ(::link(QFile::encodeName(dir.path("other.pdf")), QFile::encodeName(dir.path("hard.pdf"))), 0);
    files.replaceOnly({dir.path("own.pdf")}, "it is there");
    saveBytes(placeFor("new.pdf"), "new");
    saveBytes(placeFor("own.pdf"), "new");
    saveBytes(placeFor("other.pdf"), "old");
    EXPECT_EQ(files.publish(notices), std::nullopt) << "what is the same is not written";
    EXPECT_EQ(bytesOf(dir.path("new.pdf")) + bytesOf(dir.path("own.pdf")), "newnew");
    for (const char *name : {"other.pdf", "hard.pdf", "new.pdf"}) {
        const QByteArray before = bytesOf(dir.path(name));
        ScriptFiles again(base);
        again.replaceOnly({dir.path("own.pdf"), dir.path("other.pdf")}, "it is there");
        if (QByteArray(name) == "other.pdf") again.replaceOnly({dir.path("own.pdf")}, "it is there");
        for (const char *each : {"own.pdf", name})
            saveBytes(std::get<QString>(again.placeFor(each, ScriptFiles::Content::PDF)), "newer");
        EXPECT_EQ(again.publish(notices), dir.path(name) + " could not be written: it is there");
        EXPECT_EQ(bytesOf(dir.path(name)), before);
        EXPECT_EQ(bytesOf(dir.path("own.pdf")), "new") << "all or nothing";
    }
}

TEST_F(FilesOfAScript, TwoDoNotGoToOnePlace) {
    saveBytes(dir.path("a.pdf"), "old");
    ASSERT_TRUE(QFile::link(dir.path("a.pdf"), dir.path("link.pdf")));
    saveBytes(placeFor("a.pdf"), "one");
    saveBytes(placeFor("link.pdf"), "other");
    EXPECT_EQ(files.publish(notices),
              dir.path("link.pdf") + " could not be written: something else is to be written there too");
    EXPECT_EQ(bytesOf(dir.path("a.pdf")), "old");
}

TEST_F(FilesOfAScript, OnlyThePdfTakesThePlaceOfWhatItWasMadeOf) {
    using Content = ScriptFiles::Content;
    const QString isRead = "it is read, and would be overwritten";
    saveBytes(dir.path("a.pdf"), "before");
    saveBytes(dir.path("steps.json"), "[]");
    ASSERT_TRUE(QFile::link(dir.path("a.pdf"), dir.path("link.txt")));
    files.keepRead(placeOf(dir.path("steps.json")));
    files.copyOf("a.pdf");
    for (const Content content : {Content::Map, Content::Report}) {
        EXPECT_EQ(objectionTo("a.pdf", content), isRead);
        EXPECT_EQ(objectionTo("link.txt", content), isRead);
        EXPECT_EQ(objectionTo("steps.json", content), isRead);
    }
    EXPECT_EQ(objectionTo("steps.json", Content::PDF), isRead);
    EXPECT_EQ(objectionTo("a.pdf", Content::PDF), QString());
    EXPECT_EQ(objectionTo("link.txt", Content::PDF), QString());
}

TEST_F(FilesOfAScript, TwoOfDifferentContentDoNotMeet) {
    using Content = ScriptFiles::Content;
    const QString meet = "two results would be written to it";
    ASSERT_TRUE(QFile::link(dir.path("report.json"), dir.path("link.txt")));
    EXPECT_EQ(objectionTo("report.json", Content::Report), QString());
    for (const Content content : {Content::Map, Content::PDF, Content::Report}) {
        EXPECT_EQ(objectionTo("report.json", content), meet);
        EXPECT_EQ(objectionTo("link.txt", content), meet) << "a link to what is still to come";
    }
    EXPECT_EQ(objectionTo("map.txt", Content::Map), QString());
    EXPECT_EQ(objectionTo("map.txt", Content::Map), QString()) << "the last one stays";
    EXPECT_EQ(objectionTo("map.txt", Content::PDF), meet);
    saveBytes(dir.path("printed"), "");
    files.keepWritten(placeOf(dir.path("printed")));
    EXPECT_EQ(objectionTo("printed", Content::Map), meet);
}

TEST_F(FilesOfAScript, WithoutABaseFolderRelativePathsLeadNowhere) {
    ScriptFiles without(std::nullopt);
    for (const auto &made : {without.copyOf("a.pdf"), without.placeFor("a.pdf", ScriptFiles::Content::PDF)}) {
        const auto *error = std::get_if<PDFError>(&made);
        ASSERT_TRUE(error);
        EXPECT_TRUE(error->message.startsWith("the folder that this program was started in is gone"));
    }
    saveBytes(dir.path("a.pdf"), "before");
    EXPECT_TRUE(std::holds_alternative<QString>(without.copyOf(dir.path("a.pdf"))));
    EXPECT_EQ(without.told("/a.pdf"), "/a.pdf");
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
    const QString place = placeFor("sub/out.pdf");
    EXPECT_EQ(files.told(place), "sub/out.pdf");
    EXPECT_EQ(files.told(placeFor("/elsewhere/b.pdf")), "/elsewhere/b.pdf");
    EXPECT_EQ(files.told(files.temporaryDirectory() + "/a.pdf"), "<temporary>/a.pdf");
    EXPECT_EQ(files.told(base + "/c.pdf"), "c.pdf");
}

TEST_F(FilesOfAScript, TwoOfOneNameDoNotMeet) {
    EXPECT_NE(placeFor("a/x.pdf"), placeFor("b/x.pdf"));
}

}  // namespace
}  // namespace leafwright::script
