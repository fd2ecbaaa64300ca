#include "pdf/mupdf/FileOpener.h"
#include "pdf/mupdf/TextRunner.h"
#include "support/CliFiles.h"
#include "support/CliRun.h"

#include <gmock/gmock.h>

namespace leafwright::mupdf {
namespace {

using test::PdfBuilder;
using testing::HasSubstr;

/// Two pages with a heading each. The second one keeps the processor busy before its own.
class SlowPage : public testing::Test {
protected:
    /// @param times that a form of 100,000 operations is shown, which takes some milliseconds
    void save(int times) {
        PdfBuilder pdf;
        const int form =
            pdf.addStream(repeated("q Q ", 50'000), "/Type /XObject /Subtype /Form /BBox [0 0 9 9]");
        const std::string heading = "/F1 << /Type /Font /Subtype /Type1 /BaseFont /Helvetica-Bold >>";
        pdf.addPage(PdfBuilder::showText("F1", 18, 72, 700, "First"));
        pdf.addPage(PdfBuilder::showText("F1", 10, 72, 750, "Text") + repeated("/X Do ", times) +
                        PdfBuilder::showText("F1", 18, 72, 700, "Second"),
                    "/Resources << /Font << " + heading + " >> /XObject << /X " +
                        PdfBuilder::reference(form) + " >> >>");
        pdf.save(path);
    }
    static std::string repeated(std::string_view piece, int times) {
        std::string result;
        for (int i = 0; i < times; ++i)
            result += piece;
        return result;
    }

    const test::TempDir dir;
    const QString path = dir.path("slow.pdf");
};

TEST_F(SlowPage, IsGivenUpAndAProblemOfItsReader) {
    save(200);
    const auto file = std::make_shared<const FileHandle>(path);
    const std::unique_ptr<Reader> reader = openFile(file).reader;
    const auto lines = [&reader](int index, std::chrono::nanoseconds longest) {
        const StructuredText text(*reader, index, {.longest = longest});
        int count = 0;
        for (const fz_stext_block *block = text.page()->first_block; block; block = block->next)
            ++count;
        return count;
    };
    EXPECT_EQ(lines(0, std::chrono::nanoseconds(1)), 1) << "what is read at once is not given up";
    EXPECT_FALSE(reader->problem());
    EXPECT_EQ(lines(1, std::chrono::nanoseconds(1)), 1) << "what came before is kept";
    ASSERT_TRUE(reader->problem());
    EXPECT_EQ(reader->problem()->kind, PDFError::Kind::TakesTooLong);
    EXPECT_EQ(reader->problem()->message, "the text of its page 2 takes longer to read than a page may take");
}

// What is made of its text would be less than there is. What the file has need not be lost for that.
TEST_F(SlowPage, EndsCommandsThatNeedItsTextAndNoOthers) {
    save(20'000);
    const QString out = dir.path("out.pdf");
    const test::CliResult result = test::runCli({"autotoc", path, "-o", out});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err.toStdString(),
                HasSubstr("slow.pdf: the file can't be read: the text of its page 2 takes"));
    EXPECT_FALSE(QFile::exists(out));
    test::saveBytes(dir.path("tree"), "+ @2 Second\n");
    EXPECT_EQ(test::runCli({"apply", path, dir.path("tree"), "-o", out}).exitCode, 0);
    EXPECT_EQ(test::plusLinesOf(out), "+ @2 Second\n");
}

}  // namespace
}  // namespace leafwright::mupdf
