#include "cli/OutlineOutput.h"

#include "files/FileReading.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QSet>

namespace leafwright::cli {

namespace {

const QString outDirOption = QStringLiteral("out-dir");

QString translated(const char *text) {
    return QCoreApplication::translate("OutlineOutput", text);
}

/// A file name that two inputs share, which would make one output overwrite the other.
QString sharedFileName(const QStringList &files) {
    QSet<QString> names;
    for (const QString &file : files) {
        QString name = QFileInfo(file).fileName();
        if (names.contains(name)) return name;
        names.insert(name);
    }
    return {};
}

}  // namespace

QList<QCommandLineOption> OutlineOutput::options() {
    const QCommandLineOption outDir(outDirOption,
                                    translated("Where the PDFs go that are made of several files, under "
                                               "their own names; made if it is not there."),
                                    QStringLiteral("DIR"));
    return {outputOption(), outDir};
}

OutlineOutput::OutlineOutput(const QCommandLineParser &arguments)
    : files_(arguments.positionalArguments()),
      out_(arguments.value(outputOption())),
      folder_(arguments.value(outDirOption)) {}

std::optional<QString> OutlineOutput::problem() const {
    if (out_.isEmpty() == folder_.isEmpty())
        return translated("either -o OUT or --out-dir DIR must be given");
    if (folder_.isEmpty() && files_.size() > 1) return translated("several files need --out-dir DIR");
    if (const QString name = sharedFileName(files_); !name.isEmpty())
        return translated("two of the files are named \"%1\"").arg(name);
    return std::nullopt;
}

bool OutlineOutput::makeFolder(Console &console) const {
    return folder_.isEmpty() || cli::makeFolder(folder_, console);
}

QString OutlineOutput::targetOf(const QString &file) const {
    return folder_.isEmpty() ? out_ : QDir(folder_).filePath(QFileInfo(file).fileName());
}

bool makeFolder(const QString &path, Console &console) {
    const auto reason = leafwright::makeFolder(path);
    if (reason) console.message(translated("%1: the folder could not be made: %2").arg(path, *reason));
    return !reason;
}

std::optional<QString> writeEntries(MyDocument &document, MyOutlineItem::Children entries, bool keep,
                                    const QString &out) {
    // Otherwise a document of scanned pages would lose the outline that it has.
    if (keep || entries.empty()) document.importOutline();
    MyOutlineItem &root = document.root();
    for (auto &entry : entries)
        root.insertObjectInChildrenAtIndex(std::move(entry), root.children().size());
    if (const auto error = document.writeNewPDFOutline(out, MyDocument::saveFinalPDF)) return error->message;
    return std::nullopt;
}

}  // namespace leafwright::cli
