#include "Recognition/Signal/SpeechPieces.h"

#include "Support/SyntheticAudio.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace talmo::test {

namespace {

constexpr std::size_t second = SpeechPieces::sampleRate;
/// A window and a half: how exactly a cut can be told.
constexpr double exactness = 0.05;

/// Takes what is loud for speech.
class Loudness final : public VoiceActivity {
public:
    bool isSpeech(std::span<const float> samples) override
    {
        EXPECT_EQ(samples.size(), window);
        return samples[window / 2] > 0.05F;
    }
    void reset() override {}
};

class SpeechPiecesTest : public testing::Test {
protected:
    /// Speech of that many seconds, which knows when it was said.
    void speech(double seconds) { hear(seconds, 0.5F); }
    void murmur(double seconds) { hear(seconds, 0.06F); }
    void pause(double seconds) { hear(seconds, 0); }
    void hear(double seconds, float loudness)
    {
        const std::vector<float> samples(static_cast<std::size_t>(seconds * double(second)), loudness);
        for (std::size_t at = 0; at < samples.size(); at += 777) {
            pieces.accept(std::span(samples).subspan(at, std::min<std::size_t>(777, samples.size() - at)));
        }
    }
    double lengthOf(std::size_t index) const { return double(taken.at(index).size()) / double(second); }
    double speechIn(std::size_t index) const
    {
        return double(std::count_if(taken.at(index).begin(), taken.at(index).end(),
                                    [](float sample) { return sample > 0; })) /
               double(second);
    }

    double lookedAt(std::size_t index) const { return double(looks.at(index).size()) / double(second); }

    std::vector<std::vector<float>> taken;
    std::vector<bool> wereSeen;
    std::vector<std::vector<float>> looks;
    double looking = 0.05; // Seconds.
    SpeechPieces pieces{std::make_shared<Loudness>(),
                        {[this](std::vector<float> piece, bool isSeen) {
                             taken.push_back(std::move(piece));
                             wereSeen.push_back(isSeen);
                         },
                         [this](std::vector<float> soFar) {
                             looks.push_back(std::move(soFar));
                             return looking;
                         }}};
};

} // namespace

TEST_F(SpeechPiecesTest, silenceGivesNoPiece)
{
    pause(60);
    pieces.finish();
    EXPECT_TRUE(taken.empty());
}

TEST_F(SpeechPiecesTest, clickGivesNoPiece)
{
    pause(1);
    speech(0.06);
    pause(2);
    pieces.finish();
    EXPECT_TRUE(taken.empty());
}

TEST_F(SpeechPiecesTest, piecesKeepTheSilenceAroundSpeech)
{
    pause(3);
    speech(2);
    pause(2);
    ASSERT_EQ(taken.size(), 1U); // Before the end of the recording.
    EXPECT_NEAR(lengthOf(0), 0.45 + 2 + 0.45, exactness);
    EXPECT_NEAR(speechIn(0), 2, 0.001);
    pieces.finish();
    EXPECT_EQ(taken.size(), 1U);
}

TEST_F(SpeechPiecesTest, lastPieceComesAtTheEnd)
{
    speech(5);
    pause(0.2);
    EXPECT_TRUE(taken.empty());
    pieces.finish();
    ASSERT_EQ(taken.size(), 1U);
    EXPECT_NEAR(lengthOf(0), 5.2, exactness);
}

TEST_F(SpeechPiecesTest, shortPausesCutOnlyLongPieces)
{
    speech(1);
    pause(0.6);
    speech(1);
    pause(0.6);
    speech(3);
    EXPECT_TRUE(taken.empty());
    pause(0.6);
    ASSERT_EQ(taken.size(), 1U);
    EXPECT_NEAR(speechIn(0), 5, 0.001);
    speech(1);
    pieces.finish();
    ASSERT_EQ(taken.size(), 2U);
    EXPECT_NEAR(speechIn(1), 1, 0.001);
    EXPECT_NEAR(lengthOf(1), 0.45 + 1, exactness);
}

TEST_F(SpeechPiecesTest, scrapIsPadded)
{
    speech(0.3);
    pieces.finish();
    ASSERT_EQ(taken.size(), 1U);
    EXPECT_EQ(taken[0].size(), SpeechPieces::padded);
    EXPECT_NEAR(speechIn(0), 0.3, 0.001);
}

TEST_F(SpeechPiecesTest, endlessSpeechIsCutWhereItIsQuietest)
{
    speech(25);
    murmur(0.2);
    speech(35);
    pieces.finish();
    ASSERT_EQ(taken.size(), 3U);
    EXPECT_NEAR(lengthOf(0), 25.1, 0.15);
    double sum = 0;
    for (const auto &piece : taken) {
        EXPECT_LE(piece.size(), SpeechPieces::longest);
        sum += double(piece.size()) / double(second);
    }
    EXPECT_NEAR(sum, 60.2, 0.001); // Nothing is lost, and nothing is recognised twice.
}

TEST_F(SpeechPiecesTest, pieceIsLookedAtInLull)
{
    speech(1);
    pause(0.25);
    ASSERT_EQ(looks.size(), 1U);
    EXPECT_NEAR(lookedAt(0), 1 + 0.2, exactness);
    pause(0.1);
    EXPECT_EQ(looks.size(), 1U); // Nothing more was said.
    pieces.finish();
    EXPECT_EQ(wereSeen, std::vector{true});
}

TEST_F(SpeechPiecesTest, whatWasSaidAfterLookIsNotSeen)
{
    speech(1);
    pause(0.25);
    speech(0.5);
    pause(0.1);
    pieces.finish();
    EXPECT_EQ(looks.size(), 1U);
    EXPECT_EQ(wereSeen, std::vector{false});
}

TEST_F(SpeechPiecesTest, longSpeechIsLookedAtNowAndThen)
{
    speech(7);
    EXPECT_EQ(looks.size(), 4U);
    pieces.finish(); // Perhaps in the middle of a word.
    EXPECT_EQ(wereSeen, std::vector{false});
}

TEST_F(SpeechPiecesTest, slowLooksAreRare)
{
    looking = 0.4;
    speech(1.6);
    pause(0.3); // Too soon after the first look.
    speech(1.1);
    pause(0.3); // A longer piece would take too long.
    speech(4);
    pause(0.4);
    EXPECT_EQ(looks.size(), 1U);
}

TEST_F(SpeechPiecesTest, nextPieceIsNotSeen)
{
    speech(5);
    pause(1.5);
    speech(2);
    pieces.finish();
    EXPECT_EQ(wereSeen, (std::vector{true, false}));
}

} // namespace talmo::test
