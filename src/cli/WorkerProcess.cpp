#include "cli/WorkerProcess.h"

#include "files/FileName.h"
#include "texts/Translated.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace leafwright::cli {

namespace {

using Clock = std::chrono::steady_clock;

/// Tells a process whose worker it is.
constexpr const char *environmentName = "LEAFWRIGHT_WORKER";

QByteArray &program() {
    static QByteArray path = QByteArrayLiteral("/proc/self/exe");
    return path;
}

constexpr Translated translated{"WorkerProcess"};

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

QByteArrayList environmentFor(WorkerOf waiting) {
    QByteArrayList environment;
    const QByteArray own = QByteArray(environmentName) + '=';
    for (char **entry = environ; *entry; ++entry) {
        if (!QByteArrayView(*entry).startsWith(own)) environment.append(*entry);
    }
    environment.append(own + (waiting == WorkerOf::Batch ? "batch" : "command"));
    return environment;
}

/// A started worker, and the pipe that its messages come through.
class Child {
public:
    Child(const QStringList &arguments, WorkerOf waiting, int results) {
        int ends[2];
        if (::pipe2(ends, O_CLOEXEC) != 0) {
            error_ = errno;
            return;
        }
        messages_ = ends[0];
        QByteArrayList words{QByteArrayLiteral("leafwright-cli")};
        for (const QString &argument : arguments)
            words.append(fileNameBytes(argument));
        const StringVector argv(std::move(words));
        const StringVector environment(environmentFor(waiting));
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        if (results < 0) {
            posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
            posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        } else {
            posix_spawn_file_actions_adddup2(&actions, results, STDOUT_FILENO);
        }
        posix_spawn_file_actions_adddup2(&actions, ends[1], STDERR_FILENO);
        error_ = ::posix_spawn(&id_, program().constData(), &actions, nullptr, argv.get(), environment.get());
        posix_spawn_file_actions_destroy(&actions);
        ::close(ends[1]);
    }
    ~Child() {
        if (messages_ >= 0) ::close(messages_);
    }
    Child(const Child &) = delete;
    Child &operator=(const Child &) = delete;

    int error() const { return error_; }

    /// Hands on messages until the worker closes its end of the pipe, which it does by ending.
    /// @return whether that was before the deadline
    bool listen(std::optional<Clock::time_point> deadline,
                const std::function<void(const QByteArray &)> &messages) const {
        QByteArray buffer(1 << 12, Qt::Uninitialized);
        for (;;) {
            pollfd waiting{messages_, POLLIN, 0};
            const int ready = ::poll(&waiting, 1, deadline ? millisecondsTo(*deadline) : -1);
            if (ready < 0 && errno == EINTR) continue;
            if (ready == 0 && deadline && Clock::now() < *deadline) continue;
            if (ready == 0) return false;
            const ssize_t count = ::read(messages_, buffer.data(), static_cast<size_t>(buffer.size()));
            if (count < 0 && errno == EINTR) continue;
            if (count <= 0) return true;
            messages(buffer.left(count));
        }
    }

    void kill() const { ::kill(id_, SIGKILL); }

    /// Waits for the end.
    int status() const {
        int status = 0;
        while (::waitpid(id_, &status, 0) < 0 && errno == EINTR) {
        }
        return status;
    }

private:
    static int millisecondsTo(Clock::time_point deadline) {
        constexpr std::chrono::milliseconds longest(std::chrono::hours(1));
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
        return static_cast<int>(std::clamp(left, std::chrono::milliseconds(0), longest).count());
    }

    pid_t id_ = 0;
    int messages_ = -1;
    int error_ = 0;
};

}  // namespace

WorkerOf workerOf() {
    const QByteArray value = qgetenv(environmentName);
    return value == "batch" ? WorkerOf::Batch : value == "command" ? WorkerOf::Command : WorkerOf::None;
}

std::optional<QString> WorkerEnd::reason(std::chrono::seconds limit) const {
    switch (how) {
        case How::Exited:
            return std::nullopt;
        case How::Signalled:
            return translated("the program ended unexpectedly: %1")
                .arg(QString::fromLocal8Bit(::strsignal(code)));
        case How::TimedOut:
            return translated("given up after %1 s").arg(limit.count());
        case How::NotStarted:
            break;
    }
    return translated("no process could be started: %1")
        .arg(QString::fromLocal8Bit(std::generic_category().message(code).c_str()));
}

void WorkerProcess::setProgram(const QString &path) {
    program() = fileNameBytes(path);
}

WorkerEnd WorkerProcess::run(std::chrono::seconds limit, int results,
                             const std::function<void(const QByteArray &)> &messages) const {
    using How = WorkerEnd::How;
    const auto deadline = limit.count() > 0 ? std::optional(Clock::now() + limit) : std::nullopt;
    const Child child(arguments_, waiting_, results);
    if (child.error() != 0) return {How::NotStarted, child.error()};
    const bool inTime = child.listen(deadline, messages);
    if (!inTime) child.kill();
    const int status = child.status();
    if (!inTime) return {How::TimedOut, 0};
    return WIFEXITED(status) ? WorkerEnd{How::Exited, WEXITSTATUS(status)}
                             : WorkerEnd{How::Signalled, WTERMSIG(status)};
}

}  // namespace leafwright::cli
