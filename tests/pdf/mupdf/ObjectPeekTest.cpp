#include "pdf/mupdf/ObjectPeek.h"
#include "support/OpenPdf.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

namespace leafwright::mupdf {
namespace {

using test::PdfBuilder;
using test::TempDir;

constexpr int pageCount = 250;  // of which QPDF puts 100 objects into a stream

/// Pages of 100, 101, 102, ... points' width.
PdfBuilder pagesOfAllWidths() {
    PdfBuilder pdf;
    for (int i = 0; i < pageCount; ++i)
        pdf.addPage("", "/MediaBox [0 0 " + std::to_string(100 + i) + " 50]");
    return pdf;
}

/// A reader of a file with object streams, with its pages in place.
class ObjectPeekTest : public testing::Test {
protected:
    ObjectPeekTest() {
        pagesOfAllWidths().save(dir_.path("a.pdf"), {.version = "1.5", .objectStreams = true});
        reader_ = std::make_unique<Reader>(std::make_shared<const FileHandle>(dir_.path("a.pdf")));
        const Object root = reader_->catalog().get(PDF_NAME(Pages));
        reader_->setPages(std::make_shared<const PageTree>(root, PageTree::Kids::Presumed));
    }

    static double widthOf(const Object &page) { return page.get(PDF_NAME(MediaBox)).at(2).toNumber(); }

    TempDir dir_;
    std::unique_ptr<Reader> reader_;
};

TEST_F(ObjectPeekTest, PagesAreSeenWithoutBeingLoaded) {
    ObjectPeek peek(*reader_);
    int loaded = 0;
    for (int i = 0; i < pageCount; ++i) {
        const Object page = peek.object(reader_->page(i));
        if (page.isIndirect()) ++loaded;
        EXPECT_EQ(widthOf(page), 100 + i);
    }
    // The stream that holds the root of the page tree has been loaded for the tree's sake.
    EXPECT_LE(loaded, 100);
}

TEST_F(ObjectPeekTest, NoStreamIsUnpackedTwice) {
    ObjectPeek peek(*reader_);
    EXPECT_FALSE(peek.object(reader_->page(pageCount / 2)).isIndirect());
    EXPECT_FALSE(peek.object(reader_->page(pageCount - 1)).isIndirect());
    const Object again = peek.object(reader_->page(pageCount / 2));
    EXPECT_TRUE(again.isIndirect()) << "MuPDF reads it, and keeps the stream's objects";
    EXPECT_EQ(widthOf(again), 100 + pageCount / 2);
}

TEST_F(ObjectPeekTest, WhatIsNoReferenceStaysAsItIs) {
    ObjectPeek peek(*reader_);
    const Object catalog = reader_->catalog();
    const Object pages = catalog.get(PDF_NAME(Pages)).get(PDF_NAME(Kids));
    EXPECT_EQ(peek.object(pages).size(), pages.size());
    EXPECT_FALSE(peek.object(Object()));
}

TEST(PagesInObjectStreams, HaveTheirOwnBoxes) {
    const auto document = test::openPdf(pagesOfAllWidths(), {.version = "1.5", .objectStreams = true});
    ASSERT_EQ(document->pageCount(), pageCount);
    for (int i = 0; i < pageCount; ++i)
        EXPECT_EQ(document->page(i)->mediaBox(), (Rect{0, 0, 100.0 + i, 50}));
}

}  // namespace
}  // namespace leafwright::mupdf
