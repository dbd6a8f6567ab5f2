#include "LanguageModel/LoopbackLanguageModel.h"

#include "LanguageModel/ModelServerFixture.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

using testing::SizeIs;

class LoopbackLanguageModelTest : public ModelServerFixture {};

} // namespace

TEST_F(LoopbackLanguageModelTest, findsServerAndSendsRequest)
{
    EXPECT_EQ(refreshed(), std::nullopt);
    EXPECT_EQ(model->description(), u"test-model at "_s + server.address());
    EXPECT_EQ(outcome(ask()), u"answer: Hello from the model."_s);
    const auto chats = server.chats();
    ASSERT_THAT(chats, SizeIs(1));
    EXPECT_EQ(chats[0].value(u"model"_s), u"test-model"_s);
    EXPECT_EQ(chats[0].value(u"temperature"_s), 0);
    EXPECT_EQ(chats[0].value(u"max_tokens"_s), 64);
    EXPECT_EQ(chats[0].value(u"messages"_s).toArray().size(), 2);
    EXPECT_FALSE(chats[0].contains(u"tools"_s));
}

TEST_F(LoopbackLanguageModelTest, sendsOnlyNecessaryData)
{
    refreshed();
    outcome(ask());
    for (const auto &request : server.requests()) {
        QStringList names = request.value(u"headers"_s).toObject().keys();
        for (const auto &known : {u"Host"_s, u"Connection"_s, u"Accept-Encoding"_s, u"Accept-Language"_s,
                                  u"User-Agent"_s, u"Content-Type"_s, u"Content-Length"_s}) {
            names.removeAll(known);
        }
        EXPECT_EQ(names, QStringList());
    }
}

TEST_F(LoopbackLanguageModelTest, requestsConfiguredModelName)
{
    model = makeModel(server.address(), u"my-model"_s);
    EXPECT_EQ(refreshed(), std::nullopt);
    outcome(ask());
    EXPECT_EQ(server.chats().at(0).value(u"model"_s), u"my-model"_s);
}

TEST_F(LoopbackLanguageModelTest, editsWithServerThatDoesNotStream)
{
    ASSERT_EQ(refreshed(), std::nullopt);
    server.behave({{u"streams"_s, false}});
    EXPECT_EQ(outcome(ask()), u"answer: Hello from the model."_s);
    server.answerWith({{u"answer"_s, u"Hello wor"_s}, {u"finish_reason"_s, u"length"_s}});
    EXPECT_EQ(outcome(ask()), u"error: The model's answer was cut off."_s);
}

TEST_F(LoopbackLanguageModelTest, slowServerIsWaitedForAsLongAsTokensCome)
{
    ASSERT_EQ(refreshed(), std::nullopt);
    server.answerWith({{u"pieces"_s, QJsonArray{QJsonObject{{u"thought"_s, u"Hm."_s}}, u"Hello"_s, u" there."_s}},
                       {u"paced"_s, true}});
    const auto answer = ask();
    ASSERT_TRUE(server.waitForChats(1));
    for (std::size_t token = 1; token <= 3; ++token) {
        clock->advance(std::chrono::seconds(9));
        EXPECT_FALSE(answer.isFinished());
        server.behave({{u"tokens"_s, static_cast<int>(token)}});
        ASSERT_TRUE(server.waitForReports(u"sent"_s, token));
    }
    EXPECT_EQ(outcome(answer), u"answer: Hello there."_s);
}

TEST_F(LoopbackLanguageModelTest, stalledAnswerTimesOutTenSecondsAfterItsLastToken)
{
    ASSERT_EQ(refreshed(), std::nullopt);
    server.answerWith({{u"pieces"_s, QJsonArray{u"Hello"_s, u" there."_s}}, {u"paced"_s, true}});
    const auto answer = ask();
    ASSERT_TRUE(server.waitForChats(1));
    clock->advance(std::chrono::seconds(9));
    server.behave({{u"tokens"_s, 1}});
    ASSERT_TRUE(server.waitForReports(u"sent"_s, 1));
    clock->advance(std::chrono::milliseconds(9999));
    EXPECT_FALSE(answer.isFinished());
    clock->advance(std::chrono::milliseconds(1));
    EXPECT_EQ(outcome(answer), u"error: The model server timed out."_s);
}

