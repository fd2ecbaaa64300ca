#pragma once

#include "pdf/PDFDocument.h"
#include "support/PdfBuilder.h"

#include <QByteArray>

#include <iosfwd>
#include <string>
#include <vector>

namespace leafwright {

/// Shows a rectangle in GoogleTest's messages.
void PrintTo(const Rect &rect, std::ostream *out);

}  // namespace leafwright

namespace leafwright::test {

/// Opens a file that must open; throws when it does not, which fails the test.
std::unique_ptr<PDFDocument> openPdf(const QString &path);
/// Saves the PDF to a folder that is gone at once, and opens it: the document holds on to its file.
std::unique_ptr<PDFDocument> openPdf(const PdfBuilder &pdf, const PdfBuilder::Options &options = {});
/// Opens a PDF with these bytes, in the same way.
std::unique_ptr<PDFDocument> openBytes(const QByteArray &bytes);

QByteArray contentOf(const QString &path);
void writeFile(const QString &path, const QByteArray &content);

/// A page's runs: "Times Bold 12.5: Chapter 1\n".
std::vector<std::string> runsOf(const AttributedString &text);
std::vector<std::string> runsOf(const PDFDocument &document, int pageIndex);
/// A page's plain text.
QString textOf(const PDFDocument &document, int pageIndex);

}  // namespace leafwright::test
