#include "support/CliRun.h"
#include "support/OpenPdf.h"
#include "support/OutlineText.h"
#include "support/TempDir.h"

#include <gmock/gmock.h>

namespace leafwright {
namespace {

using test::contentOf;
using test::linesByQpdf;
using test::openPdf;
using test::PdfBuilder;
using test::TempDir;
using testing::ElementsAre;

/// A file that is opened, changed and saved in one session after the other.
class OwnSections : public testing::TestWithParam<bool> {
protected:
    OwnSections() {
        PdfBuilder pdf;
        pdf.addNumberedPages(3);
        test::addOutline(pdf, {{"(First)", "[" + pdf.pageReference(0) + " /XYZ 1 2 null]"},
                               {"(Second)", "[" + pdf.pageReference(1) + " /XYZ 3 4 null]"}});
        pdf.save(path, {.version = "1.5", .objectStreams = GetParam()});
        original = contentOf(path);
    }

    /// A session: the outline is read, changed and written.
    void session(const std::function<void(PDFOutline &root)> &change) {
        const auto document = openPdf(path);
        ASSERT_FALSE(document->wasRepaired());
        auto root = std::make_unique<PDFOutline>();
        const PDFOutline &old = document->outlineRoot();
        for (int i = 0; i < old.numberOfChildren(); ++i) {
            auto entry = std::make_unique<PDFOutline>(old.childAtIndex(i).label());
            entry->setDestination(old.childAtIndex(i).destination());
            entry->setEntry(old.childAtIndex(i).entry());
            root->insertChildAtIndex(std::move(entry), i);
        }
        change(*root);
        document->setOutlineRoot(std::move(root));
        const auto error = document->writeToFile(path);
        ASSERT_FALSE(error) << error->message.toStdString();
        EXPECT_TRUE(contentOf(path).startsWith(original));
    }
    static void rename(PDFOutline &root, int index, const QString &title) {
        root.childAtIndex(index).setLabel(title);
    }
    static void add(PDFOutline &root, const QString &title) {
        root.insertChildAtIndex(std::make_unique<PDFOutline>(title), root.numberOfChildren())
            .setDestination(PDFDestination{2, {5, 6}});
    }
    /// How many sections there are behind the original.
    qsizetype sections() const { return contentOf(path).mid(original.size()).count("startxref"); }
    void expectSound() const {
        const auto check = test::runProgram("qpdf", {"--check", path});
        EXPECT_EQ(check.exitCode, 0) << check.out.toStdString() << check.err.toStdString();
    }

    const TempDir dir;
    const QString path = dir.path("a.pdf");
    QByteArray original;
};

INSTANTIATE_TEST_SUITE_P(Of, OwnSections, testing::Bool(),
                         [](const auto &test) { return test.param ? "Streams" : "Tables"; });

TEST_P(OwnSections, ALaterSessionTakesThePlaceOfAnEarlierOne) {
    session([](PDFOutline &root) { rename(root, 0, "Renamed"); });
    session([](PDFOutline &root) { add(root, "Third"); });
    session([](PDFOutline &root) { rename(root, 2, "Last"); });
    EXPECT_EQ(sections(), 1);
    EXPECT_THAT(linesByQpdf(path),
                ElementsAre("Renamed -> 0 (1, 2)", "Second -> 1 (3, 4)", "Last -> 2 (5, 6)"));
    expectSound();
}

TEST_P(OwnSections, AHundredSessionsTakeTheRoomOfOne) {
    constexpr int entries = 100;
    session([](PDFOutline &root) {
        for (int i = 0; i < entries; ++i)
            add(root, "Entry 100");
    });
    const double size = static_cast<double>(contentOf(path).size());
    for (int i = 0; i < 100; ++i) {
        session([i](PDFOutline &root) {
            for (int k = 2; k < entries + 2; ++k) {
                rename(root, k, "Entry " + QString::number(100 + i));
                // New ones, as a run for contents makes them.
                if (i % 2 == 0) root.childAtIndex(k).setEntry({});
            }
        });
    }
    EXPECT_NEAR(static_cast<double>(contentOf(path).size()), size, size / 100);
    EXPECT_EQ(sections(), 1);
    expectSound();
}

TEST_P(OwnSections, ASessionThatChangesNothingChangesNothing) {
    session([](PDFOutline &root) { rename(root, 0, "Renamed"); });
    const QByteArray before = contentOf(path);
    session([](PDFOutline & /*root*/) {});
    EXPECT_EQ(contentOf(path), before);
}

TEST_P(OwnSections, BytesThatSomebodyHasChangedAreLeft) {
    session([](PDFOutline &root) { rename(root, 0, "Renamed"); });
    QByteArray touched = contentOf(path);
    touched.replace("(Renamed)", "(Touched)");
    test::writeFile(path, touched);
    session([](PDFOutline &root) { rename(root, 1, "Again"); });
    EXPECT_TRUE(contentOf(path).startsWith(touched));
    EXPECT_EQ(sections(), 2);
    EXPECT_THAT(linesByQpdf(path), ElementsAre("Touched -> 0 (1, 2)", "Again -> 1 (3, 4)"));
    expectSound();
}

TEST_P(OwnSections, WhatIsAppendedBehindIsLeft) {
    session([](PDFOutline &root) { rename(root, 0, "Renamed"); });
    QByteArray bytes = contentOf(path);
    const QByteArray previous = bytes.mid(bytes.lastIndexOf("startxref\n") + 10).split('\n').first();
    // As a program does that carries all keys of the trailer on: a signature, say.
    const qsizetype keyAt = bytes.lastIndexOf("/LeafwrightSection");
    const QByteArray key = bytes.mid(keyAt, bytes.indexOf(')', keyAt) + 1 - keyAt);
    const qsizetype rootAt = bytes.lastIndexOf("/Root ");
    const QByteArray root = bytes.mid(rootAt, bytes.indexOf('R', rootAt + 5) + 1 - rootAt);
    const QByteArray object = QByteArray::number(bytes.size());
    bytes += "900 0 obj\n(signature)\nendobj\n";
    const QByteArray start = QByteArray::number(bytes.size());
    bytes += "xref\n900 1\n" + object.rightJustified(10, '0') + " 00000 n \ntrailer\n<< /Size 901 " + root +
             " /Prev " + previous + ' ' + key + " >>\nstartxref\n" + start + "\n%%EOF\n";
    test::writeFile(path, bytes);
    session([](PDFOutline &outline) { rename(outline, 1, "Again"); });
    EXPECT_TRUE(contentOf(path).startsWith(bytes));
    EXPECT_THAT(linesByQpdf(path), ElementsAre("Renamed -> 0 (1, 2)", "Again -> 1 (3, 4)"));
    expectSound();
}

TEST_P(OwnSections, BytesBehindTheEndAreLeft) {
    session([](PDFOutline &root) { rename(root, 0, "Renamed"); });
    const QByteArray bytes = contentOf(path) + "% a note\n";
    test::writeFile(path, bytes);
    session([](PDFOutline &root) { rename(root, 1, "Again"); });
    EXPECT_TRUE(contentOf(path).startsWith(bytes));
    expectSound();
}

}  // namespace
}  // namespace leafwright
