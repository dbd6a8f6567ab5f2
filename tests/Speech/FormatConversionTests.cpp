#include "Speech/FormatConversion.h"

#include "Support/FakeAudioEngine.h"

#include <gmock/gmock.h>

#include <limits>

namespace talmo::test {

namespace {

const AudioFormat target{16000, 1, SampleType::Int16};

/// Records its calls and consumes its input.
class ScriptedConverter final : public AudioConverter {
public:
    struct Script {
        int made = 0;
        int converted = 0;
        bool fails = false;
        std::vector<quint32> capacities;
        std::vector<ConverterInputStatus> statuses;
    };
    explicit ScriptedConverter(std::shared_ptr<Script> script)
        : m_script(std::move(script))
    {
    }
    void convert(AudioBuffer &output, std::optional<QString> &error, const InputCallback &input) override
    {
        ++m_script->converted;
        m_script->capacities.push_back(output.frameCapacity());
        for (int ask = 0; ask < 3; ++ask) {
            ConverterInputStatus status = ConverterInputStatus::EndOfStream;
            const auto buffer = input(status);
            m_script->statuses.push_back(status);
            EXPECT_EQ(buffer != nullptr, status == ConverterInputStatus::HaveData);
        }
        if (m_script->fails) {
            error = QStringLiteral("failed");
        }
        output.setFrameLength(1);
    }

private:
    std::shared_ptr<Script> m_script;
};

class ScriptedFactory final : public AudioConverterFactory {
public:
    bool refuses = false;
    std::shared_ptr<ScriptedConverter::Script> script = std::make_shared<ScriptedConverter::Script>();
    std::unique_ptr<AudioConverter> make(const AudioFormat &, const AudioFormat &) const override
    {
        ++script->made;
        return refuses ? nullptr : std::make_unique<ScriptedConverter>(script);
    }
};

class FormatConversionTest : public testing::Test {
protected:
    FormatConversionTest()
    {
        box.factory = factory;
        box.targetFormat = target;
    }

    /// What the analyzer receives for this buffer.
    std::shared_ptr<const AudioBuffer> send(const std::shared_ptr<const AudioBuffer> &buffer)
    {
        std::shared_ptr<const AudioBuffer> received;
        handleTapBuffer(box, continuation, buffer);
        stream.next([&received](std::optional<AnalyzerInput> input, std::exception_ptr) {
            received = input ? input->buffer : nullptr;
        });
        return received;
    }

