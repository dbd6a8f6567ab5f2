#include "Platform/Linux/System/TcpOwners.h"

#include <QList>

#include <algorithm>
#include <array>
#include <cstring>

#include <netinet/in.h>

namespace talmo {

namespace {

/// States as the kernel numbers them.
constexpr int established = 1;
constexpr int beingEstablished = 3; ///< Accepting is deferred until data arrives.
constexpr int listening = 10;

/// One row of the table. IPv4 addresses are stored as IPv4-mapped IPv6 addresses; `isVersion6` tells which table the
/// row is from.
struct Row {
    in6_addr local{};
    in6_addr remote{};
    quint16 localPort = 0;
    quint16 remotePort = 0;
    int state = 0;
    uid_t user = 0;
    qulonglong inode = 0;
    bool isVersion6 = false;
};

bool operator==(const in6_addr &left, const in6_addr &right)
{
    return std::memcmp(&left, &right, sizeof(left)) == 0;
}

in6_addr mapped(quint32 inNetworkOrder)
{
    in6_addr address{};
    address.s6_addr[10] = 0xFF;
    address.s6_addr[11] = 0xFF;
    std::memcpy(&address.s6_addr[12], &inNetworkOrder, sizeof(inNetworkOrder));
    return address;
}

in6_addr addressOf(const QHostAddress &address)
{
    bool isVersion4 = false;
    const quint32 version4 = address.toIPv4Address(&isVersion4);
    if (isVersion4) {
        return mapped(htonl(version4));
    }
    const Q_IPV6ADDR bytes = address.toIPv6Address();
    in6_addr result{};
    std::memcpy(&result, &bytes, sizeof(result));
    return result;
}

/// Parses "0100007F:1F90": 32-bit words in this machine's byte order, then the port.
bool readEndpoint(const QByteArray &field, in6_addr &address, quint16 &port)
{
    constexpr qsizetype wordDigits = 8;
    constexpr qsizetype mostWords = 4;
    const auto colon = field.indexOf(':');
    if (colon != wordDigits && colon != mostWords * wordDigits) {
        return false;
    }
    std::array<quint32, mostWords> words{};
    bool isNumber = true;
    for (qsizetype word = 0; word * wordDigits < colon && isNumber; ++word) {
        words.at(static_cast<std::size_t>(word)) = field.mid(word * wordDigits, wordDigits).toUInt(&isNumber, 16);
    }
    if (colon == wordDigits) {
        address = mapped(words[0]);
    } else {
        std::memcpy(&address, words.data(), sizeof(address));
    }
    bool isPort = false;
    port = field.mid(colon + 1).toUShort(&isPort, 16);
    return isNumber && isPort;
}

std::optional<Row> readRow(const QByteArray &line, bool isVersion6)
{
    enum Field { Number, Local, Remote, State, Queues, Timer, Retransmits, User, Timeout, Inode, Count };
    const auto fields = line.simplified().split(' ');
    if (fields.size() < Count) {
        return std::nullopt;
    }
    Row row;
    row.isVersion6 = isVersion6;
    bool isState = false;
    bool isUser = false;
    bool isInode = false;
    row.state = fields[State].toInt(&isState, 16);
    row.user = fields[User].toUInt(&isUser);
    row.inode = fields[Inode].toULongLong(&isInode);
    const bool isRow = isState && isUser && isInode && readEndpoint(fields[Local], row.local, row.localPort) &&
                       readEndpoint(fields[Remote], row.remote, row.remotePort);
    return isRow ? std::optional(row) : std::nullopt;
}

QList<Row> readRows(const QByteArray &tcp, const QByteArray &tcp6)
{
    QList<Row> rows;
    for (const bool isVersion6 : {false, true}) {
        for (const auto &line : (isVersion6 ? tcp6 : tcp).split('\n')) {
            if (const auto row = readRow(line, isVersion6)) {
                rows.append(*row);
            }
        }
    }
    return rows;
}

/// The kernel's precedence among listeners for an address: the highest gets the connection; 0 never gets it.
int precedence(const Row &listener, const in6_addr &address)
{
    enum { None, AnyOfBoth, Any, ExactOfBoth, Exact };
    const bool isVersion4 = IN6_IS_ADDR_V4MAPPED(&address);
    if (listener.local == address) {
        return isVersion4 && listener.isVersion6 ? ExactOfBoth : Exact;
    }
    if (isVersion4 && listener.local == mapped(INADDR_ANY)) {
        return listener.isVersion6 ? AnyOfBoth : Any;
    }
    return listener.local == in6addr_any ? AnyOfBoth : None;
}

std::optional<uid_t> listenerOwner(const QList<Row> &rows, const in6_addr &address, quint16 port)
{
    int best = 0;
    std::optional<uid_t> owner;
    for (const auto &row : rows) {
        if (row.state != listening || row.localPort != port) {
            continue;
        }
        const int rank = precedence(row, address);
        if (rank > best) {
            best = rank;
            owner = row.user;
        } else if (rank == best && rank > 0 && owner != row.user) {
            owner = std::nullopt; // The listeners share the port, and either may get the connection.
        }
    }
    return owner;
}

} // namespace

std::optional<uid_t> serverOwner(const QByteArray &tcp, const QByteArray &tcp6, const Endpoint &server,
                                 const Endpoint &client)
{
    const auto rows = readRows(tcp, tcp6);
    const in6_addr serverAddress = addressOf(server.address);
    const in6_addr clientAddress = addressOf(client.address);
    const auto connection = std::find_if(rows.begin(), rows.end(), [&](const Row &row) {
        return (row.state == established || row.state == beingEstablished) && row.localPort == server.port &&
               row.remotePort == client.port && row.local == serverAddress && row.remote == clientAddress;
    });
    if (connection == rows.end()) {
        return std::nullopt;
    }
    // Until it is accepted, a connection has no inode, and older kernels report root as its user.
    return connection->inode != 0 ? std::optional(connection->user) : listenerOwner(rows, serverAddress, server.port);
}

} // namespace talmo
