#include "Cleanup/TextCleanupService.h"

#include "Base/Error.h"
#include "Cleanup/CleanupInstructions.h"
#include "Support/Printing.h"
#include "Support/RecordingLog.h"
#include "Support/ScriptedLanguageModel.h"
#include "Support/TestLoop.h"

#include <QThread>

#include <gmock/gmock.h>

#include <map>

namespace talmo::test {

namespace {

using testing::IsEmpty;
using testing::SizeIs;

struct Options {
    bool ai = true;
    bool concise = false;
    TextTone tone = TextTone::Standard;
    QStringList words;
};

class TextCleanupServiceTest : public testing::Test {
protected:
    std::shared_ptr<ScriptedLanguageModel> model = std::make_shared<ScriptedLanguageModel>();
    TextCleanupService service{SerialExecutor::onNewThread(u"cleanup"_s), model};
    const Options withoutModel{false, false, TextTone::Standard, {}};

    QString cleaned(const QString &transcript, const Options &options = {})
    {
        return wait(service.cleanup(transcript, options.ai, options.concise, options.tone, options.words));
    }
    QString cleanedSegment(const QString &text, const Options &options = {})
    {
        return wait(service.cleanSegment(text, options.ai, options.concise, options.tone, options.words));
    }

private:
    static QString wait(QCoro::Task<QString> task)
    {
        std::optional<QString> result;
        auto waiting = task.then([&result](const QString &text) { result = text; });
        EXPECT_TRUE(waitFor([&result] { return result.has_value(); }));
        return result.value_or(QString());
    }
};

QFuture<QString> failure()
{
    return makeFailedFuture<QString>(std::make_exception_ptr(Error(u"no answer"_s)));
}

} // namespace

TEST_F(TextCleanupServiceTest, disabledRemovesTriggerAndFormatsLocally)
{
    EXPECT_EQ(cleaned(u"send the file as a list"_s, withoutModel), u"Send the file."_s);
    EXPECT_THAT(model->requests(), IsEmpty());
}

TEST_F(TextCleanupServiceTest, transcriptOfOnlyCommandsIsReturnedUnchanged)
{
    EXPECT_EQ(cleaned(u"new line"_s), u"new line"_s);
    EXPECT_EQ(cleaned(u"new line new paragraph"_s), u"new line new paragraph"_s);
    EXPECT_THAT(model->requests(), IsEmpty());
}

TEST_F(TextCleanupServiceTest, formatsEachSegmentInOrder)
{
    EXPECT_EQ(cleaned(u"hello new paragraph world"_s, withoutModel), u"Hello.\n\nWorld."_s);
    EXPECT_EQ(cleaned(u"one new line two new line three"_s, withoutModel), u"One.\nTwo.\nThree."_s);
}

TEST_F(TextCleanupServiceTest, triggerOnlySegmentIsEmptyWithoutModelCall)
{
    EXPECT_EQ(cleanedSegment(u"as a list"_s), QString());
    EXPECT_EQ(cleanedSegment(u"   "_s), QString());
    EXPECT_EQ(cleanedSegment(u" \n "_s, withoutModel), QString());
    EXPECT_THAT(model->requests(), IsEmpty());
    EXPECT_EQ(cleaned(u"one new line as a list new line two"_s, withoutModel), u"One.\n\nTwo."_s);
}

TEST_F(TextCleanupServiceTest, usesModelAnswerUnchanged)
{
    model->onRequest = [](const auto &) { return makeReadyFuture(u"hello, World"_s); };
    EXPECT_EQ(cleaned(u"um hello world"_s), u"hello, World"_s) << "a model's answer is not formatted again";
    const auto requests = model->requests();
    ASSERT_THAT(requests, SizeIs(1));
    EXPECT_EQ(requests[0].prompt, u"<transcript>um hello world</transcript>"_s);
    EXPECT_EQ(requests[0].instructions, buildInstructions({}, false, false, TextTone::Standard));
    EXPECT_EQ(requests[0].options.sampling, SamplingMode::Greedy);
    EXPECT_FALSE(requests[0].options.temperature);
    EXPECT_NE(requests[0].thread, QThread::currentThread());
}

TEST_F(TextCleanupServiceTest, everySettingReachesInstructions)
{
    cleaned(u"hello as bullet points"_s, {true, true, TextTone::Polite, {u"Talmo"_s}});
    const auto requests = model->requests();
    ASSERT_THAT(requests, SizeIs(1));
    EXPECT_EQ(requests[0].instructions, buildInstructions({u"Talmo"_s}, true, true, TextTone::Polite));
    EXPECT_EQ(requests[0].prompt, u"<transcript>hello</transcript>"_s) << "without the bullet request";
}

TEST_F(TextCleanupServiceTest, sanitisesAnswer)
{
    for (const auto &answer : {u"-> Hello."_s, u"Sure, here you go:\n\nHello."_s, u"<transcript>Hello.</transcript>"_s,
                               u"```\nHello.\n```"_s, u"\"Hello.\""_s, u"\n Hello. \n"_s}) {
        model->onRequest = [answer](const auto &) { return makeReadyFuture(QString(answer)); };
        EXPECT_EQ(cleaned(u"hello"_s), u"Hello."_s) << answer.toStdString();
    }
}

TEST_F(TextCleanupServiceTest, emptyAnswerFallsBackToLocalText)
{
    for (const auto &answer : {u""_s, u" \n"_s, u"\"\""_s, u"```"_s, u"<transcript></transcript>"_s}) {
        model->onRequest = [answer](const auto &) { return makeReadyFuture(QString(answer)); };
        EXPECT_EQ(cleaned(u"hello world as a list"_s), u"Hello world."_s) << answer.toStdString();
    }
}

TEST_F(TextCleanupServiceTest, acceptsAnswersOfAnyLengthAndContent)
{
    const QString strange = QString(5000, u'x') + u" 42"_s;
    model->onRequest = [strange](const auto &) { return makeReadyFuture(QString(strange)); };
    EXPECT_EQ(cleaned(u"hello"_s), strange);
}

TEST_F(TextCleanupServiceTest, everyFailureFallsBackSilently)
{
    const RecordingLog log;
    model->onRequest = [](const auto &) { return failure(); };
    EXPECT_EQ(cleaned(u"hello new line world"_s), u"Hello.\nWorld."_s);
    model->onRequest = [](const auto &) -> QFuture<QString> { throw std::runtime_error("broken"); };
    EXPECT_EQ(cleaned(u"hello"_s), u"Hello."_s);
    model->onRequest = [](const auto &) { return Completion<QString>::make()->future(); }; // Destroyed unfinished.
    EXPECT_EQ(cleaned(u"hello"_s), u"Hello."_s);
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(TextCleanupServiceTest, doesNotCallUnavailableModel)
{
    model->reason = UnavailableReason::ModelNotReady;
    EXPECT_EQ(cleaned(u"hello as a list"_s), u"Hello."_s);
    EXPECT_THAT(model->requests(), IsEmpty());
}

TEST_F(TextCleanupServiceTest, cleansSegmentsConcurrentlyAndJoinsInOrder)
{
    // All requests are made before the first is answered, and they are answered out of order.
    std::map<QString, std::shared_ptr<Completion<QString>>> waiting;
    model->onRequest = [&waiting](const ScriptedLanguageModel::Request &request) {
        auto completion = Completion<QString>::make();
        auto future = completion->future();
        waiting[request.prompt] = completion;
        if (waiting.size() == 3) {
            for (const auto &name : {u"three"_s, u"two"_s, u"one"_s}) {
                waiting[transcriptPrompt(name)]->finish(name.toUpper());
            }
        }
        return future;
    };
    EXPECT_EQ(cleaned(u"one new line two new paragraph three"_s), u"ONE\nTWO\n\nTHREE"_s);
    const auto requests = model->requests();
    ASSERT_THAT(requests, SizeIs(3));
    for (std::size_t index = 0; index < requests.size(); ++index) {
        EXPECT_EQ(requests[index].session, int(index) + 1) << "one session each";
    }
}

TEST_F(TextCleanupServiceTest, failedSegmentDoesNotAffectOthers)
{
    model->onRequest = [](const ScriptedLanguageModel::Request &request) {
        return request.prompt.contains(u"two"_s) ? failure() : makeReadyFuture(u"-> Edited."_s);
    };
    EXPECT_EQ(cleaned(u"one new line two new line three"_s), u"Edited.\nTwo.\nEdited."_s);
}

TEST_F(TextCleanupServiceTest, eachDictationUsesNewSession)
{
    cleaned(u"one"_s);
    cleaned(u"one"_s);
    const auto requests = model->requests();
    ASSERT_THAT(requests, SizeIs(2));
    EXPECT_NE(requests[0].session, requests[1].session);
}

TEST_F(TextCleanupServiceTest, responseLimitCountsGraphemeClusters)
{
    EXPECT_EQ(responseLimit(0), 64);
    EXPECT_EQ(responseLimit(100), 64);
    EXPECT_EQ(responseLimit(127), 64);
    EXPECT_EQ(responseLimit(128), 64);
    EXPECT_EQ(responseLimit(129), 64);
    EXPECT_EQ(responseLimit(130), 65);
    EXPECT_EQ(responseLimit(300), 150);
    // 300 grapheme clusters of several code points each, and a trigger, which does not count.
    cleaned(u"\U0001F469\u200D\U0001F52C"_s.repeated(300) + u" as a list"_s);
    EXPECT_EQ(model->requests().at(0).options.maximumResponseTokens, 150);
}

TEST_F(TextCleanupServiceTest, reportsWhyModelIsUnavailable)
{
    EXPECT_FALSE(service.unavailabilityMessage());
    const std::map<UnavailableReason, QString> messages{
        {UnavailableReason::DeviceNotEligible, u"This Mac doesn't support Apple Intelligence."_s},
        {UnavailableReason::AppleIntelligenceNotEnabled,
         u"Apple Intelligence isn't turned on. Enable it in System Settings > Apple Intelligence & Siri to use AI cleanup."_s},
        {UnavailableReason::ModelNotReady, u"The on-device language model is still preparing. Try again shortly."_s},
        {UnavailableReason::Other, u"The on-device language model isn't available right now."_s}};
    for (const auto &[reason, message] : messages) {
        model->reason = reason;
        EXPECT_EQ(service.unavailabilityMessage(), message);
    }
}

} // namespace talmo::test
