#include "damage/Trial.h"

#include "cli/CommandLine.h"
#include "cli/Console.h"
#include "files/FileWriting.h"

#include <QApplication>
#include <QFile>
#include <QLoggingCategory>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace leafwright::test {

namespace {

/// Ends what would never end by itself, far over what counts as a finding.
void limitProcessorTime() {
    constexpr rlim_t seconds = 40;
    const rlimit limit{seconds, seconds};
    ::setrlimit(RLIMIT_CPU, &limit);
}

void sendTo(int descriptor, const char *path) {
    const int file = ::open(path, O_WRONLY | O_CREAT | O_TRUNC, 0600);
    ::dup2(file, descriptor);
    ::close(file);
}

[[noreturn]] void runAndExit(const QStringList &arguments) {
    int argc = 1;
    char name[] = "leafwright-cli";
    char *argv[] = {name, nullptr};
    std::unique_ptr<QCoreApplication> application;
    if (arguments.first() == QLatin1String("run")) {
        application = std::make_unique<QApplication>(argc, argv);
    } else {
        application = std::make_unique<QCoreApplication>(argc, argv);
    }
    cli::Console console;
    const int status = cli::runCommandLine(arguments, console);
    application.reset();
    std::_Exit(status);
}

}  // namespace

Trial tryCommand(const QStringList &arguments, const QString &messages) {
    const pid_t child = ::fork();
    if (child == 0) {
        sendTo(STDOUT_FILENO, "/dev/null");
        sendTo(STDERR_FILENO, QFile::encodeName(messages).constData());
        limitProcessorTime();
        letHopelessWritesFail();
        runAndExit(arguments);
    }
    int status = 0;
    rusage usage{};
    ::wait4(child, &status, 0, &usage);
    const auto secondsOf = [](const timeval &time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    Trial trial;
    trial.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    trial.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    trial.seconds = secondsOf(usage.ru_utime) + secondsOf(usage.ru_stime);
    trial.megabytes = static_cast<double>(usage.ru_maxrss) / 1024;
    return trial;
}

int runQuietly(const char *program, const QString &argument, const QString &path) {
    const pid_t child = ::fork();
    if (child == 0) {
        sendTo(STDOUT_FILENO, "/dev/null");
        sendTo(STDERR_FILENO, "/dev/null");
        limitProcessorTime();
        ::execlp(program, program, QFile::encodeName(argument).constData(),
                 QFile::encodeName(path).constData(), nullptr);
        std::_Exit(127);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace leafwright::test
