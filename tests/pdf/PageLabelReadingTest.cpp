#include "support/OpenPdf.h"
#include "support/TempDir.h"

#include <qpdf/QPDFPageLabelDocumentHelper.hh>

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::openPdf;
using test::PdfBuilder;
using testing::ElementsAre;
using testing::ElementsAreArray;

std::vector<std::string> labelsOf(const PDFDocument &document) {
    std::vector<std::string> labels;
    for (int i = 0; i < document.pageCount(); ++i)
        labels.push_back(document.pageLabel(i).toStdString());
    return labels;
}

std::vector<std::string> labelsWith(const std::string &pageLabels, int pages) {
    PdfBuilder pdf;
    pdf.addNumberedPages(pages);
    pdf.setCatalogEntry("/PageLabels", pageLabels);
    return labelsOf(*openPdf(pdf));
}

TEST(PageLabelReading, WithoutLabels) {
    PdfBuilder pdf;
    pdf.addNumberedPages(2);
    EXPECT_THAT(labelsOf(*openPdf(pdf)), ElementsAre("1", "2"));
}

TEST(PageLabelReading, EveryStyle) {
    EXPECT_THAT(labelsWith("<< /Nums [0 << /S /D >> 1 << /S /R >> 2 << /S /r >> 3 << /S /A >> 4 << /S /a >> "
                           "5 << /P (x) >>] >>",
                           7),
                ElementsAre("1", "I", "i", "A", "a", "x", "x"));
}

TEST(PageLabelReading, StartAndPrefix) {
    EXPECT_THAT(labelsWith("<< /Nums [0 << /S /D /St 9 /P (A-) >>] >>", 2), ElementsAre("A-9", "A-10"));
}

TEST(PageLabelReading, PrefixInUtf16) {
    EXPECT_THAT(labelsWith("<< /Nums [0 << /S /r /P <FEFF03B102140020> >>] >>", 1), ElementsAre("αȔ i"));
}

TEST(PageLabelReading, RangesThatStartLater) {
    EXPECT_THAT(labelsWith("<< /Nums [2 << /S /r >> 3 << /S /D /St 5 >>] >>", 4),
                ElementsAre("1", "2", "i", "5"));
}

TEST(PageLabelReading, TreeWithKids) {
    PdfBuilder pdf;
    pdf.addNumberedPages(4);
    const int leaf = pdf.addObject("<< /Nums [2 << /S /D /St 7 >>] /Limits [2 2] >>");
    const int node = pdf.addObject("<< /Kids [" + PdfBuilder::reference(leaf) + "] /Limits [2 2] >>");
    pdf.setCatalogEntry("/PageLabels", "<< /Kids [<< /Nums [0 << /S /R >>] /Limits [0 0] >> " +
                                           PdfBuilder::reference(node) + "] >>");
    EXPECT_THAT(labelsOf(*openPdf(pdf)), ElementsAre("I", "II", "7", "8"));
}

TEST(PageLabelReading, LoopInTheTreeEnds) {
    PdfBuilder pdf;
    pdf.addNumberedPages(2);
    const int node = pdf.addObject("null");
    const std::string self = PdfBuilder::reference(node);
    pdf.replaceObject(node, "<< /Kids [" + self + " " + self + "] /Nums [0 << /S /A >>] >>");
    pdf.setCatalogEntry("/PageLabels", self);
    EXPECT_THAT(labelsOf(*openPdf(pdf)), ElementsAre("A", "B"));
}

TEST(PageLabelReading, WrongTypes) {
    for (const char *labels :
         {"7", "(a)", "[]", "<< /Nums 7 /Kids 8 >>", "<< /Nums [0] >>", "<< /Nums [0 7] >>",
          "<< /Nums [(a) << /S /A >>] >>", "<< /Kids [7 null (a)] >>"})
        EXPECT_THAT(labelsWith(labels, 2), ElementsAre("1", "2")) << labels;
    EXPECT_THAT(labelsWith("<< /Nums [0 << /S /D /P 7 /St (a) >>] >>", 2), ElementsAre("1", "2"));
    EXPECT_THAT(labelsWith("<< /Nums [0 << /S /D /St -4 >>] >>", 2), ElementsAre("1", "2"));
    EXPECT_THAT(labelsWith("<< /Nums [0 << /S (D) /P (x) >>] >>", 2), ElementsAre("x", "x"));
}

TEST(PageLabelReading, RangesOfPagesThatAreNotThere) {
    EXPECT_THAT(labelsWith("<< /Nums [-3 << /S /D >> 900 << /S /r >>] >>", 2), ElementsAre("4", "5"));
}

/// The label of page i in QPDF's terms, put together here: QPDF only finds the range.
std::string labelByQpdf(QPDFPageLabelDocumentHelper &helper, int page) {
    QPDFObjectHandle range = helper.getLabelForPage(page);
    const QString prefix =
        range.hasKey("/P") ? QString::fromStdString(range.getKey("/P").getUTF8Value()) : QString();
    if (!range.hasKey("/S")) return prefix.toStdString();
    EXPECT_EQ(range.getKey("/S").getName(), "/D");
    return (prefix + QString::number(range.getKey("/St").getIntValue())).toStdString();
}

TEST(PageLabelReading, AgreesWithQpdf) {
    const test::TempDir dir;
    PdfBuilder pdf;
    pdf.addNumberedPages(12);
    const int first = pdf.addObject("<< /Limits [0 3] /Nums [0 << /S /D >> 3 << /P (Plate ) >>] >>");
    const int second = pdf.addObject("<< /Limits [5 9] /Nums [5 << /S /D /St 20 /P (B) >> 9 << /S /D >>] >>");
    pdf.setCatalogEntry("/PageLabels", "<< /Kids [" + PdfBuilder::reference(first) + " " +
                                           PdfBuilder::reference(second) + "] >>");
    pdf.save(dir.path("a.pdf"));
    QPDF witness;
    witness.processFile(QFile::encodeName(dir.path("a.pdf")).constData());
    QPDFPageLabelDocumentHelper helper(witness);
    std::vector<std::string> expected;
    for (int page = 0; page < 12; ++page)
        expected.push_back(labelByQpdf(helper, page));
    EXPECT_THAT(labelsOf(*openPdf(dir.path("a.pdf"))), ElementsAreArray(expected));
    EXPECT_EQ(expected[5], "B20");
}

}  // namespace
}  // namespace leafwright
