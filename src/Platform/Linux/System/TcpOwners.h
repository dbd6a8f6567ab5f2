#pragma once

#include "LanguageModel/ServerTrust.h"

#include <QByteArray>

#include <optional>

#include <sys/types.h>

namespace talmo {

/// The user whose program holds the server's end of a connection within this machine, from what /proc/net/tcp and
/// /proc/net/tcp6 say while the connection stands. A connection that no program has accepted yet counts as that of the
/// listener that it is bound to get to. None when there is no such connection, or more than one user could answer it.
/// Pure.
std::optional<uid_t> serverOwner(const QByteArray &tcp, const QByteArray &tcp6, const Endpoint &server,
                                 const Endpoint &client);

} // namespace talmo
