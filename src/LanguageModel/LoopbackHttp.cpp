#include "LanguageModel/LoopbackHttp.h"

#include "Base/CancellableWait.h"
#include "Base/Completion.h"
#include "Base/Log.h"
#include "Base/Task.h"

#include <QNetworkProxy>
#include <QPointer>
#include <QTcpSocket>

#include <algorithm>
#include <stop_token>
#include <utility>

namespace talmo {

namespace {

constexpr qint64 readBlock = qint64(64) * 1024;
constexpr int usualPort = 80;
constexpr int httpOk = 200;

QByteArray hostOf(const QUrl &url)
{
    const QByteArray host = url.host().toLatin1();
    const QByteArray name = host.contains(':') ? '[' + host + ']' : host;
    return name + ':' + QByteArray::number(url.port(usualPort));
}

/// The start of every request. Compressed responses are not accepted: a small one could expand to a huge one.
QByteArray head(const QByteArray &method, const QUrl &url)
{
    return method + ' ' + url.path(QUrl::FullyEncoded).toLatin1() + " HTTP/1.1\r\nHost: " + hostOf(url) +
           "\r\nUser-Agent: Talmo\r\nAccept-Encoding: identity\r\nConnection: close\r\n";
}

} // namespace

/// One request and its response so far. Deletes itself when done.
class LoopbackHttp::Exchange final : public QObject {
public:
    struct Parts {
        QByteArray request;
        BodyReader reader; ///< May be empty.
        std::shared_ptr<const ServerTrust> trust;
        std::shared_ptr<Clock> clock;
        std::shared_ptr<Completion<HttpReply>> completion;
    };

    Exchange(Parts parts, QObject *parent)
        : QObject(parent),
          m_parts(std::move(parts)),
          m_lastProgress(m_parts.clock->now()),
          m_socket(new QTcpSocket(this))
    {
        m_socket->setProxy(QNetworkProxy::NoProxy);
        m_socket->setReadBufferSize(readBlock);
        connect(m_socket, &QTcpSocket::connected, this, [this] { send(); });
        connect(m_socket, &QTcpSocket::readyRead, this, [this] { read(); });
        connect(m_socket, &QTcpSocket::errorOccurred, this,
                [this](QAbstractSocket::SocketError error) { takeError(error); });
    }
    ~Exchange() override { m_over.request_stop(); }

    void begin(const QUrl &url)
    {
        m_socket->connectToHost(QHostAddress(url.host()), static_cast<quint16>(url.port(usualPort)));
    }

    /// Ends the exchange once it has exceeded a limit.
    static QCoro::Task<void> limit(QPointer<Exchange> exchange, std::shared_ptr<Clock> clock, std::stop_token over,
                                   ResponseLimits limits)
    {
        const Instant latest = clock->now() + limits.whole;
        Instant due = std::min(clock->now() + limits.silence, latest);
        while (exchange && clock->now() < due) {
            const auto waiting = clock->sleep(due - clock->now(), over);
            const bool isDue = co_await isTimeUp(waiting);
            if (!isDue) { // The response came first.
                co_return;
            }
            if (clock->now() < due) { // There is no timer.
                break;
            }
            if (exchange) {
                due = std::min(exchange->m_lastProgress + limits.silence, latest);
            }
        }
        if (exchange) {
            exchange->fail<TookTooLong>(QStringLiteral("The model server timed out."));
        }
    }

    std::stop_token over() const { return m_over.get_token(); }

private:
    void send()
    {
        const Endpoint server{m_socket->peerAddress(), m_socket->peerPort()};
        const Endpoint client{m_socket->localAddress(), m_socket->localPort()};
        if (m_parts.trust && !m_parts.trust->isTrusted(server, client)) {
            fail<UntrustedServer>(QStringLiteral("The process listening there belongs to another user."));
            return;
        }
        m_socket->write(m_parts.request);
    }

