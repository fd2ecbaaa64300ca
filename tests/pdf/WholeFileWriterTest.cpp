#include "pdf/WritingFixture.h"
#include "support/CliRun.h"
#include "support/RawPdf.h"
#include "support/TempDir.h"

#include <qpdf/QPDF.hh>

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::contentOf;
using test::linesByQpdf;
using test::newOutline;
using test::openPdf;
using test::RawPdf;
using test::TempDir;
using test::threePages;
using testing::ElementsAre;

TEST(Writing, RepairedFileIsWrittenWhole) {
    const TempDir dir;
    threePages().save(dir.path("in.pdf"));
    const QByteArray whole = contentOf(dir.path("in.pdf"));
    test::writeFile(dir.path("in.pdf"), whole.left(whole.lastIndexOf("xref\n0 ") + 20));
    const auto document = openPdf(dir.path("in.pdf"));
    ASSERT_TRUE(document->wasRepaired());
    document->setOutlineRoot(newOutline());
    ASSERT_FALSE(document->writeToFile(dir.path("out.pdf")));
    const auto check = test::runProgram("qpdf", {"--check", dir.path("out.pdf")});
    EXPECT_EQ(check.exitCode, 0) << check.err.toStdString();
    EXPECT_THAT(linesByQpdf(dir.path("out.pdf")),
                ElementsAre("New -> 0 (72, 700)", "  Below -> 0 (72, 600)"));
    const auto again = openPdf(dir.path("out.pdf"));
    EXPECT_FALSE(again->wasRepaired());
    ASSERT_EQ(again->pageCount(), 3);
    EXPECT_EQ(test::textOf(*again, 2), "Page 3\n");
}

TEST(Writing, WhatNeedsRepairOnlyOnceItsPagesAreReadIsWrittenWhole) {
    const TempDir dir;
    RawPdf pdf("1.4");
    pdf.object(1, "<< /Type /Catalog /Pages 2 0 R >>")
        .object(2, "<< /Type /Pages /Kids [4 0 R 3 0 R] /Count 2 >>")
        .object(3, "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 612 792] /Resources << >> >>")
        .object(4, "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 612 792] /Resources << >> >>")
        .endWithTable();
    QByteArray bytes = pdf.bytes();
    const auto place = [](qsizetype offset) {
        return QByteArray::number(offset).rightJustified(10, '0') + " 00000 n";
    };
    const qsizetype begin = bytes.indexOf("3 0 obj");
    bytes.replace(place(begin), place(begin + 4));
    test::writeFile(dir.path("in.pdf"), bytes);
    const auto document = openPdf(dir.path("in.pdf"));
    ASSERT_TRUE(document->wasRepaired());
    ASSERT_EQ(document->pageCount(), 2);
    document->setOutlineRoot(newOutline());
    const auto error = document->writeToFile(dir.path("out.pdf"));
    ASSERT_FALSE(error) << error->message.toStdString();
    const auto again = openPdf(dir.path("out.pdf"));
    EXPECT_FALSE(again->wasRepaired());
    EXPECT_EQ(again->pageCount(), 2);
    EXPECT_THAT(linesByQpdf(dir.path("out.pdf")),
                ElementsAre("New -> 0 (72, 700)", "  Below -> 0 (72, 600)"));
}

/// MuPDF reads the empty name as a key, and writes it so that nothing reads it.
TEST(Writing, APageThatWouldBeLostByRepairIsARefusal) {
    const TempDir dir;
    RawPdf pdf("1.4");
    pdf.object(1, "<< /Type /Catalog /Pages 2 0 R >>")
        .object(2, "<< /Type /Pages /Kids [3 0 R 4 0 R] /Count 2 >>")
        .object(3, "<< / 0 R >> >> >>")
        .object(4, "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 612 792] >>");
    ASSERT_TRUE(pdf.save(dir.path("in.pdf")));
    const auto document = openPdf(dir.path("in.pdf"));
    ASSERT_TRUE(document->wasRepaired());
    ASSERT_EQ(document->pageCount(), 2);
    document->setOutlineRoot(newOutline());
    const auto error = document->writeToFile(dir.path("out.pdf"));
    ASSERT_TRUE(error);
    EXPECT_THAT(error->message.toStdString(), testing::HasSubstr("its pages are others"));
    EXPECT_FALSE(QFile::exists(dir.path("out.pdf")));
}

