#include "support/OpenPdf.h"
#include "support/TempDir.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::openPdf;
using test::PdfBuilder;
using testing::ElementsAreArray;

class Recorder final : public PDFWriteObserver {
public:
    void documentBeginWrite(int pageCount) override { calls.push_back("begin " + std::to_string(pageCount)); }
    void documentEndPageWrite(int pageIndex) override { calls.push_back(std::to_string(pageIndex)); }
    void documentEndWrite() override { calls.push_back("end"); }

    std::vector<std::string> calls;
};

std::vector<std::string> callsForAllOf(int pages) {
    std::vector<std::string> calls{"begin " + std::to_string(pages)};
    for (int i = 0; i < pages; ++i)
        calls.push_back(std::to_string(i));
    calls.emplace_back("end");
    return calls;
}

TEST(WriteObserver, HearsOfEveryPageInOrder) {
    const test::TempDir dir;
    for (const int pages : {1, 7, 200}) {
        PdfBuilder pdf;
        pdf.addNumberedPages(pages);
        Recorder recorder;
        ASSERT_FALSE(openPdf(pdf)->writeToFile(dir.path("out.pdf"), &recorder));
        EXPECT_THAT(recorder.calls, ElementsAreArray(callsForAllOf(pages)));
    }
}

TEST(WriteObserver, HearsOfEveryPageOfARepairedFile) {
    const test::TempDir dir;
    PdfBuilder pdf;
    pdf.addNumberedPages(7);
    pdf.save(dir.path("in.pdf"));
    const QByteArray whole = test::contentOf(dir.path("in.pdf"));
    const auto document = test::openBytes(whole.left(whole.lastIndexOf("startxref")));
    ASSERT_TRUE(document->wasRepaired());
    Recorder recorder;
    ASSERT_FALSE(document->writeToFile(dir.path("out.pdf"), &recorder));
    EXPECT_THAT(recorder.calls, ElementsAreArray(callsForAllOf(7)));
}

TEST(WriteObserver, HearsTheEndOfAFailedWrite) {
    const test::TempDir dir;
    PdfBuilder pdf;
    pdf.addNumberedPages(2);
    Recorder recorder;
    ASSERT_TRUE(openPdf(pdf)->writeToFile(dir.path("none/out.pdf"), &recorder));
    EXPECT_THAT(recorder.calls, testing::ElementsAre("begin 2", "end"));
}

TEST(WriteObserver, HearsTheEndOfAWriteThatFailsHalfWay) {
    const test::TempDir dir;
    PdfBuilder pdf;
    pdf.addNumberedPages(2);
    pdf.save(dir.path("in.pdf"));
    const auto document = openPdf(dir.path("in.pdf"));
    ASSERT_TRUE(QFile::resize(dir.path("in.pdf"), 100));
    Recorder recorder;
    ASSERT_TRUE(document->writeToFile(dir.path("out.pdf"), &recorder));
    EXPECT_EQ(recorder.calls.front(), "begin 2");
    EXPECT_EQ(recorder.calls.back(), "end");
    EXPECT_FALSE(QFile::exists(dir.path("out.pdf")));
}

}  // namespace
}  // namespace leafwright
