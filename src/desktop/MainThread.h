#pragma once

#include <QCoreApplication>
#include <QThread>

#include <exception>
#include <type_traits>

namespace leafwright {

/// Runs a function on the main thread and returns its result, from any thread. The caller waits for it; what
/// the function throws is thrown here. The main thread must be handling events, so it may not be waiting for
/// the caller.
template <typename Function>
auto onMainThread(Function &&function) {
    using Result = std::invoke_result_t<Function>;
    static_assert(!std::is_reference_v<Result>, "what it refers to belongs to the main thread");
    if (QThread::currentThread() == qApp->thread()) return function();
    std::exception_ptr failure;
    const auto guarded = [&]() -> Result {
        try {
            return function();
        } catch (...) {
            failure = std::current_exception();
        }
        return Result();
    };
    if constexpr (std::is_void_v<Result>) {
        QMetaObject::invokeMethod(qApp, guarded, Qt::BlockingQueuedConnection);
        if (failure) std::rethrow_exception(failure);
    } else {
        Result result;
        QMetaObject::invokeMethod(qApp, guarded, Qt::BlockingQueuedConnection, &result);
        if (failure) std::rethrow_exception(failure);
        return result;
    }
}

}  // namespace leafwright
