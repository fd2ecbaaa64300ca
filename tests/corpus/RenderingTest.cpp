#include "support/Corpus.h"
#include "support/OpenPdf.h"

namespace leafwright {
namespace {

class CorpusRendering : public test::CorpusTest {};

/// Nothing in a real file makes drawing fail, or gives an image of another size than asked for.
TEST_P(CorpusRendering, PagesAreDrawnAndTheirLinksRead) {
    constexpr int mostPages = 10;
    auto opened = PDFDocument::open(pdf());
    if (std::holds_alternative<PDFError>(opened)) GTEST_SKIP() << "not to be opened";
    const auto document = std::move(std::get<std::unique_ptr<PDFDocument>>(opened));
    for (int i = 0; i < std::min(mostPages, document->pageCount()); ++i) {
        const QSize size = document->page(i)->transform().shownSize().boundedTo({3000, 3000}).toSize();
        const QRect clip(QPoint(0, 0), size.expandedTo({1, 1}));
        EXPECT_EQ(document->renderPage({i, 1, clip}, {}).size(), clip.size());
        for (const PDFLink &link : document->page(i)->links()) {
            EXPECT_TRUE(link.destination.has_value() != !link.uri.isEmpty());
            EXPECT_FALSE(link.bounds.isEmpty());
        }
    }
}

LEAFWRIGHT_FOR_CORPUS(CorpusRendering);

}  // namespace
}  // namespace leafwright
