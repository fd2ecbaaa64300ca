#pragma once

#include "system/Document.h"

#include <QCoreApplication>
#include <QEventLoop>

#include <exception>
#include <optional>
#include <thread>
#include <utility>

namespace leafwright {

/// Runs a function on another thread and returns its result when it is there. Meanwhile events are handled,
/// so that windows are drawn, but what the user types and clicks waits. What the function throws is thrown
/// here.
template <typename Function>
auto inBackground(Function &&function) {
    std::optional<decltype(function())> result;
    std::exception_ptr failure;
    QEventLoop loop;
    {
        const std::jthread thread([&] {
            try {
                result.emplace(function());
            } catch (...) {
                failure = std::current_exception();
            }
            QCoreApplication::postEvent(&loop, new QEvent(QEvent::Quit));
        });
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    }
    if (failure) std::rethrow_exception(failure);
    return std::move(*result);
}

/// The same for a document, which is busy meanwhile: for the caller it is as if the function had been called
/// here.
template <typename Function>
auto inBackground(Document &document, Function &&function) {
    const Document::Busy busy(document);
    return inBackground(std::forward<Function>(function));
}

}  // namespace leafwright
