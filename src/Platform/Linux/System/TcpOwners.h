#pragma once

#include "LanguageModel/ServerTrust.h"

#include <QByteArray>

#include <optional>

#include <sys/types.h>

namespace talmo {

/// The user whose program owns the server's end of a connection within this machine, from /proc/net/tcp and
/// /proc/net/tcp6 while the connection is open. A connection that has not been accepted yet counts as that of the
/// listener that will get it. None if there is no such connection, or if programs of more than one user could accept
/// it. Pure.
std::optional<uid_t> serverOwner(const QByteArray &tcp, const QByteArray &tcp6, const Endpoint &server,
                                 const Endpoint &client);

} // namespace talmo
