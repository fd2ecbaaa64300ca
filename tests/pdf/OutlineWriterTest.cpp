#include "support/CliRun.h"
#include "support/OpenPdf.h"
#include "support/OutlineText.h"
#include "support/TempDir.h"

#include <qpdf/QPDFObjectHandle.hh>

#include <cmath>
#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::Entry;
using test::linesByQpdf;
using test::linesOf;
using test::makeOutline;
using test::openPdf;
using test::PdfBuilder;
using testing::ElementsAre;
using testing::IsEmpty;

PDFDestination at(int page, double x, double y) {
    return {page, {x, y}};
}

/// Writes outlines into a document of three pages and looks at what came of it.
class OutlineWriterTest : public testing::Test {
protected:
    OutlineWriterTest() { pdf.addNumberedPages(3); }
    void write(std::unique_ptr<PDFOutline> root) {
        const auto document = openPdf(pdf);
        document->setOutlineRoot(std::move(root));
        const auto error = document->writeToFile(path);
        ASSERT_FALSE(error) << error->message.toStdString();
    }
    void write(const std::vector<Entry> &entries) { write(makeOutline(entries)); }

    /// What was written, read back by ourselves.
    std::vector<std::string> lines() const { return linesOf(openPdf(path)->outlineRoot()); }
    /// The catalog as QPDF reads it.
    QPDFObjectHandle catalog() {
        witness_ = QPDF::create();
        witness_->processFile(QFile::encodeName(path).constData());
        return witness_->getRoot();
    }

    PdfBuilder pdf;
    test::TempDir dir;
    const QString path = dir.path("out.pdf");

private:
    std::shared_ptr<QPDF> witness_;
};

TEST_F(OutlineWriterTest, QpdfReadsBackTitlesNestingAndPages) {
    write({{"A",
            at(0, 306, 792),
            {{"A.1", at(1, 72, 700)}, {"A.2", at(2, 72, 650.5), {{"A.2.1", at(2, 72, 1)}}}}},
           {"B", at(2, 10, 20)}});
    EXPECT_THAT(linesByQpdf(path),
                ElementsAre("A -> 0 (306, 792)", "  A.1 -> 1 (72, 700)", "  A.2 -> 2 (72, 650.5)",
                            "    A.2.1 -> 2 (72, 1)", "B -> 2 (10, 20)"));
    EXPECT_EQ(lines(), linesByQpdf(path));
}

TEST_F(OutlineWriterTest, TakesTheOldOnesPlace) {
    test::addOutline(pdf, {{"(Old)", "[" + pdf.pageReference(0) + " /Fit]"}, {"(Older)", ""}});
    write({{"New", at(1, 1, 2)}});
    EXPECT_THAT(linesByQpdf(path), ElementsAre("New -> 1 (1, 2)"));
}

TEST_F(OutlineWriterTest, EmptyOutline) {
    test::addOutline(pdf, {{"(Old)", ""}});
    write(std::vector<Entry>());
    EXPECT_THAT(linesByQpdf(path), IsEmpty());
    EXPECT_FALSE(openPdf(path)->hasOutline());
    EXPECT_EQ(openPdf(path)->pageCount(), 3);
}

TEST_F(OutlineWriterTest, UntouchedOutlineIsWrittenAsRead) {
    test::addOutline(pdf, {{"(A)", "[" + pdf.pageReference(1) + " /XYZ 72 700 null]", {{"<FEFF4E2D>", ""}}}});
    ASSERT_FALSE(openPdf(pdf)->writeToFile(path));
    EXPECT_THAT(linesByQpdf(path), ElementsAre("A -> 1 (72, 700)", "  中"));
}

TEST_F(OutlineWriterTest, LinksAndCounts) {
    write({{"A", {}, {{"A.1"}, {"A.2"}}}, {"B"}});
    QPDFObjectHandle root = catalog().getKey("/Outlines");
    QPDFObjectHandle a = root.getKey("/First");
    QPDFObjectHandle b = root.getKey("/Last");
    EXPECT_EQ(root.getKey("/Type").getName(), "/Outlines");
    EXPECT_EQ(root.getKey("/Count").getIntValue(), 2);  // those that are seen while all are closed
    EXPECT_EQ(a.getKey("/Count").getIntValue(), -2);
    EXPECT_FALSE(b.hasKey("/Count"));
    EXPECT_EQ(a.getKey("/Next").getObjGen(), b.getObjGen());
    EXPECT_EQ(b.getKey("/Prev").getObjGen(), a.getObjGen());
    EXPECT_EQ(a.getKey("/Parent").getObjGen(), root.getObjGen());
    EXPECT_EQ(a.getKey("/Last").getKey("/Prev").getObjGen(), a.getKey("/First").getObjGen());
    EXPECT_EQ(a.getKey("/First").getKey("/Parent").getObjGen(), a.getObjGen());
    EXPECT_FALSE(a.hasKey("/Prev"));
    EXPECT_FALSE(b.hasKey("/Next"));
    EXPECT_FALSE(b.hasKey("/First"));
}

