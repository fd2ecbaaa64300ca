#include "pdf/mupdf/Reader.h"
#include "pdf/mupdf/WrittenFile.h"
#include "support/OpenPdf.h"
#include "support/OutlineText.h"
#include "support/RawPdf.h"
#include "support/TempDir.h"

#include <QFile>

#include <cerrno>
#include <gmock/gmock.h>

namespace leafwright::mupdf {
namespace {

using test::contentOf;
using test::PdfBuilder;

/// A file that has been written, with an outline of three entries, and is changed before it is read back.
class WrittenFileTest : public testing::Test {
protected:
    WrittenFileTest() {
        PdfBuilder pdf;
        pdf.addNumberedPages(3);
        pdf.save(dir.path("in.pdf"));
        const auto document = test::openPdf(dir.path("in.pdf"));
        document->setOutlineRoot(outline());
        const auto error = document->writeToFile(dir.path("out.pdf"));
        EXPECT_FALSE(error);
        content = contentOf(dir.path("out.pdf"));
        Reader reader(std::make_shared<const FileHandle>(dir.path("in.pdf")));
        pages = std::make_unique<PageTree>(reader.catalog().get(PDF_NAME(Pages)), PageTree::Kids::Presumed);
    }

    static std::unique_ptr<PDFOutline> outline() {
        auto root = test::makeOutline(
            {{"Top", PDFDestination{0, {72, 700}}, {{"Below", PDFDestination{1, {10, 20}}}}}, {"Web"}});
        root->childAtIndex(0).setEntry(
            {.bold = true, .open = true, .color = leafwright::OutlineEntry::Color{1, 0.5, 0}});
        root->childAtIndex(1).setEntry({.action = leafwright::OutlineEntry::Action{"URI", "about:x"}});
        return root;
    }

    /// What is wrong with a file of these bytes; empty if nothing is.
    std::string wrongWith(const QByteArray &bytes, const PDFOutline &wanted) {
        test::writeFile(dir.path("changed.pdf"), bytes);
        QFile file(dir.path("changed.pdf"));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        try {
            expectAsWritten(file.handle(), *pages, PageTree::Kids::Presumed, wanted);
            return {};
        } catch (const Error &error) {
            return error.what();
        }
    }
    /// The same where bytes of the file are others, at their last place.
    std::string wrongWith(const QByteArray &from, const QByteArray &to) {
        QByteArray changed = content;
        const qsizetype place = changed.lastIndexOf(from);
        EXPECT_GE(place, 0) << from.constData();
        EXPECT_EQ(from.size(), to.size());
        return wrongWith(changed.replace(place, from.size(), to), *outline());
    }

