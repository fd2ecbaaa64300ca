#pragma once

#include "pageview/TextSelector.h"
#include "pdf/PDFDocument.h"

#include <QImage>
#include <QObject>

#include <array>
#include <condition_variable>
#include <list>
#include <mutex>
#include <optional>
#include <thread>

class QSocketNotifier;

namespace leafwright {

/// What is read of a page so that people can point at its content.
struct PageContents {
    TextSelector text;
    std::vector<PDFLink> links;
};

/// Kinds of work on pages, the most urgent first.
enum class PageWork {
    Contents,   ///< Reading what is on a page; of the request only the page counts.
    Page,       ///< Drawing for a page view.
    Thumbnail,  ///< Drawing small.
};

/// A piece of work that is done.
struct PageResult {
    PageWork work = PageWork::Page;
    RenderRequest request;
    QImage image;                                  ///< Never null where the work is to draw.
    std::shared_ptr<const PageContents> contents;  ///< Never null where the work is to read.
};

/// Reads and draws pages of a document on threads of its own. A view tells which pages it needs whenever
/// these are others; work on pages that are no longer among them is dropped, even when it has begun. Belongs
/// to one thread, on which the results arrive.
class RenderQueue final : public QObject {
    Q_OBJECT

public:
    explicit RenderQueue(QObject *parent = nullptr);
    /// Waits for the threads to end.
    ~RenderQueue() override;

    /// Drops all work, waits until no thread uses the old document, and takes another one.
    /// @param document not owned, must outlive its use here; may be null
    void setDocument(const PDFDocument *document);

    /// Says all that is wanted of one kind of work, the most urgent first, in place of what was wanted of
    /// it before. Work that is done counts as no longer wanted once its result has arrived.
    void setWanted(PageWork work, const std::vector<RenderRequest> &requests);

    /// How many pieces of work threads have taken up since the queue was made, finished or not.
    int startedCount() const;

Q_SIGNALS:
    void finished(const leafwright::PageResult &result);

private:
    struct Running {
        PageWork work;
        RenderRequest request;
        std::stop_source stop;
    };

    void startThreads();
    void run(const std::stop_token &stop);
    std::optional<std::pair<PageWork, RenderRequest>> takeNext();
    std::optional<PageResult> attempt(PageWork work, const RenderRequest &request,
                                      const std::stop_token &stop) const;
    PageResult perform(PageWork work, const RenderRequest &request, const std::stop_token &stop) const;
    void wakeReceiver() const;
    void deliver();

    mutable std::mutex mutex_;
    std::condition_variable_any workComes_;
    std::condition_variable workEnds_;
    // Guarded by the mutex:
    const PDFDocument *document_ = nullptr;
    std::array<std::list<RenderRequest>, 3> pending_;  ///< By kind of work.
    std::list<Running> running_;
    std::vector<PageResult> done_;
    int started_ = 0;

    /// An eventfd, written by threads, read on the receiver's. Unlike posted events, any number of results
    /// wakes the receiver once, and to tell of one takes no memory, which may have run out.
    int wakeup_;
    QSocketNotifier *notifier_;
    unsigned generation_ = 0;  ///< Counts documents.
    int threadCount_;
    std::vector<std::jthread> threads_;  ///< Last, so that they end first.
};

}  // namespace leafwright
