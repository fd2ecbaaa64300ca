#include "cli/ProgramStart.h"

#include "cli/Command.h"
#include "files/FileName.h"
#include "files/WritingJournal.h"
#include "texts/Translated.h"

#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/prctl.h>
#include <unistd.h>
#include <vector>

namespace leafwright::cli {

namespace {

/// Tells a process whose worker it is: "batch", "command" or "pool", the number of the process that waits for
/// it, and that of the descriptor that it keeps.
constexpr const char *environmentName = "LEAFWRIGHT_WORKER";

QByteArray &program() {
    static QByteArray path = QByteArrayLiteral("/proc/self/exe");
    return path;
}

constexpr Translated translated{"ProgramStart"};

WorkerOf role = WorkerOf::None;
int kept = -1;

/// A list of strings as the system's functions take it.
class StringVector {
public:
    explicit StringVector(QByteArrayList strings) : strings_(std::move(strings)) {
        for (QByteArray &string : strings_)
            pointers_.push_back(string.data());
        pointers_.push_back(nullptr);
    }
    char *const *get() const { return pointers_.data(); }

private:
    QByteArrayList strings_;
    std::vector<char *> pointers_;
};

QByteArray nameOf(WorkerOf waiting) {
    return waiting == WorkerOf::Batch ? "batch" : waiting == WorkerOf::Pool ? "pool" : "command";
}

QByteArrayList environmentFor(WorkerOf waiting, int journal) {
    QByteArrayList environment;
    const QByteArray own = QByteArray(environmentName) + '=';
    for (char **entry = environ; *entry; ++entry) {
        if (!QByteArrayView(*entry).startsWith(own)) environment.append(*entry);
    }
    environment.append(own + nameOf(waiting) + ' ' + QByteArray::number(::getpid()) + ' ' +
                       QByteArray::number(journal));
    return environment;
}

/// What a worker gets: its standard streams, its journal, and the signals that end it.
class SpawnSettings {
public:
    /// @param results -1 for none, and for no standard input
    SpawnSettings(int results, int messages, int journal) {
        posix_spawn_file_actions_init(&actions_);
        if (results < 0) {
            posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
            posix_spawn_file_actions_addopen(&actions_, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        } else {
            posix_spawn_file_actions_adddup2(&actions_, results, STDOUT_FILENO);
        }
        posix_spawn_file_actions_adddup2(&actions_, messages, STDERR_FILENO);
        // Under its own number, which is none that the user has given the program: this only lets it stay
        // open.
        posix_spawn_file_actions_adddup2(&actions_, journal, journal);
        // Whoever has started this program may have it ignore what its workers must not.
        sigset_t heeded;
        sigset_t blocked;
        sigemptyset(&heeded);
        for (const int signal : {SIGTERM, SIGPIPE})
            sigaddset(&heeded, signal);
        sigemptyset(&blocked);
        posix_spawnattr_init(&attributes_);
        posix_spawnattr_setsigdefault(&attributes_, &heeded);
        posix_spawnattr_setsigmask(&attributes_, &blocked);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
    }
    ~SpawnSettings() {
        posix_spawn_file_actions_destroy(&actions_);
        posix_spawnattr_destroy(&attributes_);
    }
    SpawnSettings(const SpawnSettings &) = delete;
    SpawnSettings &operator=(const SpawnSettings &) = delete;

    const posix_spawn_file_actions_t *actions() const { return &actions_; }
    const posix_spawnattr_t *attributes() const { return &attributes_; }

private:
    posix_spawn_file_actions_t actions_{};
    posix_spawnattr_t attributes_{};
};

/// Either the process that waited is gone, and nobody reads this, or the environment is not from one.
[[noreturn]] void endAsNobodysWorker() {
    Console().message(
        translated(
            "%1 is set, but not by the process that has started this one; it is for this program's own "
            "use, so unset it")
            .arg(QLatin1String(environmentName)));
    ::_exit(Failed);
}

}  // namespace

WorkerOf workerOf() {
    return role;
}

int workerDescriptor() {
    return kept;
}

void beginAsWorker() {
    const QByteArray value = qgetenv(environmentName);
    for (const WorkerOf waiting : {WorkerOf::Command, WorkerOf::Batch, WorkerOf::Pool})
        if (value.startsWith(nameOf(waiting) + ' ')) role = waiting;
    if (role == WorkerOf::None) return;
    // The system sends this when the thread ends that has started the worker; it waits for the worker.
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    // It may be too late for that.
    const QByteArrayList words = value.split(' ');
    if (words.size() != 3 || ::getppid() != words[1].toInt()) endAsNobodysWorker();
    kept = words[2].toInt();
    ::fcntl(kept, F_SETFD, FD_CLOEXEC);
    if (role != WorkerOf::Pool) keepWritingJournal(kept);
}

void becomeWorkerOfBatch(int journal) {
    role = WorkerOf::Batch;
    kept = journal;
    keepWritingJournal(journal);
}

int startProgram(const ProgramStart &start, pid_t &id) {
    QByteArrayList words{QByteArrayLiteral("leafwright-cli")};
    for (const QString &argument : start.arguments)
        words.append(fileNameBytes(argument));
    const StringVector argv(std::move(words));
    const StringVector environment(environmentFor(start.waiting, start.kept));
    const SpawnSettings settings(start.results, start.messages, start.kept);
    return ::posix_spawn(&id, program().constData(), settings.actions(), settings.attributes(), argv.get(),
                         environment.get());
}

void setProgramToStart(const QString &path) {
    program() = fileNameBytes(path);
}

}  // namespace leafwright::cli
