#include "Recognition/LiveAndFinalEngine.h"

#include "Speech/TranscriptAccumulator.h"
#include "Support/Printing.h"
#include "Support/ScriptedEngine.h"

#include <gtest/gtest.h>

#include <array>

namespace talmo::test {

namespace {

class LiveAndFinalEngineTest : public testing::Test {
protected:
    /// The text after each of these buffers, and at the end.
    QStringList texts(int buffers)
    {
        LiveAndFinalEngine engine(final, {live});
        TranscriptAccumulator transcript;
        const auto decoder = engine.makeDecoderFor(
            u"en_US"_s, [&transcript](const SpeechResult &result) { transcript.apply(result.text, result.isFinal); });
        QStringList result;
        for (int count = 0; count < buffers; ++count) {
            decoder->process(buffer);
            result.append(transcript.combinedText());
        }
        decoder->finish();
        return result << transcript.combinedText();
    }

    const std::array<std::int16_t, 4> buffer{};
    std::shared_ptr<ScriptedEngine> final = std::make_shared<ScriptedEngine>(u"final"_s, false);
    std::shared_ptr<ScriptedEngine> live = std::make_shared<ScriptedEngine>(u"live"_s, true);
};

} // namespace

TEST_F(LiveAndFinalEngineTest, finalTextReplacesLiveTextStretchByStretch)
{
    live->script = {{{u"the"_s, false}}, {{u"the cut"_s, false}}, {}, {{u"sad"_s, false}}, {{u"sad dawn"_s, true}}};
    final->script = {{}, {}, {{u"The cat"_s, true}}, {}, {}, {{u"sat down."_s, true}}};
    EXPECT_EQ(texts(5), (QStringList{u"the"_s, u"the cut"_s, u"The cat"_s, u"The cat sad"_s, u"The cat sad dawn"_s,
                                     u"The cat sat down."_s}));
    EXPECT_EQ(live->decoders, 2); // What it heard of the first stretch does not come back.
}

TEST_F(LiveAndFinalEngineTest, liveSentencesStayVisible)
{
    live->script = {{{u"one"_s, true}}, {{u"two"_s, false}}, {{u"two"_s, true}}};
    final->script = {{}, {}, {}, {{u"One. Two."_s, true}}};
    EXPECT_EQ(texts(3), (QStringList{u"one"_s, u"one two"_s, u"one two"_s, u"One. Two."_s}));
}

TEST_F(LiveAndFinalEngineTest, liveTextWithoutFinalTextDisappears)
{
    live->script = {{{u"thank you"_s, false}}};
    EXPECT_EQ(texts(1), (QStringList{u"thank you"_s, QString()}));
}

TEST_F(LiveAndFinalEngineTest, continuesWithoutFailedLiveEngine)
{
    live->fails = true;
    final->script = {{}, {{u"It works."_s, true}}, {}};
    EXPECT_EQ(texts(2), (QStringList{QString(), u"It works."_s, u"It works."_s}));
}

TEST_F(LiveAndFinalEngineTest, takesLiveEngineOfTheLanguage)
{
    live->language = u"de"_s;
    LiveAndFinalEngine engine(final, {live});
    engine.warmUpFor(u"en_US"_s);
    EXPECT_TRUE(final->isLoaded);
    EXPECT_FALSE(live->isLoaded);
    live->language = u"en"_s;
    engine.warmUpFor(u"en_US"_s);
    EXPECT_TRUE(live->isLoaded);
}

} // namespace talmo::test