/// Each row makes a request fail in another way; every one ends in locally formatted text.
TEST_F(LoopbackLanguageModelTest, everyFaultFallsBackToLocalFormatting)
{
    const std::vector<QJsonObject> rules{
        {{u"status"_s, 503}, {u"body"_s, u"{\"error\":{\"code\":503,\"message\":\"Loading model\"}}"_s}},
        {{u"status"_s, 401}, {u"body"_s, u"{\"error\":{\"message\":\"Invalid API Key\"}}"_s}},
        {{u"status"_s, 404}, {u"body"_s, u"{\"error\":{\"message\":\"model not found\"}}"_s}},
        {{u"status"_s, 400}},
        {{u"status"_s, 500}},
        {{u"status"_s, 204}},
        {{u"status"_s, 302}, {u"headers"_s, QJsonObject{{u"Location"_s, u"/elsewhere"_s}}}},
        {{u"status"_s, 307}, {u"headers"_s, QJsonObject{{u"Location"_s, u"/v1/chat/completions"_s}}}},
        {{u"status"_s, 200}, {u"body"_s, u"<html><body>Hello.</body></html>"_s}, {u"type"_s, u"text/html"_s}},
        {{u"status"_s, 200}, {u"body"_s, u"{\"choices\": ["_s}},
        {{u"status"_s, 200}, {u"body"_s, u""_s}},
        {{u"status"_s, 200}, {u"body"_s, u"{\"choices\": []}"_s}},
        {{u"status"_s, 200}, {u"body"_s, u"{\"message\": {\"content\": \"Hi.\"}}"_s}},
        {{u"status"_s, 200}, {u"body"_s, u"\u0000\u0001"_s}},
        {{u"answer"_s, u""_s}},
        {{u"answer"_s, u"```\n```"_s}},
        {{u"answer"_s, u"Hello wor"_s}, {u"finish_reason"_s, u"length"_s}},
        {{u"answer"_s, u"Hello."_s}, {u"fault"_s, u"truncate"_s}},
        {{u"fault"_s, u"reset"_s}},
        {{u"fault"_s, u"close"_s}},
        {{u"fault"_s, u"huge"_s}},
        {{u"fault"_s, u"header"_s}},
        {{u"fault"_s, u"headers"_s}},
        {{u"fault"_s, u"chunks"_s}},
        {{u"fault"_s, u"event"_s}},
        {{u"fault"_s, u"comments"_s}},
        {{u"answer"_s, u"Hello. "_s.repeated(500)}},
        {{u"answer"_s, u"Hello wor"_s}, {u"end"_s, u"none"_s}},
        {{u"pieces"_s, QJsonArray{u"Hello"_s, QJsonObject{{u"raw"_s, u"data: {\"error\":{\"code\":500}}\n\n"_s}}}}},
        {{u"pieces"_s, QJsonArray{u"Hello"_s, QJsonObject{{u"raw"_s, u"data: {\"choices\n\n"_s}}}}},
        {{u"pieces"_s, QJsonArray{QJsonObject{{u"thought"_s, u"They greet."_s}}}}},
    };
    for (const auto &rule : rules) {
        ASSERT_EQ(refreshed(), std::nullopt);
        server.answerWith(rule);
        const auto before = server.chats().size();
        EXPECT_EQ(cleaned(u"hello world"_s), u"Hello world."_s) << QJsonDocument(rule).toJson().toStdString();
        EXPECT_EQ(server.chats().size(), before + 1) << "not retried";
    }
}

TEST_F(LoopbackLanguageModelTest, hangingOrDrippingServerTimesOutAfterTenSeconds)
{
    for (const auto &fault : {u"hang"_s, u"drip"_s}) {
        ASSERT_EQ(refreshed(), std::nullopt);
        server.answerWith({{u"fault"_s, fault}});
        const auto before = server.chats().size();
        const auto answer = ask();
        ASSERT_TRUE(server.waitForChats(before + 1));
        clock->advance(std::chrono::milliseconds(9999));
        EXPECT_FALSE(answer.isFinished());
        clock->advance(std::chrono::milliseconds(1));
        EXPECT_EQ(outcome(answer), u"error: The model server timed out."_s);
    }
}

TEST_F(LoopbackLanguageModelTest, serverKilledDuringRequestFallsBack)
{
    ASSERT_EQ(refreshed(), std::nullopt);
    server.answerWith({{u"fault"_s, u"hang"_s}});
    const auto answer = ask();
    ASSERT_TRUE(server.waitForChats(1));
    server.kill();
    EXPECT_TRUE(outcome(answer).startsWith(u"error: "_s));
    // It was probed again and found to be gone.
    EXPECT_TRUE(
        waitFor([this] { return model->unavailableReason() == UnavailableReason::AppleIntelligenceNotEnabled; }));
}

TEST_F(LoopbackLanguageModelTest, sanitisesTagsFencesAndPreambles)
{
    ASSERT_EQ(refreshed(), std::nullopt);
    for (const auto &answer : {u"-> Hello."_s, u"Sure, here you go:\n\nHello."_s, u"<transcript>Hello.</transcript>"_s,
                               u"```\nHello.\n```"_s, u"<think>hm</think>\n\n\"Hello.\""_s}) {
        server.answerWith({{u"answer"_s, answer}});
        EXPECT_EQ(cleaned(u"hello"_s), u"Hello."_s) << answer.toStdString();
    }
}

TEST_F(LoopbackLanguageModelTest, stripsControlCharactersFromAnswers)
{
    ASSERT_EQ(refreshed(), std::nullopt);
    server.answerWith({{u"answer"_s, u"Hello\u001b[31m,\r\nwor\u202eld\u0007."_s}});
    EXPECT_EQ(cleaned(u"hello"_s), u"Hello[31m,\nworld."_s);
}

