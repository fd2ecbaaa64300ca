#include "support/OpenPdf.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::openPdf;
using test::PdfBuilder;
using testing::ElementsAre;
using testing::IsEmpty;

/// The texts of marked content 1, 2 and 3 of a page.
std::vector<QString> marked(const std::string &content, PdfBuilder pdf = {},
                            const std::string &entries = {}) {
    pdf.addPage(content, entries);
    return openPdf(pdf)->engine().markedText(0, {1, 2, 3});
}

const std::string text = "BT /F1 10 Tf 72 700 Td ";

TEST(MarkedText, IsTakenFromAmongTheOthers) {
    EXPECT_THAT(marked(text + "(a) Tj /H1 << /MCID 2 >> BDC (Two) Tj EMC /P << /MCID 0 >> BDC (b) Tj EMC "
                              "/H1 << /MCID 1 >> BDC (One) Tj EMC (c) Tj ET"),
                ElementsAre("One", "Two", QString()));
}

TEST(MarkedText, ColoursOfTheContentDoNotMatter) {
    EXPECT_THAT(marked(text + "/H1 << /MCID 1 >> BDC 1 0 0 rg (One) Tj 0 0 0.00784 rg (more) Tj EMC "
                              "0 0 0.0118 rg (none) Tj ET"),
                ElementsAre("Onemore", QString(), QString()));
}

TEST(MarkedText, LinesAreJoinedByABlank) {
    EXPECT_THAT(marked(text + "/H1 << /MCID 1 >> BDC (One) Tj 0 -12 Td (title) Tj EMC ET"),
                ElementsAre("One title", QString(), QString()));
}

TEST(MarkedText, GoesOnBehindAStateThatIsRestored) {
    EXPECT_THAT(marked("/H1 << /MCID 1 >> BDC q " + text + "(One) Tj ET Q " + text +
                       "0 -12 Td (more) Tj ET EMC " + text + "0 -40 Td (none) Tj ET"),
                ElementsAre("One more", QString(), QString()));
    EXPECT_THAT(
        marked("q /H1 << /MCID 1 >> BDC " + text + "(One) Tj ET EMC q Q Q " + text + "0 -40 Td (none) Tj ET"),
        ElementsAre("One", QString(), QString()));
}

TEST(MarkedText, MarksWithoutANumberBelongToWhatIsAroundThem) {
    EXPECT_THAT(
        marked(text + "/H1 << /MCID 1 >> BDC (a) Tj /Span BMC (b) Tj EMC /Span << /Lang (de) >> BDC (c) Tj "
                      "EMC (d) Tj EMC ET"),
        ElementsAre("abcd", QString(), QString()));
}

TEST(MarkedText, PropertiesOfTheResources) {
    EXPECT_THAT(marked("/H1 /Mark BDC BT /G 10 Tf 72 700 Td (One) Tj ET EMC", {},
                       "/Resources << /Properties << /Mark << /MCID 1 >> >> /Font << /G << /Type /Font "
                       "/Subtype /Type1 /BaseFont /Helvetica >> >> >>"),
                ElementsAre("One", QString(), QString()));
}

TEST(MarkedText, EndsThatNothingBegan) {
    EXPECT_THAT(marked("EMC EMC " + text + "/H1 << /MCID 1 >> BDC (One) Tj EMC EMC EMC (none) Tj ET"),
                ElementsAre("One", QString(), QString()));
}

TEST(MarkedText, NestedAsDeepAsOneLikes) {
    std::string deep = text;
    for (int i = 0; i < 1'000; ++i)
        deep += "/Span BMC ";
    deep += "/H1 << /MCID 1 >> BDC (lost) Tj EMC ";
    for (int i = 0; i < 1'000; ++i)
        deep += "EMC ";
    EXPECT_THAT(marked(deep + "/H1 << /MCID 2 >> BDC (found) Tj EMC ET"),
                ElementsAre(QString(), "found", QString()));
}

TEST(MarkedText, NumbersBeyondAByte) {
    PdfBuilder pdf;
    std::string content = text;
    std::vector<int> identifiers;
    for (int i = 0; i < 700; ++i) {
        content += "/P << /MCID " + std::to_string(i) + " >> BDC (" + std::to_string(i) + ") Tj EMC 0 -1 Td ";
        identifiers.push_back(i);
    }
    pdf.addPage(content + "ET");
    const std::vector<QString> texts = openPdf(pdf)->engine().markedText(0, identifiers);
    ASSERT_EQ(texts.size(), 700U);
    EXPECT_EQ(texts[0], "0");
    EXPECT_EQ(texts[255], "255");
    EXPECT_EQ(texts[256], "256");
    EXPECT_EQ(texts[699], "699");
}

TEST(MarkedText, NoneIsAskedFor) {
    PdfBuilder pdf;
    pdf.addNumberedPages(1);
    EXPECT_THAT(openPdf(pdf)->engine().markedText(0, {}), IsEmpty());
}

}  // namespace
}  // namespace leafwright
