#include "contents/FindContents.h"
#include "support/MadePages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace leafwright {
namespace {

using test::boldLook;
using test::MadePages;
using testing::HasSubstr;
using testing::Not;

QString titleOf(const char *words, int chapter) {
    return QString("%1 %2").arg(words).arg(QString(6, QChar(u'a' + chapter)));
}

/// A book with all that a stage may find: contents in print with an entry that leads behind the last page, a
/// list of plates that is none, running heads, page numbers, labels, names and tags.
MadePages madeBook() {
    MadePages pages;
    pages.page().text(60, 80, "Contents", boldLook(18));
    for (int i = 1; i <= 5; ++i) {
        pages.contentsRow(60, 96 + 14 * i, titleOf("Chapter on", i), QString::number(i));
        if (i <= 3) pages.link(60, 540, 96 + 14 * i, i + 2, 60);
    }
    pages.contentsRow(60, 180, "An epilogue in volume two", "80");
    pages.page().paragraph(100, 20).page();
    for (int i = 1; i <= 8; ++i)
        pages.contentsRow(60, 96 + 20 * i, titleOf("Nothing to be found", i), QString::number(70 + i));
    for (int i = 1; i <= 5; ++i) {
        pages.page().text(60, 40, "A Book of Letters");
        pages.text(60, 100, titleOf("Chapter on", i), boldLook(18)).paragraph(130, 12);
        pages.text(60, 300, titleOf("Section of", i), boldLook(14)).paragraph(324, 12);
        pages.text(300, 780, QString::number(i));
        pages.document.headings.push_back({1, i + 2, titleOf("Chapter on", i)});
        pages.document.namedPlaces.push_back({QString("chapter.%1").arg(i), i + 2, QPointF(60, 86)});
    }
    for (int i = 0; i < pages.pageCount(); ++i)
        pages.document.pageLabels += QString("L%1").arg(i);
    return pages;
}

TEST(Explanation, PrintsWhatEachStageHasFound) {
    const std::string text = analyseContents(madeBook())->explanation().toStdString();
    for (const char *part : {
             "Pages: 8\n",
             "Body text: 10.0 times, leading 12.0\n",
             "Running heads and feet: ",
             "  5 times: A Book of Letters\n",
             "Printed numbers: ",
             "1 to 5 on pages 4 to 8",
             "Printed roman numbers: none\n",
             "Printed numbers of chapter and page: 0\n",
             "Page labels: 8\n",
             "Contents tried: ",
             "Pages 1 to 1: taken\n",
             "  row on page 1: Contents\n",
             "  entry row on page 1, number \"2\", linked: Chapter on cccccc\n",
             "  Entries resolved: 5, of which found on their pages: 5\n",
             "  Entries unresolved: 1\n",
             "    number \"80\", behind the last page: An epilogue in volume two\n",
             "Pages 3 to 3: refused: ",
             "  entry row on page 3, number \"71\": Nothing to be found bbbbbb\n",
             "Printed contents: pages 1 to 1, 5 entries, 100 % found on their pages\n",
             "Style 0: 18.0 times bold, 5 candidates\n",
             " on page 4, style level 1: Chapter on bbbbbb\n",
             " on page 4, style level 2: Section of bbbbbb\n",
             "Named headings: 5\n",
             "  depth 1: Chapter on bbbbbb\n",
             "Headings of the structure: 5\n",
             "  level 1, page 4: Chapter on bbbbbb\n",
             "Outline by the structure: 5 entries\n",
             " by printed style link name structure: Chapter on bbbbbb\n",
         })
        EXPECT_THAT(text, HasSubstr(part));
    EXPECT_THAT(text, Not(HasSubstr("was recognised")));
}

TEST(Explanation, TellsOfTheOutlineThatIsAskedFor) {
    ContentsOptions options;
    options.depth = ContentsDepth::AsPrinted;
    const auto analysis = analyseContents(madeBook());
    EXPECT_THAT(analysis->explanation(options).toStdString(),
                HasSubstr("Outline by the printed contents: 5 entries\n"));
    options.depth = ContentsDepth::Deeper;
    EXPECT_THAT(analysis->explanation(options).toStdString(),
                HasSubstr("Outline by the structure: 10 entries\n"));
}

TEST(Explanation, SaysWhatIsMissing) {
    MadePages plain;
    for (int i = 0; i < 3; ++i)
        plain.page().recognised().paragraph(80, 30);
    const std::string text = analyseContents(plain)->explanation().toStdString();
    for (const char *part : {"Pages whose text was recognised: 3\n", "Printed numbers: none\n",
                             "Contents tried: 0\n", "Printed contents: none\n", "Named headings: 0\n",
                             "Headings of the structure: 0\n", "Outline by names and styles: 0 entries\n"})
        EXPECT_THAT(text, HasSubstr(part));
    MadePages images;
    images.page();
    EXPECT_EQ(analyseContents(images)->explanation(), "Pages: 1\nText: none or too little\n");
}

}  // namespace
}  // namespace leafwright
