#include "support/CliFiles.h"
#include "support/CliRun.h"
#include "support/FakeProgram.h"

#include <gmock/gmock.h>

namespace leafwright::test {
namespace {

using testing::HasSubstr;
using testing::Not;

/// A program that recognises nothing: it copies its input to its output.
const QByteArray copies = "while [ \"$1\" != -- ]; do shift; done\ncp \"$2\" \"$3\"\n";

TEST(ContentsWithoutText, NobodyIsToldToRecogniseTextAgain) {
    const TempDir dir;
    PdfBuilder scan;
    for (int i = 0; i < 3; ++i)
        scan.addPage("0.5 g 100 100 200 300 re f");
    scan.save(dir.path("scan.pdf"));
    const FakeProgram program("ocrmypdf", copies);
    const CliResult result = runCli({"contents", dir.path("scan.pdf"), "-o", dir.path("out.pdf"), "--ocr"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("scan.pdf: no text was recognised in the page images"));
    EXPECT_THAT(result.err.toStdString(), Not(HasSubstr("run text recognition first")));
    EXPECT_FALSE(QFile::exists(dir.path("out.pdf")));
}

}  // namespace
}  // namespace leafwright::test
