#pragma once

#include "Base/Clock.h"
#include "Base/Error.h"

#include <QByteArray>
#include <QFuture>
#include <QUrl>

#include <memory>

class QNetworkAccessManager;
class QNetworkReply;
class QNetworkRequest;

namespace talmo {

struct HttpReply {
    int status = 0;
    QByteArray body;
};

/// Nobody answers at that port.
class NobodyListens : public Error {
public:
    using Error::Error;
};

/// Plain HTTP to this machine: no proxy, no redirect, no cookie, no other protocol. One thread with an event loop;
/// what is still under way when it goes fails with Cancelled.
class LoopbackHttp {
public:
    explicit LoopbackHttp(std::shared_ptr<Clock> clock);
    ~LoopbackHttp();
    LoopbackHttp(const LoopbackHttp &) = delete;
    LoopbackHttp &operator=(const LoopbackHttp &) = delete;

    /// Finish with whatever the server answers, errors of its own included; fail when there is no whole answer within
    /// `deadline`, or one of unreasonable size.
    QFuture<HttpReply> get(const QUrl &url, Duration deadline);
    QFuture<HttpReply> postJson(const QUrl &url, const QByteArray &json, Duration deadline);

private:
    class Exchange;
    QFuture<HttpReply> follow(QNetworkReply *reply, Duration deadline);

    std::shared_ptr<Clock> m_clock;
    std::unique_ptr<QNetworkAccessManager> m_manager;
};

} // namespace talmo
