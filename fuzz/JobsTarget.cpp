// What a batch reads: its lines, and its log, which is to be refused or to be one that goes on.

#include "MemoryFile.h"
#include "cli/batch/BatchJob.h"
#include "cli/batch/JobLog.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, size_t size) {
    using namespace leafwright;
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    for (const QByteArray &line : bytes.split('\n')) {
        const auto read = cli::readJob(line);
        const auto *job = std::get_if<cli::BatchJob>(&read);
        if (job && !line.isEmpty() && (job->file.isEmpty() || job->file.contains(QChar::Null))) std::abort();
    }
    const fuzz::MemoryFile file(bytes);
    {
        cli::JobLog log;
        if (log.open(file.path())) return 0;
        if (log.add("{\"file\": null, \"status\": \"failed\", \"job\": null}\n")) std::abort();
    }
    cli::JobLog again;
    if (again.open(file.path())) std::abort();
    return 0;
}
