// A decoder takes 100 MB and a third of a second to load: one must serve all dictations.

#include "Recognition/PocketSphinx/PocketSphinxEngine.h"
#include "Support/Printing.h"
#include "Support/SinglePlatform.h"
#include "Support/TestLoop.h"

#include <gtest/gtest.h>

namespace talmo::test {

namespace {

class DecoderCount : public testing::Test {
protected:
    using Input = AsyncStream<AnalyzerInput>;

    void warmUp()
    {
        EXPECT_TRUE(waitFor(executor->call([this] { engine->warmUp(); })));
    }
    /// Records a second of silence, running `meanwhile` before the recording ends.
    void record(const std::function<void()> &meanwhile)
    {
        const auto transcriber = platform->makeTranscriber(u"en_US"_s, TranscriberConfiguration::VolatileResults);
        const auto analyzer = platform->makeAnalyzer(transcriber);
        const auto input = Input::make();
        analyzer->start(input.first, {});
        auto buffer = AudioBuffer::make({RecordingDecoder::sampleRate, 1, SampleType::Int16}, 16000);
        buffer->setFrameLength(16000);
        input.second.yield({buffer});
        EXPECT_TRUE(waitFor(executor->call([] {})));
        meanwhile();
        input.second.finish();
        EXPECT_TRUE(waitFor(analyzer->finalizeAndFinishThroughEndOfInput()));
        EXPECT_TRUE(waitFor(executor->call([] {}))); // The decoder is given back after the text.
    }
    std::shared_ptr<SerialExecutor> executor = SerialExecutor::onNewThread(u"decoder"_s);
    std::shared_ptr<PocketSphinxEngine> engine = std::make_shared<PocketSphinxEngine>();
    std::shared_ptr<EngineSpeechPlatform> platform = platformWith(engine, executor);
};

} // namespace

TEST_F(DecoderCount, pressDuringRecordingLoadsNoSecondDecoder)
{
    warmUp();
    record([this] { warmUp(); });
    warmUp();
    record([] {});
    EXPECT_EQ(engine->loadCount(), 1);
    EXPECT_TRUE(engine->isLoaded());
}

TEST_F(DecoderCount, pressAfterUnloadingReloads)
{
    warmUp();
    EXPECT_TRUE(waitFor(executor->call([this] { engine->unload(); })));
    warmUp();
    EXPECT_EQ(engine->loadCount(), 2);
}

} // namespace talmo::test
