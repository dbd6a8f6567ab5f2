// A session manager for the tests. Prints "address …", the value for SESSION_MANAGER, then "registered" for every
// client. On the line "logout" it asks all clients to save and prints "saved" when they are done; on "die" it tells
// them to exit.

#include <X11/ICE/ICElib.h>
#include <X11/SM/SMlib.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <poll.h>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

extern "C" void _IceTransNoListen(const char *protocol); // NOLINT: exported by the library, but in no header.

namespace {

std::vector<SmsConn> clients;     // NOLINT: the library's callbacks have no user data.
std::vector<IceConn> connections; // NOLINT
bool isLoggingOut = false;        // NOLINT

void say(const std::string &line)
{
    std::printf("%s\n", line.c_str());
    std::fflush(stdout);
}

Status registerClient(SmsConn client, SmPointer, char *previousId)
{
    if (previousId != nullptr) {
        free(previousId); // NOLINT: allocated by the library.
        return 0;
    }
    char *id = SmsGenerateClientID(client);
    SmsRegisterClientReply(client, id);
    free(id); // NOLINT
    clients.push_back(client);
    SmsSaveYourself(client, SmSaveLocal, False, SmInteractStyleNone, False);
    say("registered");
    return 1;
}

void saved(SmsConn client, SmPointer, Bool)
{
    if (isLoggingOut) {
        say("saved");
    } else {
        SmsSaveComplete(client);
    }
}

void closed(SmsConn client, SmPointer, int, char **)
{
    std::erase(clients, client);
    IceConn connection = SmsGetIceConnection(client);
    std::erase(connections, connection);
    SmsCleanUp(client);
    IceSetShutdownNegotiation(connection, False);
    IceCloseConnection(connection);
}

Status newClient(SmsConn, SmPointer, unsigned long *mask, SmsCallbacks *callbacks, char **)
{
    *mask = SmsRegisterClientProcMask | SmsInteractRequestProcMask | SmsInteractDoneProcMask |
            SmsSaveYourselfRequestProcMask | SmsSaveYourselfP2RequestProcMask | SmsSaveYourselfDoneProcMask |
            SmsCloseConnectionProcMask | SmsSetPropertiesProcMask | SmsDeletePropertiesProcMask |
            SmsGetPropertiesProcMask;
    callbacks->register_client.callback = &registerClient;
    callbacks->interact_request.callback = [](SmsConn client, SmPointer, int) { SmsInteract(client); };
    callbacks->interact_done.callback = [](SmsConn, SmPointer, Bool) {};
    callbacks->save_yourself_request.callback = [](SmsConn, SmPointer, int, Bool, int, Bool, Bool) {};
    callbacks->save_yourself_phase2_request.callback = [](SmsConn client, SmPointer) { SmsSaveYourselfPhase2(client); };
    callbacks->save_yourself_done.callback = &saved;
    callbacks->close_connection.callback = &closed;
    callbacks->set_properties.callback = [](SmsConn, SmPointer, int count, SmProp **properties) {
        std::for_each(properties, properties + count, &SmFreeProperty);
        free(properties); // NOLINT
    };
    callbacks->delete_properties.callback = [](SmsConn, SmPointer, int count, char **names) {
        std::for_each(names, names + count, [](char *name) { free(name); }); // NOLINT
        free(names);                                                         // NOLINT
    };
    callbacks->get_properties.callback = [](SmsConn client, SmPointer) { SmsReturnProperties(client, 0, nullptr); };
    return 1;
}

void obey(const std::string &line)
{
    for (SmsConn client : std::vector(clients)) {
        if (line == "logout") {
            isLoggingOut = true;
            SmsSaveYourself(client, SmSaveBoth, True, SmInteractStyleAny, False);
        } else if (line == "die") {
            SmsDie(client);
        }
    }
}

void accept(IceListenObj listener)
{
    IceAcceptStatus status{};
    IceConn connection = IceAcceptConnection(listener, &status);
    if (connection == nullptr) {
        return;
    }
    while (IceConnectionStatus(connection) == IceConnectPending) {
        IceProcessMessages(connection, nullptr, nullptr);
    }
    connections.push_back(connection);
}

} // namespace

int main()
{
    char error[256] = {};
    _IceTransNoListen("tcp");
    int count = 0;
    IceListenObj *listeners = nullptr;
    const auto anybody = [](char *) -> Bool { return True; };
    if (SmsInitialize("Test", "1", &newClient, nullptr, anybody, sizeof(error), error) == 0 ||
        IceListenForConnections(&count, &listeners, sizeof(error), error) == 0) {
        std::fprintf(stderr, "%s\n", error);
        return EXIT_FAILURE;
    }
    IceSetIOErrorHandler([](IceConn) {});
    for (int index = 0; index < count; ++index) {
        IceSetHostBasedAuthProc(listeners[index], anybody);
    }
    say(std::string("address ") + IceComposeNetworkIdList(count, listeners));
    std::string input;
    while (true) {
        std::vector<pollfd> polled{{STDIN_FILENO, POLLIN, 0}};
        for (int index = 0; index < count; ++index) {
            polled.push_back({IceGetListenConnectionNumber(listeners[index]), POLLIN, 0});
        }
        const auto known = connections;
        for (IceConn connection : known) {
            polled.push_back({IceConnectionNumber(connection), POLLIN, 0});
        }
        poll(polled.data(), polled.size(), -1);
        if (polled[0].revents != 0) {
            char byte = 0;
            if (read(STDIN_FILENO, &byte, 1) != 1) {
                return EXIT_SUCCESS;
            }
            if (byte == '\n') {
                obey(std::exchange(input, {}));
            } else {
                input += byte;
            }
        }
        for (std::size_t index = 1; index < polled.size(); ++index) {
            if (polled[index].revents == 0) {
                continue;
            }
            if (index <= static_cast<std::size_t>(count)) {
                accept(listeners[index - 1]);
            } else if (IceProcessMessages(known[index - 1 - static_cast<std::size_t>(count)], nullptr, nullptr) ==
                       IceProcessMessagesIOError) {
                std::erase(connections, known[index - 1 - static_cast<std::size_t>(count)]);
            }
        }
    }
}
