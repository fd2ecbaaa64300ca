#include "pageview/RenderQueue.h"

#include "pageview/DrawnPage.h"

#include <QSocketNotifier>

#include <algorithm>
#include <new>
#include <stdexcept>
#include <sys/eventfd.h>
#include <unistd.h>

namespace leafwright {

namespace {

/// One thread is kept free of drawing, which may take seconds: what somebody points at should be known at
/// once.
int threadsOfThisMachine() {
    return std::clamp(static_cast<int>(std::thread::hardware_concurrency()), 2, 4);
}

/// Reads what is on a page.
std::shared_ptr<const PageContents> readContents(const PDFPage &page) {
    return std::make_shared<const PageContents>(
        PageContents{{page.text()->attributedString.string, page.characterBoxes()}, page.links()});
}

/// Stands for an image that there was no memory for; without one, it would be asked for again and again.
QImage whitePixel() {
    QImage image(1, 1, QImage::Format_RGB32);
    image.fill(Qt::white);
    return image;
}

}  // namespace

RenderQueue::RenderQueue(QObject *parent)
    : QObject(parent), wakeup_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)), threadCount_(threadsOfThisMachine()) {
    if (wakeup_ < 0) throw std::runtime_error("no event descriptor is left");
    notifier_ = new QSocketNotifier(wakeup_, QSocketNotifier::Read, this);
    connect(notifier_, &QSocketNotifier::activated, this, &RenderQueue::deliver);
}

RenderQueue::~RenderQueue() {
    setDocument(nullptr);
    for (std::jthread &thread : threads_)
        thread.request_stop();
    threads_.clear();
    delete notifier_;  // before what it watches
    close(wakeup_);
}

void RenderQueue::setDocument(const PDFDocument *document) {
    std::unique_lock lock(mutex_);
    for (auto &pending : pending_)
        pending.clear();
    for (Running &running : running_)
        running.stop.request_stop();
    workEnds_.wait(lock, [this] { return running_.empty(); });
    done_.clear();
    document_ = document;
    ++generation_;
}

void RenderQueue::setWanted(PageWork work, const std::vector<RenderRequest> &requests) {
    const auto isWanted = [&requests](const RenderRequest &request) {
        return std::find(requests.begin(), requests.end(), request) != requests.end();
    };
    {
        const std::lock_guard lock(mutex_);
        if (!document_) return;
        auto &pending = pending_[static_cast<size_t>(work)];
        pending.assign(requests.begin(), requests.end());
        for (Running &running : running_) {
            if (running.work != work) continue;
            if (!isWanted(running.request)) {
                running.stop.request_stop();
            } else if (!running.stop.stop_requested()) {
                pending.remove(running.request);
            }
        }
        for (const PageResult &result : done_) {
            if (result.work == work) pending.remove(result.request);
        }
        if (!pending.empty()) startThreads();
    }
    workComes_.notify_all();
}

int RenderQueue::startedCount() const {
    const std::lock_guard lock(mutex_);
    return started_;
}

void RenderQueue::startThreads() {
    while (std::ssize(threads_) < threadCount_)
        threads_.emplace_back([this](const std::stop_token &stop) { run(stop); });
}

void RenderQueue::run(const std::stop_token &stop) {
    std::unique_lock lock(mutex_);
    while (true) {
        std::optional<std::pair<PageWork, RenderRequest>> next;
        workComes_.wait(lock, stop, [&] {
            next = takeNext();
            return next.has_value();
        });
        if (!next) return;
        const auto &[work, request] = *next;
        const auto running = running_.insert(running_.end(), {work, request, {}});
        ++started_;
        const std::stop_token dropped = running->stop.get_token();
        lock.unlock();
        std::optional<PageResult> result = attempt(work, request, dropped);
        lock.lock();
        running_.erase(running);
        if (result && !dropped.stop_requested()) {
            done_.push_back(*std::move(result));
            wakeReceiver();
        }
        workEnds_.notify_all();
        workComes_.notify_all();  // drawing may have waited for its turn
    }
}

std::optional<std::pair<PageWork, RenderRequest>> RenderQueue::takeNext() {
    const auto drawing = std::count_if(running_.begin(), running_.end(), [](const Running &running) {
        return running.work != PageWork::Contents;
    });
    for (const PageWork work : {PageWork::Contents, PageWork::Page, PageWork::Thumbnail}) {
        if (work != PageWork::Contents && drawing >= threadCount_ - 1) return std::nullopt;
        auto &pending = pending_[static_cast<size_t>(work)];
        if (pending.empty()) continue;
        const RenderRequest request = pending.front();
        pending.pop_front();
        return std::pair(work, request);
    }
    return std::nullopt;
}

/// What there is no memory for is left out, until it is wanted again.
std::optional<PageResult> RenderQueue::attempt(PageWork work, const RenderRequest &request,
                                               const std::stop_token &stop) const {
    try {
        return perform(work, request, stop);
    } catch (const std::bad_alloc &) {
        return std::nullopt;
    }
}

PageResult RenderQueue::perform(PageWork work, const RenderRequest &request,
                                const std::stop_token &stop) const {
    // Read without the lock: the document changes only while nothing runs.
    const PDFDocument &document = *document_;
    PageResult result{work, request, {}, nullptr};
    if (work == PageWork::Contents) {
        result.contents = readContents(*document.page(request.pageIndex));
    } else {
        result.image = drawnPage(document, request, stop);
        if (result.image.isNull()) result.image = whitePixel();
    }
    return result;
}

void RenderQueue::wakeReceiver() const {
    // The counter can't overflow, and a failed write would mean that the receiver is awake.
    const std::uint64_t one = 1;
    [[maybe_unused]] const ssize_t written = write(wakeup_, &one, sizeof one);
}

void RenderQueue::deliver() {
    std::uint64_t count = 0;
    [[maybe_unused]] const ssize_t got = read(wakeup_, &count, sizeof count);
    std::vector<PageResult> results;
    {
        const std::lock_guard lock(mutex_);
        results.swap(done_);
    }
    const unsigned generation = generation_;
    for (const PageResult &result : results) {
        Q_EMIT finished(result);
        if (generation != generation_) return;  // the rest is of another document
    }
}

}  // namespace leafwright
