#pragma once

#include "Base/Clock.h"
#include "Base/Error.h"
#include "LanguageModel/HttpResponse.h"
#include "LanguageModel/ServerTrust.h"

#include <QByteArray>
#include <QFuture>
#include <QObject>
#include <QUrl>

#include <memory>

namespace talmo {

/// Nothing listens on that port.
class NobodyListens : public Error {
public:
    using Error::Error;
};

/// The process listening on that port is not trusted. Nothing was sent to it.
class UntrustedServer : public Error {
public:
    using Error::Error;
};

/// No complete response arrived before the deadline.
class TookTooLong : public Error {
public:
    using Error::Error;
};

/// Plain HTTP to this machine: no proxies, redirects, cookies or other protocols, and one connection per request. Used
/// on one thread with an event loop. Destroying it fails pending requests with Cancelled.
class LoopbackHttp {
public:
    /// `trust`: consulted for every connection before anything is sent. Null to trust every server.
    LoopbackHttp(std::shared_ptr<Clock> clock, std::shared_ptr<const ServerTrust> trust);
    ~LoopbackHttp();
    LoopbackHttp(const LoopbackHttp &) = delete;
    LoopbackHttp &operator=(const LoopbackHttp &) = delete;

    /// Finish with whatever the server responds, HTTP errors included. Fail if no complete response arrives within
    /// `deadline`, or if it is too large. The host must be an address, not a name.
    QFuture<HttpReply> get(const QUrl &url, Duration deadline);
    QFuture<HttpReply> postJson(const QUrl &url, const QByteArray &json, Duration deadline);

private:
    class Exchange;
    QFuture<HttpReply> send(const QUrl &url, const QByteArray &request, Duration deadline);

    std::shared_ptr<Clock> m_clock;
    std::shared_ptr<const ServerTrust> m_trust;
    QObject m_exchanges; ///< The parent of the exchanges in progress.
};

} // namespace talmo
