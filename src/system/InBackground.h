#pragma once

#include "system/Document.h"

#include <QCoreApplication>
#include <QEventLoop>

#include <exception>
#include <optional>
#include <thread>
#include <type_traits>
#include <utility>

namespace leafwright {

/// Runs a function on another thread and returns its result when it is there. Meanwhile events are handled,
/// so that windows are drawn, but what the user types and clicks waits. What the function throws is thrown
/// here.
/// @param events for who shows something that can be clicked: all
template <typename Function>
auto inBackground(Function &&function,
                  QEventLoop::ProcessEventsFlags events = QEventLoop::ExcludeUserInputEvents) {
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
        loop.exec(events);
    }
    if (failure) std::rethrow_exception(failure);
    return std::move(*result);
}

/// The same for a document, which is busy meanwhile: for the caller it is as if the function had been called
/// here.
///
/// The events handled meanwhile may be the end of anything. So the function captures nothing, and what it
/// works on is given to it: values, and shared pointers to what is large, which this owns until the thread
/// has ended.
template <typename Function, typename... Owned>
auto inBackground(Document &document, Function function, Owned... owned) {
    static_assert(std::is_empty_v<Function>, "what the function works on is given behind it");
    static_assert((!std::is_pointer_v<Owned> && ...), "a plain pointer owns nothing");
    const Document::Busy busy(document);
    return inBackground([&] { return function(std::as_const(owned)...); });
}

}  // namespace leafwright
