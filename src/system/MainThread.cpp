#include "system/MainThread.h"

#include <deque>
#include <mutex>

namespace leafwright {

namespace {

// A queued call of Qt would carry a task as well, but tools that look for data races don't see the locks
// inside Qt; they do see this one.
std::mutex tasksMutex;
std::deque<std::function<void()>> tasks;

/// Runs one of the tasks for each event that it gets.
class TaskRunner : public QObject {
public:
    TaskRunner() { moveToThread(QCoreApplication::instance()->thread()); }

protected:
    void customEvent(QEvent * /*event*/) override {
        std::unique_lock lock(tasksMutex);
        const std::function<void()> task = std::move(tasks.front());
        tasks.pop_front();
        lock.unlock();
        task();
    }
};

}  // namespace

void postToMainThread(std::function<void()> task) {
    static TaskRunner runner;
    {
        const std::scoped_lock lock(tasksMutex);
        tasks.push_back(std::move(task));
    }
    QCoreApplication::postEvent(&runner, new QEvent(QEvent::User));
}

}  // namespace leafwright