TEST(Writing, WhatDamageHasLeftAmongThePagesIsNotWritten) {
    const TempDir dir;
    RawPdf pdf("1.4");
    pdf.object(1, "<< /Type /Catalog /Pages 2 0 R >>")
        .object(2, "<< /Type /Pages /Kids [3 0 R null (damage) 836 00000 n 7 0 R 4 0 R] /Count 2 >>")
        .object(3, "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 612 792] /Resources << >> >>")
        .object(4, "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 612 792] /Resources << >> >>");
    ASSERT_TRUE(pdf.save(dir.path("in.pdf")));
    const auto document = openPdf(dir.path("in.pdf"));
    ASSERT_TRUE(document->wasRepaired());
    ASSERT_EQ(document->pageCount(), 2);
    document->setOutlineRoot(newOutline());
    const auto error = document->writeToFile(dir.path("out.pdf"));
    ASSERT_FALSE(error) << error->message.toStdString();
    const auto check = test::runProgram("qpdf", {"--check", dir.path("out.pdf")});
    EXPECT_EQ(check.exitCode, 0) << check.out.toStdString() << check.err.toStdString();
    EXPECT_EQ(openPdf(dir.path("out.pdf"))->pageCount(), 2);
}

TEST(Writing, WhatDamageHasLeftAmongAPagesStreamsIsNotWritten) {
    const TempDir dir;
    RawPdf pdf("1.4");
    pdf.object(1, "<< /Type /Catalog /Pages 2 0 R >>")
        .object(2, "<< /Type /Pages /Kids [3 0 R] /Count 1 >>")
        .object(3,
                "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 612 792] /Resources << >> "
                "/Contents [4 0 R 9 0 R (damage) 5 0 R null] >>")
        .object(4, "<< /Length 2 >>\nstream\nq \nendstream")
        .object(5, "<< /Length 2 >>\nstream\nQ \nendstream");
    ASSERT_TRUE(pdf.save(dir.path("in.pdf")));
    const auto document = openPdf(dir.path("in.pdf"));
    ASSERT_TRUE(document->wasRepaired());
    document->setOutlineRoot(newOutline());
    ASSERT_FALSE(document->writeToFile(dir.path("out.pdf")));
    const auto check = test::runProgram("qpdf", {"--check", dir.path("out.pdf")});
    EXPECT_EQ(check.exitCode, 0) << check.out.toStdString() << check.err.toStdString();
    QPDF written;
    written.processFile(dir.path("out.pdf").toUtf8());
    QPDFObjectHandle page = written.getAllPages().at(0);
    EXPECT_EQ(page.getKey("/Contents").getArrayNItems(), 2);
}

/// Readers differ in what they make of it: MuPDF takes the first stream to its "endstream", others the second
/// one.
TEST(Writing, ContentThatRunsOnIntoOtherObjectsIsARefusal) {
    for (const QByteArray &contents : {QByteArray("4 0 R"), QByteArray("[5 0 R 4 0 R]")}) {
        const TempDir dir;
        RawPdf pdf("1.4");
        pdf.object(1, "<< /Type /Catalog /Pages 2 0 R >>")
            .object(2, "<< /Type /Pages /Kids [3 0 R] /Count 1 >>")
            .object(3, "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 612 792] /Resources << >> /Contents " +
                           contents + " >>")
            .object(5, "<< /Length 2 >>\nstream\nQ \nendstream")
            .add(
                "4 0 obj\n<< /Length 9 0 R >>\nstream\nq 1 0 0\n>>\nendobj\n"
                "4 0 obj\n<< /Length 2 >>\nstream\nq \nendstream\nendobj\n");
        ASSERT_TRUE(pdf.save(dir.path("in.pdf")));
        const auto document = openPdf(dir.path("in.pdf"));
        ASSERT_TRUE(document->wasRepaired());
        document->setOutlineRoot(newOutline());
        const auto error = document->writeToFile(dir.path("out.pdf"));
        ASSERT_TRUE(error);
        EXPECT_THAT(error->message.toStdString(), testing::HasSubstr("runs on into other objects"));
        EXPECT_FALSE(QFile::exists(dir.path("out.pdf")));
    }
}

}  // namespace
}  // namespace leafwright
