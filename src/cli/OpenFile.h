#pragma once

#include "cli/Console.h"
#include "document/outline/OutlineDocument.h"

#include <QCommandLineOption>

#include <memory>

namespace leafwright::cli {

/// Opens a PDF of which something is printed. When it can't be opened, or not all of it can be read, or it is
/// locked, or what is printed would go into it, says so and returns null.
std::unique_ptr<PDFDocument> openForReading(const QString &path, Console &console);

/// The reason why a file that can't be opened, in a line with its name and what to do.
QString openFailure(const QString &path, const PDFError &error);

/// Why not all could be read of a file that has been asked for: the reason in a line with its name. Commands
/// ask this before they print or write what they have made of it.
std::optional<QString> readFailure(const QString &path, const PDFDocument &document);

/// Opens a PDF for writing its outline; the outline that it has is not imported yet. Nothing is said here:
/// `failure` gets the line to say when the result is false: it can't be opened, or not all of it can be read,
/// or it is locked or encrypted, which refuses editing.
bool openForEditing(OutlineDocument &document, const QString &path, QString &failure);

/// The option "--keep-pages", which every command has that may write entries of the file again.
QCommandLineOption keepPagesOption();
/// Lets a document say what it could not keep of a file that it replaced and, before it writes, which entries
/// lead elsewhere then. @param file the document's name in that message
void observeWriting(OutlineDocument &document, const QString &file, Console &console);

}  // namespace leafwright::cli
