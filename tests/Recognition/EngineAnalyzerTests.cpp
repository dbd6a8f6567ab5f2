#include "Recognition/EngineAnalyzer.h"

#include "Support/ManualClock.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"

#include <gmock/gmock.h>

#include <functional>

namespace talmo::test {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr auto standstill = EngineAnalyzer::longestStandstill;

/// An engine that takes as much virtual time as the test says and recognises one word per buffer. The decoder thread is
/// the test's thread; an engine that hangs is one whose work is never run.
struct Engine {
    std::shared_ptr<ManualClock> clock = std::make_shared<ManualClock>();
    Duration loadTime{0};
    Duration bufferTime{0};
    int loads = 0;
    /// Shared, since an abandoned decoder outlives the test.
    std::shared_ptr<std::function<void()>> onPutAway = std::make_shared<std::function<void()>>([] {});
};

class Decoder final : public RecordingDecoder {
public:
    Decoder(Engine &engine, Publish publish)
        : m_engine(engine),
          m_onPutAway(engine.onPutAway),
          m_publish(std::move(publish))
    {
        ++m_engine.loads;
        m_engine.clock->advance(m_engine.loadTime);
    }
    ~Decoder() override { (*m_onPutAway)(); }
    void process(std::span<const std::int16_t>) override
    {
        m_engine.clock->advance(m_engine.bufferTime);
        m_publish({u"word "_s, true});
    }
    void finish() override { m_publish({u"end"_s, true}); }

private:
    Engine &m_engine;
    std::shared_ptr<std::function<void()>> m_onPutAway;
    Publish m_publish;
};

class EngineAnalyzerTest : public testing::Test {
protected:
    using Input = AsyncStream<AnalyzerInput>;

    std::shared_ptr<EngineAnalyzer> makeAnalyzer(std::shared_ptr<SerialExecutor> executor)
    {
        return std::make_shared<EngineAnalyzer>(
            stream.second,
            [this](RecordingDecoder::Publish publish) { return std::make_unique<Decoder>(engine, std::move(publish)); },
            std::move(executor), engine.clock);
    }
    void speak(int buffers)
    {
        const AudioFormat format{RecordingDecoder::sampleRate, 1, SampleType::Int16};
        for (int index = 0; index < buffers; ++index) {
            auto buffer = AudioBuffer::make(format, 16);
            buffer->setFrameLength(16);
            input.second.yield({buffer});
        }
    }
    QString results()
    {
        QString text;
        bool isEnded = false;
        while (!isEnded) {
            const auto next = stream.first.next();
            EXPECT_TRUE(waitFor(next));
            isEnded = !next.isFinished() || !next.result();
            text += isEnded ? QString() : next.result()->text;
        }
        return text;
    }
    static QString outcome(const QFuture<void> &finalised)
    {
        if (!finalised.isFinished()) {
            return u"waits"_s;
        }
        try {
            QFuture<void>(finalised).waitForFinished();
        } catch (const Error &error) {
            return error.localizedDescription();
        }
        return u"done"_s;
    }

    Engine engine;
    std::pair<AsyncStream<SpeechResult>, EngineAnalyzer::Results> stream = AsyncStream<SpeechResult>::make();
    std::pair<Input, Input::Continuation> input = Input::make();
    std::shared_ptr<SerialExecutor> thread = SerialExecutor::onCurrentThread();
};

const QString stoppedResponding =
    u"Speech recognition stopped responding. Copy Last Dictation in the menu has what was heard until then."_s;

} // namespace

TEST_F(EngineAnalyzerTest, slowlyLoadingModelLosesNothing)
{
    engine.loadTime = 20s;
    const auto analyzer = makeAnalyzer(thread);
    analyzer->start(input.first, {});
    speak(3);
    input.second.finish();
    const auto finalised = analyzer->finalizeAndFinishThroughEndOfInput();
    settle();
    EXPECT_EQ(outcome(finalised), u"done"_s);
    EXPECT_EQ(results(), u"word word word end"_s);
}

