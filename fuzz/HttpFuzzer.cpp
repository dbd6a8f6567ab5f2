// Arbitrary bytes from a server on loopback, in one piece or two.

#include "Base/Error.h"
#include "Fuzzing.h"
#include "LanguageModel/LoopbackHttp.h"
#include "Support/ManualClock.h"
#include "Support/TestLoop.h"
#include "Waiting.h"

#include <QCoreApplication>
#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>

#include <memory>

using namespace talmo;
using fuzz::require;

namespace {

/// Answers every request with the same bytes and closes the connection.
class Server final : public QTcpServer {
public:
    Server()
    {
        require(listen(QHostAddress::LocalHost));
        connect(this, &QTcpServer::newConnection, this, [this] {
            while (auto *socket = nextPendingConnection()) {
                connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
                connect(socket, &QTcpSocket::readyRead, socket, [this, socket] { answer(*socket); });
            }
        });
    }

    QByteArray first;
    QByteArray second;
    int requests = 0;

private:
    void answer(QTcpSocket &socket)
    {
        const QByteArray request = socket.readAll();
        require(request.startsWith("GET /v1/models HTTP/1.1\r\n") || request.startsWith("POST /v1/chat HTTP/1.1\r\n"));
        ++requests;
        socket.write(first);
        socket.flush();
        socket.write(second);
        socket.disconnectFromHost();
    }
};

struct World {
    std::shared_ptr<test::ManualClock> clock = std::make_shared<test::ManualClock>();
    LoopbackHttp http{clock, nullptr};
    Server server;
};

World *world = nullptr;

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    // Lives as long as the process.
    static QCoreApplication application(*argc, *argv);
    fuzz::SilentLog::install();
    static World theWorld;
    world = &theWorld;
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    FuzzedDataProvider data(bytes, size);
    const bool isPost = data.ConsumeBool();
    const bool isStream = data.ConsumeBool();
    const auto split = data.ConsumeIntegral<std::uint16_t>();
    const QByteArray answer = fuzz::rest(data);
    world->server.first = answer.left(split);
    world->server.second = answer.mid(split);
    world->server.requests = 0;
    QUrl url(QStringLiteral("http://127.0.0.1:%1").arg(world->server.serverPort()));
    url.setPath(isPost ? QStringLiteral("/v1/chat") : QStringLiteral("/v1/models"));
    constexpr auto deadline = std::chrono::seconds(5);
    // What the reader of a stream is shown is the body, or a part of it up to where it has enough.
    QByteArray shown;
    const auto read = [&shown](const QByteArray &piece) {
        require(!piece.isEmpty());
        shown += piece;
        return piece.contains('.') ? BodyProgress::Complete : BodyProgress::Advanced;
    };
    auto reply = isPost
                     ? world->http.postJson(url, "{}", {deadline, deadline}, isStream ? BodyReader(read) : BodyReader())
                     : world->http.get(url, deadline);
    // For some damaged replies, Qt keeps waiting after their end; those are ended by the timeout, in virtual time.
    if (!testbed::waitUntil([&reply] { return reply.isFinished(); }, std::chrono::milliseconds(20))) {
        world->clock->advance(deadline);
    }
    require(reply.isFinished());
    try {
        const HttpReply got = reply.result();
        require(world->server.requests >= 1 && got.status > 0);
        require(got.body.size() <= answer.size()); // Nothing is decompressed.
        require(shown.isEmpty() || shown == got.body);
    } catch (const Error &error) {
        require(!error.localizedDescription().isEmpty());
    }
    test::settle();
    world->clock->advance({}); // Drops the timeouts of finished requests.
    require(world->clock->sleeperCount() == 0);
    return 0;
}