TEST_F(OutlineWriterTest, Titles) {
    const QString surrogate = QString("a") + QChar(0xDC00) + "b";
    const std::vector<QString> titles{"plain (text) \\ )(", "Größe • € 中文 😀", surrogate, "", "a\nb\tc",
                                      QString(QChar(0))};
    std::vector<Entry> entries;
    for (const QString &title : titles)
        entries.push_back({title});
    write(entries);
    const auto document = openPdf(path);
    ASSERT_EQ(document->outlineRoot().numberOfChildren(), std::ssize(titles));
    for (int i = 0; i < std::ssize(titles); ++i)
        EXPECT_EQ(document->outlineRoot().childAtIndex(i).label(), titles[static_cast<size_t>(i)]) << i;
    const std::vector<std::string> byQpdf = linesByQpdf(path);
    EXPECT_EQ(byQpdf[0], "plain (text) \\ )(");
    EXPECT_EQ(byQpdf[1], "Größe • € 中文 😀");
    EXPECT_EQ(byQpdf[3], "");
    EXPECT_EQ(byQpdf[4], "a\nb\tc");
}

TEST_F(OutlineWriterTest, PointsAreValidNumbers) {
    const std::vector<double> values{0,     -72.5,      699.35,   72.1, 1e-7,     -1e-7,  1e-30,
                                     1e-45, 123456.789, 16777217, 1e10, -3.25e20, 3.0e38, 0.1};
    std::vector<Entry> entries;
    for (const double value : values)
        entries.push_back({"entry", at(0, value, -value)});
    write(entries);
    QPDFObjectHandle item = catalog().getKey("/Outlines").getKey("/First");
    for (const double value : values) {
        QPDFObjectHandle x = item.getKey("/Dest").getArrayItem(2);
        QPDFObjectHandle y = item.getKey("/Dest").getArrayItem(3);
        ASSERT_TRUE(x.isNumber() && y.isNumber()) << value;
        const double expected = std::clamp(value, -1e9, 1e9);
        EXPECT_NEAR(x.getNumericValue(), expected, std::abs(expected) * 1e-6 + 1e-6);
        EXPECT_NEAR(y.getNumericValue(), -expected, std::abs(expected) * 1e-6 + 1e-6);
        item = item.getKey("/Next");
    }
    EXPECT_EQ(lines().at(2), "entry -> 0 (699.35, -699.35)");
    EXPECT_EQ(lines().at(3), "entry -> 0 (72.1, -72.1)");
}

TEST_F(OutlineWriterTest, PointsThatNoFileCanSpell) {
    const double infinity = std::numeric_limits<double>::infinity();
    write({{"a", at(0, infinity, -infinity)}, {"b", at(0, std::nan(""), 5)}, {"c", at(0, 1e300, -1e300)}});
    QPDFObjectHandle item = catalog().getKey("/Outlines").getKey("/First");
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(item.getKey("/Dest").getArrayItem(2).isNumber()) << i;
        EXPECT_TRUE(item.getKey("/Dest").getArrayItem(3).isNumber()) << i;
        item = item.getKey("/Next");
    }
    EXPECT_EQ(test::runProgram("qpdf", {"--check", path}).exitCode, 0);
}

TEST_F(OutlineWriterTest, PageThatIsNotThereIsLeftOut) {
    write({{"A", at(3, 1, 2)}, {"B", at(-1, 1, 2)}, {"C", at(2, 1, 2)}});
    EXPECT_THAT(linesByQpdf(path), ElementsAre("A", "B", "C -> 2 (1, 2)"));
}

TEST_F(OutlineWriterTest, PageThatIsNoObjectOfItsOwnIsToldByItsIndex) {
    pdf.setCatalogEntry("/Pages", "<< /Type /Pages /Count 2 /Kids [" + pdf.pageReference(0) +
                                      " << /Type /Page /MediaBox [0 0 9 9] >>] >>");
    write({{"A", at(1, 1, 2)}});
    EXPECT_THAT(lines(), ElementsAre("A -> 1 (1, 2)"));
}

