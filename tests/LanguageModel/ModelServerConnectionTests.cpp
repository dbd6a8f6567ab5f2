#include "LanguageModel/ModelServerConnection.h"

#include "LanguageModel/ModelServerFixture.h"
#include "Support/Printing.h"
#include "Support/RecordingLog.h"
#include "Support/TestLoop.h"
#include "Support/TestModelServer.h"

#include <QJsonArray>

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

using testing::IsEmpty;
using testing::SizeIs;

class ModelServerConnectionTest : public ModelServerFixture {};

} // namespace

TEST_F(ModelServerConnectionTest, isNotReadyBeforeFirstProbe)
{
    EXPECT_EQ(model->unavailableReason(), UnavailableReason::ModelNotReady);
    EXPECT_THAT(server.requests(), IsEmpty()) << "nothing is sent before the first probe";
}

TEST_F(ModelServerConnectionTest, reportsNoListeningServer)
{
    server.kill();
    EXPECT_EQ(refreshed(), UnavailableReason::AppleIntelligenceNotEnabled);
}

TEST_F(ModelServerConnectionTest, triesLocalhostOverIpv4AndIpv6)
{
    TestModelServer server6(0, QProcessEnvironment::systemEnvironment(), {u"--v6"_s});
    model = makeModel(u"http://localhost:%1"_s.arg(server6.port()));
    EXPECT_EQ(refreshed(), std::nullopt) << model->description().toStdString();
    EXPECT_EQ(outcome(ask()), u"answer: Hello from the model."_s);
}

TEST_F(ModelServerConnectionTest, reportsLoadingModel)
{
    // llama.cpp's server may answer every request like this, or list its model already.
    server.behave({{u"models"_s, QJsonObject{{u"status"_s, 503}, {u"body"_s, u"{\"error\":{\"code\":503}}"_s}}}});
    EXPECT_EQ(refreshed(), UnavailableReason::ModelNotReady);
    server.behave({{u"models"_s, QJsonArray{u"m"_s}}, {u"health"_s, 503}});
    EXPECT_EQ(refreshed(), UnavailableReason::ModelNotReady);
    server.behave({{u"health"_s, 200}});
    EXPECT_EQ(refreshed(), std::nullopt);
}

TEST_F(ModelServerConnectionTest, reportsServerWithoutModels)
{
    server.behave({{u"models"_s, QJsonArray()}});
    EXPECT_EQ(refreshed(), UnavailableReason::Other);
    EXPECT_TRUE(model->description().contains(u"has no model"_s));
}

TEST_F(ModelServerConnectionTest, reportsOtherServiceAtConfiguredAddress)
{
    for (const auto &models :
         {QJsonObject{{u"status"_s, 404}}, QJsonObject{{u"status"_s, 401}},
          QJsonObject{{u"status"_s, 200}, {u"body"_s, u"<html>Hello</html>"_s}, {u"type"_s, u"text/html"_s}},
          QJsonObject{{u"status"_s, 302}, {u"headers"_s, QJsonObject{{u"Location"_s, u"http://127.0.0.1:1/"_s}}}},
          QJsonObject{{u"fault"_s, u"close"_s}}, QJsonObject{{u"fault"_s, u"huge"_s}}}) {
        server.behave({{u"models"_s, models}});
        EXPECT_EQ(refreshed(), UnavailableReason::Other) << model->description().toStdString();
        EXPECT_TRUE(model->description().contains(u"is not a model server"_s)) << model->description().toStdString();
    }
}

TEST_F(ModelServerConnectionTest, probeOfHangingServerTimesOut)
{
    server.behave({{u"models"_s, QJsonObject{{u"fault"_s, u"hang"_s}}}});
    const auto refreshing = model->refresh();
    ASSERT_TRUE(waitFor([this] { return !server.requests().empty(); }));
    EXPECT_FALSE(refreshing.isFinished());
    clock->advance(std::chrono::seconds(1));
    EXPECT_TRUE(waitFor(refreshing));
    EXPECT_EQ(model->unavailableReason(), UnavailableReason::Other);
}

TEST_F(ModelServerConnectionTest, concurrentProbesShareOne)
{
    const auto first = model->refresh();
    const auto second = model->refresh();
    EXPECT_TRUE(waitFor(first));
    EXPECT_TRUE(waitFor(second));
    EXPECT_THAT(server.requests(), SizeIs(2)) << "models and health, once each";
}

TEST_F(ModelServerConnectionTest, probesOnlyOnRequest)
{
    refreshed();
    const auto before = server.requests().size();
    clock->advance(std::chrono::hours(24));
    EXPECT_EQ(server.requests().size(), before);
    EXPECT_EQ(clock->sleeperCount(), 0U);
}

