#include "support/OpenPdf.h"
#include "support/OutlineText.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::linesOf;
using test::openPdf;
using test::OutlineEntry;
using test::PdfBuilder;
using testing::ElementsAre;
using testing::IsEmpty;

std::unique_ptr<PDFDocument> openWith(const std::vector<OutlineEntry> &entries) {
    PdfBuilder pdf;
    pdf.addNumberedPages(1);
    test::addOutline(pdf, entries);
    return openPdf(pdf);
}

QString titleWith(const std::string &title) {
    return openWith({{title, ""}})->outlineRoot().childAtIndex(0).label();
}

TEST(OutlineReader, NestingAndOrder) {
    PdfBuilder pdf;
    pdf.addNumberedPages(3);
    const auto to = [&pdf](int page) { return "[" + pdf.pageReference(page) + " /XYZ 72 700 null]"; };
    test::addOutline(
        pdf, {{"(A)", to(0), {{"(A.1)", to(1), {{"(A.1.1)", to(2)}}}, {"(A.2)", to(1)}}}, {"(B)", to(2)}});
    EXPECT_THAT(linesOf(openPdf(pdf)->outlineRoot()),
                ElementsAre("A -> 0 (72, 700)", "  A.1 -> 1 (72, 700)", "    A.1.1 -> 2 (72, 700)",
                            "  A.2 -> 1 (72, 700)", "B -> 2 (72, 700)"));
}

TEST(OutlineReader, WithoutAnOutline) {
    PdfBuilder pdf;
    pdf.addNumberedPages(1);
    EXPECT_THAT(linesOf(openPdf(pdf)->outlineRoot()), IsEmpty());
    for (const char *outlines :
         {"null", "7", "[]", "<< >>", "<< /First null >>", "<< /First 7 >>", "<< /First (a) >>"}) {
        pdf.setCatalogEntry("/Outlines", outlines);
        EXPECT_THAT(linesOf(openPdf(pdf)->outlineRoot()), IsEmpty()) << outlines;
    }
}

TEST(OutlineReader, RootHasNoLabel) {
    EXPECT_TRUE(openWith({{"(A)", ""}})->outlineRoot().label().isNull());
}

TEST(OutlineReader, EntriesWithoutAnObjectOfTheirOwnHaveNoNumber) {
    PdfBuilder pdf;
    pdf.addNumberedPages(1);
    pdf.setCatalogEntry("/Outlines", "<< /First << /Title (A) >> >>");
    const auto document = openPdf(pdf);
    ASSERT_EQ(document->outlineRoot().numberOfChildren(), 1);
    EXPECT_FALSE(document->outlineRoot().entry().number);
    EXPECT_FALSE(document->outlineRoot().childAtIndex(0).entry().number);
    EXPECT_TRUE(openWith({{"(A)", ""}})->outlineRoot().childAtIndex(0).entry().number);
}

TEST(OutlineReader, EntryWithoutADestination) {
    const auto document = openWith({{"(A)", ""}});
    EXPECT_FALSE(document->outlineRoot().childAtIndex(0).destination());
    EXPECT_FALSE(document->outlineRoot().childAtIndex(0).entry().action);
}

TEST(OutlineReader, TitlesInEveryEncoding) {
    EXPECT_EQ(titleWith("(Plain \\(text\\) \\\\)"), "Plain (text) \\");
    EXPECT_EQ(titleWith("<FEFF00C4D83DDE00>"), "Ä😀");
    EXPECT_EQ(titleWith("<FFFEC4003DD800DE>"), "Ä😀");
    EXPECT_EQ(titleWith("<EFBBBFC384>"), "Ä");
    EXPECT_EQ(titleWith("<80A0C4>"), "•€Ä");
    EXPECT_EQ(titleWith("<FEFF001B00640065001B0041>"), "A");
}

TEST(OutlineReader, LoneSurrogateStays) {
    EXPECT_EQ(titleWith("<FEFF0041D8000042>"), QString("A") + QChar(0xD800) + 'B');
}

TEST(OutlineReader, MissingOrEmptyTitle) {
    EXPECT_EQ(titleWith(""), "");
    EXPECT_EQ(titleWith("()"), "");
    EXPECT_EQ(titleWith("<FEFF>"), "");
    for (const char *title : {"7", "/Name", "[(a)]", "<< >>", "null"})
        EXPECT_EQ(titleWith(title), "") << title;
}

TEST(OutlineReader, LineBreaksOfATitleStay) {
    EXPECT_EQ(titleWith("(a\\nb\\rc\\td)"), "a\nb\rc\td");
}

TEST(OutlineReader, TitleOfAMillionCharacters) {
    EXPECT_EQ(titleWith("(" + std::string(1'000'000, 'x') + ")").size(), 1'000'000);
}

