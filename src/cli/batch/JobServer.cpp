#include "cli/batch/JobServer.h"

#include "cli/Command.h"
#include "cli/batch/Frames.h"
#include "cli/batch/WorkerJob.h"
#include "files/FileName.h"
#include "files/FileReading.h"
#include "files/FileReplacement.h"
#include "files/FileTarget.h"
#include "files/FileWriting.h"
#include "files/TemporaryFolder.h"
#include "files/UnfinishedFiles.h"
#include "files/WritingJournal.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <iterator>
#include <poll.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace leafwright::cli {

namespace {

using Clock = std::chrono::steady_clock;
using Run = std::function<int(const QStringList &arguments, Console &console)>;

constexpr qint64 mostSaid = 64 << 10;
constexpr qint64 mostPrinted = 64 << 20;

/// A file without a name, in memory, that outlives who writes it.
class MemoryFile {
public:
    explicit MemoryFile(const char *name) : descriptor_(::memfd_create(name, MFD_CLOEXEC)) {}
    ~MemoryFile() {
        if (descriptor_ >= 0) ::close(descriptor_);
    }
    MemoryFile(const MemoryFile &) = delete;
    MemoryFile &operator=(const MemoryFile &) = delete;

    int descriptor() const { return descriptor_; }
    /// What has been written, from its beginning.
    QByteArray content(qint64 most) const {
        QByteArray bytes(static_cast<qsizetype>(std::min(most, size())), Qt::Uninitialized);
        const ssize_t count = ::pread(descriptor_, bytes.data(), static_cast<size_t>(bytes.size()), 0);
        bytes.truncate(std::max<ssize_t>(count, 0));
        return bytes;
    }
    qint64 size() const { return std::max<qint64>(::lseek(descriptor_, 0, SEEK_END), 0); }

private:
    int descriptor_;
};

/// A descriptor that can be read from once a process has ended; -1 with errno set where there can be none.
/// The header of glibc 2.36 that declares pidfd_open() is for C only.
int openProcess(pid_t id) {
    return static_cast<int>(::syscall(SYS_pidfd_open, id, 0));
}

/// What a worker leaves behind.
struct Traces {
    MemoryFile journal{"leafwright-journal"};
    MemoryFile printed{"leafwright-results"};
    MemoryFile said{"leafwright-messages"};
    MemoryFile facts{"leafwright-facts"};

    bool areThere() const {
        return std::min(
                   {journal.descriptor(), printed.descriptor(), said.descriptor(), facts.descriptor()}) >= 0;
    }
};

/// Has this process ask for no more memory, and has the system end it before others when there is none left.
void limitMemory(qint64 bytes) {
    const int badness = ::open("/proc/self/oom_score_adj", O_WRONLY | O_CLOEXEC);
    if (badness >= 0) {
        constexpr char worst[] = "1000";
        writeWhole(badness, worst, sizeof worst - 1);
        ::close(badness);
    }
    if (bytes <= 0) return;
    const auto limit = static_cast<rlim_t>(bytes);
    const rlimit limits{limit, limit};
    ::setrlimit(RLIMIT_DATA, &limits);
}

/// Looks for what killed programs have left beside a result. The copies of this process know then that it has
/// been done, which takes long where there are very many results.
void tidyUpBeside(const QString &out) {
    const auto found = findTarget(out);
    const auto *target = std::get_if<FileTarget>(&found);
    if (!target || target->isStream()) return;
    const QByteArray path = target->folder();
    const int folder = ::open(path.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0) return;
    removeAbandonedFiles(folder, path);
    ::close(folder);
}

/// Puts what was printed into a file. @return why it is not there
std::optional<QString> savePrinted(const QString &path, Console &console) {
    ::lseek(STDOUT_FILENO, 0, SEEK_SET);
    const auto content = readDescriptor(STDOUT_FILENO);
    if (const auto *reason = std::get_if<QString>(&content)) return *reason;
    const auto &bytes = std::get<QByteArray>(content);
    FileReplacement file(path);
    const bool written = file.start() && file.write(bytes) == bytes.size() &&
                         file.commit() == FileReplacement::Outcome::Written;
    for (const QString &notice : file.notices())
        console.message(notice);
    return written ? std::nullopt : std::optional(file.message());
}

/// The process that does a job.
class Worker {
public:
    Worker(const WorkerJob &job, const Run &run, int socket) : socket_(socket) {
        const pid_t server = ::getpid();
        if (!traces_.areThere()) {
            error_ = EMFILE;
            return;
        }
        id_ = ::fork();
        if (id_ == 0) work(job, run, server);
        error_ = id_ < 0 ? errno : 0;
        if (id_ < 0) return;
        // Both do so, since either may be first. What it has started itself is of its group.
        ::setpgid(id_, id_);
        process_ = openProcess(id_);
        if (process_ < 0) {
            error_ = errno;  // nobody would notice its end
            ::kill(id_, SIGKILL);
            qint64 peak = 0;
            bury(peak);
        }
    }
    ~Worker() {
        if (process_ >= 0) ::close(process_);
    }
    Worker(const Worker &) = delete;
    Worker &operator=(const Worker &) = delete;

    int error() const { return error_; }
    const Traces &traces() const { return traces_; }