TEST_F(LoopbackLanguageModelTest, editsParagraphsInTurnWithTheirOwnTimeouts)
{
    ASSERT_EQ(refreshed(), std::nullopt);
    beSlow(false, {u"one"_s, u"two"_s, u"three"_s});
    const auto text = cleaning(u"one new paragraph two new paragraph three"_s);
    for (const auto &name : {u"one"_s, u"two"_s, u"three"_s}) {
        const auto count = name == u"one"_s ? 1U : name == u"two"_s ? 2U : 3U;
        ASSERT_TRUE(server.waitForChats(count));
        clock->advance(std::chrono::seconds(9));
        EXPECT_EQ(server.chats().size(), count) << "the next one is not sent earlier";
        letGo({u"one"_s, count > 1 ? u"two"_s : QString(), count > 2 ? u"three"_s : QString()});
        ASSERT_TRUE(waitFor([&] { return text->has_value() || server.chats().size() > count; }));
    }
    EXPECT_EQ(text->value_or(QString()), u"Edited one.\n\nEdited two.\n\nEdited three."_s);
}

TEST_F(LoopbackLanguageModelTest, slowParagraphDoesNotAffectOthers)
{
    ASSERT_EQ(refreshed(), std::nullopt);
    beSlow(true, {u"one"_s, u"two"_s});
    const auto text = cleaning(u"one new paragraph two"_s);
    ASSERT_TRUE(server.waitForChats(1));
    const auto looks = server.requests().size();
    clock->advance(std::chrono::seconds(10));
    // The server is still busy with the abandoned request and sends nothing.
    ASSERT_TRUE(waitFor([&] { return server.requests().size() > looks; }));
    clock->advance(std::chrono::seconds(1));
    ASSERT_TRUE(waitFor([&] { return server.requests().size() > looks + 1; }));
    EXPECT_EQ(server.chats().size(), 1U);
    letGo({u"one"_s, u"two"_s});
    ASSERT_TRUE(waitFor([&] { return text->has_value(); }));
    EXPECT_EQ(text->value_or(QString()), u"One.\n\nEdited two."_s);
}

TEST_F(LoopbackLanguageModelTest, hungServerCostsTwentySecondsForAnyParagraphCount)
{
    ASSERT_EQ(refreshed(), std::nullopt);
    beSlow(true, {u"one"_s});
    const auto text = cleaning(u"one new line one new line one new line one"_s);
    ASSERT_TRUE(server.waitForChats(1));
    const Instant begin = clock->now();
    while (!text->has_value() && clock->now() - begin < std::chrono::minutes(1)) {
        ASSERT_TRUE(waitFor([&] { return text->has_value() || clock->sleeperCount() > 0; }));
        clock->advance(std::chrono::seconds(1));
    }
    EXPECT_EQ(text->value_or(QString()), u"One.\nOne.\nOne.\nOne."_s);
    EXPECT_LE(clock->now() - begin, std::chrono::seconds(21));
    EXPECT_EQ(server.chats().size(), 1U);
}

TEST_F(LoopbackLanguageModelTest, cancellingEndsAllRequestsImmediately)
{
    ASSERT_EQ(refreshed(), std::nullopt);
    beSlow(false, {u"one"_s});
    const auto text = cleaning(u"one new line one new line one"_s);
    ASSERT_TRUE(server.waitForChats(1));
    EXPECT_TRUE(waitFor(model->cancelRequests()));
    ASSERT_TRUE(waitFor([&] { return text->has_value(); }));
    EXPECT_EQ(text->value_or(QString()), u"One.\nOne.\nOne."_s);
    EXPECT_EQ(server.chats().size(), 1U);
    server.behave({{u"slots"_s, 0}, {u"chat"_s, QJsonArray{QJsonObject{{u"answer"_s, u"Hello."_s}}}}});
    EXPECT_EQ(cleaned(u"hello"_s), u"Hello."_s) << "the next dictation is edited again";
    EXPECT_EQ(server.chats().size(), 2U);
}

TEST_F(LoopbackLanguageModelTest, editsMoreSegmentsThanConnections)
{
    ASSERT_EQ(refreshed(), std::nullopt);
    QStringList spoken;
    for (int number = 0; number < 20; ++number) {
        spoken.append(u"hello"_s);
    }
    EXPECT_EQ(cleaned(spoken.join(u" new line "_s)).count(u"Hello from the model."_s), 20);
}

TEST_F(LoopbackLanguageModelTest, destructionCancelsPendingRequests)
{
    ASSERT_EQ(refreshed(), std::nullopt);
    server.answerWith({{u"fault"_s, u"hang"_s}});
    const auto answer = ask();
    ASSERT_TRUE(server.waitForChats(1));
    EXPECT_TRUE(waitFor(model->shutDown()));
    EXPECT_TRUE(outcome(answer).startsWith(u"error: "_s));
    EXPECT_TRUE(waitFor(model->refresh())) << "a late probe does nothing";
    EXPECT_TRUE(outcome(ask()).startsWith(u"error: "_s));
}

} // namespace talmo::test
