// Plays a script on many files in one process, twice, and watches its memory:
//
//     leafwright-script-bench bench/script.json FILE.pdf...
//
// Prints the time a file takes, and the memory after every tenth. Fails if the second time round
// needs noticeably more memory than the first: then something is kept of every file.

#include "document/MyDocument.h"
#include "script/ScriptFiles.h"
#include "script/ScriptPlayer.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QLoggingCategory>
#include <QTemporaryDir>

#include <cstdio>
#include <malloc.h>
#include <unistd.h>

namespace {

namespace script = leafwright::script;

double residentMegabytes() {
    malloc_trim(0);  // What is free but kept back is no leak.
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly)) return 0;
    const double pages = file.readAll().split(' ').value(1).toDouble();
    return pages * static_cast<double>(sysconf(_SC_PAGESIZE)) / (1 << 20);
}

std::vector<script::Step> readSteps(const QString &path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return {};
    const auto steps = script::parseSteps(file.readAll());
    const auto *read = std::get_if<std::vector<script::Step>>(&steps);
    return read ? *read : std::vector<script::Step>();
}

/// @return what went wrong; null if nothing did
QString play(const std::vector<script::Step> &steps, const QString &file, const QString &folder) {
    script::ScriptFiles files(folder);
    script::ScriptPlayer player(files, nullptr);
    if (const auto error = player.open(file)) return error->message;
    if (!player.document()->allowTOCediting()) return QStringLiteral("can't be edited");
    if (const auto failure = player.play(steps)) return *failure;
    QStringList notices;
    return files.publish(notices).value_or(QString());
}

/// @return the memory at the end, in megabytes
double playAll(const std::vector<script::Step> &steps, const QStringList &paths, const QString &folder) {
    QElapsedTimer all;
    all.start();
    qint64 slowest = 0;
    int played = 0;
    for (const QString &path : paths) {
        QElapsedTimer one;
        one.start();
        const QString failure = play(steps, path, folder);
        slowest = std::max(slowest, one.elapsed());
        if (failure.isNull()) {
            ++played;
        } else {
            std::printf("  passed over: %s: %s\n", qPrintable(path), qPrintable(failure));
        }
        constexpr int filesALine = 10;
        if (played % filesALine == 0 && failure.isNull())
            std::printf("%4d files  %7.1f MB\n", played, residentMegabytes());
    }
    const double end = residentMegabytes();
    std::printf("%4d files  %7.1f MB  %.0f ms a file, the slowest %lld ms\n", played, end,
                static_cast<double>(all.elapsed()) / std::max(played, 1), static_cast<long long>(slowest));
    return end;
}

}  // namespace

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("leafwright.*.warning=false\ndefault.warning=false"));
    const QStringList paths = QApplication::arguments().sliced(1);
    const auto steps = readSteps(paths.value(0));
    if (paths.size() < 2 || steps.empty()) {
        std::fputs("usage: leafwright-script-bench STEPS.json FILE.pdf...\n", stderr);
        return 2;
    }
    const QTemporaryDir folder;
    const double first = playAll(steps, paths.sliced(1), folder.path());
    const double second = playAll(steps, paths.sliced(1), folder.path());
    constexpr double noise = 1.05;
    const bool grows = second > first * noise;
    std::printf("%s: %.1f MB after the first time round, %.1f MB after the second\n",
                grows ? "memory grows" : "memory stays", first, second);
    return grows ? 1 : 0;
}
