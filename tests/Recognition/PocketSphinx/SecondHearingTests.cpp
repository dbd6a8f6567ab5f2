// The first utterance through an unknown microphone is heard a second time while the user goes on speaking.

#include "Recognition/PocketSphinx/PocketSphinxEngine.h"
#include "Recognition/PocketSphinx/ProcessorTime.h"
#include "SpokenText.h"
#include "Support/Printing.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sndfile.h>

namespace talmo::test {

namespace {

constexpr std::size_t second = RecordingDecoder::sampleRate;

/// The sentences one after another, without the silence around them.
std::vector<std::int16_t> speech(const QStringList &sentences)
{
    const QTemporaryDir folder;
    std::vector<std::int16_t> all;
    for (const auto &sentence : sentences) {
        SF_INFO info{};
        SNDFILE *file = sf_open(testbed::speak(sentence, folder.path()).toLocal8Bit().constData(), SFM_READ, &info);
        std::vector<std::int16_t> samples(static_cast<std::size_t>(info.frames));
        sf_readf_short(file, samples.data(), info.frames);
        sf_close(file);
        EXPECT_EQ(info.samplerate, RecordingDecoder::sampleRate);
        const auto isAudible = [](std::int16_t sample) { return std::abs(sample) > 300; };
        all.insert(all.end(), std::find_if(samples.begin(), samples.end(), isAudible),
                   std::find_if(samples.rbegin(), samples.rend(), isAudible).base());
    }
    return all;
}

class SecondHearingTest : public testing::Test {
protected:
    void begin(const MicrophoneKnowledge &microphone)
    {
        recording.emplace(pool, microphone, nullptr, [this](const SpeechResult &result) {
            if (result.isFinal) {
                text += result.text + u' ';
            }
        });
    }
    void hear(std::span<const std::int16_t> samples)
    {
        constexpr std::size_t blockSize = 1600;
        for (std::size_t start = 0; start < samples.size(); start += blockSize) {
            recording->process(samples.subspan(start, std::min(blockSize, samples.size() - start)));
        }
    }
    MicrophoneKnowledge unknown() const
    {
        return {[] { return u"desk"_s; }, std::make_shared<MicrophoneCalibrationStore>()};
    }

    std::shared_ptr<PocketSphinxDecoderPool> pool =
        std::make_shared<PocketSphinxDecoderPool>(PocketSphinxEngine::debianModelFolder());
    std::optional<PocketSphinxRecording> recording;
    QString text;
};

} // namespace

TEST(SecondHearing, advancesNoFurtherThanAsked)
{
    SecondHearing hearing(PocketSphinxDecoder::load(PocketSphinxEngine::debianModelFolder()));
    const std::vector<std::int16_t> silence(second);
    EXPECT_EQ(hearing.behind(second), second);
    hearing.advance(silence, second / 4);
    EXPECT_EQ(hearing.behind(second), second * 3 / 4);
    hearing.advance(silence, second);
    EXPECT_EQ(hearing.behind(second), 0);
}

TEST_F(SecondHearingTest, takesOverWhileUserIsSpeaking)
{
    begin(unknown());
    const auto samples = speech({u"it takes about an hour to drive to the airport"_s, u"see you tomorrow"_s,
                                 u"we will meet again on monday"_s});
    ASSERT_GT(samples.size(), 4.7 * second); // From 3 s on, it needs 1.5 s to catch up.
    hear(samples);
    EXPECT_EQ(pool->loadCount(), 2);
    recording->finish();
    EXPECT_EQ(text, u"it takes about an hour to drive to the airport see you tomorrow we will meet again on monday "_s);
    recording.reset();
    EXPECT_TRUE(pool->keepsOne());
}

TEST_F(SecondHearingTest, knownMicrophoneNeedsNone)
{
    const auto microphone = unknown();
    const auto samples = speech({u"it takes about an hour to drive to the airport"_s, u"see you tomorrow"_s});
    ASSERT_GT(samples.size(), 3 * second);
    begin(microphone);
    hear(samples);
    recording->finish();
    recording.reset();
    begin(microphone);
    const int loadCount = pool->loadCount();
    hear(samples);
    recording->finish();
    EXPECT_EQ(pool->loadCount(), loadCount);
}

TEST_F(SecondHearingTest, endDoesNotWaitForHearingFarBehind)
{
    begin(unknown());
    auto samples = speech({u"it takes about an hour to drive to the airport"_s, u"see you tomorrow"_s});
    ASSERT_GT(samples.size(), 3 * second + 3200);
    samples.resize(3 * second + 3200); // Just after the second hearing began.
    const double start = processorTimeOfThread();
    hear(samples);
    ASSERT_EQ(pool->loadCount(), 2);
    const double heard = processorTimeOfThread();
    recording->finish();
    EXPECT_LT(processorTimeOfThread() - heard, (heard - start) / 4);
    EXPECT_TRUE(text.startsWith(u"it takes about an hour to drive to the airport"_s)) << text.toStdString();
}

} // namespace talmo::test
