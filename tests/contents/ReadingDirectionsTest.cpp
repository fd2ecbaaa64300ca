#include "contents/FindContents.h"
#include "contents/PDFContentsPages.h"
#include "contents/PageLines.h"
#include "support/MadePages.h"
#include "support/OpenPdf.h"

#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::boldLook;
using test::MadePages;
using test::PdfBuilder;
using test::TextLook;

/// "level title @page", a line an entry; pages from 1.
QStringList outlineOf(const FoundContents &found) {
    QStringList lines;
    for (const ContentsEntry &entry : found.entries)
        lines += QStringLiteral("%1 %2 @%3").arg(entry.level).arg(entry.title).arg(entry.pageIndex + 1);
    return lines;
}

/// Text that is read from the right, where it begins at x.
TextSpan fromTheRight(double x, double y, const QString &text, const TextLook &look = {}) {
    TextSpan span = test::madeSpan(x, y, text, look);
    span.box.moveRight(x);
    for (size_t i = 0; i < span.starts.size(); ++i)
        span.starts[i] = static_cast<float>(x - 0.5 * look.size * static_cast<double>(i + 1));
    return span;
}

const QStringList arabicTitles{"كتاب الماء", "باب المطر", "باب النهر", "كتاب النور", "باب الشمس", "باب الظل"};

bool isArabicChapter(int index) {
    return index % 3 == 0;
}

/// A book in Arabic: the numbers of its contents stand at the left.
MadePages arabicBook(bool dots) {
    MadePages pages;
    pages.page().span(fromTheRight(540, 80, "المحتويات", boldLook(18)));
    for (int i = 0; i < arabicTitles.size(); ++i) {
        const double y = 110 + 14 * i;
        pages.span(fromTheRight(isArabicChapter(i) ? 540 : 520, y, arabicTitles[i]));
        if (dots) pages.span(fromTheRight(440, y, ". . . . . . . . . . . ."));
        pages.text(60, y, QString::number(i + 1));
    }
    for (int i = 0; i < arabicTitles.size(); ++i) {
        pages.page();
        pages.span(fromTheRight(540, 100, arabicTitles[i], boldLook(isArabicChapter(i) ? 18 : 13)));
        for (int line = 0; line < 30; ++line)
            pages.span(
                fromTheRight(540, 130 + 12 * line, QString("كلمات تقف في كل سطر من النص ").repeated(3)));
        pages.text(300, 770, QString::number(i + 1));
    }
    return pages;
}

QStringList arabicOutline() {
    QStringList lines;
    for (int i = 0; i < arabicTitles.size(); ++i)
        lines += QString("%1 %2 @%3").arg(isArabicChapter(i) ? 1 : 2).arg(arabicTitles[i]).arg(i + 2);
    return lines;
}

TEST(ReadingDirections, ContentsFromTheRightHaveTheirNumbersAtTheLeft) {
    for (const bool dots : {true, false}) {
        const FoundContents found = findContents(arabicBook(dots), {});
        EXPECT_EQ(outlineOf(found), arabicOutline());
        for (const ContentsEntry &entry : found.entries)
            EXPECT_TRUE(entry.sources & PrintedSource) << entry.title.toStdString();
    }
}

TEST(ReadingDirections, PlacesInMirroredPagesAreThoseOfThePage) {
    const FoundContents found = findContents(arabicBook(true), {});
    ASSERT_FALSE(found.entries.empty());
    EXPECT_EQ(found.entries[0].box.right(), 540);
    EXPECT_EQ(found.entries[0].box.width(), 9 * static_cast<double>(arabicTitles[0].size()));
    EXPECT_NEAR(found.entries[0].point.y(), 800 - (100 - 0.8 * 18), 1e-6);
}

/// Text whose characters stand one below the other, from y on.
TextSpan downwards(double x, double y, const QString &text, const TextLook &look = {}) {
    TextSpan span = test::madeSpan(0, 0, text, look);
    span.direction = {0, 1};
    span.baseline = x;
    span.box = QRectF(x - look.size / 2, y, look.size, look.size * static_cast<double>(text.size()));
    for (size_t i = 0; i < span.starts.size(); ++i)
        span.starts[i] = static_cast<float>(y + look.size * static_cast<double>(i));
    return span;
}

TEST(ReadingDirections, ColumnsOfCharactersAreLinesFromTheRight) {
    MadePages pages;
    pages.page()
        .span(downwards(500, 80, "先の行"))
        .span(downwards(540, 80, "題"))
        .span(downwards(480, 80, "次の行"));
    const PageLines page = readLines(pages.pageEvidence(0), 0);
    QStringList texts;
    for (const TextLine &line : page.lines)
        texts += line.text;
    ASSERT_EQ(texts, (QStringList{"題", "先の行", "次の行"}));
    EXPECT_EQ(page.frame.size(), QSizeF(800, 600));
    EXPECT_EQ(page.lines[1].left, 80);
}

