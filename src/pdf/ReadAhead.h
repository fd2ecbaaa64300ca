#pragma once

#include "pdf/TextPages.h"

#include <functional>
#include <stop_token>
#include <thread>
#include <vector>

namespace leafwright {

/// A stretch of pages that is warmed in one go: from `pagemin` up to but excluding `pagemax`, 0-based.
struct PageStretch {
    int pagemin = 0;
    int pagemax = 0;

    friend bool operator==(const PageStretch &, const PageStretch &) = default;
};

/// Parts a document's pages for warming: one stretch per 150 pages, at least one, each with the same number
/// of pages. The pages left over by the division are not warmed.
std::vector<PageStretch> warmingStretches(int pageCount);

/// Reads the text of a stretch of pages, so that it is there when asked for; stops early on request.
void warmPages(const TextPages &pages, const PageStretch &stretch, const std::stop_token &stop);

/// Calls `job` with each number from 0 up to but excluding `count`, on as many threads as there are cores, or
/// can be started, and returns when all is done, or soon after a request to stop. Throws what a job throws,
/// std::bad_alloc for one, whichever thread that was on.
void onAllCores(int count, const std::function<void(int)> &job, const std::stop_token &stop = {});

/// Reads the text of every page in this way.
void readAllPages(const TextPages &pages, const std::stop_token &stop = {});

/// Warms a document's pages in the background, on as many threads as there are cores; they are stopped and
/// joined when this goes. They end early where memory runs out: whoever needs a page will ask for it.
class PageWarmer {
public:
    /// @param pages must outlive the warmer.
    explicit PageWarmer(const TextPages &pages);

private:
    std::vector<std::jthread>
        thread_;  ///< The one that starts the others; none where the system lets us have none.
};

}  // namespace leafwright
