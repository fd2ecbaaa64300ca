#include "cli/batch/ForkServer.h"

#include "cli/Interruption.h"
#include "cli/batch/Frames.h"

#include <cerrno>
#include <iterator>
#include <poll.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace leafwright::cli {

WorkerReport ForkServer::run(const WorkerJob &job) {
    using How = WorkerEnd::How;
    const Interruption interruption;
    WorkerReport report;
    if (Interruption::requested()) {
        report.end = {How::Cancelled};
        return report;
    }
    if (const int error = socket_ < 0 ? start() : 0; error != 0) {
        report.end = {How::NotStarted, error};
        return report;
    }
    if (sendFrame(socket_, encoded(job))) {
        waitForReport();
        const auto frame = receiveFrame(socket_);
        if (const auto received = frame ? decodedReport(*frame) : std::nullopt) return *received;
    }
    const int status = stop();
    report.end = Interruption::requested() ? WorkerEnd{How::Cancelled}
                 : WIFSIGNALED(status)     ? WorkerEnd{How::Signalled, WTERMSIG(status)}
                                           : WorkerEnd{How::NotStarted, ECHILD};
    return report;
}

int ForkServer::start() {
    int ends[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) return errno;
    const ProgramStart program{
        .arguments = {command_}, .waiting = WorkerOf::Pool, .messages = STDERR_FILENO, .kept = ends[1]};
    const int error = startProgram(program, id_);
    ::close(ends[1]);
    if (error == 0) {
        socket_ = ends[0];
    } else {
        ::close(ends[0]);
    }
    return error;
}

int ForkServer::stop() {
    if (socket_ < 0) return 0;
    ::close(socket_);  // which it takes for the end
    socket_ = -1;
    int status = 0;
    while (::waitpid(id_, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
}

/// Until there is a report, or nobody left to write one. A request to end the program is passed on, and the
/// report then is of how that ended.
void ForkServer::waitForReport() const {
    int interruption = Interruption::descriptor();
    for (;;) {
        pollfd waiting[] = {{socket_, POLLIN, 0}, {interruption, POLLIN, 0}};
        const int ready = ::poll(waiting, std::size(waiting), -1);
        if (ready < 0 && errno == EINTR) continue;
        if (ready < 0 || waiting[0].revents != 0) return;
        ::shutdown(socket_, SHUT_WR);
        interruption = -1;
    }
}

}  // namespace leafwright::cli
