#include "cli/batch/JobQueue.h"

#include <atomic>
#include <gmock/gmock.h>
#include <thread>

namespace leafwright::test {
namespace {

using cli::JobQueue;
using cli::WaitingJob;

WaitingJob jobOf(const QString &file, qint64 size, qsizetype weight = 1) {
    return {{file}, {}, {size, 0}, weight};
}

QStringList filesOf(JobQueue &queue) {
    QStringList files;
    while (const auto job = queue.take())
        files.append(job->job.file);
    return files;
}

TEST(JobQueue, TheLargestComeFirstAndOfEqualOnesTheFirst) {
    JobQueue queue(10);
    for (const auto &[file, size] :
         std::vector<std::pair<QString, qint64>>{{"a", 5}, {"b", 10}, {"c", 5}, {"d", 0}, {"e", 10}})
        EXPECT_TRUE(queue.put(jobOf(file, size)));
    queue.finish();
    EXPECT_EQ(filesOf(queue).join(' '), "b e a c d");
}

TEST(JobQueue, TakesMoreWhenThereIsRoom) {
    JobQueue queue(2);
    std::atomic<int> put = 0;
    std::jthread producer([&] {
        for (int i = 0; i < 100; ++i) {
            queue.put(jobOf(QString::number(i), i));
            ++put;
        }
        queue.finish();
    });
    int taken = 0;
    while (queue.take()) {
        ++taken;
        // Of those that were put, two may wait, and one more is on its way to be counted.
        EXPECT_LE(put, taken + 3);
    }
    EXPECT_EQ(taken, 100);
}

TEST(JobQueue, OneHeavyJobIsTakenAlone) {
    JobQueue queue(10, 100);
    EXPECT_TRUE(queue.put(jobOf("heavy", 1, 1'000)));
    std::jthread producer([&] {
        queue.put(jobOf("next", 1));
        queue.finish();
    });
    EXPECT_EQ(queue.take()->job.file, "heavy");
    EXPECT_EQ(queue.take()->job.file, "next");
    EXPECT_FALSE(queue.take());
}

TEST(JobQueue, AbandonedHasNoJobsAndTakesNone) {
    JobQueue queue(1);
    EXPECT_TRUE(queue.put(jobOf("a", 1)));
    std::jthread producer([&] { EXPECT_FALSE(queue.put(jobOf("b", 1))); });
    queue.abandon();
    EXPECT_FALSE(queue.take());
    EXPECT_TRUE(queue.isAbandoned());
}

}  // namespace
}  // namespace leafwright::test
