#include "document/outline/RecoveryFile.h"
#include "document/outline/RecoveryWriter.h"
#include "support/CliFiles.h"
#include "support/TempDir.h"

#include <QDateTime>
#include <QDir>

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

namespace leafwright {
namespace {

class RecoveryFiles : public testing::Test {
protected:
    using File = std::unique_ptr<RecoveryFile>;

    File make(const QString &pdf) {
        auto made = RecoveryFile::make(folder, pdf);
        if (const auto *reason = std::get_if<QString>(&made)) ADD_FAILURE() << reason->toStdString();
        return std::holds_alternative<File>(made) ? std::get<File>(std::move(made)) : nullptr;
    }
    static KeptOutline outline(const QString &pdf, const QString &title, qint64 date = 1) {
        KeptOutline kept{pdf, {}, date, {}};
        kept.entries.push_back({0, title, "1", {}, {}, {}});
        return kept;
    }
    /// The titles of what was left behind for a PDF.
    QStringList titles(const QString &pdf) {
        QStringList titles;
        for (const File &file : RecoveryFile::leftBehindFor(folder, pdf).files)
            titles.append(std::get<KeptOutline>(file->read()).entries.at(0).title);
        return titles;
    }
    QStringList problems(const QString &pdf) { return RecoveryFile::leftBehindFor(folder, pdf).problems; }
    /// What was left behind for a PDF by a program that has ended.
    void leave(const KeptOutline &outline) { EXPECT_EQ(make(outline.pdf)->write(outline), std::nullopt); }
    KeptOutline outlineOfFile(const QString &pdf, const QString &title) {
        KeptOutline kept = outline(pdf, title);
        kept.file = markOfFile(pdf).value_or(FileMark());
        return kept;
    }
    /// Where the only one is kept.
    QString onlyPath() { return folder + '/' + QDir(folder).entryList({"*.outline"}).value(0); }
    static mode_t rights(const QString &path) {
        struct stat status = {};
        EXPECT_EQ(::stat(qPrintable(path), &status), 0);
        return status.st_mode & 07777;
    }
    QStringList names() { return QDir(folder).entryList(QDir::Files | QDir::Hidden); }

