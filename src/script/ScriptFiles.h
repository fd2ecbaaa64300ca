#pragma once

#include "files/FileOnDisk.h"
#include "files/FilePlace.h"
#include "files/TemporaryFolder.h"
#include "pdf/PDFError.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

namespace leafwright::script {

/// The files of a run. A script that stops half-way must not leave half of its work behind: so whatever it
/// writes is written to a folder of the run's own, and takes its place when the script has come to its end.
/// What it opens to be saved is opened as a copy there. Paths are absolute, or relative to a base folder.
///
/// Only the PDF takes the place of what it was made of. Nothing else is written over what the run reads, or
/// over something else that it writes, however the two are spelled.
class ScriptFiles {
public:
    /// What is to become a file.
    enum class Content {
        PDF,     ///< The document of the script, which may be saved to a place more than once.
        Map,     ///< Any other file that the script saves; the last one stays.
        Report,  ///< What tells of the run.
    };

    /// @param baseFolder an absolute path; absent where there is none, so that all paths must be absolute
    explicit ScriptFiles(std::optional<QString> baseFolder);
    /// Why there is not every folder to write to that was asked for, without which there is no run; nothing
    /// if all are there.
    std::optional<QString> problem() const;

    /// Keeps a place from being written to, as the run reads it besides. @param place absent for none
    void keepRead(const std::optional<FilePlace> &place);
    /// The same of a place that the run writes to by other means.
    void keepWritten(const std::optional<FilePlace> &place);

    /// Has publish() replace nothing but what stands at some paths; whatever else would be is a reason to
    /// put nothing in its place. @param reason why, as the reason that a file was not written
    void replaceOnly(const QStringList &paths, const QString &reason);

    /// A copy of a file, under its name. @return the copy's path, or why it can't be made
    Result<QString> copyOf(const QString &path);
    /// Where to write what is to become a file. @return why nothing may be written there, without the path
    Result<QString> placeFor(const QString &path, Content content);
    /// Where a file is to be read: where the script has written it, if it has. @param path as absolute() says
    QString placeToRead(const QString &path) const;
    /// Where to write what only the script's caller asked for.
    QString temporaryDirectory() const { return folder_.filePath(QStringLiteral("temporary")); }
    /// Absolute and clean; nothing for a relative path without a base folder.
    std::optional<QString> absolute(const QString &path) const;

    /// A path as reports tell it, the same in every run: that of the file which this one is to become,
    /// relative to the base folder if it is in there; "<temporary>/" and the name in the temporary folder.
    QString told(const QString &path) const;

    /// A message with the paths in it told that way.
    QString toldIn(QString message) const;

    /// Puts all that was written in its place: first everything is copied beside it, then all is renamed.
    /// None is where another program has changed a file since it was copied which is to be replaced.
    /// @param notices gets what the old files had and the new ones have not
    /// @param first done when all is copied, and before anything is in its place: what can't be taken back,
    /// such as to print; may be null. @return why nothing may be put in its place
    /// @return why that failed
    std::optional<QString> publish(QStringList &notices,
                                   const std::function<std::optional<QString>()> &first = nullptr) const;

private:
    struct Staged {
        QString path;   ///< Where it belongs.
        QString place;  ///< Where it stands until then.
        Content content;
        std::shared_ptr<FileOnDisk> original = {};      ///< Of a copy: what it was made of.
        std::shared_ptr<const FileSnapshot> copy = {};  ///< The copy as it was made.
    };
    // Paths that are wanted are absolute.
    static bool isLeftAlone(const Staged &staged);
    bool mayReplace(const QString &path) const;
    const Staged *stagedFor(const QString &wanted) const;
    std::optional<QString> objectionTo(const QString &wanted, Content content) const;
    QString stage(const QString &wanted, Content content);
    void makeOwnFolder(const QString &path);

    std::optional<QString> base_;
    TemporaryFolder folder_;
    std::vector<Staged> staged_;
    std::vector<FilePlace> read_;         ///< By the run, besides what it copies.
    std::vector<FilePlace> written_;      ///< By the run, besides what is staged.
    std::vector<FilePlace> replaceable_;  ///< Names; all are where there is nothing to say why not.
    std::optional<QString> whyNotReplaceable_;
    std::optional<QString> problem_;
};

}  // namespace leafwright::script
