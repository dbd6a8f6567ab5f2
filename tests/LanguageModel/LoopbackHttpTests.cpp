#include "LanguageModel/LoopbackHttp.h"

#include "Support/ManualClock.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"

#include <QTcpServer>
#include <QTcpSocket>

#include <gmock/gmock.h>

namespace talmo::test {

using namespace std::chrono_literals;

namespace {

const QByteArray head = "HTTP/1.1 200 OK\r\n\r\n";

/// Both ends on the test's thread, in virtual time. The body's letters are its tokens, "." is its end.
class LoopbackHttpTest : public testing::Test {
protected:
    std::shared_ptr<ManualClock> clock = std::make_shared<ManualClock>();
    QTcpServer server;
    QTcpSocket *client = nullptr; ///< The server's end of the connection.
    QByteArray read;
    LoopbackHttp http{clock, nullptr};
    QFuture<HttpReply> reply;

    LoopbackHttpTest() { EXPECT_TRUE(server.listen(QHostAddress::LocalHost)); }

    void request(Duration silence, Duration whole)
    {
        const QUrl url(u"http://127.0.0.1:%1/v1/chat"_s.arg(server.serverPort()));
        reply = http.postJson(url, "{}", {silence, whole}, [this](const QByteArray &piece) {
            read += piece;
            if (piece.contains('!')) {
                throw Error(u"bad piece"_s);
            }
            return piece.contains('.')   ? BodyProgress::Complete
                   : piece.contains(' ') ? BodyProgress::None
                                         : BodyProgress::Advanced;
        });
        ASSERT_TRUE(waitFor([this] { return server.hasPendingConnections(); }));
        client = server.nextPendingConnection();
        ASSERT_TRUE(waitFor([this] { return client->bytesAvailable() > 0; }));
    }
    /// Returns once the reader has seen it.
    void sendBody(const QByteArray &piece)
    {
        const auto before = read.size();
        client->write(piece);
        ASSERT_TRUE(waitFor([&] { return read.size() == before + piece.size(); }));
    }
    /// The body, or the error.
    QString outcome() const
    {
        EXPECT_TRUE(waitFor(reply));
        try {
            return QString::fromUtf8(reply.result().body);
        } catch (const TookTooLong &) {
            return u"took too long"_s;
        } catch (const Error &error) {
            return error.localizedDescription();
        }
    }
};

} // namespace

TEST_F(LoopbackHttpTest, eachTokenGrantsTimeAgain)
{
    request(10s, 2min);
    client->write(head);
    for (int token = 0; token < 5; ++token) {
        clock->advance(9s);
        sendBody("a");
    }
    EXPECT_FALSE(reply.isFinished());
    clock->advance(10s - 1ms);
    EXPECT_FALSE(reply.isFinished());
    clock->advance(1ms);
    EXPECT_EQ(outcome(), u"took too long"_s);
}

TEST_F(LoopbackHttpTest, bytesWithoutTokensGrantNoTime)
{
    request(10s, 2min);
    client->write(head);
    clock->advance(9s);
    sendBody(" ");
    clock->advance(1s);
    EXPECT_EQ(outcome(), u"took too long"_s);
}

TEST_F(LoopbackHttpTest, steadyProgressEndsAtLimitOfWholeResponse)
{
    request(10s, 30s);
    client->write(head);
    for (int token = 0; token < 4; ++token) {
        clock->advance(7s);
        sendBody("a");
    }
    clock->advance(2s - 1ms);
    EXPECT_FALSE(reply.isFinished());
    clock->advance(1ms);
    EXPECT_EQ(outcome(), u"took too long"_s);
}

TEST_F(LoopbackHttpTest, completeBodyEndsRequestWhileServerStaysConnected)
{
    request(10s, 2min);
    client->write(head);
    sendBody("a");
    client->write("b.");
    EXPECT_EQ(outcome(), u"ab."_s);
    clock->advance({});
    EXPECT_EQ(clock->sleeperCount(), 0U);
}

TEST_F(LoopbackHttpTest, closedConnectionEndsBody)
{
    request(10s, 2min);
    client->write(head + "ab");
    client->disconnectFromHost();
    EXPECT_EQ(outcome(), u"ab"_s);
    EXPECT_EQ(read, "ab");
}

TEST_F(LoopbackHttpTest, readersErrorFailsRequest)
{
    request(10s, 2min);
    client->write(head + "!");
    EXPECT_EQ(outcome(), u"bad piece"_s);
}

TEST_F(LoopbackHttpTest, readerIsShownNoErrorPage)
{
    request(10s, 2min);
    client->write("HTTP/1.1 500 Oops\r\nContent-Length: 2\r\n\r\nab");
    EXPECT_EQ(outcome(), u"ab"_s);
    EXPECT_EQ(read, "");
}

} // namespace talmo::test