    std::shared_ptr<ScriptedFactory> factory = std::make_shared<ScriptedFactory>();
    LazyAudioConverterBox box;
    std::pair<AsyncStream<AnalyzerInput>, AsyncStream<AnalyzerInput>::Continuation> made =
        AsyncStream<AnalyzerInput>::make();
    AsyncStream<AnalyzerInput> &stream = made.first;
    AsyncStream<AnalyzerInput>::Continuation &continuation = made.second;
};

} // namespace

TEST(ConversionCapacity, isTruncatedExactRatioPlus1024)
{
    EXPECT_EQ(conversionCapacity(48000, 16000, 4800), 2624U);
    EXPECT_EQ(conversionCapacity(44100, 16000, 1024), 1395U);
    EXPECT_EQ(conversionCapacity(16000, 16000, 512), 1536U);
    EXPECT_EQ(conversionCapacity(48000, 16000, 0), 1024U);
}

TEST(ConversionCapacity, clampsSourceRateToAtLeast1Hz)
{
    EXPECT_EQ(conversionCapacity(0, 16000, 2), 33024U);
    EXPECT_EQ(conversionCapacity(1, 16000, 2), 33024U);
    EXPECT_EQ(conversionCapacity(-5, 16000, 2), 33024U);
    EXPECT_EQ(conversionCapacity(std::numeric_limits<double>::quiet_NaN(), 16000, 2), 33024U);
}

TEST(ConversionCapacity, handlesFractionalAndNegativeRates)
{
    EXPECT_EQ(conversionCapacity(1.25, 12.5, 10), 1124U);
    EXPECT_EQ(conversionCapacity(0.5, 10, 10), 1124U);
    EXPECT_EQ(conversionCapacity(1, -0.5, 1), 1024U) << "above -1 it truncates to zero";
}

TEST(ConversionCapacity, acceptsLargestFrameCountThatFits)
{
    constexpr quint32 largest = std::numeric_limits<quint32>::max();
    EXPECT_EQ(conversionCapacity(1, 1, largest - 1024), largest);
    EXPECT_DEATH(conversionCapacity(1, 1, largest - 1023), "4294966272 frames leave no room for the margin\n");
    EXPECT_DEATH(conversionCapacity(1, 1, largest), "no room for the margin");
    EXPECT_DEATH(conversionCapacity(1, 4294967296.0, 1), "4294967296.000000 frames do not fit in a buffer\n");
    EXPECT_DEATH(conversionCapacity(1, -1, 1), "do not fit in a buffer");
}

TEST(ConversionCapacityDeathTest, abortsWhenNoBufferCanHoldTheResult)
{
    EXPECT_DEATH(conversionCapacity(0, 16000, 300000), "do not fit in a buffer");
    EXPECT_DEATH(conversionCapacity(1, std::numeric_limits<double>::infinity(), 1), "do not fit in a buffer");
    EXPECT_DEATH(conversionCapacity(1, -2, 1), "do not fit in a buffer");
    EXPECT_DEATH(conversionCapacity(1, 1, std::numeric_limits<quint32>::max() - 1000), "no room for the margin");
}

TEST_F(FormatConversionTest, createsOneConverterAndReusesIt)
{
    const auto first = send(silence({48000, 1, SampleType::Float32}, 4800));
    const auto second = send(silence({48000, 1, SampleType::Float32}, 4800));
    EXPECT_EQ(factory->script->made, 1);
    EXPECT_EQ(factory->script->converted, 2);
    EXPECT_EQ(first->format(), target);
    EXPECT_EQ(second->format(), target);
    EXPECT_THAT(factory->script->capacities, testing::ElementsAre(2624U, 2624U));
}

TEST_F(FormatConversionTest, suppliesInputOnceAndNeverReportsEnd)
{
    send(silence({48000, 1, SampleType::Float32}, 10));
    using enum ConverterInputStatus;
    EXPECT_THAT(factory->script->statuses, testing::ElementsAre(HaveData, NoDataNow, NoDataNow));
}

TEST_F(FormatConversionTest, convertsEqualFormatsToo)
{
    send(silence(target, 512));
    EXPECT_EQ(factory->script->converted, 1);
    EXPECT_THAT(factory->script->capacities, testing::ElementsAre(1536U));
}

TEST_F(FormatConversionTest, withoutConverterSendsUnconvertedAndRetries)
{
    factory->refuses = true;
    const auto buffer = silence({48000, 1, SampleType::Float32}, 10);
    EXPECT_EQ(send(buffer), buffer);
    EXPECT_EQ(send(buffer), buffer);
    EXPECT_EQ(factory->script->made, 2);
}

TEST_F(FormatConversionTest, failedConversionSendsOriginalBufferAndKeepsConverter)
{
    factory->script->fails = true;
    const auto buffer = silence({48000, 1, SampleType::Float32}, 10);
    EXPECT_EQ(send(buffer), buffer);
    factory->script->fails = false;
    EXPECT_EQ(send(buffer)->format(), target);
    EXPECT_EQ(factory->script->made, 1);
}

TEST_F(FormatConversionTest, formatChangeKeepsFirstConverter)
{
    send(silence({48000, 1, SampleType::Float32}, 10));
    send(silence({44100, 2, SampleType::Float32}, 10));
    EXPECT_EQ(factory->script->made, 1);
    EXPECT_EQ(factory->script->converted, 2);
}

TEST_F(FormatConversionTest, bufferAfterEndIsConvertedAndDropped)
{
    continuation.finish();
    EXPECT_EQ(send(silence({48000, 1, SampleType::Float32}, 10)), nullptr);
    EXPECT_EQ(factory->script->converted, 1);
}

} // namespace talmo::test
