#pragma once

#include "pdf/PageSearch.h"

#include <QObject>

#include <condition_variable>
#include <memory>
#include <thread>

namespace leafwright {

/// Searches a document's pages for one text after the other, on a thread of its own, so that nobody waits for
/// a page. A new text ends the search for the one before. Used on the main thread.
class PageFinder : public QObject {
    Q_OBJECT

public:
    /// @param pages must outlive this
    explicit PageFinder(const TextPages &pages);
    /// Stops the search and waits until it has stopped.
    ~PageFinder() override;

    /// Searches for a text from now on; for an empty one, for nothing. What was found so far is forgotten.
    void start(const QString &text);
    /// Waits until all pages are searched, and tells of what was found.
    void finish();

    /// What was found by now.
    const FoundHits &hits() const { return hits_; }
    bool isSearching() const { return isSearching_; }
    /// Whether the search has ended before all pages were searched, because memory ran out.
    bool lacksMemory() const { return lacksMemory_; }

Q_SIGNALS:
    /// A page has the text: `hits` has its hits too, now.
    void found(const leafwright::PageHits &page);
    /// Something was found, or all pages are searched. Comes behind any number of found().
    void changed();

private:
    void run(const std::stop_token &stop);
    void note(quint64 number, PageHits hits);
    void end(quint64 number, bool isOutOfMemory);
    Q_INVOKABLE void take();

    PageSearch search_;
    FoundHits hits_;
    bool isSearching_ = false;
    bool lacksMemory_ = false;

    // Shared with the thread.
    std::mutex mutex_;
    std::condition_variable_any wakes_;
    std::condition_variable ended_;
    QString wanted_;
    quint64 number_ = 0;       ///< Of the search that is wanted.
    quint64 searched_ = 0;     ///< Of the last one that was begun.
    quint64 endedNumber_ = 0;  ///< Of the last one that came to its end.
    std::stop_source stopSearch_;
    std::vector<PageHits> arrived_;  ///< Of the search that is wanted.
    bool isOutOfMemory_ = false;     ///< The last one that came to its end came to it early.
    bool isTold_ = false;            ///< The main thread will come for what has arrived.

    std::jthread thread_;  ///< The last member: it ends before all else goes.
};

}  // namespace leafwright
