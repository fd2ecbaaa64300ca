#include "bench/BenchPdf.h"

#include "support/PdfBuilder.h"

#include <QTemporaryDir>

#include <stdexcept>

namespace leafwright::bench {

namespace {

using test::OutlineEntry;
using test::PdfBuilder;

constexpr int pageCount = 500;
constexpr int pagesPerChapter = 10;
constexpr int sectionsPerPage = 3;

// Built up by append(), since GCC 12 warns about its own library where a literal stands before a "+"
// (GCC bug 105651).

/// A section: its heading and some lines of body text, the first words of which are set in italics.
std::string section(int page, int number) {
    constexpr int lines = 12;
    constexpr double leading = 14;
    constexpr double height = 230;
    double y = 740 - number * height;
    std::string content = PdfBuilder::showText(
        "F2", 14, 72, y,
        std::string("Section ").append(std::to_string(page)).append(1, '.').append(std::to_string(number)));
    for (int line = 0; line < lines; ++line) {
        y -= leading;
        content += PdfBuilder::showText("F3", 10, 72, y,
                                        std::string("line ").append(std::to_string(line)).append(" says"));
        content += PdfBuilder::showText(
            "F1", 10, 130, y, "what a manual says at such a place, in about as many words as there are");
    }
    return content;
}

std::string page(int index) {
    std::string content;
    if (index % pagesPerChapter == 0) {
        content += PdfBuilder::showText(
            "F2", 20, 72, 765, std::string("Chapter ").append(std::to_string(index / pagesPerChapter + 1)));
    }
    for (int k = 0; k < sectionsPerPage; ++k)
        content += section(index + 1, k);
    return content;
}

/// An entry a chapter, with an entry a section below it.
std::vector<OutlineEntry> outline(const PdfBuilder &pdf) {
    std::vector<OutlineEntry> chapters;
    for (int index = 0; index < pageCount; ++index) {
        const std::string destination =
            std::string("[").append(pdf.pageReference(index)).append(" /XYZ 72 700 null]");
        if (index % pagesPerChapter == 0) chapters.push_back({"(Chapter)", destination});
        for (int k = 0; k < sectionsPerPage; ++k)
            chapters.back().children.push_back({"(Section)", destination});
    }
    return chapters;
}

QString makeManual() {
    PdfBuilder pdf;
    for (int index = 0; index < pageCount; ++index)
        pdf.addPage(page(index));
    addOutline(pdf, outline(pdf));
    QString path = benchFolder() + QStringLiteral("/manual.pdf");
    pdf.save(path);
    return path;
}

}  // namespace

QString benchFolder() {
    static const QTemporaryDir folder;
    return folder.path();
}

QString benchPdfPath() {
    static const QString path = [] {
        const QString given = qEnvironmentVariable("LEAFWRIGHT_BENCH_PDF");
        return given.isEmpty() ? makeManual() : given;
    }();
    return path;
}

std::unique_ptr<PDFDocument> openBenchPdf() {
    auto opened = PDFDocument::open(benchPdfPath());
    const QString reason = benchPdfPath() + QStringLiteral(" can't be read");
    if (std::holds_alternative<PDFError>(opened)) throw std::runtime_error(reason.toStdString());
    auto document = std::get<std::unique_ptr<PDFDocument>>(std::move(opened));
    if (document->isLocked()) throw std::runtime_error(reason.toStdString());
    return document;
}

}  // namespace leafwright::bench
