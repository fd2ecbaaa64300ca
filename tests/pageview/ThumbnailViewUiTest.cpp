#include "pageview/PDFViewFixture.h"
#include "pageview/ThumbnailView.h"

#include <QScrollBar>
#include <QSignalSpy>

namespace leafwright {
namespace {

using test::PdfBuilder;

class ThumbnailViewTest : public test::PDFViewFixture {
protected:
    /// Shows thumbnails of a document in a view of 200 by 600 pixels.
    void showThumbnails(const PdfBuilder &pdf) {
        show(pdf);
        thumbs.resize(200, 600);
        thumbs.setPDFView(&view);
        thumbs.show();
        waitForThumbnails();
    }
    void waitForThumbnails() {
        waitUntil([this] { return !thumbs.thumbnail(firstVisible()).isNull(); });
    }
    int firstVisible() const {
        return std::max(0, thumbs.indexAt({thumbs.viewport()->width() / 2, 20}).row());
    }
    QRect cell(int index) const { return thumbs.visualRect(thumbs.model()->index(index, 0)); }

    ThumbnailView thumbs;
};

PdfBuilder redPages(int count) {
    PdfBuilder pdf;
    for (int i = 0; i < count; ++i)
        pdf.addPage("1 0 0 rg 0 0 612 792 re f");
    pdf.setCatalogEntry("/PageLabels", "<< /Nums [0 << /S /r >> 4 << /S /D >>] >>");
    return pdf;
}

TEST_F(ThumbnailViewTest, IsNamedForThoseWhoDoNotSee) {
    EXPECT_EQ(thumbs.accessibleName(), "Pages");
    EXPECT_NE(thumbs.focusPolicy() & Qt::TabFocus, 0);
}

TEST_F(ThumbnailViewTest, WithoutAPageViewItIsEmpty) {
    thumbs.show();
    EXPECT_EQ(thumbs.model()->rowCount(), 0);
    thumbs.setPDFView(&view);
    EXPECT_EQ(thumbs.model()->rowCount(), 0);
    thumbs.grab();
}

TEST_F(ThumbnailViewTest, ShowsPagesWithTheirLabels) {
    showThumbnails(redPages(6));
    EXPECT_EQ(thumbs.model()->rowCount(), 6);
    EXPECT_EQ(thumbs.model()->index(3, 0).data().toString(), "iv");
    EXPECT_EQ(thumbs.model()->index(4, 0).data().toString(), "1");
    EXPECT_EQ(colourOf(thumbs, cell(0).center() - QPoint(0, 10)), QColor(Qt::red));
}

TEST_F(ThumbnailViewTest, OneColumnUntilMoreAreAllowed) {
    showThumbnails(redPages(9));
    thumbs.resize(800, 600);
    EXPECT_EQ(cell(0).left(), cell(1).left());
    EXPECT_GT(cell(1).top(), cell(0).top());
    thumbs.setMaximumNumberOfColumns(0);
    QApplication::processEvents();
    EXPECT_EQ(cell(0).top(), cell(5).top()) << "as many as fit";
    thumbs.setMaximumNumberOfColumns(2);
    QApplication::processEvents();
    EXPECT_EQ(cell(0).top(), cell(1).top());
    EXPECT_GT(cell(2).top(), cell(1).top());
}

TEST_F(ThumbnailViewTest, ImagesFitTheThumbnailSize) {
    showThumbnails(redPages(2));
    thumbs.setThumbnailSize({131, 170});
    EXPECT_EQ(thumbs.paperSize(0), QSize(131, 170));
    thumbs.setThumbnailSize({400, 170});
    EXPECT_EQ(thumbs.paperSize(0).height(), 170);
    EXPECT_NEAR(thumbs.paperSize(0).width(), 170 * 612 / 792, 1);
}

TEST_F(ThumbnailViewTest, PagesWiderThanTheViewAreMadeToFit) {
    PdfBuilder pdf;
    for (int i = 0; i < 3; ++i)
        pdf.addPage("1 0 0 rg 0 0 960 540 re f", "/MediaBox [0 0 960 540]");
    showThumbnails(pdf);
    thumbs.setMaximumNumberOfColumns(0);
    thumbs.setThumbnailSize({302, 170});
    QApplication::processEvents();
    const int room = thumbs.viewport()->width();
    EXPECT_EQ(cell(0).top(), 0) << "no empty row above the first page";
    EXPECT_EQ(cell(0).left(), 0);
    EXPECT_LT(cell(0).right(), room);
    EXPECT_LT(thumbs.paperSize(0).width(), room);
    EXPECT_GT(thumbs.paperSize(0).width(), room * 3 / 4);
    EXPECT_NEAR(thumbs.paperSize(0).height(), thumbs.paperSize(0).width() * 540 / 960, 1);
    EXPECT_LT(cell(0).height(), 170) << "as high as the page needs";
    EXPECT_EQ(cell(1).left(), 0);
    EXPECT_EQ(cell(1).top(), cell(0).bottom() + 1);
    EXPECT_EQ(thumbs.thumbnailSize(), QSizeF(302, 170));
}

TEST_F(ThumbnailViewTest, ClickGoesToThePage) {
    showThumbnails(redPages(9));
    QTest::mouseClick(thumbs.viewport(), Qt::LeftButton, {}, cell(2).center());
    EXPECT_EQ(view.currentPage(), &page(2));
    EXPECT_EQ(thumbs.currentIndex().row(), 2);
}

TEST_F(ThumbnailViewTest, ClickOnTheCurrentPageGoesBackToItsTop) {
    showThumbnails(redPages(3));
    view.verticalScrollBar()->setValue(200);
    QTest::mouseClick(thumbs.viewport(), Qt::LeftButton, {}, cell(0).center());
    EXPECT_EQ(view.verticalScrollBar()->value(), 0);
}

TEST_F(ThumbnailViewTest, KeysGoFromPageToPage) {
    showThumbnails(redPages(9));
    QTest::keyClick(&thumbs, Qt::Key_Down);
    EXPECT_EQ(view.currentPage(), &page(1));
    QTest::keyClick(&thumbs, Qt::Key_End);
    EXPECT_EQ(view.currentPage(), &page(8));
    QTest::keyClick(&thumbs, Qt::Key_Home);
    EXPECT_EQ(view.currentPage(), &page(0));
}

TEST_F(ThumbnailViewTest, FollowsThePageView) {
    showThumbnails(redPages(50));
    view.goToPage(&page(40));
    EXPECT_EQ(thumbs.currentIndex().row(), 40);
    EXPECT_TRUE(thumbs.selectionModel()->isSelected(thumbs.model()->index(40, 0)));
    EXPECT_TRUE(thumbs.viewport()->rect().intersects(cell(40)));
    EXPECT_EQ(view.currentPage(), &page(40));
    view.verticalScrollBar()->setValue(400);
    EXPECT_EQ(thumbs.currentIndex().row(), 0);
    EXPECT_EQ(view.verticalScrollBar()->value(), 400) << "following does not scroll the pages";
}

TEST_F(ThumbnailViewTest, OnePageAtATimeAndNothingToDrag) {
    showThumbnails(redPages(9));
    EXPECT_EQ(thumbs.selectionMode(), QAbstractItemView::SingleSelection);
    EXPECT_FALSE(thumbs.dragEnabled());
    EXPECT_FALSE(thumbs.model()->flags(thumbs.model()->index(0, 0)).testFlag(Qt::ItemIsDragEnabled));
    EXPECT_FALSE(thumbs.model()->flags(thumbs.model()->index(0, 0)).testFlag(Qt::ItemIsEditable));
}

TEST_F(ThumbnailViewTest, DrawsNoMoreThanIsSeen) {
    showThumbnails(redPages(100));
    waitUntil([&] { return !thumbs.thumbnail(2).isNull(); });
    EXPECT_TRUE(thumbs.thumbnail(60).isNull());
    thumbs.verticalScrollBar()->setValue(thumbs.verticalScrollBar()->maximum());
    waitUntil([&] { return !thumbs.thumbnail(99).isNull(); });
    EXPECT_TRUE(thumbs.thumbnail(60).isNull());
}

TEST_F(ThumbnailViewTest, ImagesStayWithinTheirBound) {
    PdfBuilder pdf;
    pdf.addNumberedPages(40);
    showThumbnails(pdf);
    thumbs.setThumbnailSize({1000, 1000});
    thumbs.resize(1100, 1100);
    qint64 most = 0;
    for (int i = 0; i < 40; ++i) {
        thumbs.scrollTo(thumbs.model()->index(i, 0));
        waitUntil([&] { return !thumbs.thumbnail(i).isNull(); });
        ASSERT_LE(thumbs.imageBytes(), thumbs.imageCapacity());
        most = std::max(most, thumbs.imageBytes());
    }
    EXPECT_GT(most, thumbs.imageCapacity() / 2);
}

TEST_F(ThumbnailViewTest, FollowsAnotherDocument) {
    showThumbnails(redPages(9));
    const auto other = test::openPdf(redPages(3));
    view.setDocument(other.get());
    EXPECT_EQ(thumbs.model()->rowCount(), 3);
    view.setDocument(nullptr);
    EXPECT_EQ(thumbs.model()->rowCount(), 0);
    thumbs.grab();
}

TEST_F(ThumbnailViewTest, PageViewMayGoFirst) {
    document = test::openPdf(redPages(3));
    auto passing = std::make_unique<PDFView>();
    passing->setDocument(document.get());
    thumbs.setPDFView(passing.get());
    thumbs.show();
    EXPECT_EQ(thumbs.model()->rowCount(), 3);
    passing.reset();
    EXPECT_EQ(thumbs.model()->rowCount(), 0);
    EXPECT_EQ(thumbs.pdfView(), nullptr);
    thumbs.grab();
}

TEST_F(ThumbnailViewTest, LabelsAreReadableInADarkPalette) {
    QPalette dark(QColor(40, 40, 40));
    thumbs.setPalette(dark);
    showThumbnails(redPages(3));
    thumbs.clearSelection();
    const QImage picture = thumbs.viewport()->grab().toImage().scaled(thumbs.viewport()->size());
    const QRect below(cell(1).left(), cell(1).bottom() - 30, cell(1).width(), 30);
    int brightest = 0;
    for (int x = below.left(); x <= below.right(); ++x) {
        for (int y = below.top(); y <= below.bottom(); ++y) {
            const QColor pixel = picture.pixelColor(x, y);
            if (pixel.saturation() < 40) brightest = std::max(brightest, pixel.lightness());
        }
    }
    EXPECT_GT(brightest, 150);
}

}  // namespace
}  // namespace leafwright
