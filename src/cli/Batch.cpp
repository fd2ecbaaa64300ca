#include "cli/Batch.h"

#include "cli/ProgressBar.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <atomic>
#include <thread>
#include <vector>

namespace leafwright::cli {

bool runBatch(const QStringList &files, const std::function<std::optional<QString>(const QString &)> &job,
              Console &console) {
    std::vector<std::optional<QString>> failures(static_cast<size_t>(files.size()));
    {
        ProgressBar bar(console, static_cast<int>(files.size()));
        std::atomic<qsizetype> next = 0;
        const auto work = [&] {
            for (qsizetype i = next++; i < files.size(); i = next++) {
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
    if (failed > 0 && files.size() > 1) {
        console.message(
            QCoreApplication::translate("Batch", "%1 of %2 files failed").arg(failed).arg(files.size()));
    }
    return failed == 0;
}

}  // namespace leafwright::cli
