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

/// Nobody answers at that port.
class NobodyListens : public Error {
public:
    using Error::Error;
};

/// The program that answers at that port belongs to somebody else. Nothing was sent to it.
class UntrustedServer : public Error {
public:
    using Error::Error;
};

/// There was no whole answer in the time that was allowed.
class TookTooLong : public Error {
public:
    using Error::Error;
};

/// Plain HTTP to this machine: no proxy, no redirect, no cookie, no other protocol, a connection for each request. One
/// thread with an event loop; what is still under way when it goes fails with Cancelled.
class LoopbackHttp {
public:
    /// `trust`: asked about every connection before anything is sent over it. Null to trust whoever answers.
    LoopbackHttp(std::shared_ptr<Clock> clock, std::shared_ptr<const ServerTrust> trust);
    ~LoopbackHttp();
    LoopbackHttp(const LoopbackHttp &) = delete;
    LoopbackHttp &operator=(const LoopbackHttp &) = delete;

    /// Finish with whatever the server answers, errors of its own included; fail when there is no whole answer within
    /// `deadline`, or one of unreasonable size. The host is an address, not a name.
    QFuture<HttpReply> get(const QUrl &url, Duration deadline);
    QFuture<HttpReply> postJson(const QUrl &url, const QByteArray &json, Duration deadline);

private:
    class Exchange;
    QFuture<HttpReply> send(const QUrl &url, const QByteArray &request, Duration deadline);

    std::shared_ptr<Clock> m_clock;
    std::shared_ptr<const ServerTrust> m_trust;
    QObject m_exchanges; ///< The parent of those under way.
};

} // namespace talmo
