#pragma once

#include <QHostAddress>

namespace talmo {

/// One end of a TCP connection.
struct Endpoint {
    QHostAddress address;
    quint16 port = 0;
};

/// Knows whether the program that answers a connection on this machine may be told what was dictated. Any user's
/// program can listen at a port where a model server usually is.
class ServerTrust {
public:
    virtual ~ServerTrust() = default;

    /// Of a connection that stands: `server` is the end that was connected to, `client` is our own. Any thread; does
    /// not wait. Whatever cannot be told is false.
    virtual bool isTrusted(const Endpoint &server, const Endpoint &client) const = 0;
};

} // namespace talmo
