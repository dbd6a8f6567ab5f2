// Streaming models that take sound in portions of 1.28 s, so that whatever loses the beginning or the end shows.

#include "Recognition/Sherpa/StreamingRecogniser.h"

#include "Recognition/Sherpa/SherpaFiles.h"
#include "Support/Tones.h"
#include "Support/ToyModels.h"

namespace talmo::test {

namespace {

constexpr double low = 400;
constexpr double middle = 1800;
constexpr double high = 5000;

class StreamingRecogniserTest : public ToyModels {};

} // namespace

TEST_F(StreamingRecogniserTest, recognisesTransducersLastSound)
{
    make(u"make_toy_transducer.py"_s, u"toy"_s);
    // The second sound fills a small part of the second portion.
    EXPECT_EQ(hear(*engine(u"toy"_s), joined({tones(low, 1.3), tones(high, 0.3)})).text(), u"lo hi"_s);
}

TEST_F(StreamingRecogniserTest, recognisesNemoModelsFirstAndLastSound)
{
    make(u"make_toy_model.py"_s, u"toy"_s);
    EXPECT_EQ(hear(*engine(u"toy"_s), joined({tones(low, 0.3), tones(middle, 0.8), tones(high, 0.3)})).text(),
              u"lo mid hi"_s);
}

TEST_F(StreamingRecogniserTest, tailIsWhatModelNeedsToGoOn)
{
    make(u"make_toy_model.py"_s, u"nemo"_s);
    make(u"make_toy_transducer.py"_s, u"zipformer"_s);
    const auto tailOf = [this](const QString &name) {
        return std::make_shared<StreamingRecogniser>(SherpaLibrary::open(library), SherpaModel::examine(folder(name)))
            ->tail();
    };
    constexpr std::size_t step = rate / 100;
    EXPECT_GE(tailOf(u"nemo"_s), 128 * step);
    EXPECT_LE(tailOf(u"nemo"_s), 135 * step);
    EXPECT_GE(tailOf(u"zipformer"_s), 141 * step);
    EXPECT_LE(tailOf(u"zipformer"_s), 148 * step);
}

TEST_F(StreamingRecogniserTest, neverResetsNemoModelDuringRecording)
{
    make(u"make_toy_model.py"_s, u"toy"_s);
    const Heard heard =
        hear(*engine(u"toy"_s),
             joined({tones(low, 1), silence(4), tones(high, 0.3), silence(4), tones(middle, 0.3), silence(4)}));
    EXPECT_EQ(heard.finals, QStringList{u"lo hi mid"_s});
    EXPECT_TRUE(heard.volatiles.contains(u"lo"_s));
}

TEST_F(StreamingRecogniserTest, finishesSentenceAtPauseOfOtherModels)
{
    make(u"make_toy_transducer.py"_s, u"toy"_s);
    EXPECT_EQ(hear(*engine(u"toy"_s), joined({tones(low, 1), silence(4), tones(high, 1)})).finals,
              (QStringList{u"lo"_s, u"hi"_s}));
}

TEST_F(StreamingRecogniserTest, marksInPersonalWordsDoNotBreakHotWords)
{
    make(u"make_toy_transducer.py"_s, u"toy"_s);
    const auto toy = engine(u"toy"_s);
    const Sound sound = joined({tones(low, 1), tones(high, 1)});
    toy->setVocabulary({{u"Hi :x"_s, u"Talmo: x"_s, u"C#"_s, u"#hi"_s, u":3"_s, u"@"_s, u"Low"_s}, {}});
    EXPECT_EQ(hear(*toy, sound).text(), u"Low hi"_s);
    toy->setVocabulary({{u"#"_s, u":"_s}, {}});
    EXPECT_EQ(hear(*toy, sound).text(), u"lo hi"_s);
}

TEST_F(StreamingRecogniserTest, nemoTransducerIsGivenNoHotWords)
{
    make(u"make_toy_nemo.py"_s, u"toy"_s, {u"streaming"_s}); // Its note says “hotWords”, which the library aborts on.
    const auto toy = engine(u"toy"_s);
    toy->setVocabulary({{u"LO"_s}, {}});
    EXPECT_EQ(hear(*toy, joined({tones(low, 1), tones(high, 0.4)})).text(), u"LO hi"_s);
}

TEST_F(StreamingRecogniserTest, correctsPersonalWordsThatModelDoesNotTake)
{
    make(u"make_toy_model.py"_s, u"toy"_s);
    writeFile(folder(u"toy/tokens.txt"_s), "\u2581tal 0\n\u2581mo 1\n\u2581mid 2\n<blk> 3\n");
    const auto toy = engine(u"toy"_s);
    toy->setVocabulary({{u"Talmo"_s}, {}});
    const Sound sound = joined({tones(low, 1), tones(high, 1)});
    EXPECT_EQ(hear(*toy, sound).text(), u"Talmo"_s);
    EXPECT_EQ(hear(*toy, sound, u"de_DE"_s).text(), u"tal mo"_s); // Its sounds are not known.
}

TEST_F(StreamingRecogniserTest, lowersLettersOnlyOfModelThatWritesCapitals)
{
    make(u"make_toy_model.py"_s, u"toy"_s);
    const Sound sound = tones(low, 1);
    writeFile(folder(u"toy/tokens.txt"_s), "\u2581NASA 0\n\u2581and 1\n\u2581IBM 2\n<blk> 3\n");
    EXPECT_EQ(hear(*engine(u"toy"_s), sound).text(), u"NASA"_s);
    writeFile(folder(u"toy/tokens.txt"_s), "\u2581NASA 0\n\u2581AND 1\n\u2581IBM 2\n<blk> 3\n");
    EXPECT_EQ(hear(*engine(u"toy"_s), sound).text(), u"nasa"_s);
}

} // namespace talmo::test