    void read()
    {
        try {
            while (!isOver() && m_socket->bytesAvailable() > 0) {
                m_response.take(m_socket->read(readBlock));
                showReader();
                finishIfWhole();
            }
        } catch (const Error &error) {
            fail<Error>(error.localizedDescription());
        }
    }

    void showReader()
    {
        const QByteArray &body = m_response.body();
        if (!m_parts.reader || m_response.status() != httpOk || body.size() == m_shown) {
            return;
        }
        const QByteArray piece = body.mid(std::exchange(m_shown, body.size()));
        const auto progress = m_parts.reader(piece);
        if (progress != BodyProgress::None) {
            m_lastProgress = m_parts.clock->now();
        }
        if (progress == BodyProgress::Complete) {
            finish();
        }
    }

    void takeError(QAbstractSocket::SocketError error)
    {
        if (isOver()) {
            return;
        }
        if (error == QAbstractSocket::ConnectionRefusedError) {
            fail<NobodyListens>(QStringLiteral("The model server is not running."));
            return;
        }
        read(); // Data that arrived before the connection closed still counts.
        if (isOver()) {
            return;
        }
        try {
            if (error != QAbstractSocket::RemoteHostClosedError) {
                generalLog().info("language model: connection lost: %s", {m_socket->errorString()});
                throw Error(QStringLiteral("The connection to the model server was lost."));
            }
            m_response.takeEnd();
            finishIfWhole();
        } catch (const Error &problem) {
            fail<Error>(problem.localizedDescription());
        }
    }

    void finishIfWhole()
    {
        if (!isOver() && m_response.isWhole()) {
            finish();
        }
    }

    void finish()
    {
        m_parts.completion->finish(m_response.reply());
        end();
    }

    template <typename Problem>
    void fail(const QString &why)
    {
        m_parts.completion->fail(std::make_exception_ptr(Problem(why)));
        end();
    }

    bool isOver() const { return m_parts.completion->isDone(); }

    void end()
    {
        m_over.request_stop();
        m_socket->disconnect(this);
        m_socket->abort();
        deleteLater();
    }

    Parts m_parts;
    Instant m_lastProgress;
    QTcpSocket *m_socket;
    HttpResponse m_response;
    qsizetype m_shown = 0; ///< The part of the body that the reader has seen.
    std::stop_source m_over;
};

LoopbackHttp::LoopbackHttp(std::shared_ptr<Clock> clock, std::shared_ptr<const ServerTrust> trust)
    : m_clock(std::move(clock)),
      m_trust(std::move(trust))
{
}

LoopbackHttp::~LoopbackHttp() = default;

QFuture<HttpReply> LoopbackHttp::get(const QUrl &url, Duration deadline)
{
    return send(url, head("GET", url) + "\r\n", {deadline, deadline}, {});
}

QFuture<HttpReply> LoopbackHttp::postJson(const QUrl &url, const QByteArray &json, Duration deadline)
{
    return postJson(url, json, {deadline, deadline}, {});
}

QFuture<HttpReply> LoopbackHttp::postJson(const QUrl &url, const QByteArray &json, ResponseLimits limits,
                                          BodyReader reader)
{
    return send(url,
                head("POST", url) + "Content-Type: application/json\r\nContent-Length: " +
                    QByteArray::number(json.size()) + "\r\n\r\n" + json,
                limits, std::move(reader));
}

QFuture<HttpReply> LoopbackHttp::send(const QUrl &url, const QByteArray &request, ResponseLimits limits,
                                      BodyReader reader)
{
    auto completion = Completion<HttpReply>::make();
    auto future = completion->future();
    auto *exchange = new Exchange({request, std::move(reader), m_trust, m_clock, std::move(completion)}, &m_exchanges);
    logEscapes(Exchange::limit(exchange, m_clock, exchange->over(), limits));
    exchange->begin(url);
    return future;
}

} // namespace talmo
