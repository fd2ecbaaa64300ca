#include "pdf/ReadAhead.h"

#include <atomic>

namespace leafwright {

std::vector<PageStretch> warmingStretches(int pageCount) {
    constexpr double pagesPerThread = 150;
    const int threads = std::max(1, static_cast<int>(pageCount / pagesPerThread));
    const int pagesEach = pageCount / threads;
    std::vector<PageStretch> stretches;
    stretches.reserve(threads);
    for (int k = 0; k < threads; ++k)
        stretches.push_back({k * pagesEach, (k + 1) * pagesEach});
    return stretches;
}

void warmPages(const TextPages &pages, const PageStretch &stretch, const std::stop_token &stop) {
    for (int i = stretch.pagemin; i < stretch.pagemax && !stop.stop_requested(); ++i)
        pages.pageText(i);
}

void onAllCores(int count, const std::function<void(int)> &job, const std::stop_token &stop) {
    // They are handed out one by one: the cost of pages differs too much for fixed shares.
    std::atomic<int> next = 0;
    const auto work = [&] {
        for (int i = next++; i < count && !stop.stop_requested(); i = next++)
            job(i);
    };
    std::vector<std::jthread> helpers;
    const int cores = static_cast<int>(std::max(1U, std::thread::hardware_concurrency()));
    for (int k = 1; k < std::min(cores, count); ++k)
        helpers.emplace_back(work);
    work();
}

void readAllPages(const TextPages &pages, const std::stop_token &stop) {
    onAllCores(
        pages.pageCount(), [&pages](int index) { pages.pageText(index); }, stop);
}

PageWarmer::PageWarmer(const TextPages &pages) {
    for (const PageStretch &stretch : warmingStretches(pages.pageCount())) {
        threads_.emplace_back(
            [&pages, stretch](const std::stop_token &stop) { warmPages(pages, stretch, stop); });
    }
}

}  // namespace leafwright