TEST(OutlineReader, OtherActionsAreRead) {
    PdfBuilder pdf;
    pdf.addNumberedPages(1);
    const int entry = pdf.addObject("<< /Title (Web) /A << /S /URI /URI (about:blank) >> >>");
    pdf.setCatalogEntry("/Outlines", "<< /First " + PdfBuilder::reference(entry) + " >>");
    const auto document = openPdf(pdf);
    const PDFOutline &web = document->outlineRoot().childAtIndex(0);
    EXPECT_EQ(web.label(), "Web");
    EXPECT_FALSE(web.destination());
    EXPECT_EQ(web.entry().action, (leafwright::OutlineEntry::Action{"URI", "about:blank"}));
}

/// By the sign of its count (ISO 32000-1, table 153).
TEST(OutlineReader, EntryIsOpenWhereItsCountIsAboveZero) {
    for (const auto &[count, isOpen] : std::vector<std::pair<const char *, bool>>{{"", false},
                                                                                  {"/Count 0", false},
                                                                                  {"/Count 1", true},
                                                                                  {"/Count -1", false},
                                                                                  {"/Count (2)", false}}) {
        PdfBuilder pdf;
        pdf.addNumberedPages(1);
        const std::vector<int> entries = addOutline(pdf, {{"(One)", "[0 /Fit]"}});
        pdf.replaceObject(entries[0], std::string("<< /Title (One) /Dest [0 /Fit] ") + count + " >>");
        EXPECT_EQ(openPdf(pdf)->outlineRoot().childAtIndex(0).entry().open, isOpen) << count;
    }
}

TEST(OutlineReader, StyleIsThatOfTheFlags) {
    for (const int flags : {0, 1, 2, 3, 4, 7}) {
        PdfBuilder pdf;
        pdf.addNumberedPages(1);
        const std::vector<int> entries = addOutline(pdf, {{"(One)", "[0 /Fit]"}});
        pdf.replaceObject(entries[0], "<< /Title (One) /F " + std::to_string(flags) + " >>");
        const auto document = openPdf(pdf);
        const auto &entry = document->outlineRoot().childAtIndex(0).entry();
        EXPECT_EQ(entry.italic, flags % 2 == 1) << flags;
        EXPECT_EQ(entry.bold, flags / 2 % 2 == 1) << flags;
    }
}

TEST(OutlineReader, EntriesThatAreNoObjectsOfTheirOwn) {
    PdfBuilder pdf;
    pdf.addNumberedPages(1);
    pdf.setCatalogEntry("/Outlines",
                        "<< /First << /Title (A) /First << /Title (A.1) >> /Next << /Title (B) >> >> >>");
    EXPECT_THAT(linesOf(openPdf(pdf)->outlineRoot()), ElementsAre("A", "  A.1", "B"));
}

TEST(OutlineReader, IsReadOnceAndCanBeReplaced) {
    const auto document = openWith({{"(A)", ""}});
    const PDFOutline *const first = &document->outlineRoot();
    EXPECT_EQ(&document->outlineRoot(), first);
    document->setOutlineRoot(test::makeOutline({{"B"}, {"C"}}));
    EXPECT_THAT(linesOf(document->outlineRoot()), ElementsAre("B", "C"));
}

TEST(PDFOutline, ChildrenAreInsertedWhereTold) {
    PDFOutline root;
    root.insertChildAtIndex(std::make_unique<PDFOutline>("b"), 0);
    root.insertChildAtIndex(std::make_unique<PDFOutline>("a"), 0);
    root.insertChildAtIndex(std::make_unique<PDFOutline>("c"), 2)
        .insertChildAtIndex(std::make_unique<PDFOutline>("c.1"), 0);
    EXPECT_THAT(linesOf(root), ElementsAre("a", "b", "c", "  c.1"));
    EXPECT_EQ(root.countOfDescendants(), 4);
    EXPECT_EQ(root.childAtIndex(0).countOfDescendants(), 0);
}

TEST(PDFOutline, ChildrenAreNotInsertedOutOfRange) {
    PDFOutline root;
    EXPECT_THROW(root.insertChildAtIndex(std::make_unique<PDFOutline>("a"), 1), std::out_of_range);
    EXPECT_THROW(root.insertChildAtIndex(std::make_unique<PDFOutline>("a"), -1), std::out_of_range);
    EXPECT_EQ(root.numberOfChildren(), 0);
}

TEST(PDFOutline, AnyDepthIsDestroyedWithoutRecursion) {
    auto root = std::make_unique<PDFOutline>();
    PDFOutline *entry = root.get();
    constexpr int levels = 300'000;
    for (int i = 0; i < levels; ++i)
        entry = &entry->insertChildAtIndex(std::make_unique<PDFOutline>("a"), 0);
    EXPECT_EQ(root->countOfDescendants(), levels);
    root.reset();
}

}  // namespace
}  // namespace leafwright