TEST_F(EngineAnalyzerTest, textIsThereBeforeDecoderIsPutInOrder)
{
    const auto analyzer = makeAnalyzer(thread);
    analyzer->start(input.first, {});
    speak(1);
    input.second.finish();
    const auto finalised = analyzer->finalizeAndFinishThroughEndOfInput();
    QString outcomeThen;
    *engine.onPutAway = [&] { outcomeThen = outcome(finalised); };
    settle();
    EXPECT_EQ(outcomeThen, u"done"_s);
}

TEST_F(EngineAnalyzerTest, engineFarBehindLosesNothing)
{
    engine.bufferTime = 20s;
    const auto analyzer = makeAnalyzer(thread);
    analyzer->start(input.first, {});
    speak(5);
    input.second.finish();
    const auto finalised = analyzer->finalizeAndFinishThroughEndOfInput();
    settle();
    EXPECT_EQ(outcome(finalised), u"done"_s);
    EXPECT_EQ(results(), u"word word word word word end"_s);
}

TEST_F(EngineAnalyzerTest, stalledEngineFailsAndKeepsResults)
{
    // The engine never sees the end of the input, so it waits forever.
    const auto analyzer = makeAnalyzer(thread);
    analyzer->start(input.first, {});
    speak(2);
    settle();
    const auto finalised = analyzer->finalizeAndFinishThroughEndOfInput();
    engine.clock->advance(standstill - 1ms);
    EXPECT_EQ(outcome(finalised), u"waits"_s);
    engine.clock->advance(1ms);
    EXPECT_EQ(outcome(finalised), stoppedResponding);
    EXPECT_EQ(results(), u"word word "_s);
}

TEST_F(EngineAnalyzerTest, progressExtendsTimeout)
{
    const auto analyzer = makeAnalyzer(thread);
    analyzer->start(input.first, {});
    const auto finalised = analyzer->finalizeAndFinishThroughEndOfInput();
    for (int round = 0; round < 4; ++round) {
        engine.clock->advance(standstill - 1s);
        speak(1);
        settle();
        EXPECT_EQ(outcome(finalised), u"waits"_s) << round;
    }
    input.second.finish();
    settle();
    EXPECT_EQ(outcome(finalised), u"done"_s);
    EXPECT_EQ(results(), u"word word word word end"_s);
    EXPECT_EQ(engine.clock->sleeperCount(), 0U);
}

TEST_F(EngineAnalyzerTest, suspendedMachineIsNoStandstill)
{
    const auto analyzer = makeAnalyzer(thread);
    analyzer->start(input.first, {});
    speak(2);
    settle();
    const auto finalised = analyzer->finalizeAndFinishThroughEndOfInput();
    engine.clock->advance(standstill / 2);
    engine.clock->suspend(std::chrono::hours(8));
    EXPECT_EQ(outcome(finalised), u"waits"_s);
    input.second.finish();
    settle();
    EXPECT_EQ(outcome(finalised), u"done"_s);
    EXPECT_EQ(results(), u"word word end"_s);
}

TEST_F(EngineAnalyzerTest, finalisingWithoutStartCompletes)
{
    const auto analyzer = makeAnalyzer(thread);
    const auto finalised = analyzer->finalizeAndFinishThroughEndOfInput();
    settle();
    EXPECT_EQ(outcome(finalised), u"done"_s);
    EXPECT_EQ(results(), QString());
    EXPECT_EQ(engine.loads, 0);
}

TEST_F(EngineAnalyzerTest, cancellingStopsTimeout)
{
    const auto analyzer = makeAnalyzer(thread);
    analyzer->start(input.first, {});
    const auto finalised = analyzer->finalizeAndFinishThroughEndOfInput();
    settle();
    analyzer->cancelAndFinishNow();
    settle();
    EXPECT_EQ(outcome(finalised), u"done"_s);
    EXPECT_EQ(engine.clock->sleeperCount(), 0U);
}

} // namespace talmo::test
