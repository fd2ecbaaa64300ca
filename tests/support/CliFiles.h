#pragma once

#include "support/PdfBuilder.h"
#include "support/TempDir.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace leafwright::test {

// What tests of the command line do with files again and again.

QByteArray bytesOf(const QString &path);
void saveBytes(const QString &path, const QByteArray &bytes);

/// Reads JSON; where it is none, the test fails and the document is null.
QJsonDocument parsedJson(const QByteArray &text);
/// What `outline --format json` prints of a file, without what the entries are beside title, page and
/// children; the test fails when it fails.
QJsonArray outlineOf(const QString &path);
/// What `outline --format plus` prints of a file; the test fails when it fails.
QString plusLinesOf(const QString &path);

/// Saves a PDF with numbered pages and an outline of top-level entries, entry k on page k at (72, 700).
/// @return its path
QString savePdf(const TempDir &dir, const QString &name, int pages,
                const std::vector<std::string> &titles = {});

/// Saves a PDF of two pages and an outline that can't be read without its password. @return its path
QString saveLockedPdf(const TempDir &dir, const QString &name);
/// The same, only that reading it takes no password. @return its path
QString saveEncryptedPdf(const TempDir &dir, const QString &name);

/// Saves a PDF of two pages with headings of three levels, in sizes 18, 14 and 12 over body text of 10:
///
///     Chapter One, Section Alpha, Detail Below   (page 1)
///     Chapter Two, Section Beta                  (page 2)
///
/// and an outline of one entry, "Old Entry".
QString savePdfWithHeadings(const TempDir &dir, const QString &name);
/// The outline that its headings make, as plus lines.
inline const QString outlineOfHeadings = QStringLiteral(
    "+ @1 Chapter One\n"
    "++ @1 Section Alpha\n"
    "+++ @1 Detail Below\n"
    "+ @2 Chapter Two\n"
    "++ @2 Section Beta\n");

/// Saves the book of makeBook(). @param pageLabels the catalog's entry; empty for none. @return its path
QString savePdfWithContents(const TempDir &dir, const QString &name, const std::string &pageLabels = {});
/// The outline that its author would have made, as plus lines.
inline const QString outlineOfContents = QStringLiteral(
    "+ @2 1 Soil\n"
    "++ @3 1.1 What is in the Ground\n"
    "++ @4 1.2 Compost\n"
    "+ @5 2 Water\n"
    "++ @6 2.1 Rain\n"
    "++ @7 2.2 Wells\n"
    "+ @8 3 Light\n"
    "++ @9 3.1 Shade\n"
    "++ @10 3.2 Glass\n");

/// Makes standard input read a file, for as long as it lives.
class StandardInput {
public:
    explicit StandardInput(const QString &path);
    ~StandardInput();
    StandardInput(const StandardInput &) = delete;
    StandardInput &operator=(const StandardInput &) = delete;

private:
    int saved_;
};

/// Lets no file of this process grow beyond a size, for as long as it lives; like a full disk.
class FileSizeLimit {
public:
    explicit FileSizeLimit(unsigned long bytes);
    ~FileSizeLimit();
    FileSizeLimit(const FileSizeLimit &) = delete;
    FileSizeLimit &operator=(const FileSizeLimit &) = delete;

private:
    unsigned long saved_;
    void (*savedHandler_)(int);
};

}  // namespace leafwright::test
