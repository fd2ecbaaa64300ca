#include "support/Paths.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

#include <gmock/gmock.h>

// Who changes an item that is in a document's outline does it through OutlineEdits. What the compiler can't
// say, a look at the sources does: the setters of items are called in the folder of the items, and where
// detached ones are built.

namespace leafwright {
namespace {

using testing::IsEmpty;

/// The lines of `src/` that match, as "file: line", but for those of some files.
QStringList linesMatching(const QRegularExpression &pattern, const QStringList &allowed) {
    QStringList found;
    const QDir src(test::projectPath("src"));
    QDirIterator files(src.path(), {"*.h", "*.cpp"}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        const QString name = src.relativeFilePath(file.fileName());
        if (name.startsWith("model/") || allowed.contains(name)) continue;
        for (const QString &line : QString::fromUtf8(file.readAll()).split('\n'))
            if (pattern.match(line).hasMatch()) found.append(name + ": " + line.trimmed());
    }
    return found;
}

TEST(ItemChanges, ChildrenComeAndGoThroughTheEdits) {
    static const QRegularExpression changes(
        "(insertObjectInChildrenAtIndex|removeObjectFromChildrenAtIndex|setChildren|takeChildren)\\(");
    const QStringList handingOver{"cli/AutoTOCCommand.cpp",
                                  "cli/ApplyCommand.cpp",
                                  "document/commands/ContentsCommands.cpp",
                                  "document/commands/ExchangeCommands.cpp",
                                  "document/outline/ContentsItems.cpp",
                                  "document/outline/KeptOutline.cpp"};
    EXPECT_THAT(linesMatching(changes, handingOver), IsEmpty());
}

TEST(ItemChanges, ValuesAreSetThroughTheEdits) {
    static const QRegularExpression changes(
        "(?<!edits)(?<!edits_)(?<!edits\\(\\))(\\.|->)"
        "(setPageTitle|setPageLabel|setPointOnPage|setEntry|setImportedPage|setLevelstr|setLevelnum)\\(");
    const QStringList builders{"autotoc/HeadingTree.cpp",          "exchange/EntryParts.cpp",
                               "exchange/JsonNodes.cpp",           "exchange/PlusLines.cpp",
                               "document/outline/KeptOutline.cpp", "document/outline/OutlineImport.cpp"};
    const QStringList entriesOfPDFs{"document/outline/OutlineExport.cpp", "pdf/mupdf/OutlineReader.cpp"};
    EXPECT_THAT(linesMatching(changes, builders + entriesOfPDFs), IsEmpty());
}

}  // namespace
}  // namespace leafwright
