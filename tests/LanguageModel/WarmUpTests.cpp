// What the model server is given before there is a transcript.

#include "Cleanup/CleanupInstructions.h"
#include "Cleanup/TextCleanupService.h"
#include "LanguageModel/LoopbackLanguageModel.h"
#include "Support/ManualClock.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"
#include "Support/TestModelServer.h"

#include <QJsonArray>

#include <gmock/gmock.h>

#include <array>

namespace talmo::test {

using namespace std::chrono_literals;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

/// A real server in a separate process; only time is virtual.
class WarmUpTest : public testing::Test {
protected:
    TestModelServer server;
    std::shared_ptr<ManualClock> clock = std::make_shared<ManualClock>();
    std::shared_ptr<SerialExecutor> executor = SerialExecutor::onCurrentThread();
    std::shared_ptr<LoopbackLanguageModel> model = makeModel(server.address());
    TextTone tone = TextTone::Polite;
    QStringList words{u"Kubernetes"_s};

    ~WarmUpTest() override { EXPECT_TRUE(waitFor(model->shutDown())); }

    std::shared_ptr<LoopbackLanguageModel> makeModel(const QString &address)
    {
        return std::make_shared<LoopbackLanguageModel>(LoopbackLanguageModel::Configuration{address, {}, {}}, executor,
                                                       clock, nullptr);
    }
    void refresh() { ASSERT_TRUE(waitFor(model->refresh())); }
    QString instructions() const { return buildInstructions(words, false, true, tone); }
    void warmUp()
    {
        model->warmUp(instructions(), promptStart());
        settle();
    }
    QString cleaned(const QString &transcript)
    {
        std::optional<QString> text;
        TextCleanupService service(executor, model);
        service.cleanup(transcript, true, true, tone, words).then([&text](const QString &result) { text = result; });
        EXPECT_TRUE(waitFor([&text] { return text.has_value(); }));
        return text.value_or(QString());
    }
    /// Answers every request but a preparation, which hangs.
    void hangDuringWarmUp(bool isAlone = false)
    {
        server.behave({{u"slots"_s, isAlone ? 1 : 0},
                       {u"alone"_s, isAlone},
                       {u"chat"_s, QJsonArray{QJsonObject{{u"when"_s, u"</transcript>"_s}, {u"answer"_s, u"Edited."_s}},
                                              QJsonObject{{u"held"_s, u"never"_s}, {u"leaves"_s, true}}}}});
    }
    std::size_t abandoned() const { return server.reports(u"abandoned"_s).size(); }
};

} // namespace

TEST_F(WarmUpTest, serverHasReadInstructionsWhenTranscriptComes)
{
    refresh();
    warmUp();
    ASSERT_TRUE(server.waitForReports(u"answered"_s, 1));
    EXPECT_EQ(cleaned(u"hello"_s), u"Hello from the model."_s);
    EXPECT_EQ(cleaned(u"eggs and milk as bullet points"_s), u"Hello from the model."_s);
    const auto prompts = server.reports(u"prompt"_s);
    ASSERT_THAT(prompts, SizeIs(3));
    EXPECT_EQ(prompts[0].value(u"cached"_s).toInt(), 0);
    const QString known = u"system\n"_s + instructions() + u"\nuser\n<transcript>"_s;
    EXPECT_EQ(prompts[1].value(u"cached"_s).toInt(), known.size());
    EXPECT_EQ(prompts[1].value(u"characters"_s).toInt(), known.size() + u"hello</transcript>\n"_s.size());
    EXPECT_GE(prompts[2].value(u"cached"_s).toInt(), instructions().size()) << "a list's instructions begin the same";
}

TEST_F(WarmUpTest, requestDiffersFromEditOnlyInItsEnd)
{
    refresh();
    warmUp();
    ASSERT_TRUE(server.waitForReports(u"answered"_s, 1));
    cleaned(u"hello"_s);
    ASSERT_THAT(server.warmUps(), SizeIs(1));
    ASSERT_THAT(server.chats(), SizeIs(1));
    std::array chats{server.warmUps().front(), server.chats().front()};
    EXPECT_EQ(chats[0].take(u"max_tokens"_s), 1);
    EXPECT_EQ(chats[1].take(u"max_tokens"_s), 64);
    const auto first = chats[0].take(u"messages"_s).toArray();
    const auto second = chats[1].take(u"messages"_s).toArray();
    EXPECT_EQ(chats[0], chats[1]) << "model, seed, temperature";
    ASSERT_EQ(first.size(), second.size());
    EXPECT_EQ(first.at(0), second.at(0)) << "the instructions, byte for byte";
    EXPECT_EQ(first.at(1).toObject().value(u"role"_s), second.at(1).toObject().value(u"role"_s));
    EXPECT_TRUE(second.at(1)
                    .toObject()
                    .value(u"content"_s)
                    .toString()
                    .startsWith(first.at(1).toObject().value(u"content"_s).toString()));
}

