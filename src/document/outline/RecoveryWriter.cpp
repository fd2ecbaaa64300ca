#include "document/outline/RecoveryWriter.h"

#include "texts/Translated.h"

#include <QDateTime>

#include <new>
#include <utility>

namespace leafwright {

namespace {

constexpr Translated translated{"RecoveryWriter"};

class FolderStore final : public RecoveryWriter::Store {
public:
    FolderStore(QString folder, std::unique_ptr<RecoveryFile> file)
        : folder_(std::move(folder)), file_(std::move(file)) {}

    std::optional<QString> write(KeptOutline outline) override {
        if (order_ == 0) order_ = RecoveryFile::latestOrder(folder_) + 1;
        outline.order = order_;
        if (file_ && file_->pdf() == outline.pdf && file_->isThere()) return file_->write(outline);
        // The name of one for the place that the PDF had before tells of that; and a lock that somebody has
        // tidied away keeps nobody out. It goes when there is another.
        RecoveryFile::removeForgotten(folder_, QDateTime::currentMSecsSinceEpoch());
        auto made = RecoveryFile::make(folder_, outline.pdf);
        if (auto *reason = std::get_if<QString>(&made)) return std::move(*reason);
        auto file = std::get<std::unique_ptr<RecoveryFile>>(std::move(made));
        if (auto reason = file->write(outline)) return reason;
        file_.swap(file);
        return file ? file->remove() : std::nullopt;
    }
    std::optional<QString> remove() override {
        auto reason = file_ ? file_->remove() : std::nullopt;
        if (!reason) file_.reset();
        return reason;
    }

private:
    QString folder_;
    std::unique_ptr<RecoveryFile> file_;
    int order_ = 0;  ///< KeptOutline::order of what is kept here; 0 before the first.
};

}  // namespace

std::unique_ptr<RecoveryWriter::Store> RecoveryWriter::storeIn(const QString &folder,
                                                               std::unique_ptr<RecoveryFile> file) {
    return std::make_unique<FolderStore>(folder, std::move(file));
}

RecoveryWriter::RecoveryWriter(std::unique_ptr<Store> store, Told told)
    : store_(std::move(store)), told_(std::move(told)), thread_([this] { run(); }) {}

RecoveryWriter::~RecoveryWriter() {
    {
        const std::lock_guard lock(mutex_);
        ends_ = true;
    }
    changed_.notify_all();
    thread_.join();
}

void RecoveryWriter::keep(KeptOutline outline) {
    {
        const std::lock_guard lock(mutex_);
        task_ = Task::Keep;
        outline_ = std::move(outline);
    }
    changed_.notify_all();
}

void RecoveryWriter::remove() {
    {
        const std::lock_guard lock(mutex_);
        task_ = Task::Remove;
        outline_ = {};
    }
    changed_.notify_all();
}

void RecoveryWriter::finish(std::chrono::milliseconds patience) {
    std::unique_lock lock(mutex_);
    changed_.wait_for(lock, patience, [this] { return !task_ && !isAtWork_; });
}

void RecoveryWriter::run() {
    std::unique_lock lock(mutex_);
    while (true) {
        changed_.wait(lock, [this] { return task_ || ends_; });
        if (!task_) return;
        const Task task = *std::exchange(task_, std::nullopt);
        KeptOutline outline = std::exchange(outline_, {});
        isAtWork_ = true;
        lock.unlock();
        told_(task, perform(task, std::move(outline)));
        lock.lock();
        isAtWork_ = false;
        changed_.notify_all();
    }
}

std::optional<QString> RecoveryWriter::perform(Task task, KeptOutline outline) {
    try {
        return task == Task::Remove ? store_->remove() : store_->write(std::move(outline));
    } catch (const std::bad_alloc &) {
        return translated("there is not enough memory");
    }
}

}  // namespace leafwright
