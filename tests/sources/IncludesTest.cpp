#include "support/Paths.h"

#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QSet>

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using testing::IsEmpty;
using testing::Not;

QString sourceText(const QString &path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) ADD_FAILURE() << "can't read " << path.toStdString();
    return QString::fromUtf8(file.readAll());
}

/// The files below `src/` whose names match, by their paths there.
QStringList sourcesNamed(const QStringList &patterns) {
    const QDir src(test::projectPath("src"));
    QStringList names;
    QDirIterator files(src.path(), patterns, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext())
        names.append(src.relativeFilePath(files.next()));
    names.sort();
    return names;
}

QString folderOf(const QString &path) {
    return path.left(qMax(path.lastIndexOf('/'), 0));
}

/// What a folder's CMakeLists.txt says of its target.
struct Folder {
    QString target;
    QStringList depends;
};

/// The folders that are targets, and what each may include.
class Folders {
public:
    Folders() {
        static const QRegularExpression library("^leafwright_library\\((\\w+)([^)]*)\\)",
                                                QRegularExpression::MultilineOption);
        static const QRegularExpression depends("\\bDEPENDS((?:(?!PRIVATE_DEPENDS)[^)])*)");
        static const QRegularExpression comment("#[^\n]*");
        static const QRegularExpression space("\\s+");
        for (const QString &list : sourcesNamed({"CMakeLists.txt"})) {
            const QString text = sourceText(test::projectPath("src/" + list)).remove(comment);
            const auto found = library.match(text);
            if (!found.hasMatch()) continue;
            const QString targets = depends.match(found.captured(2)).captured(1);
            folders_[folderOf(list)] = {found.captured(1), targets.split(space, Qt::SkipEmptyParts)};
        }
    }

    QList<Folder> all() const { return folders_.values(); }

    /// The folders of ours that each folder says it depends on, sorted.
    QMap<QString, QStringList> pictured() const {
        QMap<QString, QStringList> names;
        for (auto folder = folders_.begin(); folder != folders_.end(); ++folder) {
            QStringList below;
            for (auto other = folders_.begin(); other != folders_.end(); ++other)
                if (folder->depends.contains(other->target)) below.append(other.key());
            names[folder.key()] = below;
        }
        return names;
    }

    /// The target that a file belongs to: that of the nearest folder above it that is one; empty for the
    /// programs' own files.
    QString targetOf(const QString &path) const {
        QString folder = folderOf(path);
        while (!folder.isEmpty() && !folders_.contains(folder))
            folder = folderOf(folder);
        return folders_.value(folder).target;
    }

    /// The target itself, what it depends on, and so on.
    QSet<QString> reachableFrom(const QString &target) const {
        QSet<QString> reached{target};
        QStringList open{target};
        while (!open.isEmpty()) {
            for (const QString &next : dependsOf(open.takeLast())) {
                if (reached.contains(next)) continue;
                reached.insert(next);
                open.append(next);
            }
        }
        return reached;
    }

private:
    QStringList dependsOf(const QString &target) const {
        for (const Folder &folder : folders_)
            if (folder.target == target) return folder.depends;
        return {};
    }

    QMap<QString, Folder> folders_;
};

/// The files of ours that a file includes, by their paths below `src/`.
QStringList includesOf(const QString &path) {
    static const QRegularExpression include("^#include \"([^\"]+)\"", QRegularExpression::MultilineOption);
    QStringList names;
    for (const auto &match : include.globalMatch(sourceText(test::projectPath("src/" + path))))
        names.append(match.captured(1));
    return names;
}

// All folders end in one library, so that no linker would complain.
TEST(Includes, FollowWhatTheFoldersDependOn) {
    const Folders folders;
    ASSERT_GT(folders.all().size(), 10);
    QStringList strays;
    for (const QString &source : sourcesNamed({"*.h", "*.cpp"})) {
        const QString target = folders.targetOf(source);
        if (target.isEmpty()) continue;  // A program's own file: it has the whole library.
        const QSet<QString> allowed = folders.reachableFrom(target);
        for (const QString &included : includesOf(source))
            if (!allowed.contains(folders.targetOf(included)))
                strays.append(QStringLiteral("%1 includes %2, which %3 does not depend on")
                                  .arg(source, included, target));
    }
    EXPECT_THAT(strays, IsEmpty()) << strays.join('\n').toStdString();
}

// What a folder depends on is read as a picture of the program, so nothing stands there in vain.
TEST(Includes, NoFolderDependsOnOneThatItDoesNotInclude) {
    const Folders folders;
    QMap<QString, QSet<QString>> included;
    for (const QString &source : sourcesNamed({"*.h", "*.cpp"}))
        for (const QString &name : includesOf(source))
            included[folders.targetOf(source)].insert(folders.targetOf(name));
    QStringList idle;
    for (const Folder &folder : folders.all())
        for (const QString &target : folder.depends)
            if (target.startsWith("leafwright_") && !included[folder.target].contains(target))
                idle.append(QStringLiteral("%1 includes nothing of %2").arg(folder.target, target));
    EXPECT_THAT(idle, IsEmpty()) << idle.join('\n').toStdString();
}

TEST(Includes, ArchitectureShowsWhatTheFoldersDependOn) {
    static const QRegularExpression row("^\\| `([a-z/]+)` \\|.*\\|([^|]*)\\|$",
                                        QRegularExpression::MultilineOption);
    static const QRegularExpression name("`([a-z/]+)`");
    QString text = sourceText(test::projectPath("docs/architecture.md"));
    text.truncate(text.indexOf("\n## ", text.indexOf("\n## The folders") + 1));
    QMap<QString, QStringList> shown;
    for (const auto &line : row.globalMatch(text)) {
        QStringList &below = shown[line.captured(1)];
        for (const auto &each : name.globalMatch(line.captured(2)))
            below.append(each.captured(1));
        below.sort();
    }
    const QMap<QString, QStringList> depends = Folders().pictured();
    EXPECT_EQ(shown.keys(), depends.keys());
    for (auto folder = depends.begin(); folder != depends.end(); ++folder)
        EXPECT_EQ(shown[folder.key()], folder.value()) << folder.key().toStdString();
}

// Errors of MuPDF are jumps, which only the code behind the wall knows to catch.
TEST(Includes, MuPDFStaysBehindItsWall) {
    QStringList behind;
    QStringList strays;
    for (const QString &source : sourcesNamed({"*.h", "*.cpp"})) {
        const bool isBehind = source.startsWith("pdf/mupdf/");
        const bool knowsIt = sourceText(test::projectPath("src/" + source)).contains("#include <mupdf/");
        if (knowsIt) (isBehind ? behind : strays).append(source);
        for (const QString &included : includesOf(source))
            if (!isBehind && included.startsWith("pdf/mupdf/") && source != "pdf/PDFDocument.cpp")
                strays.append(source);
    }
    EXPECT_THAT(behind, Not(IsEmpty()));
    EXPECT_THAT(strays, IsEmpty()) << strays.join('\n').toStdString();
}

}  // namespace
}  // namespace leafwright
