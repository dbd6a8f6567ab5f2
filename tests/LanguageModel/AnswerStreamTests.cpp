#include "LanguageModel/AnswerStream.h"

#include "Base/Error.h"
#include "Support/Printing.h"

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

using Progress = AnswerStream::Progress;

/// An event with a piece of text, as llama.cpp's server and vLLM send it.
QByteArray delta(const QByteArray &fields, const QByteArray &reason = "null")
{
    return R"(data: {"choices":[{"index":0,"delta":{)" + fields + R"(},"finish_reason":)" + reason + "}]}\n\n";
}

QByteArray text(const QByteArray &content)
{
    return delta(R"("content":")" + content + '"');
}

const QByteArray role = delta(R"("role":"assistant","content":null)");
const QByteArray stop = delta({}, R"("stop")");
const QByteArray done = "data: [DONE]\n\n";

QString answerTo(const QByteArray &body, qsizetype pieceSize)
{
    AnswerStream stream;
    for (qsizetype from = 0; from < body.size(); from += pieceSize) {
        if (stream.take(body.mid(from, pieceSize)) == Progress::Complete) {
            break;
        }
    }
    return stream.text();
}

QString answerTo(const QByteArray &body)
{
    return answerTo(body, body.size() + 1);
}

} // namespace

TEST(AnswerStream, joinsEventsInPiecesOfAnySize)
{
    const QByteArray body = role + text("H\xc3\xa9llo") + text(" \\\"wor") + text("ld\\\".") + stop + done;
    for (const qsizetype size : {1, 2, 3, 7, 64, 1000}) {
        EXPECT_EQ(answerTo(body, size), u"H\u00e9llo \"world\"."_s) << size;
    }
}

TEST(AnswerStream, takesObjectOfServerThatDoesNotStream)
{
    const QByteArray body = "\r\n {\"choices\": [{\"message\": {\"content\": \"Hi.\"}}]}";
    EXPECT_EQ(answerTo(body), u"Hi."_s);
    EXPECT_EQ(answerTo(body, 1), u"Hi."_s);
    AnswerStream stream;
    EXPECT_EQ(stream.take(body), Progress::None) << "an object is no progress until it is complete";
}

TEST(AnswerStream, onlyTokensAreProgress)
{
    AnswerStream stream;
    EXPECT_EQ(stream.take(": keep-alive\n\n"), Progress::None);
    EXPECT_EQ(stream.take("event: message\nid: 1\nretry: 5\n\n"), Progress::None);
    EXPECT_EQ(stream.take(role), Progress::None);
    EXPECT_EQ(stream.take(text("")), Progress::None);
    EXPECT_EQ(stream.take(delta(R"("reasoning_content":"hm")")), Progress::Advanced);
    EXPECT_EQ(stream.take(delta(R"("reasoning":"hm")")), Progress::Advanced);
    const QByteArray token = text("Hi.");
    EXPECT_EQ(stream.take(token.left(20)), Progress::None);
    EXPECT_EQ(stream.take(token.mid(20)), Progress::Advanced);
    EXPECT_EQ(stream.take(stop), Progress::None);
    EXPECT_EQ(stream.take("data: {\"choices\":[],\"usage\":{\"total_tokens\":9}}\n\n"), Progress::None);
    EXPECT_EQ(stream.take(done + text(" More.")), Progress::Complete);
    EXPECT_EQ(stream.text(), u"Hi."_s);
}

TEST(AnswerStream, acceptsVariantsOfEventStream)
{
    EXPECT_EQ(answerTo(QByteArray(text("Hi.") + done).replace("\n", "\r\n")), u"Hi."_s);
    EXPECT_EQ(answerTo(QByteArray(text("Hi.") + done).replace("data: ", "data:")), u"Hi."_s);
    EXPECT_EQ(answerTo("data: {\"choices\":[{\"delta\":\ndata: {\"content\":\"Hi.\"}}]}\n\n" + done), u"Hi."_s);
    EXPECT_EQ(answerTo(text("Hi.") + "data: [DONE]"), u"Hi."_s) << "no line end at the end";
    EXPECT_EQ(answerTo(text("Hi.") + stop), u"Hi."_s) << "no mark of the end but the reason";
}

TEST(AnswerStream, excludesReasoningFromAnswer)
{
    EXPECT_EQ(answerTo(delta(R"("reasoning_content":"So.")") + text("Hi.") + done), u"Hi."_s);
    EXPECT_EQ(answerTo(text("<think>") + text("So.</thi") + text("nk>Hi.") + done), u"Hi."_s);
}

TEST(AnswerStream, incompleteOrCutAnswerThrows)
{
    for (const QByteArray &body :
         {QByteArray(""), QByteArray("\n\n"), text("Half a"), role, QByteArray(": nothing\n\n"),
          text("Half a") + delta({}, R"("length")") + done, QByteArray("<html>Hello.</html>")}) {
        EXPECT_THROW(answerTo(body), Error) << body.toStdString();
    }
}

TEST(AnswerStream, malformedOrFailedAnswerThrows)
{
    for (const QByteArray &body :
         {QByteArray("data: {\"choices\": [\n\n"), QByteArray("data: []\n\n"), QByteArray("data: Hello.\n\n"),
          QByteArray("data: {\"error\":{\"message\":\"out of memory\"}}\n\n"),
          QByteArray("error: {\"code\":500,\"message\":\"out of memory\"}\n\n")}) {
        AnswerStream stream;
        EXPECT_THROW(stream.take(text("Hi.") + body), Error) << body.toStdString();
    }
}

} // namespace talmo::test
