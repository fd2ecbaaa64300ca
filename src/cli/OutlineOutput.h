#pragma once

#include "cli/Command.h"
#include "document/outline/OutlineDocument.h"

namespace leafwright::cli {

/// Where a command puts the PDFs that it makes of one file (-o OUT) or of several (--out-dir DIR).
class OutlineOutput {
public:
    /// The options -o and --out-dir.
    static QList<QCommandLineOption> options();

    explicit OutlineOutput(const QCommandLineParser &arguments);

    /// What is wrong with the usage, or with where the results would go; absent when all is well.
    std::optional<QString> problem() const;
    /// Makes the folder that is needed. @return whether it is there now; if not, that is said
    bool makeFolder(Console &console) const;

    const QStringList &files() const { return files_; }
    /// Whether there is one file only, which has all cores to itself.
    bool isAlone() const;
    bool isFolder() const { return !folder_.isEmpty(); }
    /// The PDF to write for a file.
    QString targetOf(const QString &file) const;

    /// What a command does for a file of its own. Failures are told at the end.
    struct Job {
        /// Does it in this process. @return why that failed
        std::function<std::optional<QString>(const QString &file)> run;
        /// Options for a process that does this file only, in place of the command's; may be empty.
        std::function<QStringList(const QString &file)> optionsOf = {};
        /// How long such a process may take without timeLimit(); 0 is as long as it likes.
        std::chrono::seconds limit{60};
    };
    /// Does a command's job for its file or, with a folder, for all of them: each in a process of its own,
    /// which runs the command with the same options, and is ended when it takes too long.
    /// @return whether all went well
    bool run(const CommandInfo &command, const QCommandLineParser &arguments, const Job &job,
             Console &console) const;

private:
    QStringList files_;
    QString out_;
    QString folder_;
};

/// Makes a folder with all above it. @return whether it is there now; if not, that is said
bool makeFolder(const QString &path, Console &console);

/// Puts new entries behind those that a document's outline has.
void appendEntries(OutlineDocument &document, MyOutlineItem::Children entries);

/// Writes a document with new entries in place of its outline or, if it is kept, behind it. Without entries
/// the outline stays as it was. Tells the console how many there are. @return why that failed
std::optional<QString> writeEntries(OutlineDocument &document, MyOutlineItem::Children entries, bool keep,
                                    const QString &out, Console &console);

/// Tells the console that a document was written, and how many entries it has.
void tellWritten(const QString &out, const OutlineDocument &document, Console &console);

}  // namespace leafwright::cli
