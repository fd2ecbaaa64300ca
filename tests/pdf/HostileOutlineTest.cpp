#include "support/OpenPdf.h"
#include "support/OutlineText.h"
#include "support/RawPdf.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::linesOf;
using test::openBytes;
using test::RawPdf;
using testing::ElementsAre;

/// A file of one page whose outline starts at object 10. @param entries objects 10, 11, ...
std::unique_ptr<PDFDocument> openWith(const std::vector<QByteArray> &entries) {
    RawPdf pdf = test::rawPdfOfOnePage("/Outlines << /First 10 0 R /Last 10 0 R >>");
    for (int i = 0; i < std::ssize(entries); ++i)
        pdf.object(10 + i, entries[static_cast<size_t>(i)]);
    return openBytes(pdf.endWithTable().bytes());
}

QByteArray entry(int i, const QByteArray &links) {
    return "<< /Title (" + QByteArray::number(i) + ") " + links + " >>";
}

QByteArray ref(int number) {
    return QByteArray::number(number) + " 0 R";
}

TEST(HostileOutline, EntryThatIsItsOwnNext) {
    EXPECT_THAT(linesOf(openWith({"<< /Title (a) /Next 10 0 R >>"})->outlineRoot()), ElementsAre("a"));
}

TEST(HostileOutline, EntryThatIsItsOwnChild) {
    EXPECT_THAT(
        linesOf(openWith({"<< /Title (a) /First 10 0 R /Next 11 0 R >>", "<< /Title (b) >>"})->outlineRoot()),
        ElementsAre("a", "b"));
}

TEST(HostileOutline, LoopAmongSiblings) {
    EXPECT_THAT(linesOf(openWith({"<< /Title (a) /Next 11 0 R >>", "<< /Title (b) /Next 12 0 R >>",
                                  "<< /Title (c) /Next 10 0 R >>"})
                            ->outlineRoot()),
                ElementsAre("a", "b", "c"));
}

TEST(HostileOutline, LoopToTheParent) {
    EXPECT_THAT(linesOf(openWith({"<< /Title (a) /First 11 0 R /Next 12 0 R >>",
                                  "<< /Title (a.1) /First 10 0 R >>", "<< /Title (b) >>"})
                            ->outlineRoot()),
                ElementsAre("a", "  a.1", "b"));
}

TEST(HostileOutline, NextThatIsTheParentsNext) {
    EXPECT_THAT(linesOf(openWith({"<< /Title (a) /First 11 0 R /Next 12 0 R >>",
                                  "<< /Title (a.1) /Next 12 0 R >>", "<< /Title (b) >>"})
                            ->outlineRoot()),
                ElementsAre("a", "  a.1", "  b"));
}

TEST(HostileOutline, LinksOfWrongTypes) {
    for (const char *wrong : {"7", "-7", "(a)", "/Name", "[10 0 R]", "null", "99999 0 R", "true", "3.5"}) {
        const auto document =
            openWith({QByteArray("<< /Title (a) /First ") + wrong + " /Parent " + wrong + " /Next 11 0 R >>",
                      QByteArray("<< /Title (b) /Count (x) /Next ") + wrong + " >>"});
        EXPECT_THAT(linesOf(document->outlineRoot()), ElementsAre("a", "b")) << wrong;
    }
}

TEST(HostileOutline, NextThatIsAStream) {
    const auto document =
        openWith({"<< /Title (a) /Next 11 0 R >>",
                  "<< /Title (b) /Length 3 /Next 12 0 R >>\nstream\nabc\nendstream", "<< /Title (c) >>"});
    EXPECT_THAT(linesOf(document->outlineRoot()), ElementsAre("a", "b", "c"));
}

TEST(HostileOutline, CountsDoNotMatter) {
    EXPECT_THAT(linesOf(openWith({"<< /Title (a) /Count 2000000000 /First 11 0 R >>",
                                  "<< /Title (a.1) /Count -2000000000 >>"})
                            ->outlineRoot()),
                ElementsAre("a", "  a.1"));
}

TEST(HostileOutline, PageTreeAsAnOutline) {
    const auto document =
        openBytes(test::rawPdfOfOnePage("/Outlines << /First 2 0 R >>").endWithTable().bytes());
    EXPECT_EQ(document->outlineRoot().numberOfChildren(), 1);
    EXPECT_EQ(document->pageCount(), 1);
}

TEST(HostileOutline, OneLongActionForAllEntries) {
    constexpr int count = 300;
    for (const QByteArray action : {"/S /URI /URI (", "/S /GoToR /F ("}) {
        RawPdf pdf = test::rawPdfOfOnePage("/Outlines << /First 10 0 R /Last 309 0 R >>");
        pdf.object(9, "<< " + action + QByteArray(1 << 18, 'a') + ") >>");
        for (int i = 0; i < count; ++i)
            pdf.object(10 + i, entry(i, "/A 9 0 R /Next " + ref(11 + i)));
        const auto document = openBytes(pdf.endWithTable().bytes());
        EXPECT_EQ(document->outlineRoot().numberOfChildren(), 0) << "they would take 150 MB";
        EXPECT_FALSE(document->canBeWritten());
    }
}

TEST(HostileOutline, TenThousandLevels) {
    constexpr int levels = 10'000;
    std::vector<QByteArray> entries;
    for (int i = 0; i < levels; ++i)
        entries.push_back(entry(i, i + 1 < levels ? "/First " + ref(11 + i) : QByteArray()));
    const auto document = openWith(entries);
    EXPECT_EQ(document->outlineRoot().countOfDescendants(), levels);
    const PDFOutline *deepest = &document->outlineRoot();
    while (deepest->numberOfChildren() > 0)
        deepest = &deepest->childAtIndex(0);
    EXPECT_EQ(deepest->label(), QString::number(levels - 1));
}

TEST(HostileOutline, HundredThousandSiblings) {
    constexpr int siblings = 100'000;
    std::vector<QByteArray> entries;
    for (int i = 0; i < siblings; ++i)
        entries.push_back(
            entry(i, "/Dest [0 /Fit]" + (i + 1 < siblings ? " /Next " + ref(11 + i) : QByteArray())));
    const auto document = openWith(entries);
    const PDFOutline &root = document->outlineRoot();
    ASSERT_EQ(root.numberOfChildren(), siblings);
    EXPECT_EQ(root.childAtIndex(siblings - 1).label(), QString::number(siblings - 1));
    EXPECT_EQ(root.childAtIndex(siblings / 2).label(), QString::number(siblings / 2));
    EXPECT_TRUE(root.childAtIndex(siblings - 1).destination());
}

}  // namespace
}  // namespace leafwright
