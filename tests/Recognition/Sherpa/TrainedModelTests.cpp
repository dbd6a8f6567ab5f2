// A trained offline model, with recordings of people. Skipped, with a message, unless TALMO_NEURAL_LIBRARY and
// TALMO_SPEECH_MODEL name the library and the model's folder.

#include "Support/Tones.h"
#include "Support/ToyModels.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

namespace talmo::test {

namespace {

const QString recordings = u"/usr/share/pocketsphinx/test/data/librivox/sense_and_sensibility_01_austen_64kb-%1.wav"_s;

class TrainedModelTest : public ToyModels {
protected:
    void SetUp() override
    {
        ToyModels::SetUp();
        if (IsSkipped()) {
            return;
        }
        const QString trained = qEnvironmentVariable("TALMO_SPEECH_MODEL");
        if (trained.isEmpty()) {
            GTEST_SKIP() << "NOT TESTED: TALMO_SPEECH_MODEL does not name a trained model's folder.";
        }
        QDir(models.path()).mkpath(u"trained"_s);
        for (const auto &file : QDir(trained).entryList(QDir::Files)) {
            ASSERT_TRUE(QFile::link(trained + u'/' + file, folder(u"trained/"_s + file)));
        }
        QDir(models.path()).mkpath(u"silero-vad"_s);
        ASSERT_TRUE(QFile::link(QFileInfo(library).absolutePath() + u"/silero-vad/silero_vad.onnx"_s,
                                folder(u"silero-vad/silero_vad.onnx"_s)));
        model = engine(u"trained"_s);
    }
    static Sound reading(const QString &number) { return soundOf(recordings.arg(number)); }
    static QString words(QString text) { return text.toLower().remove(QRegularExpression(u"[^a-z -]"_s)); }

    std::unique_ptr<SherpaEngine> model;
};

} // namespace

TEST_F(TrainedModelTest, personIsRecognisedWithPunctuation)
{
    const Heard heard = hear(*model, reading(u"0930"_s));
    EXPECT_EQ(heard.text(), u"He might even have been made amiable himself."_s);
}

TEST_F(TrainedModelTest, textIsShownBeforeSentenceEnds)
{
    const Heard heard = hear(*model, reading(u"0870"_s));
    ASSERT_FALSE(heard.volatiles.empty());
    EXPECT_TRUE(words(heard.volatiles.front()).startsWith(u"and mr john dashwood"_s))
        << heard.volatiles.front().toStdString();
}

TEST_F(TrainedModelTest, noWordIsLostOrDoubledAcrossPieces)
{
    const Heard heard =
        hear(*model, joined({reading(u"0870"_s), silence(0.7), reading(u"0930"_s), silence(1.2), reading(u"0930"_s)}));
    EXPECT_EQ(words(heard.text()), u"and mr john dashwood had then leisure to consider how much there might be "
                                   "prudently in his power to do for them he might even have been made amiable himself "
                                   "he might even have been made amiable himself"_s);
    EXPECT_GE(heard.finals.size(), 2);
}

TEST_F(TrainedModelTest, silenceNoiseAndChordsGiveNoText)
{
    for (const auto &sound : {silence(10), noise(10, 0.02), chords(10, 0.2), tones(1000, 5)}) {
        EXPECT_EQ(hear(*model, sound).finals, QStringList());
    }
}

} // namespace talmo::test