TEST(ReadingDirections, HeadingsAmongColumnsOfCharacters) {
    const QStringList titles{"第一章 春の雨", "第二章 夏の海", "第三章 秋の山", "第四章 冬の雪",
                             "第五章 花の色"};
    MadePages pages;
    QStringList outline;
    for (int i = 0; i < titles.size(); ++i) {
        pages.page().span(downwards(540, 80, titles[i], {18, true, "Mincho-Bold"}));
        for (int line = 0; line < 20; ++line)
            pages.span(downwards(490 - 20 * line, 80, QString("長い文を縦に書いた行が続いている").repeated(3),
                                 {10, false, "Mincho"}));
        outline += QString("1 %1 @%2").arg(titles[i]).arg(i + 1);
    }
    const FoundContents found = findContents(pages, {});
    EXPECT_EQ(outlineOf(found), outline);
    ASSERT_FALSE(found.entries.empty());
    EXPECT_EQ(found.entries[0].box, QRectF(531, 80, 18, 18 * titles[0].size()));
}

/// A book whose characters stand one below the other. Its font has the ideographs from U+4E00 on, by their
/// distance from there.
class VerticalBook {
public:
    VerticalBook() {
        const int toUnicode = pdf_.addStream(
            "/CIDInit /ProcSet findresource begin begincmap /CMapName /V def "
            "1 begincodespacerange <0000> <ffff> endcodespacerange "
            "1 beginbfrange <0000> <00ff> <4e00> endbfrange endcmap end");
        const int descriptor = pdf_.addObject(
            "<< /Type /FontDescriptor /FontName /Mincho /Flags 4 /FontBBox [0 -200 1000 800] /ItalicAngle 0 "
            "/Ascent 800 /Descent -200 /CapHeight 700 /StemV 80 >>");
        pdf_.addFont("V",
                     "<< /Type /Font /Subtype /Type0 /BaseFont /Mincho /Encoding /Identity-V /ToUnicode " +
                         PdfBuilder::reference(toUnicode) +
                         " /DescendantFonts [<< /Type /Font /Subtype /CIDFontType0 /BaseFont /Mincho "
                         "/CIDSystemInfo << /Registry (Adobe) /Ordering (Identity) /Supplement 0 >> "
                         "/FontDescriptor " +
                         PdfBuilder::reference(descriptor) + " /DW 1000 >>] >>");
    }
    /// A page that begins with a title of these characters.
    void addPage(const std::vector<int> &title) {
        std::string content = column(20, 540, title);
        for (int line = 0; line < 20; ++line) {
            std::vector<int> text;
            for (int i = 0; i < 40; ++i)
                text.push_back(0x80 + (line + 3 * i) % 0x40);
            content += column(10, 490 - 20 * line, text);
        }
        pdf_.addPage(content);
        QString spelt;
        for (const int code : title)
            spelt += QChar(0x4e00 + code);
        outline_ += QString("1 %1 @%2").arg(spelt).arg(outline_.size() + 1);
    }
    const PdfBuilder &pdf() const { return pdf_; }
    const QStringList &outline() const { return outline_; }

private:
    static std::string column(int size, int x, const std::vector<int> &codes) {
        QByteArray bytes;
        for (const int code : codes) {
            bytes += '\0';
            bytes += static_cast<char>(code);
        }
        return "BT /V " + std::to_string(size) + " Tf " + std::to_string(x) + " 700 Td <" +
               bytes.toHex().toStdString() + "> Tj ET\n";
    }

    PdfBuilder pdf_;
    QStringList outline_;
};

TEST(ReadingDirections, FilesWithColumnsOfCharacters) {
    VerticalBook book;
    for (int i = 0; i < 5; ++i)
        book.addPage({0x11 * i, 0x11 * i + 1, 0x11 * i + 2, 0x11 * i + 5});
    const auto document = test::openPdf(book.pdf());
    const PDFContentsPages pages(*document);
    EXPECT_EQ(pages.pageEvidence(0)->spans.at(0).direction, QPointF(0, 1));
    const FoundContents found = findContents(pages, {});
    EXPECT_EQ(outlineOf(found), book.outline());
    ASSERT_FALSE(found.entries.empty());
    EXPECT_NEAR(found.entries[0].box.height(), 80, 5);
    EXPECT_NEAR(found.entries[0].box.center().x(), 540, 10);
}

}  // namespace
}  // namespace leafwright
