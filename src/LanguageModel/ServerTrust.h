#pragma once

#include <QHostAddress>

namespace talmo {

/// One end of a TCP connection.
struct Endpoint {
    QHostAddress address;
    quint16 port = 0;
};

/// Decides whether the process at the other end of a local connection may receive dictated text. Any user's process can
/// listen on a model server's usual port.
class ServerTrust {
public:
    virtual ~ServerTrust() = default;

    /// For an established connection: `server` is the remote end, `client` our own. Any thread; does not block. False
    /// if it cannot be determined.
    virtual bool isTrusted(const Endpoint &server, const Endpoint &client) const = 0;
};

} // namespace talmo
