#pragma once

#include <QCoreApplication>
#include <QThread>

#include <functional>
#include <future>
#include <type_traits>

namespace leafwright {

/// Has the main thread run a task when it comes to handle events; returns at once. Tasks run in their order.
void postToMainThread(std::function<void()> task);

/// Runs a function on the main thread and returns its result, from any thread. The caller waits for it; what
/// the function throws is thrown here. The main thread must be handling events, so it may not be waiting for
/// the caller.
template <typename Function>
auto onMainThread(Function &&function) {
    using Result = std::invoke_result_t<Function>;
    static_assert(!std::is_reference_v<Result>, "what it refers to belongs to the main thread");
    if (QThread::currentThread() == QCoreApplication::instance()->thread()) return function();
    std::packaged_task<Result()> task(std::ref(function));
    std::future<Result> result = task.get_future();
    postToMainThread([&task] { task(); });
    return result.get();
}

}  // namespace leafwright
