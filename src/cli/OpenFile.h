#pragma once

#include "cli/Console.h"
#include "document/MyDocument.h"

#include <memory>

namespace leafwright::cli {

/// A platform for running without a display: what would be shown is left unsaid, since commands report
/// failures in their own words, with the file's name and the reason.
class SilentPlatform final : public Platform {
public:
    void beep() override {}
    int runModal(const Alert & /*alert*/) override { return 0; }
};

/// Opens a PDF for reading. When it can't be opened or is locked, says so and returns null.
std::unique_ptr<PDFDocument> openForReading(const QString &path, Console &console);

/// The reason why a file that can't be opened, in a line with its name and what to do.
QString openFailure(const QString &path, const PDFError &error);

/// Opens a PDF for writing its outline; the outline that it has is not imported yet. Nothing is said here:
/// `failure` gets the line to say when the result is false: it can't be opened, or it is locked or
/// encrypted, which refuses editing.
bool openForEditing(MyDocument &document, const QString &path, QString &failure);

}  // namespace leafwright::cli
