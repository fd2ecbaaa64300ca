#include "pageview/DrawnPage.h"
#include "support/CliFiles.h"
#include "support/CliRun.h"
#include "support/OpenPdf.h"

#include <QStandardPaths>

#include <gtest/gtest.h>

// With the real programs that recognise text; how it is asked for and what else may happen is tested with
// ones that only pretend to.

namespace leafwright::test {
namespace {

/// The pages of a PDF, Letter size, as images of 200 dots an inch.
PdfBuilder scanOf(const PDFDocument &pdf) {
    constexpr double scale = 200.0 / 72;
    const QRect whole(0, 0, 1700, 2200);
    PdfBuilder scan;
    for (int i = 0; i < pdf.pageCount(); ++i) {
        const QImage image = drawnPage(pdf, {i, scale, whole}).convertToFormat(QImage::Format_Grayscale8);
        std::string pixels;
        for (int y = 0; y < image.height(); ++y)
            pixels.append(reinterpret_cast<const char *>(image.constScanLine(y)),
                          static_cast<size_t>(image.width()));
        const int number =
            scan.addStream(pixels,
                           "/Type /XObject /Subtype /Image /Width 1700 /Height 2200 /ColorSpace /DeviceGray "
                           "/BitsPerComponent 8");
        scan.addPage("612 0 0 792 0 0 cm /Im Do",
                     "/Resources << /XObject << /Im " + PdfBuilder::reference(number) + " >> >>");
    }
    return scan;
}

/// Pages and titles of an outline in plus lines, without the levels: type is recognised in many sizes.
QStringList entriesOf(QString plusLines) {
    return plusLines.remove('+').split('\n', Qt::SkipEmptyParts);
}

TEST(ContentsOfScans, OutlineIsFoundInRecognisedText) {
    for (const char *program : {"ocrmypdf", "tesseract"}) {
        if (QStandardPaths::findExecutable(program).isEmpty()) GTEST_SKIP() << program << " is not installed";
    }
    const TempDir dir;
    savePdfWithContents(dir, "book.pdf");
    scanOf(*openPdf(dir.path("book.pdf"))).save(dir.path("scan.pdf"));
    const CliResult result =
        runCli({"contents", dir.path("scan.pdf"), "-o", dir.path("out.pdf"), "--ocr-language", "eng"});
    ASSERT_EQ(result.exitCode, 0) << result.err.constData();
    EXPECT_TRUE(bytesOf(dir.path("out.pdf")).startsWith(bytesOf(dir.path("scan.pdf"))));

    const QStringList wanted = entriesOf(outlineOfContents);
    const QStringList found = entriesOf(plusLinesOf(dir.path("out.pdf")));
    const auto right =
        std::ranges::count_if(found, [&](const QString &each) { return wanted.contains(each); });
    // F1 of at least 0.8, in whole numbers.
    EXPECT_GE(10 * right, 4 * (wanted.size() + found.size())) << found.join(u'\n').toStdString();
}

}  // namespace
}  // namespace leafwright::test
