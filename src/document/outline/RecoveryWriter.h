#pragma once

#include "document/outline/RecoveryFile.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace leafwright {

/// Keeps the outline of one document in a recovery file, on a thread of its own, so that nobody waits for the
/// disk. Of what is to be kept while it writes, the latest is written next. Used on one thread.
class RecoveryWriter {
public:
    /// Where an outline is kept: a RecoveryFile, or what a test has instead.
    class Store {
    public:
        virtual ~Store() = default;
        /// @return why it is not kept
        virtual std::optional<QString> write(KeptOutline outline) = 0;
        virtual std::optional<QString> remove() = 0;
    };
    enum class Task { Keep, Remove };
    /// Told on the writer's thread, after each task, why it failed.
    using Told = std::function<void(Task task, const std::optional<QString> &problem)>;

    RecoveryWriter(std::unique_ptr<Store> store, Told told);
    /// A store in a folder, which takes a file when something is to be kept.
    /// @param file one that was left behind, to be gone on with; may be null
    static std::unique_ptr<Store> storeIn(const QString &folder, std::unique_ptr<RecoveryFile> file);
    /// Does what is to be done first.
    ~RecoveryWriter();
    RecoveryWriter(const RecoveryWriter &) = delete;
    RecoveryWriter &operator=(const RecoveryWriter &) = delete;

    void keep(KeptOutline outline);
    /// Nothing is to be kept any more.
    void remove();
    /// Waits until all is done, but not for ever: a disk may not answer.
    void finish(std::chrono::milliseconds patience = std::chrono::seconds(10));

private:
    void run();
    std::optional<QString> perform(Task task, KeptOutline outline);

    std::unique_ptr<Store> store_;
    Told told_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::optional<Task> task_;  ///< What is to be done next.
    KeptOutline outline_;       ///< What is to be kept.
    bool isAtWork_ = false;
    bool ends_ = false;
    std::jthread thread_;
};

}  // namespace leafwright
