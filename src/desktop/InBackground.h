#pragma once

#include "desktop/Document.h"

#include <QCoreApplication>
#include <QEventLoop>

#include <exception>
#include <optional>
#include <thread>

namespace leafwright {

/// Runs a function on another thread and returns its result when it is there. Meanwhile windows are drawn,
/// but what the user types and clicks waits, and the document is busy, so that for the caller it is as if the
/// function had been called here. What the function throws is thrown here.
template <typename Function>
auto inBackground(Document &document, Function &&function) {
    const Document::Busy busy(document);
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

}  // namespace leafwright
