#include "pageview/DrawnPage.h"
#include "pageview/PDFViewFixture.h"
#include "support/EmptyEngine.h"

#include <QSignalSpy>

namespace leafwright {
namespace {

using test::PdfBuilder;

class RenderQueueTest : public testing::Test {
protected:
    RenderQueueTest() {
        QObject::connect(&queue, &RenderQueue::finished, &queue,
                         [this](const PageResult &result) { results.push_back(result); });
    }

    void open(const PdfBuilder &pdf) {
        document = test::openPdf(pdf);
        queue.setDocument(document.get());
    }
    static RenderRequest whole(int page, double scale = 1) {
        return {page, scale, QRect(0, 0, qRound(612 * scale), qRound(792 * scale))};
    }
    static std::vector<RenderRequest> pages(int first, int count) {
        std::vector<RenderRequest> requests;
        for (int i = first; i < first + count; ++i)
            requests.push_back(whole(i));
        return requests;
    }
    void waitForResults(size_t count) {
        ASSERT_TRUE(QTest::qWaitFor([&] { return results.size() >= count; }, test::patience));
    }
    void waitUntilStarted(int count) {
        ASSERT_TRUE(QTest::qWaitFor([&] { return queue.startedCount() >= count; }, test::patience));
    }

    std::unique_ptr<PDFDocument> document;  // outlives the queue
    RenderQueue queue;
    std::vector<PageResult> results;
};

PdfBuilder numberedPages(int count) {
    PdfBuilder pdf;
    pdf.addNumberedPages(count);
    return pdf;
}

PdfBuilder endlessPageAndOthers() {
    PdfBuilder pdf;
    pdf.addPage(test::endlessContent());
    pdf.addNumberedPages(5);
    return pdf;
}

TEST_F(RenderQueueTest, DrawsWhatIsWanted) {
    open(numberedPages(3));
    queue.setWanted(PageWork::Page, {whole(2)});
    waitForResults(1);
    EXPECT_EQ(results[0].request, whole(2));
    EXPECT_EQ(results[0].work, PageWork::Page);
    EXPECT_EQ(results[0].image, drawnPage(*document, whole(2)));
}

TEST_F(RenderQueueTest, ReadsContents) {
    PdfBuilder pdf;
    pdf.addPage(PdfBuilder::showText("F1", 12, 72, 700, "Words"),
                "/Annots [<< /Subtype /Link /Rect [0 0 9 9] /A << /S /URI /URI (a:b) >> >>]");
    open(pdf);
    queue.setWanted(PageWork::Contents, {{0, 1, {}}});
    waitForResults(1);
    ASSERT_TRUE(results[0].contents);
    EXPECT_EQ(results[0].contents->text.length(), 6);
    EXPECT_EQ(results[0].contents->links.size(), 1U);
}

TEST_F(RenderQueueTest, WithoutADocumentNothingIsDone) {
    queue.setWanted(PageWork::Page, {whole(0)});
    QApplication::processEvents();
    EXPECT_EQ(queue.startedCount(), 0);
}

TEST_F(RenderQueueTest, WhatIsNoLongerWantedIsDropped) {
    open(endlessPageAndOthers());
    queue.setWanted(PageWork::Page, {whole(0)});
    waitUntilStarted(1);
    for (int i = 0; i < 100; ++i)
        queue.setWanted(PageWork::Page, pages(0, 6));  // the same page goes on
    queue.setWanted(PageWork::Page, {whole(4)});
    waitForResults(1);
    EXPECT_EQ(results[0].request, whole(4)) << "the endless page was given up for it";
    QApplication::processEvents();
    EXPECT_EQ(results.size(), 1U);
}

TEST_F(RenderQueueTest, PendingRequestsAreDroppedUnseen) {
    open(numberedPages(600));
    for (int first = 0; first < 600; first += 20)
        queue.setWanted(PageWork::Page, pages(first, 20));
    waitForResults(20);
    std::vector<int> last;
    for (const PageResult &result : results) {
        if (result.request.pageIndex >= 580) last.push_back(result.request.pageIndex);
    }
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
            return std::count_if(results.begin(), results.end(), [](const PageResult &result) {
                       return result.request.pageIndex >= 580;
                   }) == 20;
        },
        test::patience));
    EXPECT_LT(queue.startedCount(), 300) << "of 600 pages asked for in a hurry";
}

