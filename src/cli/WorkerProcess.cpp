#include "cli/WorkerProcess.h"

#include "cli/Interruption.h"
#include "files/FileName.h"
#include "files/TemporaryFolder.h"
#include "files/WritingJournal.h"
#include "texts/Translated.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace leafwright::cli {

namespace {

using Clock = std::chrono::steady_clock;

constexpr Translated translated{"WorkerProcess"};

using MessageHandler = std::function<void(const QByteArray &)>;

/// A started worker, the pipe that its messages come through, and its journal.
class Child {
public:
    Child(const QStringList &arguments, WorkerOf waiting, int results)
        : journal_(::memfd_create("leafwright-journal", MFD_CLOEXEC)) {
        int ends[2];
        if (journal_ < 0 || ::pipe2(ends, O_CLOEXEC) != 0) {
            error_ = errno;
            return;
        }
        messages_ = ends[0];
        error_ = startProgram({.arguments = arguments,
                               .waiting = waiting,
                               .results = results,
                               .messages = ends[1],
                               .kept = journal_},
                              id_);
        ::close(ends[1]);
    }
    ~Child() {
        if (messages_ >= 0) ::close(messages_);
        if (journal_ >= 0) ::close(journal_);
    }
    Child(const Child &) = delete;
    Child &operator=(const Child &) = delete;

    int error() const { return error_; }

    /// Hands on messages until the worker ends, the deadline comes, or this program is asked to end.
    /// @return Exited, TimedOut or Cancelled
    WorkerEnd::How wait(std::optional<Clock::time_point> deadline, const MessageHandler &messages) const {
        return listen(deadline, Interruption::descriptor(), messages);
    }

    /// Ends the worker: it may stop what it has started itself, which takes some time, but not for ever.
    void end(const MessageHandler &messages) const {
        constexpr std::chrono::seconds patience(5);
        ::kill(id_, SIGTERM);
        if (listen(Clock::now() + patience, -1, messages) != WorkerEnd::How::Exited) ::kill(id_, SIGKILL);
    }

    /// What it has put in place. Removes what else it has left. For use once it has ended.
    QStringList settle() const {
        TemporaryFolder::removeAbandoned();  // first: what is new in there is nobody's concern
        QStringList written;
        for (const QByteArray &path : settleWritingJournal(journal_))
            written.append(fileNameText(path));
        return written;
    }

    /// Waits for the end.
    int status() const {
        int status = 0;
        while (::waitpid(id_, &status, 0) < 0 && errno == EINTR) {
        }
        return status;
    }

private:
    /// @param interruption a descriptor that can be read from when it is time to stop listening; -1 for none
    WorkerEnd::How listen(std::optional<Clock::time_point> deadline, int interruption,
                          const MessageHandler &messages) const {
        using How = WorkerEnd::How;
        QByteArray buffer(1 << 12, Qt::Uninitialized);
        for (;;) {
            pollfd waiting[] = {{messages_, POLLIN, 0}, {interruption, POLLIN, 0}};
            const int ready = ::poll(waiting, std::size(waiting), deadline ? millisecondsTo(*deadline) : -1);
            if (ready < 0 && errno == EINTR) continue;
            if (ready == 0 && deadline && Clock::now() < *deadline) continue;
            if (ready == 0) return How::TimedOut;
            if (waiting[1].revents != 0) return How::Cancelled;
            // It closes its end of the pipe by ending.
            const ssize_t count = ::read(messages_, buffer.data(), static_cast<size_t>(buffer.size()));
            if (count < 0 && errno == EINTR) continue;
            if (count <= 0) return How::Exited;
            messages(buffer.left(count));
        }
    }

    static int millisecondsTo(Clock::time_point deadline) {
        constexpr std::chrono::milliseconds longest(std::chrono::hours(1));
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
        return static_cast<int>(std::clamp(left, std::chrono::milliseconds(0), longest).count());
    }

    pid_t id_ = 0;
    int messages_ = -1;
    int journal_ = -1;
    int error_ = 0;
};

QString messageOf(const WorkerEnd &end, std::chrono::seconds limit) {
    switch (end.how) {
        case WorkerEnd::How::Signalled:
            return translated("the program ended unexpectedly: %1")
                // NOLINTNEXTLINE(concurrency-mt-unsafe): glibc keeps a text a thread
                .arg(QString::fromLocal8Bit(::strsignal(end.code)));
        case WorkerEnd::How::TimedOut:
            return translated("given up after %1 s").arg(limit.count());
        case WorkerEnd::How::Cancelled:
            return translated("cancelled");
        case WorkerEnd::How::Exited:
        case WorkerEnd::How::NotStarted:
            break;
    }
    return translated("no process could be started: %1")
        .arg(QString::fromLocal8Bit(std::generic_category().message(end.code).c_str()));
}

}  // namespace

std::optional<QString> WorkerEnd::reason(std::chrono::seconds limit) const {
    if (how == How::Exited) return std::nullopt;
    QString text = messageOf(*this, limit);
    for (const QString &path : written)
        text += translated("; %1 was written, but may not outlive a power failure").arg(path);
    return text;
}

WorkerEnd WorkerProcess::run(std::chrono::seconds limit, int results,
                             const std::function<void(const QByteArray &)> &messages) const {
    using How = WorkerEnd::How;
    const auto deadline = limit.count() > 0 ? std::optional(Clock::now() + limit) : std::nullopt;
    const Interruption interruption;
    const Child child(arguments_, waiting_, results);
    if (child.error() != 0) return {How::NotStarted, child.error()};
    const How how = child.wait(deadline, messages);
    if (how != How::Exited) child.end(messages);
    const int status = child.status();
    if (WIFEXITED(status)) return {How::Exited, WEXITSTATUS(status)};
    const QStringList written = child.settle();
    if (how != How::Exited) return {how, 0, written};
    // Ctrl+C reaches both.
    if (Interruption::requested()) return {How::Cancelled, 0, written};
    return {How::Signalled, WTERMSIG(status), written};
}

}  // namespace leafwright::cli
