#include "e2e/XServer.h"

#include <stdexcept>

namespace leafwright::test {

namespace {

constexpr int patience = 60'000;  // milliseconds

}  // namespace

XServer::XServer() {
    // It chooses a display that is free, and says which on its standard output.
    process_.setStandardErrorFile(QProcess::nullDevice());
    process_.start("Xvfb",
                   {"-displayfd", "1", "-screen", "0", "2200x1000x24", "-nolisten", "tcp", "-noreset"});
    if (!process_.waitForStarted(patience)) throw std::runtime_error("Xvfb does not start; is it installed?");
    while (!process_.canReadLine()) {
        if (!process_.waitForReadyRead(patience)) throw std::runtime_error("Xvfb names no display");
    }
    qputenv("DISPLAY", ":" + process_.readLine().trimmed());
}

XServer::~XServer() {
    process_.terminate();
    if (!process_.waitForFinished(patience)) process_.kill();
}

}  // namespace leafwright::test
