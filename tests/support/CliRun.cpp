#include "support/CliRun.h"

#include "cli/CommandLine.h"
#include "cli/WorkerProcess.h"
#include "files/FileName.h"
#include "support/Paths.h"

#include <QByteArrayList>

#include <cstdio>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace leafwright::test {

namespace {

QByteArray contentOf(std::FILE *file) {
    std::rewind(file);
    QByteArray content;
    char buffer[4096];
    for (size_t count = 0; (count = std::fread(buffer, 1, sizeof buffer, file)) > 0;) {
        content.append(buffer, static_cast<qsizetype>(count));
    }
    return content;
}

}  // namespace

CliResult runCli(const QStringList &arguments) {
    std::FILE *out = std::tmpfile();
    std::FILE *err = std::tmpfile();
    CliResult result{};
    cli::setProgramToStart(commandLineProgram());  // this one is the tests'
    {
        cli::Console console(out, err);
        result.exitCode = cli::runCommandLine(arguments, console);
    }
    result.out = contentOf(out);
    result.err = contentOf(err);
    std::fclose(out);
    std::fclose(err);
    return result;
}

ProgramResult runProgram(const QString &program, const QStringList &arguments) {
    // Not by QProcess: the child it starts shares this process's memory, and ThreadSanitizer, which does not
    // see that, takes it for a fork and sees races everywhere from then on.
    QByteArrayList words{fileNameBytes(program)};
    for (const QString &argument : arguments)
        words.append(fileNameBytes(argument));
    std::vector<char *> argv;
    for (QByteArray &word : words)
        argv.push_back(word.data());
    argv.push_back(nullptr);

    std::FILE *out = std::tmpfile();
    std::FILE *err = std::tmpfile();
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, fileno(out), STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, fileno(err), STDERR_FILENO);
    pid_t child = 0;
    int status = 0;
    const bool started = posix_spawnp(&child, argv[0], &actions, nullptr, argv.data(), environ) == 0;
    const bool ended = started && waitpid(child, &status, 0) == child && WIFEXITED(status);
    posix_spawn_file_actions_destroy(&actions);
    ProgramResult result{ended ? WEXITSTATUS(status) : -1, contentOf(out), contentOf(err)};
    std::fclose(out);
    std::fclose(err);
    return result;
}

}  // namespace leafwright::test
