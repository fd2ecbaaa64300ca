#include "pdf/PageSearch.h"

#include "pdf/ReadAhead.h"

#include <algorithm>
#include <map>
#include <mutex>
#include <utility>

namespace leafwright {

namespace {

/// Hands on what comes in any order in the order of pages.
class InPageOrder {
public:
    explicit InPageOrder(const PageSearch::Found &found) : found_(found) {}

    void take(PageHits hits) {
        const std::lock_guard lock(mutex_);
        waiting_.emplace(hits.pageIndex, std::move(hits));
        for (; !waiting_.empty() && waiting_.begin()->first == next_; ++next_) {
            auto first = waiting_.extract(waiting_.begin());
            if (!first.mapped().ranges.empty()) found_(std::move(first.mapped()));
        }
    }

private:
    const PageSearch::Found &found_;
    std::mutex mutex_;
    std::map<int, PageHits> waiting_;
    int next_ = 0;
};

}  // namespace

PageSearch::PageSearch(const TextPages &pages, size_t mostBytes)
    : pages_(pages), mostBytes_(mostBytes), folded_(static_cast<size_t>(pages.pageCount())) {}

void PageSearch::search(const QString &text, const Found &found, const std::stop_token &stop) {
    const FoldedText term(text);
    if (term.string().trimmed().isEmpty()) return;
    InPageOrder inOrder(found);
    onAllCores(
        pages_.pageCount(),
        [&](int index) {
            inOrder.take({index, hitsOn(index, term)});
        },
        stop);
}

std::shared_ptr<const FoldedText> PageSearch::foldedPage(int index) {
    // No other thread has this page: they are handed out one by one.
    std::shared_ptr<const FoldedText> &folded = folded_[static_cast<size_t>(index)];
    if (folded) return folded;
    auto made = std::make_shared<const FoldedText>(pages_.pageText(index)->attributedString.string);
    const size_t bytes = made->bytes();
    if (bytes_.fetch_add(bytes) + bytes <= mostBytes_) {
        folded = made;
    } else {
        bytes_ -= bytes;
    }
    return made;
}

std::vector<TextRange> PageSearch::hitsOn(int index, const FoldedText &term) {
    const std::shared_ptr<const FoldedText> page = foldedPage(index);
    std::vector<TextRange> hits;
    for (auto hit = page->find(term, 0); hit.length > 0; hit = page->find(term, hit.location + hit.length)) {
        const FoldedText::Range range = page->original(hit);
        hits.push_back({range.location, range.length});
    }
    return hits;
}

void FoundHits::add(PageHits hits) {
    before_.push_back(count_);
    count_ += hits.ranges.size();
    pages_.push_back(std::move(hits));
}

void FoundHits::clear() {
    pages_.clear();
    before_.clear();
    count_ = 0;
}

FoundHits::Hit FoundHits::at(size_t number) const {
    const auto behind = std::ranges::upper_bound(before_, number);
    const auto page = static_cast<size_t>(std::distance(before_.begin(), behind)) - 1;
    return {pages_[page].pageIndex, pages_[page].ranges[number - before_[page]]};
}

std::optional<size_t> FoundHits::firstFrom(int pageIndex) const {
    const auto page = std::ranges::lower_bound(pages_, pageIndex, {}, &PageHits::pageIndex);
    if (page == pages_.end()) return std::nullopt;
    return before_[static_cast<size_t>(std::distance(pages_.begin(), page))];
}

}  // namespace leafwright
