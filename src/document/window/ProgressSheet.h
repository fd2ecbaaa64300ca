#pragma once

#include "system/Document.h"

#include <QPointer>

#include <atomic>
#include <functional>
#include <optional>
#include <stop_token>

namespace leafwright {

class MyDocument;
class Sheet;

/// A sheet that shows how far work on another thread is, and cancels it. The document is busy as long as this
/// lives.
class ProgressSheet {
public:
    /// @param document has a window, and outlives this
    /// @param what is being done; stands beside the bar
    ProgressSheet(MyDocument &document, const QString &title, const QString &what);
    /// Closes the sheet.
    ~ProgressSheet();
    ProgressSheet(const ProgressSheet &) = delete;
    ProgressSheet &operator=(const ProgressSheet &) = delete;

    /// Runs the work on another thread and returns when it has ended; meanwhile events are handled. What it
    /// throws is thrown here. @param work ends soon when it is told to stop
    void run(const std::function<void(const std::stop_token &stop)> &work);
    /// Tells how much is done, from 0 to 1. From any thread.
    void setDone(double part) { part_ = part; }
    bool isCancelled() const { return stop_.stop_requested(); }

private:
    Document::Busy busy_;
    std::stop_source stop_;
    std::atomic<double> part_ = 0;
    QPointer<Sheet> sheet_;
};

/// Runs a function on another thread, with such a sheet. @param function takes a std::stop_token and the
/// sheet, which it tells how far it is
/// @return its result; absent when it was cancelled
template <typename Function>
auto withProgress(MyDocument &document, const QString &title, const QString &what, Function &&function) {
    ProgressSheet sheet(document, title, what);
    std::optional<decltype(function(std::stop_token(), sheet))> result;
    sheet.run([&](const std::stop_token &stop) { result.emplace(function(stop, sheet)); });
    if (sheet.isCancelled()) result.reset();
    return result;
}

}  // namespace leafwright
