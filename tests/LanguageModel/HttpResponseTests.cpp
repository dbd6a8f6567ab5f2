#include "LanguageModel/HttpResponse.h"

#include "Base/Error.h"

#include <gtest/gtest.h>

namespace talmo::test {

namespace {

/// The result, fed whole or byte by byte; "refused" for an Error, "more" if the response is incomplete.
QByteArray read(const QByteArray &bytes, bool ends = false)
{
    QByteArray results;
    for (const auto piece : {bytes.size(), qsizetype(1)}) {
        QByteArray result;
        try {
            HttpResponse response;
            for (qsizetype at = 0; at < bytes.size(); at += std::max(piece, qsizetype(1))) {
                response.take(bytes.mid(at, piece));
            }
            if (ends) {
                response.takeEnd();
            }
            const auto reply = response.reply();
            result = response.isWhole() ? QByteArray::number(reply.status) + ' ' + reply.body : QByteArray("more");
        } catch (const Error &) {
            result = "refused";
        }
        if (!results.isEmpty() && results != result) {
            return results + " but in pieces " + result;
        }
        results = result;
    }
    return results;
}

} // namespace

TEST(HttpResponse, readsBodiesOfKnownLength)
{
    EXPECT_EQ(read("HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nhello and more"), "200 hello");
    EXPECT_EQ(read("HTTP/1.0 404\nCONTENT-LENGTH:0\n\n"), "404 ");
    EXPECT_EQ(read("HTTP/1.1 204 No Content\r\n\r\n"), "204 ");
    EXPECT_EQ(read("HTTP/1.1 100 Continue\r\n\r\nHTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\nhi"), "200 hi");
    EXPECT_EQ(read("HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nhell"), "more");
    EXPECT_EQ(read("HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nhell", true), "refused");
}

TEST(HttpResponse, readsBodiesUntilConnectionCloses)
{
    EXPECT_EQ(read("HTTP/1.1 200 OK\r\n\r\nhello"), "more");
    EXPECT_EQ(read("HTTP/1.1 200 OK\r\n\r\nhello", true), "200 hello");
    EXPECT_EQ(read("HTTP/1.1 200 OK\r\nContent", true), "refused");
    EXPECT_EQ(read("", true), "refused");
}

TEST(HttpResponse, readsChunkedBodies)
{
    const QByteArray head = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n";
    EXPECT_EQ(read(head + "5\r\nhello\r\nA;x=y\r\n, my world\r\n0\r\nTrailer: x\r\n\r\n"), "200 hello, my world");
    EXPECT_EQ(read(head + "5\r\nhello\r\n0\r\n"), "more");
    EXPECT_EQ(read(head + "5\r\nhello", true), "refused");
    for (const char *bad :
         {"5\r\nhelloworld\r\n", "-5\r\n", "x\r\n", "\r\n", "FFFFFFFFFFFFFFFFF\r\n", "7FFFFFFFFFFFFFFF\r\n"}) {
        EXPECT_EQ(read(head + bad), "refused") << bad;
    }
}

TEST(HttpResponse, rejectsMalformedResponses)
{
    for (const char *bad :
         {"SSH-2.0-OpenSSH\r\n", "HTTP/2 200\r\n\r\n", "HTTP/1.1 abc\r\n", "HTTP/1.1 +20\r\n", "HTTP/1.1 20\r\n",
          "HTTP/1.1 2000\r\n", "\r\n", "HTTP/1.1 200 OK\r\nno colon\r\n", "HTTP/1.1 200 OK\r\n: none\r\n",
          "HTTP/1.1 200 OK\r\nContent-Length: -1\r\n", "HTTP/1.1 200 OK\r\nContent-Length: 5, 5\r\n",
          "HTTP/1.1 200 OK\r\nContent-Length: 5\r\nContent-Length: 6\r\n",
          "HTTP/1.1 200 OK\r\nTransfer-Encoding: gzip, chunked\r\n", "HTTP/1.1 200 OK\r\nContent-Encoding: gzip\r\n"}) {
        EXPECT_EQ(read(bad), "refused") << bad;
    }
}

TEST(HttpResponse, rejectsOversizedResponses)
{
    const QByteArray head = "HTTP/1.1 200 OK\r\n";
    EXPECT_EQ(read(head + QByteArray(HttpResponse::largestHead, 'x')), "refused") << "one header";
    EXPECT_EQ(read(head + QByteArray("X: y\r\n").repeated(HttpResponse::largestHead / 6)), "refused") << "many headers";
    EXPECT_EQ(read(QByteArray("HTTP/1.1 100 Continue\r\n\r\n").repeated(HttpResponse::largestHead / 25 + 1)),
              "refused");
    EXPECT_EQ(read(head + "Content-Length: 1048577\r\n\r\n"), "refused") << "before any byte of the body";
    HttpResponse response;
    response.take(head + "\r\n" + QByteArray(HttpResponse::largestBody, 'x'));
    EXPECT_FALSE(response.isWhole());
    EXPECT_THROW(response.take("x"), Error);
    HttpResponse chunked;
    chunked.take(head + "Transfer-Encoding: chunked\r\n\r\n");
    EXPECT_THROW(
        for (int count = 0; count < 20; ++count) { chunked.take("10000\r\n" + QByteArray(65536, 'x') + "\r\n"); },
        Error);
}

TEST(HttpResponse, refusesBodyThatIsMostlyChunkSizes)
{
    HttpResponse response;
    response.take("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n");
    const QByteArray chunk("1;y\r\n \r\n");
    qsizetype taken = 0;
    EXPECT_THROW(
        while (taken < HttpResponse::largestBody) {
            response.take(chunk);
            taken += chunk.size();
        },
        Error);
    EXPECT_LT(taken, 2 * HttpResponse::largestHead);
}

} // namespace talmo::test