    /// Waits for the end, or brings it about. @param peak gets the most memory it had, in bytes
    WorkerEnd end(std::chrono::seconds limit, qint64 &peak) const {
        using How = WorkerEnd::How;
        const auto deadline = limit.count() > 0 ? std::optional(Clock::now() + limit) : std::nullopt;
        const How how = wait(deadline, socket_);
        if (how != How::Exited) {
            constexpr std::chrono::seconds patience(5);
            ::kill(id_, SIGTERM);
            if (wait(Clock::now() + patience, -1) != How::Exited) ::kill(-id_, SIGKILL);
        }
        const int status = bury(peak);
        if (WIFEXITED(status)) return {How::Exited, WEXITSTATUS(status)};
        const QStringList written = settle();
        return how != How::Exited ? WorkerEnd{how, 0, written}
                                  : WorkerEnd{How::Signalled, WTERMSIG(status), written};
    }

private:
    [[noreturn]] void work(const WorkerJob &job, const Run &run, pid_t server) const {
        ::setpgid(0, 0);
        ::prctl(PR_SET_PDEATHSIG, SIGTERM);
        sigset_t none;
        sigemptyset(&none);
        ::sigprocmask(SIG_SETMASK, &none, nullptr);
        if (::getppid() != server) ::_exit(Failed);
        ::close(socket_);
        ::dup2(traces_.printed.descriptor(), STDOUT_FILENO);
        ::dup2(traces_.said.descriptor(), STDERR_FILENO);
        becomeWorkerOfBatch(traces_.journal.descriptor());
        limitMemory(job.memoryLimit);
        Console console;
        int code = run(job.arguments, console);
        const auto problem =
            code == Done && !job.printTo.isEmpty() ? savePrinted(job.printTo, console) : std::nullopt;
        if (problem) {
            console.message(*problem);
            code = Failed;
        }
        const qint64 facts[] = {console.facts().pages.value_or(-1), console.facts().entries.value_or(-1)};
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): numbers as bytes, for our own eyes
        writeWhole(traces_.facts.descriptor(), reinterpret_cast<const char *>(facts), sizeof facts);
        ::_exit(code);
    }

    /// @param socket that can be read from when the job is no longer wanted; -1 for none
    /// @return Exited, TimedOut or Cancelled
    WorkerEnd::How wait(std::optional<Clock::time_point> deadline, int socket) const {
        using How = WorkerEnd::How;
        for (;;) {
            pollfd waiting[] = {{process_, POLLIN, 0}, {socket, POLLIN, 0}};
            const int ready = ::poll(waiting, std::size(waiting), deadline ? millisecondsTo(*deadline) : -1);
            if (ready < 0 && errno == EINTR) continue;
            if (ready == 0 && deadline && Clock::now() < *deadline) continue;
            if (ready == 0) return How::TimedOut;
            return waiting[0].revents != 0 ? How::Exited : How::Cancelled;
        }
    }

    static int millisecondsTo(Clock::time_point deadline) {
        constexpr std::chrono::milliseconds longest(std::chrono::hours(1));
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
        return static_cast<int>(std::clamp(left, std::chrono::milliseconds(0), longest).count());
    }

    /// Waits for the end, and ends what it has left running. @return how it ended, as wait(2) has it
    int bury(qint64 &peak) const {
        siginfo_t info{};
        // Until it is buried, nobody else gets its number.
        while (::waitid(P_PID, static_cast<id_t>(id_), &info, WEXITED | WNOWAIT) < 0 && errno == EINTR) {
        }
        ::kill(-id_, SIGKILL);
        int status = 0;
        rusage usage{};
        while (::wait4(id_, &status, 0, &usage) < 0 && errno == EINTR) {
        }
        peak = qint64{usage.ru_maxrss} << 10;
        return status;
    }

    /// What it has put in place. Removes what else it has left.
    QStringList settle() const {
        TemporaryFolder::removeAbandoned();
        QStringList written;
        for (const QByteArray &path : settleWritingJournal(traces_.journal.descriptor()))
            written.append(fileNameText(path));
        return written;
    }

    int socket_;
    Traces traces_;
    pid_t id_ = 0;
    int process_ = -1;
    int error_ = 0;
};

FileFacts factsIn(const MemoryFile &file) {
    qint64 facts[] = {-1, -1};
    if (::pread(file.descriptor(), facts, sizeof facts, 0) != static_cast<ssize_t>(sizeof facts)) return {};
    FileFacts known;
    if (facts[0] >= 0) known.pages = facts[0];
    if (facts[1] >= 0) known.entries = facts[1];
    return known;
}

WorkerReport perform(const WorkerJob &job, const Run &run, int socket) {
    const auto begin = Clock::now();
    WorkerReport report;
    if (!job.out.isEmpty()) tidyUpBeside(job.out);
    const Worker worker(job, run, socket);
    const Traces &traces = worker.traces();
    if (worker.error() != 0) {
        report.end = {WorkerEnd::How::NotStarted, worker.error()};
        return report;
    }
    report.end = worker.end(job.timeLimit, report.peakBytes);
    report.seconds = std::chrono::duration<double>(Clock::now() - begin).count();
    report.facts = factsIn(traces.facts);
    report.said = traces.said.content(mostSaid);
    if (!job.printTo.isEmpty()) return report;
    report.printedTooMuch = traces.printed.size() > mostPrinted;
    if (!report.printedTooMuch) report.printed = traces.printed.content(mostPrinted);
    return report;
}

}  // namespace

int serveJobs(const Run &run) {
    const int socket = workerDescriptor();
    // Ctrl+C reaches all of the terminal's programs. It is the batch that says what is to end.
    sigset_t heldBack;
    sigemptyset(&heldBack);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        sigaddset(&heldBack, signal);
    ::sigprocmask(SIG_BLOCK, &heldBack, nullptr);
    std::signal(SIGCHLD, SIG_DFL);  // or nobody could be waited for
    while (const auto frame = receiveFrame(socket)) {
        const auto job = decodedJob(*frame);
        if (!job || !sendFrame(socket, encoded(perform(*job, run, socket)))) return Failed;
    }
    return Done;
}

}  // namespace leafwright::cli
