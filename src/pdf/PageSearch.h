#pragma once

#include "pdf/TextPages.h"
#include "texts/FoldedText.h"

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <vector>

namespace leafwright {

/// Where a text stands on a page: ranges of the page's text, in order, none over another.
struct PageHits {
    int pageIndex = 0;
    std::vector<TextRange> ranges;

    friend bool operator==(const PageHits &, const PageHits &) = default;
};

/// Looks for texts on the pages of a document, as FoldedText compares them; also across the ends of lines,
/// but not of pages. Pages are read once, and kept as they are searched in; so all searches but the first
/// take next to no time. One search at a time, on any thread.
class PageSearch {
public:
    /// What is kept of usual documents is a few bytes a character; this bounds that of others.
    static constexpr size_t usualMostBytes = size_t{256} << 20;

    /// @param pages must outlive this @param mostBytes how much memory those pages may take that are kept
    explicit PageSearch(const TextPages &pages, size_t mostBytes = usualMostBytes);

    /// @param found is told of each page that has the text, page by page, as soon as all pages before are
    /// searched; never twice at once, but from several threads
    using Found = std::function<void(PageHits hits)>;
    /// Searches all pages, on all cores, and returns when that is done, or soon after a request to stop. A
    /// text of nothing but blanks is found nowhere. Throws what reading a page throws, std::bad_alloc for
    /// one.
    void search(const QString &text, const Found &found, const std::stop_token &stop = {});

private:
    std::shared_ptr<const FoldedText> foldedPage(int index);
    std::vector<TextRange> hitsOn(int index, const FoldedText &term);

    const TextPages &pages_;
    const size_t mostBytes_;
    std::atomic<size_t> bytes_ = 0;                          ///< Of those that are kept.
    std::vector<std::shared_ptr<const FoldedText>> folded_;  ///< By page; null if not kept.
};

/// The hits of a search, numbered from 0 on in the order of pages.
class FoundHits {
public:
    struct Hit {
        int pageIndex = 0;
        TextRange range;

        friend bool operator==(const Hit &, const Hit &) = default;
    };

    /// Adds the hits of a page behind all that have any, see PageSearch::Found.
    void add(PageHits hits);
    void clear();

    size_t count() const { return count_; }
    /// Those that have any, in order.
    const std::vector<PageHits> &pages() const { return pages_; }
    /// @param number below the count
    Hit at(size_t number) const;
    /// The first hit on a page or behind it; absent if there is none.
    std::optional<size_t> firstFrom(int pageIndex) const;

private:
    std::vector<PageHits> pages_;
    std::vector<size_t> before_;  ///< How many hits stand before those of each page.
    size_t count_ = 0;
};

}  // namespace leafwright