    const test::TempDir dir;
    QByteArray content;
    std::unique_ptr<PageTree> pages;
};

TEST_F(WrittenFileTest, IsSoundAsItIs) {
    EXPECT_EQ(wrongWith(content, *outline()), "");
}

TEST_F(WrittenFileTest, AnyChangeOfAnEntryShows) {
    for (const auto &[from, to] :
         std::vector<std::pair<QByteArray, QByteArray>>{{"(Top)", "(Tap)"},
                                                        {"(Below)", "(Above)"},
                                                        {"/F 2", "/F 0"},
                                                        {"/F 2", "/F 1"},
                                                        {"/F 2", "/F 3"},
                                                        {"[1 0.5 0]", "[0 0.5 0]"},
                                                        {"[1 0.5 0]", "[1 0.4 0]"},
                                                        {"[1 0.5 0]", "[1 0.5 1]"},
                                                        {"/C [1", "/X [1"},
                                                        {"/XYZ 72 ", "/XYZ 73 "},
                                                        {"/XYZ 72 700", "/XYZ 72 701"},
                                                        {"/XYZ 10 20", "/XYZ 10 21"},
                                                        {"about:x", "about:y"},
                                                        {"/S /URI", "/S /URL"},
                                                        {"/Count 1", "/Count 0"},
                                                        {"/Dest", "/Desk"},
                                                        {"/First", "/Furst"},
                                                        {"/Next", "/Naxt"}}) {
        EXPECT_THAT(wrongWith(from, to), testing::HasSubstr("its outline is another")) << from.constData();
    }
}

TEST_F(WrittenFileTest, AnotherWishShows) {
    using Change = std::function<void(PDFOutline &)>;
    const auto first = [](PDFOutline &root) -> PDFOutline & { return root.childAtIndex(0); };
    const Change changes[] = {
        [&](PDFOutline &root) { first(root).setLabel("top"); },
        [&](PDFOutline &root) { first(root).setDestination({}); },
        [&](PDFOutline &root) {
            first(root).setDestination(PDFDestination{1, {72, 700}});
        },
        [&](PDFOutline &root) {
            first(root).setDestination(PDFDestination{3, {72, 700}});
        },
        [&](PDFOutline &root) {
            first(root).setDestination(PDFDestination{-1, {72, 700}});
        },
        [&](PDFOutline &root) {
            first(root).childAtIndex(0).setDestination(PDFDestination{1, {10, 20.1}});
        },
        [&](PDFOutline &root) { first(root).setEntry({}); },
        [](PDFOutline &root) {
            root.childAtIndex(1).setDestination(PDFDestination{0, {0, 0}});
        },
        [](PDFOutline &root) { root.insertChildAtIndex(std::make_unique<PDFOutline>("More"), 2); },
        [](PDFOutline &root) {
            root.childAtIndex(1).insertChildAtIndex(std::make_unique<PDFOutline>("More"), 0);
        },
    };
    for (size_t i = 0; i < std::size(changes); ++i) {
        const auto wanted = outline();
        changes[i](*wanted);
        EXPECT_THAT(wrongWith(content, *wanted), testing::HasSubstr("its outline is another")) << i;
    }
}

TEST_F(WrittenFileTest, WhatCanNotBeWrittenIsNotMissed) {
    const auto wanted = outline();
    PDFOutline &below = wanted->childAtIndex(0).childAtIndex(0);
    below.setEntry({.open = true});
    below.setDestination(PDFDestination{1, {10, 20 + 1e-9}});
    EXPECT_EQ(wrongWith(content, *wanted), "") << "it has no children to show; and rounding is no change";
    wanted->childAtIndex(1).setEntry({.action = leafwright::OutlineEntry::Action{"Launch"}});
    const QByteArray key = "/S /URI";
    EXPECT_EQ(
        wrongWith(QByteArray(content).replace(content.lastIndexOf(key), key.size(), "/S /Foo"), *wanted), "");
}

TEST_F(WrittenFileTest, OtherPagesShow) {
    EXPECT_THAT(wrongWith("/Kids [ ", "/Kids [%"), testing::HasSubstr("its pages are others"));
    EXPECT_THAT(wrongWith("/Kids", "/Kuds"), testing::HasSubstr("its pages are others"));
}

TEST_F(WrittenFileTest, DamageShows) {
    EXPECT_NE(wrongWith("startxref\n", "startxraf\n"), "");
    EXPECT_NE(wrongWith(content.first(100), *outline()), "");
    EXPECT_NE(wrongWith(QByteArray(), *outline()), "");
}

/// Without what can't be read, the pages look like others.
TEST_F(WrittenFileTest, PagesThatCanNotBeReadAreNoDamage) {
    constexpr qint64 place = 50'000;  // so that nothing else is read with it
    test::RawPdf pdf;
    pdf.object(1, "<< /Type /Catalog /Pages 2 0 R >>")
        .object(3, "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 612 792] >>")
        .goOnAt(place)
        .object(2, "<< /Type /Pages /Kids [3 0 R] /Count 1 >>")
        .goOnAt(2 * place)
        .endWithTable();
    ASSERT_TRUE(pdf.save(dir.path("large.pdf")));
    const QByteArray bytes = contentOf(dir.path("large.pdf"));
    Reader reader(std::make_shared<const FileHandle>(dir.path("large.pdf")));
    pages = std::make_unique<PageTree>(reader.catalog().get(PDF_NAME(Pages)), PageTree::Kids::Presumed);
    EXPECT_EQ(wrongWith(bytes, PDFOutline()), "");
    for (const int times : {1, 1'000}) {
        int failed = 0;
        const FailingReads failing([&](qint64 offset, qint64 length) {
            return offset <= place && place < offset + length && failed++ < times ? EIO : 0;
        });
        EXPECT_EQ(wrongWith(bytes, PDFOutline()), "Input/output error") << times;
        EXPECT_GT(failed, 0);
    }
}

TEST_F(WrittenFileTest, AReadThatFailsIsNoDamage) {
    const FailingReads failing([](qint64 offset, qint64) { return offset > 0 ? EIO : 0; });
    EXPECT_EQ(wrongWith(content, *outline()), "Input/output error");
}

}  // namespace
}  // namespace leafwright::mupdf