TEST_F(RenderQueueTest, WantingTheSameAgainDrawsItOnce) {
    open(numberedPages(3));
    for (int i = 0; i < 50; ++i)
        queue.setWanted(PageWork::Page, {whole(1)});
    waitForResults(1);
    EXPECT_EQ(queue.startedCount(), 1);
}

TEST_F(RenderQueueTest, PagesComeInTheOrderWanted) {
    constexpr int urgent = 40;
    open(numberedPages(urgent + 1));
    std::vector<RenderRequest> pages;
    for (int i = 1; i <= urgent; ++i)
        pages.push_back(whole(i));
    queue.setWanted(PageWork::Thumbnail, {whole(0)});
    queue.setWanted(PageWork::Page, pages);
    waitForResults(urgent + 1);
    const auto thumbnail = std::find_if(results.begin(), results.end(), [](const PageResult &result) {
        return result.work == PageWork::Thumbnail;
    });
    // A thread may have taken the thumbnail before the pages were asked for, and others may be slow with
    // theirs; but it does not come before the pages are.
    EXPECT_TRUE(thumbnail == results.begin() || thumbnail - results.begin() > urgent / 2);
}

TEST_F(RenderQueueTest, ContentsDoNotWaitForDrawing) {
    open(endlessPageAndOthers());
    std::vector<RenderRequest> endless;
    for (int i = 1; i < 12; ++i)
        endless.push_back(whole(0, 4 + i / 100.0));
    queue.setWanted(PageWork::Page, endless);
    waitUntilStarted(1);
    queue.setWanted(PageWork::Contents, {{3, 1, {}}});
    waitForResults(1);
    EXPECT_EQ(results[0].work, PageWork::Contents);
}

TEST_F(RenderQueueTest, NothingOfAnOldDocumentArrives) {
    open(numberedPages(50));
    queue.setWanted(PageWork::Page, pages(0, 50));
    waitUntilStarted(3);
    const auto other = test::openPdf(numberedPages(2));
    queue.setDocument(other.get());
    results.clear();
    QApplication::processEvents();
    EXPECT_TRUE(results.empty());
    queue.setWanted(PageWork::Page, {whole(1)});
    waitForResults(1);
    EXPECT_EQ(results.size(), 1U);
    queue.setDocument(nullptr);
}

TEST_F(RenderQueueTest, DocumentChangedAmidDelivery) {
    open(numberedPages(20));
    const auto other = test::openPdf(numberedPages(20));
    bool changed = false;
    QObject::connect(&queue, &RenderQueue::finished, &queue, [&] {
        if (!std::exchange(changed, true)) queue.setDocument(other.get());
    });
    queue.setWanted(PageWork::Thumbnail, pages(0, 20));
    waitForResults(1);
    const size_t before = results.size();
    QApplication::processEvents();
    EXPECT_EQ(results.size(), before);
    queue.setDocument(nullptr);
}

/// Has no memory for its first page, when it is read, nor when it is drawn.
class PoorEngine final : public test::EmptyEngine {
public:
    using EmptyEngine::EmptyEngine;
    std::shared_ptr<const PageText> pageText(int index) const override {
        if (index == 0) throw std::bad_alloc();
        return EmptyEngine::pageText(index);
    }
    PageImage renderPage(const RenderRequest &request, const std::stop_token &stop) const override {
        if (request.pageIndex == 0) throw std::bad_alloc();
        return EmptyEngine::renderPage(request, stop);
    }
};

TEST_F(RenderQueueTest, WhatThereIsNoMemoryForIsLeftOut) {
    document = std::make_unique<PDFDocument>(std::make_unique<PoorEngine>(3));
    queue.setDocument(document.get());
    queue.setWanted(PageWork::Contents, pages(0, 3));
    waitForResults(2);
    queue.setWanted(PageWork::Page, pages(0, 3));
    waitForResults(4);
    QApplication::processEvents();
    EXPECT_EQ(results.size(), 4U);
    for (const PageResult &result : results)
        EXPECT_NE(result.request.pageIndex, 0);
    queue.setDocument(nullptr);
}

}  // namespace
}  // namespace leafwright
