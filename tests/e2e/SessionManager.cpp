#include "e2e/SessionManager.h"

#include <array>
#include <cstdlib>
#include <poll.h>
#include <stdexcept>
#include <vector>

// Last, since it has macros for words such as Bool and Status.
#include <X11/SM/SMlib.h>

namespace leafwright::test {

struct SessionManager::State {
    IceListenObj *listeners = nullptr;
    int listenerCount = 0;
    std::vector<IceConn> connections;
    std::vector<SmsConn> programs;
    size_t saved = 0;  ///< How many of them have said so.

    static State &of(SmPointer data) { return *static_cast<State *>(data); }

    // What programs have to say

    static Status join(SmsConn program, SmPointer data, char *previousId) {
        std::free(previousId);
        char *id = SmsGenerateClientID(program);
        std::array<char, 2> anyId{'1', '\0'};
        SmsRegisterClientReply(program, id ? id : anyId.data());
        std::free(id);
        of(data).programs.push_back(program);
        return 1;
    }
    static void beReady(SmsConn /*program*/, SmPointer data, Bool /*success*/) { ++of(data).saved; }
    static void saveSecondPhase(SmsConn program, SmPointer /*data*/) { SmsSaveYourselfPhase2(program); }
    static void ask(SmsConn program, SmPointer /*data*/, int /*dialogType*/) { SmsInteract(program); }
    static void haveAsked(SmsConn /*program*/, SmPointer /*data*/, Bool /*cancel*/) {}
    static void wantToSave(SmsConn /*program*/, SmPointer /*data*/, int /*type*/, Bool /*shutdown*/,
                           int /*interaction*/, Bool /*fast*/, Bool /*global*/) {}
    static void leave(SmsConn program, SmPointer data, int count, char **reasons) {
        SmFreeReasons(count, reasons);
        std::erase(of(data).programs, program);
        SmsCleanUp(program);
    }
    static void setProperties(SmsConn /*program*/, SmPointer /*data*/, int count, SmProp **properties) {
        for (int i = 0; i < count; ++i)
            SmFreeProperty(properties[i]);
        std::free(properties);
    }
    static void deleteProperties(SmsConn /*program*/, SmPointer /*data*/, int count, char **names) {
        for (int i = 0; i < count; ++i)
            std::free(names[i]);
        std::free(names);
    }
    static void getProperties(SmsConn program, SmPointer /*data*/) {
        SmsReturnProperties(program, 0, nullptr);
    }
    static Status meet(SmsConn /*program*/, SmPointer data, unsigned long *mask, SmsCallbacks *callbacks,
                       char ** /*reason*/) {
        constexpr unsigned long all = (1UL << 10U) - 1;
        *mask = all;
        *callbacks = {{join, data},
                      {ask, data},
                      {haveAsked, data},
                      {wantToSave, data},
                      {saveSecondPhase, data},
                      {beReady, data},
                      {leave, data},
                      {setProperties, data},
                      {deleteProperties, data},
                      {getProperties, data}};
        return 1;
    }

    void acceptFrom(IceListenObj listener) {
        IceAcceptStatus status = IceAcceptSuccess;
        if (const IceConn connection = IceAcceptConnection(listener, &status))
            connections.push_back(connection);
    }
    /// Does what there is to do, and waits for nothing.
    void listen() {
        const auto isReadable = [](int descriptor) {
            pollfd waiting{descriptor, POLLIN, 0};
            return ::poll(&waiting, 1, 0) > 0;
        };
        for (int i = 0; i < listenerCount; ++i)
            if (isReadable(IceGetListenConnectionNumber(listeners[i]))) acceptFrom(listeners[i]);
        std::erase_if(connections, [&](IceConn connection) {
            bool isOpen = true;
            while (isOpen && isReadable(IceConnectionNumber(connection)))
                isOpen = IceProcessMessages(connection, nullptr, nullptr) == IceProcessMessagesSuccess;
            if (!isOpen) close(connection);
            return !isOpen;
        });
    }
    /// What is still said over a connection has to end before it.
    void close(IceConn connection) {
        std::erase_if(programs, [connection](SmsConn program) {
            const bool isItsOwn = SmsGetIceConnection(program) == connection;
            if (isItsOwn) SmsCleanUp(program);
            return isItsOwn;
        });
        IceSetShutdownNegotiation(connection, 0);
        IceCloseConnection(connection);
    }
};

SessionManager::SessionManager() : state_(std::make_unique<State>()) {
    // Whoever it is: programs of the test have a folder for cookies of their own.
    const auto letIn = [](char * /*host*/) -> Bool { return 1; };
    // By itself it would end this program when another one ends.
    IceSetIOErrorHandler([](IceConn /*connection*/) {});
    std::array<char, 256> why{};
    const auto room = static_cast<int>(why.size());
    if (!SmsInitialize("test", "1", State::meet, state_.get(), letIn, room, why.data()) ||
        !IceListenForConnections(&state_->listenerCount, &state_->listeners, room, why.data()))
        throw std::runtime_error(std::string("no session: ") + why.data());
    for (int i = 0; i < state_->listenerCount; ++i)
        IceSetHostBasedAuthProc(state_->listeners[i], letIn);
}

SessionManager::~SessionManager() {
    for (const IceConn connection : state_->connections)
        state_->close(connection);
    IceFreeListenObjs(state_->listenerCount, state_->listeners);
}

QByteArray SessionManager::address() const {
    char *list = IceComposeNetworkIdList(state_->listenerCount, state_->listeners);
    const QByteArray address = list;
    std::free(list);
    return address;
}

bool SessionManager::hasProgram() {
    state_->listen();
    return !state_->programs.empty();
}

void SessionManager::end() {
    state_->saved = 0;
    for (const SmsConn program : state_->programs)
        SmsSaveYourself(program, SmSaveBoth, 1, SmInteractStyleAny, 0);
}

bool SessionManager::isSaved() {
    state_->listen();
    return state_->saved >= state_->programs.size();
}

}  // namespace leafwright::test
