#include "files/FileName.h"
#include "files/FileReplacement.h"
#include "files/UnfinishedFiles.h"
#include "support/CliFiles.h"
#include "support/Unprivileged.h"

#include <QDir>
#include <QFileInfo>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/un.h>
#include <sys/xattr.h>
#include <thread>
#include <unistd.h>

namespace {

/// Whether no file takes the extended attribute "user.lost".
bool attributeIsRefused = false;

}  // namespace

/// Takes the place of the system's.
extern "C" int fsetxattr(int descriptor, const char *name, const void *value, size_t size,
                         int flags) noexcept {
    if (attributeIsRefused && std::strcmp(name, "user.lost") == 0) {
        errno = ENOTSUP;
        return -1;
    }
    return static_cast<int>(::syscall(SYS_fsetxattr, descriptor, name, value, size, flags));
}

namespace leafwright {
namespace {

using Outcome = FileReplacement::Outcome;
using test::bytesOf;
using test::saveBytes;
using test::TempDir;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class Replacing : public testing::Test {
protected:
    /// Writes a file in the way that all of the program's are written.
    Outcome replace(const QString &target, const QByteArray &bytes = "new") {
        FileReplacement file(target);
        const bool written = file.start() && file.write(bytes) == bytes.size();
        const Outcome outcome = written ? file.commit() : Outcome::NotWritten;
        reason = outcome == Outcome::Written ? std::string() : file.errorString().toStdString();
        notices = file.notices();
        return outcome;
    }
    QStringList files() const {
        return QDir(dir.path("."))
            .entryList(QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot);
    }
    static QByteArray name(const QString &file) { return fileNameBytes(file); }
    static struct stat statusOf(const QString &file) {
        struct stat status = {};
        EXPECT_EQ(::lstat(name(file).constData(), &status), 0) << qPrintable(file);
        return status;
    }

    TempDir dir;
    QString path = dir.path("a.txt");
    std::string reason;
    QStringList notices;
};

TEST_F(Replacing, MakesANewFile) {
    EXPECT_EQ(replace(path), Outcome::Written) << reason;
    EXPECT_EQ(bytesOf(path), "new");
    EXPECT_EQ(files(), QStringList{"a.txt"});
    const mode_t mask = ::umask(0);
    ::umask(mask);
    EXPECT_EQ(statusOf(path).st_mode & 07777U, 0666U & ~mask);
}

TEST_F(Replacing, WhatIsThereStaysWhereItIsAskedTo) {
    FileReplacement first(path);
    FileReplacement second(path);
    for (FileReplacement *file : {&first, &second}) {
        file->keepWhatIsThere("it is there");
        EXPECT_TRUE(file->start() && file->write("new") == 3) << "nothing stands there";
    }
    EXPECT_EQ(first.commit(), Outcome::Written);
    EXPECT_EQ(second.commit(), Outcome::NotWritten) << "the first came between";
    EXPECT_THAT(second.errorString().toStdString(), HasSubstr("another program has put another file there"));
    FileReplacement third(path);
    third.keepWhatIsThere("it is there");
    EXPECT_FALSE(third.start());
    EXPECT_EQ(third.message(), path + " could not be written: it is there");
    EXPECT_EQ(files(), QStringList{"a.txt"});
}

TEST_F(Replacing, TheOldFileStandsUntilTheNewOneIsComplete) {
    saveBytes(path, "old");
    FileReplacement file(path);
    ASSERT_TRUE(file.start());
    file.write("new");
    EXPECT_EQ(bytesOf(path), "old");
    EXPECT_EQ(bytesOf(file.temporaryPath()), "new");
    EXPECT_TRUE(file.temporaryPath().startsWith(dir.path(".a.txt.")));
    EXPECT_EQ(QFile::permissions(file.temporaryPath()) & (QFile::ReadGroup | QFile::ReadOther), 0);
    EXPECT_EQ(file.commit(), Outcome::Written);
    EXPECT_EQ(bytesOf(path), "new");
}

TEST_F(Replacing, WhatIsNotCommittedIsGone) {
    saveBytes(path, "old");
    {
        FileReplacement file(path);
        ASSERT_TRUE(file.start());
        file.write("new");
    }
    EXPECT_EQ(bytesOf(path), "old");
    EXPECT_EQ(files(), QStringList{"a.txt"});
}

TEST_F(Replacing, OnlyAPdfTakesThePlaceOfWhatIsNamedSo) {
    path = dir.path("a.PDF");
    saveBytes(path, "what only some programs know as a PDF");
    EXPECT_EQ(replace(path), Outcome::NotWritten);
    EXPECT_EQ(reason, "a file with the name of a PDF stands there, which only a PDF may replace");
    EXPECT_EQ(bytesOf(path), "what only some programs know as a PDF");
    EXPECT_EQ(files(), QStringList{"a.PDF"});
    EXPECT_EQ(replace(dir.path("new.pdf")), Outcome::Written) << "where nothing stands, anything may";
}

TEST_F(Replacing, OnlyAPdfTakesThePlaceOfAPdf) {
    const QByteArray pdf = "%PDF-1.7\nsomebody's\n";
    saveBytes(path, pdf);
    ASSERT_TRUE(QFile::link(path, dir.path("link.json")));
    for (const QString &target : {path, dir.path("link.json")}) {
        EXPECT_EQ(replace(target), Outcome::NotWritten) << qPrintable(target);
        EXPECT_EQ(reason, "a PDF stands there, which only a PDF may replace");
    }
    EXPECT_EQ(bytesOf(path), pdf);
    EXPECT_EQ(files(), (QStringList{"a.txt", "link.json"})) << "nothing is left";
    FileReplacement file(path);
    file.setIsPdf();
    ASSERT_TRUE(file.start());
    file.write("%PDF-1.7\nnew\n");
    EXPECT_EQ(file.commit(), Outcome::Written);
    EXPECT_EQ(bytesOf(path), "%PDF-1.7\nnew\n");
}

TEST_F(Replacing, AFullDiskIsCalledThat) {
    saveBytes(path, "old");
    const test::FileSizeLimit limit(1000);
    EXPECT_EQ(replace(path, QByteArray(2000, 'x')), Outcome::NotWritten);
    EXPECT_EQ(reason, "File too large");
    EXPECT_EQ(bytesOf(path), "old");
    EXPECT_EQ(files(), QStringList{"a.txt"});
}

TEST_F(Replacing, AFileThatFailsTheCheckIsNotUsed) {
    saveBytes(path, "old");
    FileReplacement file(path);
    ASSERT_TRUE(file.start());
    file.write("new");
    QByteArray seen;
    file.setCheck([&seen](const QString &place) {
        seen = bytesOf(place);
        return std::optional<QString>("it is upside down");
    });
    EXPECT_EQ(file.commit(), Outcome::NotWritten);
    EXPECT_EQ(file.errorString(), "it is upside down");
    EXPECT_EQ(seen, "new");
    EXPECT_EQ(bytesOf(path), "old");
    EXPECT_EQ(files(), QStringList{"a.txt"});
}

TEST_F(Replacing, LinksLeadToTheFileThatIsReplaced) {
    ASSERT_TRUE(QDir(dir.path(".")).mkdir("sub"));
    saveBytes(dir.path("sub/real.txt"), "old");
    ASSERT_EQ(::symlink("sub/second", name(path).constData()), 0);
    ASSERT_EQ(::symlink("real.txt", name(dir.path("sub/second")).constData()), 0);
    EXPECT_EQ(replace(path), Outcome::Written) << reason;
    EXPECT_EQ(bytesOf(dir.path("sub/real.txt")), "new");
    EXPECT_TRUE(QFileInfo(path).isSymLink());
    EXPECT_TRUE(QFileInfo(dir.path("sub/second")).isSymLink());
}

TEST_F(Replacing, ALinkToNothingGetsItsFile) {
    ASSERT_EQ(::symlink("real.txt", name(path).constData()), 0);
    EXPECT_EQ(replace(path), Outcome::Written) << reason;
    EXPECT_EQ(bytesOf(dir.path("real.txt")), "new");
    EXPECT_TRUE(QFileInfo(path).isSymLink());
}

TEST_F(Replacing, LinksInACircleAreRefused) {
    ASSERT_EQ(::symlink("b.txt", name(path).constData()), 0);
    ASSERT_EQ(::symlink("a.txt", name(dir.path("b.txt")).constData()), 0);
    EXPECT_EQ(replace(path), Outcome::NotWritten);
    EXPECT_THAT(reason, HasSubstr("symbolic links"));
    EXPECT_EQ(files(), (QStringList{"a.txt", "b.txt"}));
    EXPECT_TRUE(QFileInfo(path).isSymLink());
}

TEST_F(Replacing, WhatIsNoFileIsRefused) {
    ASSERT_TRUE(QDir().mkdir(path));
    EXPECT_EQ(replace(path), Outcome::NotWritten);
    EXPECT_EQ(reason, "it is a folder");
    EXPECT_EQ(replace(dir.path("none/")), Outcome::NotWritten);
    EXPECT_EQ(replace(QString()), Outcome::NotWritten);
    EXPECT_EQ(reason, "No such file or directory");
    EXPECT_EQ(replace("/dev/null"), Outcome::NotWritten);
    EXPECT_EQ(reason, "it is a device; only a file can be replaced");
    EXPECT_TRUE(S_ISCHR(statusOf("/dev/null").st_mode));

    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{AF_UNIX, {}};
    qstrncpy(address.sun_path, name(dir.path("socket")).constData(), sizeof address.sun_path);
    ASSERT_EQ(::bind(socket, reinterpret_cast<sockaddr *>(&address), sizeof address), 0);
    EXPECT_EQ(replace(dir.path("socket")), Outcome::NotWritten);
    EXPECT_EQ(reason, "it is a socket; only a file can be replaced");
    ::close(socket);
}

TEST_F(Replacing, ANewDeviceIsRefusedEvenToThoseWhoMayReplaceIt) {
    if (::mknod(name(path).constData(), S_IFCHR | 0666, 0x103) != 0)
        GTEST_SKIP() << "only root makes devices";
    EXPECT_EQ(replace(path), Outcome::NotWritten);
    EXPECT_TRUE(S_ISCHR(statusOf(path).st_mode));
}

TEST_F(Replacing, APipeIsWrittenTo) {
    ASSERT_EQ(::mkfifo(name(path).constData(), 0600), 0);
    QByteArray read;
    std::thread reader([&read, this] { read = bytesOf(path); });
    EXPECT_EQ(replace(path, QByteArray(200'000, 'x')), Outcome::Written) << reason;
    reader.join();
    EXPECT_EQ(read, QByteArray(200'000, 'x'));
    EXPECT_TRUE(S_ISFIFO(statusOf(path).st_mode));
    EXPECT_EQ(files(), QStringList{"a.txt"});
}

TEST_F(Replacing, AFileThatCantTakeAllThatIsAppendedGetsNothing) {
    saveBytes(path, "before ");
    for (const int flags : {O_WRONLY | O_APPEND, O_WRONLY}) {
        const int file = ::open(name(path).constData(), flags);
        ::lseek(file, 0, SEEK_END);
        {
            const test::FileSizeLimit limit(100);
            EXPECT_EQ(replace(QStringLiteral("/dev/fd/%1").arg(file), QByteArray(98, 'x')),
                      Outcome::NotWritten);
        }
        EXPECT_EQ(reason, "File too large");
        EXPECT_EQ(bytesOf(path), "before ");
        EXPECT_EQ(::write(file, "behind ", 7), 7);
        EXPECT_EQ(bytesOf(path), "before behind ") << "where the others of this descriptor go on";
        ASSERT_TRUE(QFile::resize(path, 7));
        ::close(file);
    }
}

TEST_F(Replacing, AnOpenDescriptorIsWrittenTo) {
    const int file = ::open(name(path).constData(), O_RDWR | O_CREAT, 0600);
    ASSERT_EQ(::write(file, "before ", 7), 7);
    for (const char *folder : {"/dev/fd/%1", "/proc/self/fd/%1"})
        EXPECT_EQ(replace(QString(folder).arg(file), "new "), Outcome::Written) << reason;
    EXPECT_EQ(bytesOf(path), "before new new ");
    // One that the program has opened for itself.
    ASSERT_EQ(::fcntl(file, F_SETFD, FD_CLOEXEC), 0);
    EXPECT_EQ(replace(QStringLiteral("/dev/fd/%1").arg(file)), Outcome::NotWritten);
    EXPECT_EQ(bytesOf(path), "before new new ");
    ::close(file);
    EXPECT_EQ(replace(QStringLiteral("/dev/fd/%1").arg(file)), Outcome::NotWritten);
    EXPECT_EQ(reason, "Bad file descriptor");
}

TEST_F(Replacing, PermissionsAndOwnerAreKept) {
    saveBytes(path, "old");
    constexpr uid_t user = 1234;
    constexpr gid_t group = 2345;
    if (::chown(name(path).constData(), user, group) != 0) GTEST_SKIP() << "only root gives files away";
    ASSERT_EQ(::chmod(name(path).constData(), 0640), 0);
    EXPECT_EQ(replace(path), Outcome::Written) << reason;
    const struct stat status = statusOf(path);
    EXPECT_EQ(status.st_uid, user);
    EXPECT_EQ(status.st_gid, group);
    EXPECT_EQ(status.st_mode & 07777U, 0640U);
    EXPECT_THAT(notices, IsEmpty());
}

TEST_F(Replacing, PermissionsAreThoseOfTheLastMoment) {
    saveBytes(path, "old");
    ASSERT_EQ(::chmod(name(path).constData(), 0644), 0);
    FileReplacement file(path);
    ASSERT_TRUE(file.start());
    file.write("new");
    ASSERT_TRUE(file.prepare());
    ASSERT_EQ(::chmod(name(path).constData(), 0600), 0);
    EXPECT_EQ(file.commit(), Outcome::Written);
    EXPECT_EQ(statusOf(path).st_mode & 07777U, 0600U);
    EXPECT_THAT(file.notices(), IsEmpty());
}

TEST_F(Replacing, OwnerAndGroupThatCantBeKeptAreTold) {
    saveBytes(path, "old");
    if (::chown(name(path).constData(), 1234, 2345) != 0) GTEST_SKIP() << "only root gives files away";
    ASSERT_EQ(::chmod(name(path).constData(), 0666), 0);
    ASSERT_EQ(::chmod(name(path).constData(), 0676), 0);
    ASSERT_EQ(::chmod(name(dir.path(".")).constData(), 0777), 0);
    {
        const test::Unprivileged nobody;
        EXPECT_EQ(replace(path), Outcome::Written) << reason;
    }
    EXPECT_EQ(notices, (QStringList{path + ": it belonged to another user, and belongs to you now",
                                    path + ": its group could not be kept"}));
    EXPECT_EQ(statusOf(path).st_mode & 07777U, 0666U) << "another group gets no more than everyone";
}

TEST_F(Replacing, NewFilesGetTheGroupOfTheirFolder) {
    constexpr gid_t group = 2345;
    if (::chown(name(dir.path(".")).constData(), static_cast<uid_t>(-1), group) != 0)
        GTEST_SKIP() << "only root gives files away";
    ASSERT_EQ(::chmod(name(dir.path(".")).constData(), 02770), 0);
    EXPECT_EQ(replace(path), Outcome::Written) << reason;
    EXPECT_EQ(statusOf(path).st_gid, group);
    ASSERT_EQ(::chown(name(path).constData(), static_cast<uid_t>(-1), 3456), 0);
    EXPECT_EQ(replace(path), Outcome::Written) << reason;
    EXPECT_EQ(statusOf(path).st_gid, 3456U) << "of a file that is there, its own";
}

TEST_F(Replacing, ExtendedAttributesAreKept) {
    saveBytes(path, "old");
    if (::setxattr(name(path).constData(), "user.note", "mine", 4, 0) != 0)
        GTEST_SKIP() << "no extended attributes here";
    EXPECT_EQ(replace(path), Outcome::Written) << reason;
    char value[8] = {};
    EXPECT_EQ(::getxattr(name(path).constData(), "user.note", value, sizeof value), 4);
    EXPECT_STREQ(value, "mine");
    EXPECT_THAT(notices, IsEmpty());
}

TEST_F(Replacing, AnExtendedAttributeThatIsLostIsTold) {
    saveBytes(path, "old");
    for (const char *attribute : {"user.lost", "user.note"})
        if (::setxattr(name(path).constData(), attribute, "mine", 4, 0) != 0)
            GTEST_SKIP() << "no extended attributes here";
    attributeIsRefused = true;
    EXPECT_EQ(replace(path), Outcome::Written) << reason;
    attributeIsRefused = false;
    EXPECT_EQ(notices, QStringList{path + ": its extended attribute \"user.lost\" could not be kept"});
    EXPECT_EQ(bytesOf(path), "new");
    char value[8] = {};
    EXPECT_EQ(::getxattr(name(path).constData(), "user.lost", value, sizeof value), -1);
    EXPECT_EQ(::getxattr(name(path).constData(), "user.note", value, sizeof value), 4);
}

/// An access list (acl(5)) that lets one more user read, as the system stores it.
QByteArray accessListFor(quint32 user) {
    struct Entry {
        quint16 tag;
        quint16 permissions;
        quint32 id;
    };
    constexpr quint32 none = 0xFFFFFFFF;
    const Entry entries[] = {{1, 6, none}, {2, 4, user}, {4, 0, none}, {16, 4, none}, {32, 0, none}};
    return QByteArray("\2\0\0\0", 4) + QByteArray(reinterpret_cast<const char *>(entries), sizeof entries);
}

QByteArray accessListOf(const QByteArray &path) {
    QByteArray value(200, '\0');
    value.resize(
        std::max<ssize_t>(0, ::getxattr(path.constData(), "system.posix_acl_access", value.data(), 200)));
    return value;
}

TEST_F(Replacing, TheAccessListIsKept) {
    saveBytes(path, "old");
    const QByteArray list = accessListFor(1234);
    if (::setxattr(name(path).constData(), "system.posix_acl_access", list.constData(), list.size(), 0) != 0)
        GTEST_SKIP() << "no access lists here";
    EXPECT_EQ(replace(path), Outcome::Written) << reason;
    EXPECT_EQ(accessListOf(name(path)), list);
    EXPECT_EQ(statusOf(path).st_mode & 07777U, 0640U);
}

TEST_F(Replacing, AnAccessListOfTheFolderLetsNobodyIntoAnOldFile) {
    saveBytes(path, "old");
    ASSERT_EQ(::chmod(name(path).constData(), 0600), 0);
    const QByteArray list = accessListFor(1234);
    if (::setxattr(name(dir.path(".")).constData(), "system.posix_acl_default", list.constData(), list.size(),
                   0))
        GTEST_SKIP() << "no access lists here";
    EXPECT_EQ(replace(path), Outcome::Written) << reason;
    EXPECT_EQ(accessListOf(name(path)), "");
    EXPECT_EQ(statusOf(path).st_mode & 07777U, 0600U);
    EXPECT_EQ(replace(dir.path("new.pdf")), Outcome::Written) << reason;
    EXPECT_EQ(accessListOf(name(dir.path("new.pdf"))).size(), list.size()) << "which is for new files";
}

TEST_F(Replacing, HardLinksThatAreLostAreTold) {
    saveBytes(path, "old");
    ASSERT_EQ(::link(name(path).constData(), name(dir.path("other.pdf")).constData()), 0);
    EXPECT_EQ(replace(path), Outcome::Written) << reason;
    EXPECT_EQ(notices,
              QStringList{path + ": it had other names (hard links), which still lead to the old file"});
    EXPECT_EQ(bytesOf(dir.path("other.pdf")), "old");
}

TEST_F(Replacing, AReadOnlyFileIsNotReplaced) {
    saveBytes(path, "old");
    ASSERT_EQ(::chmod(name(path).constData(), 0444), 0);
    ASSERT_EQ(::chmod(name(dir.path(".")).constData(), 0777), 0);
    const test::Unprivileged nobody;
    EXPECT_EQ(replace(path), Outcome::NotWritten);
    EXPECT_EQ(reason, "Permission denied");
    EXPECT_EQ(bytesOf(path), "old");
}

TEST_F(Replacing, AFolderThatCantBeReadMayBeWrittenTo) {
    ASSERT_EQ(::chmod(name(dir.path(".")).constData(), 0333), 0);
    {
        const test::Unprivileged nobody;
        EXPECT_EQ(replace(path), Outcome::Written) << reason;
    }
    EXPECT_EQ(bytesOf(path), "new");
}

TEST_F(Replacing, NamesOfAnyBytesAndAnyLengthWillDo) {
    const QString bytes = fileNameText(name(dir.path(".")) + "/caf\xE9.pdf");
    EXPECT_EQ(replace(bytes), Outcome::Written) << reason;
    EXPECT_EQ(::access((name(dir.path(".")) + "/caf\xE9.pdf").constData(), F_OK), 0);
    const QString longest = dir.path(QString(84, QChar(0x20AC)) + "abc");
    EXPECT_EQ(replace(longest), Outcome::Written) << reason;
    EXPECT_EQ(replace(longest + "d"), Outcome::NotWritten);
    EXPECT_EQ(reason, "File name too long");
}

TEST_F(Replacing, CanBeUndoneWhereThatWasAskedFor) {
    saveBytes(path, "old");
    const ino_t inode = statusOf(path).st_ino;
    {
        FileReplacement file(path);
        FileReplacement another(dir.path("b.txt"));
        for (FileReplacement *each : {&file, &another}) {
            ASSERT_TRUE(each->start());
            each->write("new");
            each->keepOld();
            ASSERT_EQ(each->commit(), Outcome::Written);
        }
        EXPECT_EQ(bytesOf(path), "new");
        EXPECT_EQ(file.undo(), std::nullopt);
        EXPECT_EQ(another.undo(), std::nullopt);
        EXPECT_EQ(statusOf(path).st_ino, inode);
    }
    EXPECT_EQ(bytesOf(path), "old");
    EXPECT_EQ(files(), QStringList{"a.txt"});
}

TEST_F(Replacing, WhatCantBeUndoneIsTold) {
    saveBytes(path, "old");
    FileReplacement file(path);
    ASSERT_TRUE(file.start());
    file.write("new");
    file.keepOld();
    ASSERT_EQ(file.commit(), Outcome::Written);
    for (const QString &each : QDir(dir.path({})).entryList({".a.txt.*"}, QDir::Files | QDir::Hidden))
        ASSERT_TRUE(QFile::remove(dir.path(each)));
    EXPECT_EQ(file.undo(), path + " could not be put back as it was: No such file or directory");
}

TEST_F(Replacing, WhatIsNotUndoneLeavesNothingOfTheOldFile) {
    saveBytes(path, "old");
    {
        FileReplacement file(path);
        ASSERT_TRUE(file.start());
        file.write("new");
        file.keepOld();
        ASSERT_EQ(file.commit(), Outcome::Written);
        EXPECT_TRUE(file.notices().isEmpty());
    }
    EXPECT_EQ(bytesOf(path), "new");
    EXPECT_EQ(files(), QStringList{"a.txt"});
}

/// Something happens amid the writing.
class ReplacingAmid : public Replacing {
protected:
    /// Writes a file. @param amid happens before it takes its place; gets the name that it has for the time
    /// being
    template <typename Amid>
    Outcome replaceAmid(Amid &&amid) {
        FileReplacement file(path);
        const bool written = file.start() && file.write("new") == 3 && file.prepare();
        amid(file.temporaryPath());
        const Outcome outcome = written ? file.commit() : Outcome::NotWritten;
        reason = file.errorString().toStdString();
        metObjection = file.metObjection();
        return outcome;
    }
    void move(const QString &from, const QString &to) const {
        ASSERT_EQ(::rename(name(from).constData(), name(to).constData()), 0);
    }
    bool metObjection = false;
};

TEST_F(ReplacingAmid, WhatComesToANewNameStays) {
    EXPECT_EQ(replaceAmid([this](auto) { saveBytes(path, "theirs"); }), Outcome::NotWritten);
    EXPECT_EQ(reason, "another program has put another file there meanwhile");
    EXPECT_TRUE(metObjection);
    EXPECT_EQ(bytesOf(path), "theirs");
    ASSERT_TRUE(QFile::remove(path));
    EXPECT_EQ(replaceAmid([this](auto) { QFile::link("b.txt", path); }), Outcome::NotWritten);
    EXPECT_TRUE(QFileInfo(path).isSymLink());
    EXPECT_EQ(files(), QStringList{"a.txt"});
}

TEST_F(ReplacingAmid, WhatTakesThePlaceOfTheOldFileStays) {
    saveBytes(path, "old");
    saveBytes(dir.path("b.txt"), "theirs");
    EXPECT_EQ(replaceAmid([this](auto) { move(dir.path("b.txt"), path); }), Outcome::NotWritten);
    EXPECT_EQ(reason, "another program has put another file there meanwhile");
    EXPECT_EQ(bytesOf(path), "theirs");
    EXPECT_EQ(files(), QStringList{"a.txt"});
}

TEST_F(ReplacingAmid, WhatTakesThePlaceOfTheUnfinishedFileIsNotUsed) {
    saveBytes(dir.path("b.txt"), "theirs");
    QString temporary;
    for (const bool isThere : {false, true}) {
        if (isThere) saveBytes(path, "old");
        saveBytes(dir.path("b.txt"), "theirs");
        EXPECT_EQ(replaceAmid([&](const QString &unfinished) {
                      temporary = unfinished;
                      move(dir.path("b.txt"), unfinished);
                  }),
                  Outcome::NotWritten);
        EXPECT_THAT(reason, HasSubstr(name(temporary).toStdString()));
        EXPECT_EQ(QFile::exists(path), isThere);
        EXPECT_EQ(bytesOf(temporary), "theirs") << "nor is it removed";
    }
    EXPECT_EQ(bytesOf(path), "old");
}

TEST_F(ReplacingAmid, AnUnfinishedFileThatIsGoneIsAFailure) {
    EXPECT_EQ(replaceAmid([](const QString &unfinished) { QFile::remove(unfinished); }), Outcome::NotWritten);
    EXPECT_EQ(reason, "No such file or directory");
}

TEST_F(ReplacingAmid, OthersOfUsAreWaitedForBeforeTheLastLook) {
    saveBytes(path, "old");
    saveBytes(dir.path("b.txt"), "theirs");
    const int folder = ::open(name(dir.path(".")).constData(), O_RDONLY | O_DIRECTORY);
    ASSERT_EQ(::flock(folder, LOCK_EX), 0);
    std::thread another;
    EXPECT_EQ(replaceAmid([&](auto) {
                  another = std::thread([&] {
                      std::this_thread::sleep_for(std::chrono::milliseconds(200));
                      move(dir.path("b.txt"), path);
                      ::close(folder);
                  });
              }),
              Outcome::NotWritten);
    another.join();
    EXPECT_EQ(bytesOf(path), "theirs");
}

TEST_F(ReplacingAmid, AFolderThatSomebodyKeepsLockedHoldsNobodyUp) {
    const int folder = ::open(name(dir.path(".")).constData(), O_RDONLY | O_DIRECTORY);
    ASSERT_EQ(::flock(folder, LOCK_EX), 0);
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(replaceAmid([](auto) {}), Outcome::Written) << reason;
    EXPECT_EQ(bytesOf(path), "new");
    EXPECT_EQ(files(), QStringList{"a.txt"});
    ::close(folder);
    EXPECT_EQ(replace(path), Outcome::Written);
    const int again = ::open(name(dir.path(".")).constData(), O_RDONLY | O_DIRECTORY);
    EXPECT_EQ(::flock(again, LOCK_EX | LOCK_NB), 0) << "we do not keep it ourselves";
    ::close(again);
}

/// What a killed program has left.
class Abandoned : public Replacing {
protected:
    QByteArray leave(const QByteArray &wanted, int minutesAgo) {
        const int folder = ::open(name(dir.path(".")).constData(), O_RDONLY | O_DIRECTORY);
        const UnfinishedFile file = makeUnfinishedFile(folder, wanted, 0600);
        EXPECT_GE(file.descriptor, 0);
        ::close(file.descriptor);
        ::close(folder);
        makeOld(file.name, minutesAgo);
        return file.name;
    }
    void makeOld(const QByteArray &file, int minutesAgo) {
        const timespec then{std::time(nullptr) - 60 * minutesAgo, 0};
        const timespec times[] = {then, then};
        ASSERT_EQ(::utimensat(AT_FDCWD, name(dir.path(file)).constData(), times, 0), 0);
    }
};

TEST_F(Abandoned, IsRemovedByTheNextWriterWhenItIsOld) {
    leave("a.txt", 11);
    leave("another.pdf", 11);
    const QByteArray young = leave("a.txt", 9);
    EXPECT_EQ(replace(path), Outcome::Written) << reason;
    EXPECT_EQ(files(), (QStringList{young, "a.txt"}));
}

TEST_F(Abandoned, IsNotWhatSomebodyWritesStill) {
    const QByteArray file = leave("a.txt", 11);
    const int writer = ::open(name(dir.path(file)).constData(), O_RDWR);
    ASSERT_EQ(::flock(writer, LOCK_EX), 0);
    EXPECT_EQ(replace(path), Outcome::Written) << reason;
    EXPECT_EQ(files(), (QStringList{file, "a.txt"}));
    ::close(writer);
}

TEST_F(Abandoned, StaysWhileNamesChangeInTheFolder) {
    const QByteArray file = leave("a.txt", 11);
    const int changing = ::open(name(dir.path(".")).constData(), O_RDONLY | O_DIRECTORY);
    const int folder = ::open(name(dir.path(".")).constData(), O_RDONLY | O_DIRECTORY);
    ASSERT_EQ(::flock(changing, LOCK_EX), 0);
    removeAbandonedFiles(folder, "a program that comes amid that");
    EXPECT_EQ(files(), QStringList{file}) << "it may be what comes back";
    ::close(changing);
    removeAbandonedFiles(folder, "one that comes later");
    EXPECT_EQ(files(), QStringList());
    ::close(folder);
}

TEST_F(Abandoned, IsNotTheOldFileThatMayComeBack) {
    saveBytes(path, "old");
    makeOld("a.txt", 11);
    FileReplacement file(path);
    ASSERT_TRUE(file.start());
    file.write("new");
    file.keepOld();
    ASSERT_EQ(file.commit(), FileReplacement::Outcome::Written);
    const int folder = ::open(name(dir.path(".")).constData(), O_RDONLY | O_DIRECTORY);
    removeAbandonedFiles(folder, "as another program does");
    ::close(folder);
    EXPECT_EQ(file.undo(), std::nullopt);
    EXPECT_EQ(bytesOf(path), "old");
}

TEST_F(Abandoned, IsNotWhatAPersonHasCalledAlike) {
    for (const char *own : {".a.txt.backup", ".a.txt.1", ".a.txt", ".a.txt.AAAAAA"}) {
        saveBytes(dir.path(own), "mine");
        makeOld(own, 100'000);
        EXPECT_FALSE(isNameOfUnfinishedFile(own)) << own;
    }
    EXPECT_EQ(replace(path), Outcome::Written) << reason;
    EXPECT_EQ(files().size(), 4 + 1);
}

TEST_F(Abandoned, IsNotWhatBelongsToSomebodyElse) {
    const QByteArray file = leave("a.txt", 11);
    if (::chown(name(dir.path(file)).constData(), 1234, 1234) != 0)
        GTEST_SKIP() << "only root gives files away";
    EXPECT_EQ(replace(path), Outcome::Written) << reason;
    EXPECT_EQ(files(), (QStringList{file, "a.txt"}));
}

}  // namespace
}  // namespace leafwright