TEST_F(ModelServerConnectionTest, reportsDisabled)
{
    model = makeModel(u"off"_s);
    EXPECT_EQ(model->unavailableReason(), UnavailableReason::DeviceNotEligible);
    EXPECT_EQ(refreshed(), UnavailableReason::DeviceNotEligible);
}

TEST_F(ModelServerConnectionTest, remoteAddressIsRefusedAndLogged)
{
    model = makeModel(u"http://192.168.1.2:8080"_s);
    EXPECT_EQ(refreshed(), UnavailableReason::Other);
    bool isSaid = false;
    for (const auto &line : log.lines()) {
        isSaid = isSaid || (line.startsWith(u"general error: "_s) && line.contains(u"192.168.1.2"_s));
    }
    EXPECT_TRUE(isSaid);
}

TEST_F(ModelServerConnectionTest, reloadingServerIsNotReadyImmediately)
{
    ASSERT_EQ(refreshed(), std::nullopt);
    server.behave({{u"health"_s, 503}});
    server.answerWith({{u"status"_s, 503}});
    outcome(ask());
    EXPECT_EQ(model->unavailableReason(), UnavailableReason::ModelNotReady);
}

TEST_F(ModelServerConnectionTest, probeTimeoutDuringEditKeepsServerAvailable)
{
    ASSERT_EQ(refreshed(), std::nullopt);
    beSlow(true, {u"one"_s});
    const auto text = cleaning(u"one"_s);
    ASSERT_TRUE(server.waitForChats(1));
    const auto looks = server.requests().size();
    const auto looking = model->refresh();
    ASSERT_TRUE(waitFor([&] { return server.requests().size() > looks; }));
    clock->advance(std::chrono::seconds(1));
    ASSERT_TRUE(waitFor(looking));
    EXPECT_EQ(model->unavailableReason(), std::nullopt);
    letGo({u"one"_s});
    ASSERT_TRUE(waitFor([&] { return text->has_value(); }));
    EXPECT_EQ(text->value_or(QString()), u"Edited one."_s);
}

TEST_F(ModelServerConnectionTest, sendsNothingToUntrustedDiscoveredServer)
{
    trust->answer = false;
    model = makeModel({});
    EXPECT_EQ(refreshed(), UnavailableReason::Other);
    EXPECT_TRUE(model->description().contains(u"another user"_s)) << model->description().toStdString();
    EXPECT_EQ(model->server().refused, QStringList{u"127.0.0.1:%1"_s.arg(server.port())});
    EXPECT_EQ(model->server().model, QString());
    EXPECT_TRUE(logSays(u"general error: language model: ignoring another user's process at"_s));
    EXPECT_EQ(cleaned(u"hello"_s), u"Hello."_s);
    EXPECT_THAT(server.requests(), IsEmpty());
    ASSERT_FALSE(trust->asked.empty());
    EXPECT_EQ(trust->asked.front().port, server.port());
}

TEST_F(ModelServerConnectionTest, rechecksTrustBeforeEachRequest)
{
    model = makeModel({});
    ASSERT_EQ(refreshed(), std::nullopt);
    trust->answer = false;
    EXPECT_TRUE(outcome(ask()).contains(u"another user"_s));
    EXPECT_THAT(server.chats(), IsEmpty());
    EXPECT_TRUE(waitFor([this] { return model->unavailableReason() == UnavailableReason::Other; }));
    EXPECT_EQ(model->server().model, QString());
}

TEST_F(ModelServerConnectionTest, trustsConfiguredServer)
{
    trust->answer = false;
    EXPECT_EQ(refreshed(), std::nullopt);
    EXPECT_TRUE(trust->asked.empty());
}

TEST_F(ModelServerConnectionTest, reportsServerAndModelInUse)
{
    server.behave({{u"models"_s, QJsonArray{u"qwen\u001b\u202e2.5"_s}}});
    EXPECT_EQ(refreshed(), std::nullopt);
    EXPECT_EQ(model->server().model, u"qwen2.5"_s);
    EXPECT_EQ(model->server().place, u"127.0.0.1:%1"_s.arg(server.port()));
    server.kill();
    refreshed();
    EXPECT_EQ(model->server().place, QString());
}

TEST_F(ModelServerConnectionTest, ignoresProxy)
{
    TestModelServer proxy;
    qputenv("http_proxy", proxy.address().toUtf8());
    qputenv("HTTP_PROXY", proxy.address().toUtf8());
    EXPECT_EQ(refreshed(), std::nullopt);
    EXPECT_EQ(outcome(ask()), u"answer: Hello from the model."_s);
    qunsetenv("http_proxy");
    qunsetenv("HTTP_PROXY");
    EXPECT_THAT(proxy.requests(), IsEmpty());
    EXPECT_THAT(server.chats(), SizeIs(1));
}

} // namespace talmo::test