    test::TempDir dir;
    QString folder = dir.path("state/leafwright/recovery");
};

TEST_F(RecoveryFiles, AreFoundByThePdfOnceTheirProgramHasEnded) {
    File file = make("/a.pdf");
    EXPECT_EQ(file->write(outline("/a.pdf", "one")), std::nullopt);
    EXPECT_EQ(file->write(outline("/a.pdf", "two")), std::nullopt);
    EXPECT_EQ(titles("/a.pdf"), QStringList()) << "somebody has it";
    file.reset();
    EXPECT_EQ(titles("/a.pdf"), QStringList("two"));
    EXPECT_EQ(titles("/b.pdf"), QStringList());
    EXPECT_EQ(titles("/a.pdf"), QStringList("two")) << "who only looks changes nothing";
}

TEST_F(RecoveryFiles, AreForNobodyElse) {
    const File file = make("/a.pdf");
    EXPECT_EQ(rights(folder), 0700U);
    for (const char *title : {"one", "two"}) {
        EXPECT_EQ(file->write(outline("/a.pdf", title)), std::nullopt);
        for (const QString &name : names())
            EXPECT_EQ(rights(folder + '/' + name), 0600U) << qPrintable(name);
    }
}

TEST_F(RecoveryFiles, AreForNobodyElseInAFolderThatWasThere) {
    ASSERT_TRUE(QDir().mkpath(folder));
    ASSERT_EQ(::chmod(qPrintable(folder), 0755), 0);
    const File file = make("/a.pdf");
    EXPECT_EQ(rights(folder), 0700U);
}

TEST_F(RecoveryFiles, AreNotLeftInAFolderOfSomebodyElse) {
    if (::geteuid() != 0) GTEST_SKIP() << "who is not root can't give a folder away";
    ASSERT_TRUE(QDir().mkpath(folder));
    ASSERT_EQ(::chown(qPrintable(folder), 12345, 12345), 0);
    const auto made = RecoveryFile::make(folder, "/a.pdf");
    ASSERT_TRUE(std::holds_alternative<QString>(made));
    EXPECT_THAT(std::get<QString>(made).toStdString(), testing::HasSubstr("somebody else"));
}

TEST_F(RecoveryFiles, AreFoundByOtherPathsToThePdf) {
    test::saveBytes(dir.path("a.pdf"), "pdf");
    leave(outline(dir.path("a.pdf"), "one"));
    ASSERT_TRUE(QFile::link(dir.path("a.pdf"), dir.path("link.pdf")));
    EXPECT_EQ(titles(dir.path("link.pdf")), QStringList("one"));
    test::saveBytes(dir.path("copy.pdf"), "pdf");
    EXPECT_EQ(titles(dir.path("copy.pdf")), QStringList()) << "the file is still in its place";
}

TEST_F(RecoveryFiles, AreFoundWhereThePdfWasMovedTo) {
    test::saveBytes(dir.path("a.pdf"), "pdf");
    leave(outlineOfFile(dir.path("a.pdf"), "one"));
    test::saveBytes(dir.path("other.pdf"), "fdp");
    ASSERT_TRUE(QFile::rename(dir.path("a.pdf"), dir.path("b.pdf")));
    EXPECT_EQ(titles(dir.path("b.pdf")), QStringList("one"));
    EXPECT_EQ(titles(dir.path("other.pdf")), QStringList());
}

TEST_F(RecoveryFiles, AreFoundWhereThePdfWasMovedToThoughAnotherIsInItsPlace) {
    test::saveBytes(dir.path("a.pdf"), "pdf");
    leave(outlineOfFile(dir.path("a.pdf"), "one"));
    test::saveBytes(dir.path("b.pdf"), "pdf");
    EXPECT_EQ(titles(dir.path("b.pdf")), QStringList()) << "a copy, as far as anybody knows";
    for (const char *content : {"new", "new edition"}) {
        test::saveBytes(dir.path("a.pdf"), content);
        EXPECT_EQ(titles(dir.path("b.pdf")), QStringList("one"));
        EXPECT_EQ(titles(dir.path("a.pdf")), QStringList("one"));
    }
}

TEST_F(RecoveryFiles, AreOrderedByWhatWasKeptLaterWhateverTheClockSaid) {
    for (const char *title : {"early", "late"}) {
        const auto store = RecoveryWriter::storeIn(folder, nullptr);
        const qint64 date = title == QLatin1String("early") ? 2 : 1;
        EXPECT_EQ(store->write(outline("/a.pdf", title, date)), std::nullopt);
        EXPECT_EQ(store->write(outline("/a.pdf", title, date)), std::nullopt);
    }
    EXPECT_EQ(titles("/a.pdf"), (QStringList{"late", "early"}));
}

TEST_F(RecoveryFiles, OfOnePdfDoNotMeet) {
    File one = make("/a.pdf");
    File other = make("/a.pdf");
    EXPECT_EQ(one->write(outline("/a.pdf", "early", 1)), std::nullopt);
    EXPECT_EQ(other->write(outline("/a.pdf", "late", 2)), std::nullopt);
    one.reset();
    EXPECT_EQ(titles("/a.pdf"), QStringList("early"));
    other.reset();
    EXPECT_EQ(titles("/a.pdf"), (QStringList{"late", "early"}));
}

TEST_F(RecoveryFiles, LeaveNothingWhenTheyAreRemoved) {
    File file = make("/a.pdf");
    EXPECT_EQ(file->remove(), std::nullopt) << "there was nothing";
    EXPECT_EQ(file->write(outline("/a.pdf", "one")), std::nullopt);
    EXPECT_EQ(file->remove(), std::nullopt);
    EXPECT_EQ(titles("/a.pdf"), QStringList());
    file.reset();
    EXPECT_EQ(names(), QStringList());
}

TEST_F(RecoveryFiles, ThatAreDamagedAreToldAndSetAside) {
    for (const int kind : {0, 1, 2, 3}) {
        leave(outline("/a.pdf", "one"));
        const QByteArrayList contents{test::bytesOf(onlyPath()).chopped(5), "", QByteArray(1000, '\0'),
                                      "{\n"};
        const QByteArray &content = contents[kind];
        test::saveBytes(onlyPath(), content);
        const QStringList told = problems("/a.pdf");
        ASSERT_EQ(told.size(), 1);
        const QString path = told[0].section(':', 0, 0);
        EXPECT_TRUE(path.endsWith(".damaged")) << qPrintable(path);
        EXPECT_EQ(test::bytesOf(path), content);
        EXPECT_EQ(problems("/a.pdf"), QStringList()) << "once is enough";
        EXPECT_EQ(titles("/a.pdf"), QStringList());
    }
}

TEST_F(RecoveryFiles, OfALaterVersionAreToldAndStay) {
    leave(outline("/a.pdf", "one"));
    QByteArray content = test::bytesOf(onlyPath());
    test::saveBytes(onlyPath(), content.replace("\"leafwrightOutline\": 1", "\"leafwrightOutline\": 2"));
    ASSERT_NE(test::bytesOf(onlyPath()).indexOf("\"leafwrightOutline\": 2"), -1);
    const QStringList before = names();
    EXPECT_THAT(problems("/a.pdf").join(' ').toStdString(), testing::HasSubstr("a later version"));
    EXPECT_EQ(titles("/a.pdf"), QStringList());
    EXPECT_TRUE(names().contains(before.value(0)));
    EXPECT_EQ(QDir(folder).entryList({"*.damaged"}).size(), 0);
}

TEST_F(RecoveryFiles, KnowWhetherTheirLockKeepsOthersOut) {
    const File file = make("/a.pdf");
    EXPECT_TRUE(file->isThere());
    const QString lock = folder + '/' + QDir(folder).entryList({"*.lock"}).value(0);
    ASSERT_TRUE(QFile::remove(lock));
    EXPECT_FALSE(file->isThere());
    test::saveBytes(lock, "");
    EXPECT_FALSE(file->isThere()) << "another one";
}

TEST_F(RecoveryFiles, LeaveAFolderAsItIsThatALinkLeadsTo) {
    QDir().mkpath(dir.path("public"));
    QDir().mkpath(dir.path("state/leafwright"));
    ASSERT_EQ(::chmod(qPrintable(dir.path("public")), 0755), 0);
    ASSERT_TRUE(QFile::link(dir.path("public"), folder));
    const File file = make("/a.pdf");
    ASSERT_TRUE(file);
    EXPECT_EQ(file->write(outline("/a.pdf", "one")), std::nullopt);
    EXPECT_EQ(rights(dir.path("public")), 0755U);
    EXPECT_EQ(rights(onlyPath()), 0600U);
}

TEST_F(RecoveryFiles, ThatCantBeReadAreToldAndStay) {
    leave(outline("/a.pdf", "one"));
    const QString path = onlyPath();
    ASSERT_TRUE(QFile::rename(path, dir.path("away")));
    ASSERT_EQ(::mkfifo(qPrintable(path), 0600), 0);
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(problems("/a.pdf"), QStringList(path + ": it is a pipe or a device, and not a file"))
            << "nobody waits for a pipe";
    ASSERT_TRUE(QFile::remove(path));
    ASSERT_TRUE(QFile::rename(dir.path("away"), path));
    EXPECT_EQ(titles("/a.pdf"), QStringList("one"));
}

TEST_F(RecoveryFiles, AreRefusedWhereTheFolderCantBeMade) {
    test::saveBytes(dir.path("state"), "a file");
    const auto made = RecoveryFile::make(folder, "/a.pdf");
    ASSERT_TRUE(std::holds_alternative<QString>(made));
    EXPECT_FALSE(std::get<QString>(made).isEmpty());
    EXPECT_TRUE(RecoveryFile::leftBehindFor(folder, "/a.pdf").files.empty());
}

TEST_F(RecoveryFiles, SayWhyTheyAreNotWritten) {
    const File file = make("/a.pdf");
    QDir(folder).removeRecursively();
    const auto reason = file->write(outline("/a.pdf", "one"));
    ASSERT_TRUE(reason);
    EXPECT_FALSE(reason->isEmpty());
}

TEST_F(RecoveryFiles, GoInTimeWithTheirPdf) {
    constexpr qint64 day = qint64{24} * 60 * 60 * 1000;
    test::saveBytes(dir.path("there.pdf"), "pdf");
    for (const QString &pdf : {dir.path("there.pdf"), dir.path("gone.pdf")})
        EXPECT_EQ(make(pdf)->write(outline(pdf, "kept", 0)), std::nullopt);
    RecoveryFile::removeForgotten(folder, 100 * day);
    EXPECT_EQ(titles(dir.path("gone.pdf")), QStringList("kept")) << "just missed for the first time";
    RecoveryFile::removeForgotten(folder, 127 * day);
    EXPECT_EQ(titles(dir.path("gone.pdf")), QStringList("kept"));
    const File living = make(dir.path("gone.pdf"));
    EXPECT_EQ(living->write(outline(dir.path("gone.pdf"), "living", 0)), std::nullopt);
    RecoveryFile::removeForgotten(folder, 129 * day);
    RecoveryFile::removeForgotten(folder, 158 * day);
    EXPECT_EQ(titles(dir.path("gone.pdf")), QStringList());
    EXPECT_EQ(titles(dir.path("there.pdf")), QStringList("kept"));
    EXPECT_EQ(names().size(), 4) << "two files, each with its lock";
}

TEST_F(RecoveryFiles, StayWhileTheirPdfComesBackNowAndThen) {
    constexpr qint64 day = qint64{24} * 60 * 60 * 1000;
    const QString pdf = dir.path("a.pdf");
    leave(outline(pdf, "one"));
    RecoveryFile::removeForgotten(folder, 100 * day);
    test::saveBytes(pdf, "pdf");
    RecoveryFile::removeForgotten(folder, 120 * day);
    ASSERT_TRUE(QFile::remove(pdf));
    RecoveryFile::removeForgotten(folder, 140 * day);
    EXPECT_EQ(titles(pdf), QStringList("one"));
    RecoveryFile::removeForgotten(folder, 110 * day);  // the clock was wrong
    RecoveryFile::removeForgotten(folder, 137 * day);
    EXPECT_EQ(titles(pdf), QStringList("one"));
    RecoveryFile::removeForgotten(folder, 139 * day);
    EXPECT_EQ(titles(pdf), QStringList());
}

TEST_F(RecoveryFiles, StayWhereTheFolderOfTheirPdfIsAway) {
    constexpr qint64 day = qint64{24} * 60 * 60 * 1000;
    leave(outline(dir.path("stick/a.pdf"), "one"));
    RecoveryFile::removeForgotten(folder, 100 * day);
    RecoveryFile::removeForgotten(folder, 1000 * day);
    EXPECT_EQ(titles(dir.path("stick/a.pdf")), QStringList("one"));
}

TEST_F(RecoveryFiles, GoInTimeWhereTheyAreDamaged) {
    leave(outline("/a.pdf", "one"));
    test::saveBytes(onlyPath(), "nonsense");
    ASSERT_EQ(problems("/a.pdf").size(), 1);
    test::saveBytes(folder + "/0123456789abcdef-x.outline", "nonsense of a file that nobody opens again");
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    constexpr qint64 day = qint64{24} * 60 * 60 * 1000;
    RecoveryFile::removeForgotten(folder, now + 27 * day);
    EXPECT_EQ(names().size(), 2);
    RecoveryFile::removeForgotten(folder, now + 29 * day);
    EXPECT_EQ(names(), QStringList());
}

TEST_F(RecoveryFiles, LeaveNoLocksForEver) {
    const File file = make("/a.pdf");
    test::saveBytes(folder + "/0123456789abcdef-x.lock", "");
    RecoveryFile::removeForgotten(folder, 0);
    EXPECT_EQ(names().size(), 1);
}

}  // namespace
}  // namespace leafwright