TEST_F(OutlineWriterTest, AnActionSurvives) {
    const int entry = pdf.addObject("<< /Title (Web) /A << /S /URI /URI (about:blank) >> >>");
    pdf.setCatalogEntry("/Outlines", "<< /First " + PdfBuilder::reference(entry) + " >>");
    const auto document = openPdf(pdf);
    auto root = std::make_unique<PDFOutline>();
    auto renamed = std::make_unique<PDFOutline>("Renamed");
    renamed->setEntry(document->outlineRoot().childAtIndex(0).entry());
    root->insertChildAtIndex(std::move(renamed), 0);
    document->setOutlineRoot(std::move(root));
    ASSERT_FALSE(document->writeToFile(path));
    QPDFObjectHandle written = catalog().getKey("/Outlines").getKey("/First");
    EXPECT_EQ(written.getKey("/Title").getUTF8Value(), "Renamed");
    EXPECT_EQ(written.getKey("/A").getKey("/URI").getStringValue(), "about:blank");
    EXPECT_FALSE(written.hasKey("/Dest"));
    EXPECT_EQ(openPdf(path)->outlineRoot().childAtIndex(0).entry().action->type, "URI");
}

TEST_F(OutlineWriterTest, DestinationsThatLeadNowhereAreKept) {
    const std::vector<std::string> targets{
        "/Dest /Nowhere", "/Dest (no \\050such) /Next null", "/Dest [99 /XYZ 1.00000000001 2 0]",
        "/A << /S /GoTo /D (nowhere) >>", "/Dest (nowhere) /A << /S /URI /URI (a) >>"};
    for (const std::string &target : targets) {
        const int entry = pdf.addObject("<< /Title (Lost) " + target + " >>");
        pdf.setCatalogEntry("/Outlines", "<< /First " + PdfBuilder::reference(entry) + " >>");
        const auto document = openPdf(pdf);
        auto root = std::make_unique<PDFOutline>();
        auto renamed = std::make_unique<PDFOutline>("Renamed");
        EXPECT_FALSE(document->outlineRoot().childAtIndex(0).destination());
        renamed->setEntry(document->outlineRoot().childAtIndex(0).entry());
        root->insertChildAtIndex(std::move(renamed), 0);
        document->setOutlineRoot(std::move(root));
        ASSERT_FALSE(document->writeToFile(path));
        QPDFObjectHandle written = catalog().getKey("/Outlines").getKey("/First");
        QPDFObjectHandle original = QPDFObjectHandle::parse("<< " + target + " >>");
        for (const char *key : {"/Dest", "/A"})
            EXPECT_EQ(written.getKey(key).unparse(), original.getKey(key).unparse()) << target;
    }
}

TEST_F(OutlineWriterTest, ADestinationWinsOverAnAction) {
    const int entry = pdf.addObject("<< /Title (Web) /A << /S /URI /URI (about:blank) >> >>");
    pdf.setCatalogEntry("/Outlines", "<< /First " + PdfBuilder::reference(entry) + " >>");
    const auto document = openPdf(pdf);
    auto root = makeOutline({{"Here", at(1, 1, 2)}});
    root->childAtIndex(0).setEntry(document->outlineRoot().childAtIndex(0).entry());
    document->setOutlineRoot(std::move(root));
    ASSERT_FALSE(document->writeToFile(path));
    EXPECT_THAT(lines(), ElementsAre("Here -> 1 (1, 2)"));
    EXPECT_FALSE(catalog().getKey("/Outlines").getKey("/First").hasKey("/A"));
}

TEST_F(OutlineWriterTest, HundredThousandEntries) {
    constexpr int count = 100'000;
    auto root = std::make_unique<PDFOutline>();
    for (int i = 0; i < count; ++i) {
        auto child = std::make_unique<PDFOutline>(QString::number(i));
        child->setDestination(at(i % 3, 72, i % 700));
        root->insertChildAtIndex(std::move(child), i);
    }
    write(std::move(root));
    const auto document = openPdf(path);
    ASSERT_EQ(document->outlineRoot().numberOfChildren(), count);
    EXPECT_EQ(document->outlineRoot().childAtIndex(count - 1).label(), QString::number(count - 1));
    EXPECT_EQ(document->outlineRoot().childAtIndex(count - 1).destination(),
              at((count - 1) % 3, 72, (count - 1) % 700));
}

TEST_F(OutlineWriterTest, TenThousandLevels) {
    constexpr int levels = 10'000;
    auto root = std::make_unique<PDFOutline>();
    PDFOutline *entry = root.get();
    for (int i = 0; i < levels; ++i)
        entry = &entry->insertChildAtIndex(std::make_unique<PDFOutline>(QString::number(i)), 0);
    write(std::move(root));
    QPDFObjectHandle item = catalog().getKey("/Outlines");
    for (int i = 0; i < levels; ++i)
        item = item.getKey("/First");
    EXPECT_EQ(item.getKey("/Title").getUTF8Value(), std::to_string(levels - 1));
    EXPECT_FALSE(item.hasKey("/First"));
}

}  // namespace
}  // namespace leafwright
