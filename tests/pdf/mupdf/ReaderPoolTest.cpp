#include "pdf/mupdf/ReaderPool.h"
#include "support/OpenPdf.h"
#include "support/TempDir.h"

#include <atomic>
#include <cerrno>
#include <gtest/gtest.h>
#include <set>
#include <thread>

namespace leafwright::mupdf {
namespace {

class ReaderPoolTest : public testing::Test {
protected:
    ReaderPoolTest() {
        test::PdfBuilder pdf;
        pdf.addNumberedPages(2);
        pdf.save(dir.path("a.pdf"));
        file = std::make_shared<const FileHandle>(dir.path("a.pdf"));
        first = std::make_unique<Reader>(file);
        pages =
            std::make_shared<const PageTree>(first->catalog().get(PDF_NAME(Pages)), PageTree::Kids::Presumed);
        first->setPages(pages);
    }

    const test::TempDir dir;
    std::shared_ptr<const FileHandle> file;
    std::unique_ptr<Reader> first;
    std::shared_ptr<const PageTree> pages;
};

TEST_F(ReaderPoolTest, ReadersAreHandedOutAgain) {
    ReaderPool pool(file, pages, 3, std::move(first));
    std::set<const Reader *> readers;
    for (int i = 0; i < 3; ++i) {
        const ReaderPool::Lease one = pool.acquire();
        const ReaderPool::Lease other = pool.acquire();
        EXPECT_NE(&*one, &*other);
        EXPECT_EQ(other->pages().count(), 2) << "one that was made later knows the pages as well";
        readers.insert({&*one, &*other});
    }
    EXPECT_EQ(readers.size(), 2U);
}

TEST_F(ReaderPoolTest, TheFirstOneIsUsedAndCounts) {
    const Reader *const reader = first.get();
    ReaderPool pool(file, pages, 1, std::move(first));
    EXPECT_EQ(pool.most(), 1);
    EXPECT_EQ(&*pool.acquire(), reader);
    EXPECT_EQ(&*pool.acquire(), reader);
}

/// Whoever waits gets the reader that comes back: with a lost call, this never ends.
TEST_F(ReaderPoolTest, ThreadsTakeTurns) {
    for (const int most : {1, 2}) {
        ReaderPool pool(file, pages, most);
        std::atomic<int> out = 0;
        std::atomic<int> mostOut = 0;
        std::vector<std::jthread> threads;
        for (int k = 0; k < 4; ++k) {
            threads.emplace_back([&] {
                for (int i = 0; i < 200; ++i) {
                    const ReaderPool::Lease reader = pool.acquire();
                    const int now = ++out;
                    if (now > mostOut) mostOut = now;
                    EXPECT_TRUE(reader->page(i % 2).isDict());
                    std::this_thread::yield();
                    --out;
                }
            });
        }
        threads.clear();
        EXPECT_LE(mostOut, most);
    }
}

TEST_F(ReaderPoolTest, OneWithAProblemIsNotHandedOutAgain) {
    Context::of(first->context()).noteOutOfMemory();
    ReaderPool unlucky(file, pages, 1, std::move(first));
    {
        const ReaderPool::Lease reader = unlucky.acquire();
        EXPECT_FALSE(reader->problem());
        Context::of(reader->context()).noteOutOfMemory();
    }
    const ReaderPool::Lease next = unlucky.acquire();
    EXPECT_FALSE(next->problem());
}

TEST_F(ReaderPoolTest, OneThatCantBeOpenedLeavesItsPlace) {
    ReaderPool pool(file, pages, 1);
    {
        const FailingReads failing([](qint64, qint64) { return EIO; });
        EXPECT_THROW(pool.acquire(), Error);
    }
    EXPECT_EQ(pool.acquire()->pages().count(), 2);
}

}  // namespace
}  // namespace leafwright::mupdf
