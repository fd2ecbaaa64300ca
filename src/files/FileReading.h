#pragma once

#include <QByteArray>
#include <QString>

#include <limits>
#include <optional>
#include <variant>

namespace leafwright {

/// More bytes than can be read.
inline constexpr qsizetype anyLength = std::numeric_limits<qsizetype>::max();

/// The content of a file, or of what else can be read to its end, unless it has more than so many bytes.
/// @return it, or why it can't be read
std::variant<QByteArray, QString> readFile(const QString &path, qsizetype longest = anyLength);
/// The same of a regular file; does not wait for anything.
std::variant<QByteArray, QString> readRegularFile(const QString &path, qsizetype longest = anyLength);
/// The same of a descriptor, such as standard input, from where it stands.
std::variant<QByteArray, QString> readDescriptor(int descriptor, qsizetype longest = anyLength);

/// What a descriptor has next.
/// @return up to so many bytes, fewer only at its end; nothing, with errno set, where it can't be read
std::optional<QByteArray> readBlock(int descriptor, qsizetype longest);

/// Opens a regular file for reading, without waiting for anything.
/// @return a descriptor; -1 with errno set where there is none
int openRegularFile(const QString &path);

/// Whether a regular file begins as a PDF does: a line of its first 1,024 bytes begins with "%PDF-" (ISO
/// 32000-1, 7.5.2; readers allow for something before it, PDF Reference 1.7, appendix H, note 13), if need be
/// behind the mark of UTF-8, or is "%!PS-Adobe-N.n PDF-M.m" (the same note). One that the user may not read
/// does not. @return nothing, with errno set, where the disk does not give it
std::optional<bool> beginsAsPdf(const QByteArray &path);

/// Makes a folder and those above it, where they are not there. @return why that is not possible
std::optional<QString> makeFolder(const QString &path);

/// Whether there is something at a path.
bool fileExists(const QString &path);
/// Whether there is something at a path in whose place nobody here may put another file: it is read-only, or
/// its folder is.
bool isReadOnly(const QString &path);

/// An absolute, clean path; a relative one begins at the working folder. ".." leads where the system goes by
/// it, which behind a symbolic link is not the folder that the path says.
/// @return nothing for a relative path where the working folder has been removed
std::optional<QString> absolutePath(const QString &path);

/// What to tell people then, behind the path.
QString noWorkingFolder();

}  // namespace leafwright
