#include "cli/Batch.h"

#include "cli/Interruption.h"
#include "cli/ProgressBar.h"
#include "cli/batch/BatchJob.h"
#include "texts/Translated.h"

#include <QFileInfo>

#include <algorithm>
#include <atomic>
#include <numeric>
#include <thread>
#include <vector>

namespace leafwright::cli {

namespace {

constexpr Translated translated{"Batch"};

/// The places of files in their list, the largest file's first: at the end, no core waits for one that came
/// last.
std::vector<qsizetype> largestFirst(const QStringList &files) {
    std::vector<qint64> sizes;
    for (const QString &file : files)
        sizes.push_back(markOfJob(file).value_or(JobMark{}).size);
    std::vector<qsizetype> order(sizes.size());
    std::iota(order.begin(), order.end(), 0);
    std::ranges::stable_sort(order, [&sizes](qsizetype a, qsizetype b) {
        return sizes[static_cast<size_t>(a)] > sizes[static_cast<size_t>(b)];
    });
    return order;
}

}  // namespace

bool runBatch(const QStringList &files, const QString &command,
              const std::function<std::optional<QString>(const QString &, ForkServer &)> &job,
              Console &console) {
    const std::vector<qsizetype> order = largestFirst(files);
    std::vector<std::optional<QString>> failures(static_cast<size_t>(files.size()));
    std::atomic<qsizetype> next = 0;
    {
        ProgressBar bar(console, static_cast<int>(files.size()));
        const auto work = [&] {
            ForkServer workers(command);
            while (!Interruption::requested()) {
                const qsizetype begun = next++;
                if (begun >= files.size()) break;
                const qsizetype i = order[static_cast<size_t>(begun)];
                failures[static_cast<size_t>(i)] = job(files[i], workers);
                bar.advance(QFileInfo(files[i]).fileName());
            }
        };
        std::vector<std::jthread> helpers;
        const qsizetype cores = std::max(1U, std::thread::hardware_concurrency());
        for (qsizetype k = 1; k < std::min(cores, files.size()); ++k)
            helpers.emplace_back(work);
        work();
    }
    qsizetype failed = 0;
    for (const std::optional<QString> &failure : failures) {
        if (!failure) continue;
        ++failed;
        console.message(*failure);
    }
    if (failed > 0 && files.size() > 1)
        console.message(translated("%1 of %2 files failed").arg(failed).arg(files.size()));
    const qsizetype left = std::max<qsizetype>(0, files.size() - next);
    if (left > 0)
        console.message(translated("cancelled: %1 of %2 files were not begun").arg(left).arg(files.size()));
    return failed == 0 && left == 0;
}

}  // namespace leafwright::cli