TEST_F(WarmUpTest, transcriptDoesNotWaitForIt)
{
    refresh();
    hangDuringWarmUp();
    warmUp();
    ASSERT_TRUE(server.waitForWarmUps(1));
    EXPECT_EQ(cleaned(u"hello"_s), u"Edited."_s);
    EXPECT_TRUE(server.waitForReports(u"abandoned"_s, 1));
    clock->advance({});
    EXPECT_EQ(clock->sleeperCount(), 0U) << "no time-out is left";
}

TEST_F(WarmUpTest, cancellingItFreesServer)
{
    refresh();
    hangDuringWarmUp();
    warmUp();
    ASSERT_TRUE(server.waitForWarmUps(1));
    EXPECT_EQ(abandoned(), 0U);
    model->cancelWarmUp();
    settle();
    EXPECT_TRUE(server.waitForReports(u"abandoned"_s, 1));
}

TEST_F(WarmUpTest, laterOneReplacesEarlierOne)
{
    refresh();
    hangDuringWarmUp();
    warmUp();
    ASSERT_TRUE(server.waitForWarmUps(1));
    tone = TextTone::Friendly;
    warmUp();
    ASSERT_TRUE(server.waitForWarmUps(2));
    EXPECT_TRUE(server.waitForReports(u"abandoned"_s, 1));
    EXPECT_EQ(server.warmUps()[1].value(u"messages"_s)[0][u"content"_s].toString(), instructions());
}

TEST_F(WarmUpTest, neverCompetesWithEdit)
{
    refresh();
    server.answerWith({{u"answer"_s, u"Edited."_s}, {u"held"_s, u"edit"_s}});
    std::optional<QString> text;
    TextCleanupService service(executor, model);
    service.cleanup(u"hello"_s, true, true, tone, words).then([&text](const QString &result) { text = result; });
    ASSERT_TRUE(waitFor([this] { return server.chats().size() == 1; }));
    warmUp();
    server.behave({{u"free"_s, QJsonArray{u"edit"_s}}});
    ASSERT_TRUE(waitFor([&text] { return text.has_value(); }));
    EXPECT_EQ(text, u"Edited."_s);
    EXPECT_THAT(server.warmUps(), IsEmpty());
}

TEST_F(WarmUpTest, waitsForProbeOfServer)
{
    const auto looking = model->refresh();
    warmUp();
    EXPECT_TRUE(waitFor(looking));
    EXPECT_TRUE(waitFor([this] { return server.warmUps().size() == 1; }));
}

TEST_F(WarmUpTest, sendsNothingWhileThereIsNoModel)
{
    warmUp();
    server.behave({{u"models"_s, QJsonArray()}});
    refresh();
    warmUp();
    model = makeModel(u"off"_s);
    refresh();
    warmUp();
    EXPECT_THAT(server.warmUps(), IsEmpty());
}

TEST_F(WarmUpTest, itsFailureHasNoConsequences)
{
    refresh();
    for (const auto &rule : {QJsonObject{{u"fault"_s, u"close"_s}}, QJsonObject{{u"fault"_s, u"huge"_s}},
                             QJsonObject{{u"status"_s, 500}}, QJsonObject{{u"fault"_s, u"event"_s}}}) {
        server.answerWith(rule);
        const auto before = server.warmUps().size();
        const auto requests = server.requests().size();
        warmUp();
        ASSERT_TRUE(waitFor([&] { return server.warmUps().size() > before; }));
        clock->advance(1min);
        EXPECT_EQ(model->unavailableReason(), std::nullopt);
        server.answerWith({{u"answer"_s, u"Edited."_s}});
        EXPECT_EQ(cleaned(u"hello"_s), u"Edited."_s);
        EXPECT_EQ(server.requests().size(), requests + 2) << "no probe either";
    }
}

TEST_F(WarmUpTest, slowMachineGetsOneMinute)
{
    refresh();
    hangDuringWarmUp();
    warmUp();
    ASSERT_TRUE(server.waitForWarmUps(1));
    clock->advance(1min - 1ms);
    EXPECT_EQ(clock->sleeperCount(), 1U);
    clock->advance(1ms);
    EXPECT_TRUE(server.waitForReports(u"abandoned"_s, 1));
    EXPECT_EQ(model->unavailableReason(), std::nullopt);
}

TEST_F(WarmUpTest, serverThatReadsOneRequestAtATimeStaysAvailable)
{
    refresh();
    hangDuringWarmUp(true);
    warmUp();
    ASSERT_TRUE(server.waitForWarmUps(1));
    const auto requests = server.requests().size();
    const auto looking = model->refresh();
    ASSERT_TRUE(waitFor([&] { return server.requests().size() > requests; }));
    clock->advance(1s);
    ASSERT_TRUE(waitFor(looking));
    EXPECT_EQ(model->unavailableReason(), std::nullopt);
    EXPECT_EQ(cleaned(u"hello"_s), u"Edited."_s);
}

TEST_F(WarmUpTest, shutDownEndsIt)
{
    refresh();
    hangDuringWarmUp();
    warmUp();
    ASSERT_TRUE(server.waitForWarmUps(1));
    EXPECT_TRUE(waitFor(model->shutDown()));
    EXPECT_TRUE(server.waitForReports(u"abandoned"_s, 1));
    warmUp();
    EXPECT_THAT(server.warmUps(), SizeIs(1));
}

} // namespace talmo::test
