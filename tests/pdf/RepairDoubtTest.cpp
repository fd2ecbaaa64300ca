#include "pdf/WritingFixture.h"
#include "support/CliRun.h"
#include "support/RawPdf.h"
#include "support/TempDir.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::openPdf;
using test::RawPdf;
using test::TempDir;
using testing::HasSubstr;

QByteArray page(int width) {
    return "<< /Type /Page /Parent 2 0 R /Resources << >> /MediaBox [0 0 " + QByteArray::number(width) +
           " 792] >>";
}

/// An object stream that has a page as object 3.
QByteArray streamWithPage(int width) {
    const QByteArray text = "3 0 " + page(width);
    return "<< /Type /ObjStm /N 1 /First 4 /Length " + QByteArray::number(text.size()) + " >>\nstream\n" +
           text + "\nendstream";
}

/// Files without a cross-reference, which have to be repaired, and written new.
class RepairDoubt : public testing::Test {
protected:
    RepairDoubt() {
        pdf.object(1, "<< /Type /Catalog /Pages 2 0 R >>")
            .object(2, "<< /Type /Pages /Kids [3 0 R] /Count 1 >>");
    }
    /// Why the file is not written; empty if it is.
    std::string refusal() {
        EXPECT_TRUE(pdf.save(dir.path("in.pdf")));
        const auto document = openPdf(dir.path("in.pdf"));
        EXPECT_TRUE(document->wasRepaired());
        document->setOutlineRoot(test::newOutline());
        const auto error = document->writeToFile(dir.path("out.pdf"));
        EXPECT_EQ(QFile::exists(dir.path("out.pdf")), !error);
        return error ? error->message.toStdString() : "";
    }
    double writtenWidth() const { return openPdf(dir.path("out.pdf"))->page(0)->mediaBox().width; }

    RawPdf pdf{"1.5"};
    const TempDir dir;
};

TEST_F(RepairDoubt, AnObjectBehindTheObjectStreamThatHasItTooIsARefusal) {
    pdf.object(5, streamWithPage(100)).object(3, page(200));
    EXPECT_THAT(refusal(), HasSubstr("which of several versions of object 3 is meant can’t be told"));
}

TEST_F(RepairDoubt, AnObjectStreamBehindWhatItHasIsTheNewerVersion) {
    pdf.object(3, page(200)).object(5, streamWithPage(100));
    EXPECT_EQ(refusal(), "");
    EXPECT_EQ(writtenWidth(), 100);
}

TEST_F(RepairDoubt, OfTwoObjectStreamsTheLastIsNotTheOneOfTheHighestNumber) {
    pdf.object(9, streamWithPage(100)).object(5, streamWithPage(200));
    EXPECT_THAT(refusal(), HasSubstr("which of several versions of object 3"));
}

TEST_F(RepairDoubt, OfTwoObjectStreamsTheLastMayBeTheOneOfTheHighestNumber) {
    pdf.object(5, streamWithPage(100)).object(9, streamWithPage(200));
    EXPECT_EQ(refusal(), "");
    EXPECT_EQ(writtenWidth(), 200);
}

TEST_F(RepairDoubt, AStreamThatEndsFartherBehindByItsLengthIsARefusal) {
    const QByteArray data = "an attachment that says\nendstream\nendobj\nand more";
    pdf.object(3, page(100))
        .object(6, "<< /Length 7 0 R >>\nstream\n" + data + "\nendstream")
        .object(7, QByteArray::number(data.size()));
    EXPECT_THAT(refusal(), HasSubstr("where the stream of object 6 ends can’t be told"));
}

TEST_F(RepairDoubt, ALengthThatLeadsToNoEndIsNoDoubt) {
    for (const char *length : {"7 0 R", "8 0 R", "9 0 R", "1 0 R", "500", "(x)"}) {
        pdf = RawPdf("1.5");
        pdf.object(1, "<< /Type /Catalog /Pages 2 0 R >>")
            .object(2, "<< /Type /Pages /Kids [3 0 R] /Count 1 >>")
            .object(3, page(100))
            .object(6, QByteArray("<< /Length ") + length + " >>\nstream\nsome data\nendstream")
            .object(7, "4")
            .object(8, "300");
        EXPECT_EQ(refusal(), "") << length;
        QFile::remove(dir.path("out.pdf"));
    }
}

TEST_F(RepairDoubt, ThatItWasWrittenNewIsTold) {
    pdf.object(3, page(100));
    ASSERT_TRUE(pdf.save(dir.path("in.pdf")));
    const auto document = openPdf(dir.path("in.pdf"));
    document->setOutlineRoot(test::newOutline());
    QStringList notices;
    ASSERT_FALSE(document->writeToFile(dir.path("out.pdf"), nullptr, &notices));
    EXPECT_EQ(notices, QStringList{dir.path("out.pdf") + ": it was damaged and has been written new"});
}

}  // namespace
}  // namespace leafwright
