#include "support/CliFiles.h"
#include "support/CliRun.h"
#include "support/EntriesOfAllKinds.h"
#include "support/ObjectDiff.h"
#include "support/OpenPdf.h"

#include <gmock/gmock.h>

namespace leafwright::test {
namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAre;

/// What becomes of the entries of a file when a script edits some of them in the window.
class KeptEntriesOfAScript : public testing::Test {
protected:
    KeptEntriesOfAScript() {
        PdfBuilder pdf;
        pdf.addNumberedPages(3);
        const std::string page = pdf.pageReference(1);
        addOutline(pdf, {{"(A)", "[" + page + " /XYZ 72.00000001 700 2]"},
                         {"(B)", "[" + page + " /FitH 600]"},
                         {"(C)", ""},
                         {"(D)", "(nowhere)"},
                         {"(E)", "[99 /XYZ 1 2 3]"}});
        pdf.save(in);
    }
    void run(const QByteArray &steps) {
        saveBytes(dir.path("steps.json"), steps);
        const CliResult result = runCli({"run", dir.path("steps.json"), in, "-o", out});
        EXPECT_EQ(result.exitCode, 0) << result.err.constData();
    }
    /// The object number of an entry at top level.
    int numberOf(int index) const {
        return openPdf(in)->outlineRoot().childAtIndex(index).entry().number.value();
    }

    const TempDir dir;
    const QString in = dir.path("in.pdf");
    const QString out = dir.path("out.pdf");
};

TEST_F(KeptEntriesOfAScript, WithoutStepsNothingChanges) {
    run("[]");
    EXPECT_THAT(changedObjects(in, out), ElementsAre());
}

TEST_F(KeptEntriesOfAScript, ARenamedAndAMovedEntryChangeNothingElse) {
    run(R"([{"do": "setTitle", "path": [0], "title": "Renamed"},
            {"do": "select", "paths": [[4]]}, {"do": "moveUp:"}])");
    EXPECT_THAT(changedObjects(in, out),
                UnorderedElementsAre(numberOf(0), numberOf(2), numberOf(3), numberOf(4),
                                     openPdf(in)->outlineRoot().entry().number.value()));
    EXPECT_THAT(changedKeys(in, out, numberOf(0)), ElementsAre("/Title"));
    EXPECT_THAT(changedKeys(in, out, numberOf(2)), ElementsAre("/Next"));
    EXPECT_THAT(changedKeys(in, out, numberOf(3)), ElementsAre("/Next", "/Prev"));
    EXPECT_THAT(changedKeys(in, out, numberOf(4)), ElementsAre("/Next", "/Prev"));
}

TEST_F(KeptEntriesOfAScript, EntriesOfAllKindsStayAsTheyAre) {
    PdfBuilder pdf;
    pdf.addNumberedPages(3);
    addEntriesOfAllKinds(pdf);
    pdf.save(in);
    run("[]");
    EXPECT_THAT(changedObjects(in, out), ElementsAre());
    run(R"([{"do": "setTitle", "path": [0], "title": "Renamed"},
            {"do": "select", "paths": [[5]]}, {"do": "moveUp:"}])");
    EXPECT_THAT(changedObjects(in, out),
                UnorderedElementsAre(numberOf(0), numberOf(3), numberOf(4), numberOf(5), numberOf(6)));
    EXPECT_THAT(changedKeys(in, out, numberOf(0)), ElementsAre("/Title"));
    EXPECT_THAT(changedKeys(in, out, numberOf(3)), ElementsAre("/Next"));
    EXPECT_THAT(changedKeys(in, out, numberOf(4)), ElementsAre("/Next", "/Prev"));
    EXPECT_THAT(changedKeys(in, out, numberOf(5)), ElementsAre("/Next", "/Prev"));
    EXPECT_THAT(changedKeys(in, out, numberOf(6)), ElementsAre("/Prev"));
}

TEST_F(KeptEntriesOfAScript, AnotherLabelIsAnotherTarget) {
    run(R"([{"do": "setPageLabel", "path": [0], "label": "3"}])");
    EXPECT_THAT(changedObjects(in, out), ElementsAre(numberOf(0)));
    EXPECT_THAT(changedKeys(in, out, numberOf(0)), ElementsAre("/Dest"));
}

}  // namespace
}  // namespace leafwright::test
