#pragma once

#include "files/FilePlace.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace leafwright::cli {

/// The files that a command was told to read and to write. "-" is standard input where it is read, standard
/// output where it is written; empty paths are none.
struct FilesOfCommand {
    QString pdf = {};          ///< What is read, and may be written again as `out`.
    QStringList read = {};     ///< What is read besides.
    QString out = {};          ///< The PDF that is written.
    QStringList written = {};  ///< What is written besides.
};

/// The place that a path of a command leads to where it is read. That of standard input is none unless it is
/// a file, as a terminal is written to as well.
std::optional<FilePlace> placeToRead(const QString &path);
/// The place that it leads to where it is written.
std::optional<FilePlace> placeToWrite(const QString &path);

/// Says where something would be written over what is read, or over something else that is written, however
/// the two are spelled. @return the message; absent when all is well
std::optional<QString> clashOf(const FilesOfCommand &files);

/// The same of a command that prints what it reads in a PDF.
std::optional<QString> clashOfPrinting(const QString &pdf);

/// The same of several files, each of which becomes one of the results. @param files as many as results
std::optional<QString> clashOfResults(const QStringList &files, const QStringList &results);

}  // namespace leafwright::cli
