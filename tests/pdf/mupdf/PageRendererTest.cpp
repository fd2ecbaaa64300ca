#include "pdf/mupdf/PageRenderer.h"
#include "support/RawPdf.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

namespace leafwright::mupdf {
namespace {

/// An image takes 4 bytes a pixel, and 256 MB at most.
TEST(BlankImage, IsAsLargeAsItMayBe) {
    EXPECT_EQ(blankImage({5, 5, 8192, 8192}).size(), QSize(8192, 8192));
    EXPECT_TRUE(blankImage({5, 5, 8193, 8192}).isNull());
    EXPECT_TRUE(blankImage({5, 5, 8192, 8193}).isNull());
    EXPECT_TRUE(blankImage({0, 0, 100'000, 100'000}).isNull()) << "more than 32 bits count";
}

TEST(BlankImage, IsWhite) {
    const PageImage image = blankImage({-7, 3, 3, 2});
    EXPECT_EQ(image.size(), QSize(3, 2));
    for (int i = 0; i < 3 * 2 * PageImage::pixelBytes; ++i)
        EXPECT_EQ(image.bits()[i], 255);
    EXPECT_TRUE(blankImage({0, 0, 0, 5}).isNull());
    EXPECT_TRUE(blankImage({0, 0, 5, 0}).isNull());
}

TEST(RenderPage, WhatNobodyWantsIsNotRead) {
    constexpr qint64 place = 50'000;  // of an annotation, so that nothing else is read with it
    const test::TempDir dir;
    test::RawPdf pdf;
    pdf.object(1, "<< /Type /Catalog /Pages 2 0 R >>")
        .object(2, "<< /Type /Pages /Kids [3 0 R] /Count 1 >>")
        .object(3, "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 612 792] /Annots [4 0 R] >>")
        .goOnAt(place)
        .object(4, "<< /Type /Annot /Subtype /Square /Rect [0 0 99 99] >>")
        .goOnAt(2 * place)
        .endWithTable();
    ASSERT_TRUE(pdf.save(dir.path("a.pdf")));
    for (const bool isWanted : {true, false}) {
        Reader reader(std::make_shared<const FileHandle>(dir.path("a.pdf")));
        const Object pages = reader.catalog().get(PDF_NAME(Pages));
        reader.setPages(std::make_shared<const PageTree>(pages, PageTree::Kids::Presumed));
        bool isRead = false;
        const FailingReads none([&](qint64 offset, qint64 length) {
            isRead = isRead || (offset <= place && place < offset + length);
            return 0;
        });
        std::stop_source stop;
        if (!isWanted) stop.request_stop();
        EXPECT_EQ(renderPage(reader, {0, 1, QRect(0, 0, 100, 100)}, stop.get_token()).isNull(), !isWanted);
        EXPECT_EQ(isRead, isWanted);
    }
}

}  // namespace
}  // namespace leafwright::mupdf
