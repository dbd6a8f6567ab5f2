#include "Platform/ModelServer/LoopbackHttp.h"

#include "Base/Completion.h"
#include "Base/Task.h"

#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QPointer>

#include <stop_token>
#include <utility>

namespace talmo {

namespace {

/// An answer is a few sentences; a list of models a few kilobytes.
constexpr qsizetype largestBody = qsizetype(1024) * 1024;

QNetworkRequest plainRequest(const QUrl &url)
{
    QNetworkRequest request(url);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    // Set by ourselves, so that nothing is decompressed behind our back: a small body can hold a huge one.
    request.setRawHeader("Accept-Encoding", "identity");
    request.setHeader(QNetworkRequest::UserAgentHeader, QStringLiteral("Talmo"));
    return request;
}

} // namespace

/// One request and what has come of its answer. Owned by the reply, and goes with it.
class LoopbackHttp::Exchange final : public QObject {
public:
    Exchange(QNetworkReply *reply, std::shared_ptr<Completion<HttpReply>> completion)
        : QObject(reply),
          m_reply(reply),
          m_completion(std::move(completion))
    {
        reply->setReadBufferSize(largestBody);
        connect(reply, &QNetworkReply::readyRead, this, &Exchange::read);
        connect(reply, &QNetworkReply::finished, this, &Exchange::finish);
    }

    ~Exchange() override { m_answered.request_stop(); }

    static QCoro::Task<void> endAt(QPointer<Exchange> exchange, QFuture<void> deadline)
    {
        try {
            co_await deadline;
        } catch (const Cancelled &) {
            co_return; // The answer came first.
        }
        if (exchange) {
            exchange->giveUp(QStringLiteral("The model server took too long."));
        }
    }

    std::stop_token answered() const { return m_answered.get_token(); }

private:
    void read()
    {
        m_body += m_reply->readAll();
        if (m_body.size() > largestBody) {
            giveUp(QStringLiteral("The model server's answer is too large."));
        }
    }

    void giveUp(const QString &why)
    {
        m_completion->fail(std::make_exception_ptr(Error(why)));
        m_reply->abort();
    }

    void finish()
    {
        m_answered.request_stop();
        m_reply->deleteLater();
        if (m_completion->isDone()) {
            return; // Given up on, and closed.
        }
        m_body += m_reply->readAll();
        const int status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        const auto error = m_reply->error();
        // Of Qt's errors those from 200 on are an answer that says no; the others are no answer, or half of one.
        constexpr int firstAnswer = 200;
        if (status > 0 && (error == QNetworkReply::NoError || int(error) >= firstAnswer)) {
            m_completion->finish(HttpReply{status, m_body});
        } else if (error == QNetworkReply::ConnectionRefusedError) {
            m_completion->fail(std::make_exception_ptr(NobodyListens(m_reply->errorString())));
        } else {
            m_completion->fail(std::make_exception_ptr(Error(m_reply->errorString())));
        }
    }

    QNetworkReply *m_reply;
    std::shared_ptr<Completion<HttpReply>> m_completion;
    std::stop_source m_answered;
    QByteArray m_body;
};

LoopbackHttp::LoopbackHttp(std::shared_ptr<Clock> clock)
    : m_clock(std::move(clock)),
      m_manager(std::make_unique<QNetworkAccessManager>())
{
    m_manager->setProxy(QNetworkProxy::NoProxy);
}

LoopbackHttp::~LoopbackHttp() = default;

QFuture<HttpReply> LoopbackHttp::get(const QUrl &url, Duration deadline)
{
    return follow(m_manager->get(plainRequest(url)), deadline);
}

QFuture<HttpReply> LoopbackHttp::postJson(const QUrl &url, const QByteArray &json, Duration deadline)
{
    auto request = plainRequest(url);
    request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/json"));
    return follow(m_manager->post(request, json), deadline);
}

QFuture<HttpReply> LoopbackHttp::follow(QNetworkReply *reply, Duration deadline)
{
    auto completion = Completion<HttpReply>::make();
    auto future = completion->future();
    auto *exchange = new Exchange(reply, std::move(completion));
    logEscapes(Exchange::endAt(exchange, m_clock->sleep(deadline, exchange->answered())));
    return future;
}

} // namespace talmo
