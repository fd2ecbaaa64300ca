#pragma once

#include "files/FileOnDisk.h"
#include "files/TemporaryFolder.h"
#include "pdf/PDFError.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace leafwright::script {

/// The files of a run. A script that stops half-way must not leave half of its work behind: so whatever it
/// writes is written to a folder of the run's own, and takes its place when the script has come to its end.
/// What it opens to be saved is opened as a copy there. Paths are absolute, or relative to a base folder.
class ScriptFiles {
public:
    /// @param baseFolder an absolute path
    explicit ScriptFiles(QString baseFolder);
    /// Why there is not every folder to write to that was asked for, without which there is no run; nothing
    /// if all are there.
    std::optional<QString> problem() const;

    /// A copy of a file, under its name. @return the copy's path, or why it can't be made
    Result<QString> copyOf(const QString &path);
    /// Where to write what is to become a file.
    QString placeFor(const QString &path);
    /// Where a file is to be read: where the script has written it, if it has.
    QString placeToRead(const QString &path) const;
    /// Where to write what only the script's caller asked for.
    QString temporaryDirectory() const { return folder_.filePath(QStringLiteral("temporary")); }
    /// Absolute and clean.
    QString absolute(const QString &path) const;

    /// A path as reports tell it, the same in every run: that of the file which this one is to become,
    /// relative to the base folder if it is in there; "<temporary>/" and the name in the temporary folder.
    QString told(const QString &path) const;

    /// A message with the paths in it told that way.
    QString toldIn(QString message) const;

    /// Puts all that was written in its place: first everything is copied beside it, then all is renamed.
    /// None is where another program has changed a file since it was copied which is to be replaced.
    /// @param notices gets what the old files had and the new ones have not
    /// @return why that failed
    std::optional<QString> publish(QStringList &notices) const;

private:
    struct Staged {
        QString path;                                   ///< Where it belongs.
        QString place;                                  ///< Where it stands until then.
        std::shared_ptr<FileOnDisk> original = {};      ///< Of a copy: what it was made of.
        std::shared_ptr<const FileSnapshot> copy = {};  ///< The copy as it was made.
    };
    static bool isLeftAlone(const Staged &staged);
    const Staged *stagedFor(const QString &path) const;
    void makeOwnFolder(const QString &path);

    QString base_;
    TemporaryFolder folder_;
    std::vector<Staged> staged_;
    std::optional<QString> problem_;
};

}  // namespace leafwright::script
