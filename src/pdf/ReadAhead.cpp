#include "pdf/ReadAhead.h"

#include <atomic>
#include <exception>
#include <mutex>
#include <new>
#include <system_error>

namespace leafwright {

namespace {

/// Starts threads, as many as the system lets us. @param makeBody gets the thread's number, returns what it
/// does
template <typename MakeBody>
void startThreads(std::vector<std::jthread> &threads, int count, MakeBody &&makeBody) {
    try {
        for (int k = 0; k < count; ++k)
            threads.emplace_back(makeBody(k));
    } catch (const std::system_error &) {
        return;
    }
}

}  // namespace

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
    std::mutex failureMutex;
    std::exception_ptr failure;
    const auto work = [&] {
        try {
            for (int i = next++; i < count && !stop.stop_requested(); i = next++)
                job(i);
        } catch (...) {
            const std::lock_guard lock(failureMutex);
            failure = std::current_exception();
            next = count;  // the others are not needed any more
        }
    };
    {
        const int cores = static_cast<int>(std::max(1U, std::thread::hardware_concurrency()));
        std::vector<std::jthread> helpers;
        startThreads(helpers, std::min(cores, count) - 1, [&work](int) { return work; });
        work();
    }
    if (failure) std::rethrow_exception(failure);
}

void readAllPages(const TextPages &pages, const std::stop_token &stop) {
    onAllCores(
        pages.pageCount(), [&pages](int index) { pages.pageText(index); }, stop);
}

PageWarmer::PageWarmer(const TextPages &pages) {
    startThreads(thread_, 1, [&](int) {
        return [&pages, stretches = warmingStretches(pages.pageCount())](const std::stop_token &stop) {
            const auto warm = [&](int k) { warmPages(pages, stretches[static_cast<size_t>(k)], stop); };
            try {
                onAllCores(static_cast<int>(stretches.size()), warm, stop);
            } catch (const std::bad_alloc &) {
                return;
            }
        };
    });
}

}  // namespace leafwright
