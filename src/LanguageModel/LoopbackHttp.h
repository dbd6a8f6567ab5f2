#pragma once

#include "Base/Clock.h"
#include "Base/Error.h"
#include "LanguageModel/HttpResponse.h"
#include "LanguageModel/ServerTrust.h"

#include <QByteArray>
#include <QFuture>
#include <QObject>
#include <QUrl>

#include <functional>
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

/// No complete response arrived in time.
class TookTooLong : public Error {
public:
    using Error::Error;
};

/// What a piece of a response's body is to its reader.
enum class BodyProgress { None, Advanced, Complete };

/// Reads the body of a response with status 200 while it arrives. `Complete` ends the request without waiting for the
/// rest; an Error that it throws fails the request.
using BodyReader = std::function<BodyProgress(const QByteArray &piece)>;

/// How long a response may take.
struct ResponseLimits {
    /// Without progress, from the start and from each piece that advanced the reader.
    Duration silence;
    Duration whole;
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
    /// The same for a response that is read while it arrives, and is given time as long as it makes progress.
    QFuture<HttpReply> postJson(const QUrl &url, const QByteArray &json, ResponseLimits limits, BodyReader reader);

private:
    class Exchange;
    QFuture<HttpReply> send(const QUrl &url, const QByteArray &request, ResponseLimits limits, BodyReader reader);

    std::shared_ptr<Clock> m_clock;
    std::shared_ptr<const ServerTrust> m_trust;
    QObject m_exchanges; ///< The parent of the exchanges in progress.
};

} // namespace talmo
