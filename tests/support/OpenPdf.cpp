#include "support/OpenPdf.h"

#include "support/TempDir.h"

#include <QFile>

#include <ostream>
#include <stdexcept>

namespace leafwright {

void PrintTo(const Rect &rect, std::ostream *out) {
    *out << '(' << rect.x << ", " << rect.y << ", " << rect.width << ", " << rect.height << ')';
}

}  // namespace leafwright

namespace leafwright::test {

std::unique_ptr<PDFDocument> openPdf(const QString &path) {
    auto result = PDFDocument::open(path);
    if (const auto *error = std::get_if<PDFError>(&result)) {
        throw std::runtime_error("the test's PDF does not open: " + error->message.toStdString());
    }
    return std::get<std::unique_ptr<PDFDocument>>(std::move(result));
}

std::unique_ptr<PDFDocument> openPdf(const PdfBuilder &pdf, const PdfBuilder::Options &options) {
    const TempDir dir;
    pdf.save(dir.path("made.pdf"), options);
    return openPdf(dir.path("made.pdf"));
}

std::unique_ptr<PDFDocument> openBytes(const QByteArray &bytes) {
    const TempDir dir;
    writeFile(dir.path("made.pdf"), bytes);
    return openPdf(dir.path("made.pdf"));
}

QByteArray contentOf(const QString &path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error("can't read " + path.toStdString());
    return file.readAll();
}

void writeFile(const QString &path, const QByteArray &content) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        throw std::runtime_error("can't write " + path.toStdString());
}

std::vector<std::string> runsOf(const AttributedString &text) {
    std::vector<std::string> runs;
    for (const FontRun &run : text.runs) {
        const QString line = run.font.displayName() + u' ' + QString::number(run.font.pointSize(), 'g', 10) +
                             QStringLiteral(": ") + text.substring(run.range);
        runs.push_back(line.toStdString());
    }
    return runs;
}

std::vector<std::string> runsOf(const PDFDocument &document, int pageIndex) {
    return runsOf(document.pageText(pageIndex)->attributedString);
}

QString textOf(const PDFDocument &document, int pageIndex) {
    return document.pageText(pageIndex)->attributedString.string;
}

}  // namespace leafwright::test
