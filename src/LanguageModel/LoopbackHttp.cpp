#include "LanguageModel/LoopbackHttp.h"

#include "Base/Completion.h"
#include "Base/Task.h"

#include <QNetworkProxy>
#include <QPointer>
#include <QTcpSocket>

#include <stop_token>
#include <utility>

namespace talmo {

namespace {

constexpr qint64 readBlock = qint64(64) * 1024;
constexpr int usualPort = 80;

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
    Exchange(QByteArray request, std::shared_ptr<const ServerTrust> trust,
             std::shared_ptr<Completion<HttpReply>> completion, QObject *parent)
        : QObject(parent),
          m_request(std::move(request)),
          m_trust(std::move(trust)),
          m_completion(std::move(completion)),
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

    static QCoro::Task<void> endAt(QPointer<Exchange> exchange, QFuture<void> deadline)
    {
        try {
            co_await deadline;
        } catch (const Cancelled &) {
            co_return; // The response came first.
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
        if (m_trust && !m_trust->isTrusted(server, client)) {
            fail<UntrustedServer>(QStringLiteral("The process listening there belongs to another user."));
            return;
        }
        m_socket->write(m_request);
    }

    void read()
    {
        try {
            while (!isOver() && m_socket->bytesAvailable() > 0) {
                m_response.take(m_socket->read(readBlock));
                finishIfWhole();
            }
        } catch (const Error &error) {
            fail<Error>(error.localizedDescription());
        }
    }

    void takeError(QAbstractSocket::SocketError error)
    {
        if (isOver()) {
            return;
        }
        if (error == QAbstractSocket::ConnectionRefusedError) {
            fail<NobodyListens>(m_socket->errorString());
            return;
        }
        read(); // Data that arrived before the connection closed still counts.
        if (isOver()) {
            return;
        }
        try {
            if (error != QAbstractSocket::RemoteHostClosedError) {
                throw Error(m_socket->errorString());
            }
            m_response.takeEnd();
            finishIfWhole();
        } catch (const Error &problem) {
            fail<Error>(problem.localizedDescription());
        }
    }

    void finishIfWhole()
    {
        if (m_response.isWhole()) {
            m_completion->finish(m_response.reply());
            end();
        }
    }

    template <typename Problem>
    void fail(const QString &why)
    {
        m_completion->fail(std::make_exception_ptr(Problem(why)));
        end();
    }

    bool isOver() const { return m_completion->isDone(); }

    void end()
    {
        m_over.request_stop();
        m_socket->disconnect(this);
        m_socket->abort();
        deleteLater();
    }

    QByteArray m_request;
    std::shared_ptr<const ServerTrust> m_trust;
    std::shared_ptr<Completion<HttpReply>> m_completion;
    QTcpSocket *m_socket;
    HttpResponse m_response;
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
    return send(url, head("GET", url) + "\r\n", deadline);
}

QFuture<HttpReply> LoopbackHttp::postJson(const QUrl &url, const QByteArray &json, Duration deadline)
{
    return send(url,
                head("POST", url) + "Content-Type: application/json\r\nContent-Length: " +
                    QByteArray::number(json.size()) + "\r\n\r\n" + json,
                deadline);
}

QFuture<HttpReply> LoopbackHttp::send(const QUrl &url, const QByteArray &request, Duration deadline)
{
    auto completion = Completion<HttpReply>::make();
    auto future = completion->future();
    auto *exchange = new Exchange(request, m_trust, std::move(completion), &m_exchanges);
    logEscapes(Exchange::endAt(exchange, m_clock->sleep(deadline, exchange->over())));
    exchange->begin(url);
    return future;
}

} // namespace talmo
