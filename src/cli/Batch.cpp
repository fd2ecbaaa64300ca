#include "cli/Batch.h"

#include "cli/Interruption.h"
#include "cli/ProgressBar.h"
#include "texts/Translated.h"

#include <QFileInfo>

#include <atomic>
#include <thread>
#include <vector>

namespace leafwright::cli {

namespace {

constexpr Translated translated{"Batch"};

}  // namespace

bool runBatch(const QStringList &files, const std::function<std::optional<QString>(const QString &)> &job,
              Console &console) {
    std::vector<std::optional<QString>> failures(static_cast<size_t>(files.size()));
    std::atomic<qsizetype> next = 0;
    {
        ProgressBar bar(console, static_cast<int>(files.size()));
        const auto work = [&] {
            while (!Interruption::requested()) {
                const qsizetype i = next++;
                if (i >= files.size()) break;
                failures[static_cast<size_t>(i)] = job(files[i]);
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
