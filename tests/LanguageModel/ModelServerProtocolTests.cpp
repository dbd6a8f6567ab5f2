#include "LanguageModel/ModelServerProtocol.h"

#include "Base/Error.h"
#include "Support/Printing.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

namespace talmo::test {

TEST(ModelServerProtocol, requestIsOneGreedyChatCompletion)
{
    const auto request = chatRequest(u"a model"_s, u"line one\nline \"two\""_s, u"<transcript>h\u00E9</transcript>"_s,
                                     {SamplingMode::Greedy, std::nullopt, 64});
    EXPECT_EQ(QJsonDocument::fromJson(request), QJsonDocument::fromJson(R"({
        "model": "a model",
        "messages": [{"role": "system", "content": "line one\nline \"two\""},
                     {"role": "user", "content": "<transcript>hé</transcript>"}],
        "temperature": 0, "seed": 0, "stream": true, "max_tokens": 64})"));
}

TEST(ModelServerProtocol, answerIsTextOfFirstChoice)
{
    EXPECT_EQ(
        chatAnswer(R"({"choices": [{"finish_reason": "stop", "message": {"role": "assistant", "content": " Hi. "}},
                                         {"message": {"content": "Other."}}], "usage": {}})"),
        u" Hi. "_s);
    EXPECT_EQ(chatAnswer(R"({"choices": [{"message": {"content": ""}}]})"), QString());
    EXPECT_EQ(chatAnswer(R"({"choices": [{"finish_reason": null, "message": {"content": "Hi."}}]})"), u"Hi."_s);
}

TEST(ModelServerProtocol, excludesReasoningFromAnswer)
{
    EXPECT_EQ(chatAnswer(R"({"choices": [{"message": {"content": "<think>\n\n</think>\n\nHi."}}]})"), u"\n\nHi."_s);
    EXPECT_EQ(chatAnswer(R"({"choices": [{"message": {"content": "Hi <think>x</think>."}}]})"),
              u"Hi <think>x</think>."_s);
    EXPECT_EQ(chatAnswer(R"({"choices": [{"message": {"content": "<think>Hi."}}]})"), u"<think>Hi."_s);
}

TEST(ModelServerProtocol, malformedAnswerThrows)
{
    for (const QByteArray &body :
         {QByteArray(""), QByteArray("<html>"), QByteArray("[]"), QByteArray("{}"), QByteArray(R"({"choices": []})"),
          QByteArray(R"({"choices": {}})"), QByteArray(R"({"choices": [null]})"),
          QByteArray(R"({"choices": [{"text": "Hi."}]})"),
          QByteArray(R"({"choices": [{"message": {"content": null}}]})"),
          QByteArray(R"({"choices": [{"message": {"content": 42}}]})"),
          QByteArray(R"({"choices": [{"message": {"content": [{"text": "Hi."}]}}]})"),
          QByteArray(R"({"choices": [{"message": "Hi."}]})"), QByteArray(R"({"error": {"message": "no"}})"),
          QByteArray("{\"choices\": [{\"message\": {\"content\": \"Hi.\"}}]")}) {
        EXPECT_THROW(chatAnswer(body), Error) << body.toStdString();
    }
}

TEST(ModelServerProtocol, truncatedAnswerThrows)
{
    EXPECT_THROW(chatAnswer(R"({"choices": [{"finish_reason": "length", "message": {"content": "Half a"}}]})"), Error);
}

TEST(ModelServerProtocol, listsModels)
{
    EXPECT_EQ(modelNames(R"({"object": "list", "data": [{"id": "b"}, {"id": "a"}, {"id": ""}, {"name": "x"}, 4]})"),
              (QStringList{u"b"_s, u"a"_s}));
    EXPECT_EQ(modelNames(R"({"data": []})"), QStringList());
    EXPECT_THROW(modelNames(R"({"models": []})"), Error);
    EXPECT_THROW(modelNames(R"({"data": null})"), Error);
    EXPECT_THROW(modelNames("<html>"), Error);
}

TEST(ModelServerProtocol, prefersChatModels)
{
    EXPECT_EQ(preferredModel({u"nomic-embed-text:latest"_s, u"a"_s, u"b"_s}), u"a"_s);
    EXPECT_EQ(preferredModel({u"text-Embedding-3"_s}), QString());
    EXPECT_EQ(preferredModel({}), QString());
}

} // namespace talmo::test
