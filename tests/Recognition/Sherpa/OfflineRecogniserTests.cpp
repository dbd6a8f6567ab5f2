// Models that recognise an utterance as a whole. The model for voice activity comes with the library.

#include "Recognition/Sherpa/OfflineRecogniser.h"

#include "Recognition/Sherpa/PiecewiseDecoder.h"
#include "Recognition/Sherpa/SherpaFiles.h"
#include "Recognition/Sherpa/SileroVoiceActivity.h"
#include "Recognition/Signal/Samples.h"
#include "SpokenText.h"
#include "Support/Tones.h"
#include "Support/ToyModels.h"

#include <QFileInfo>

namespace talmo::test {

namespace {

constexpr double low = 400;
constexpr double middle = 1800;
constexpr double high = 5000;

class OfflineRecogniserTest : public ToyModels {
protected:
    void SetUp() override
    {
        ToyModels::SetUp();
        if (!IsSkipped()) {
            ASSERT_TRUE(QFile::exists(voiceModel)) << "scripts/install-sherpa-onnx downloads it";
            QDir(models.path()).mkpath(u"silero-vad"_s);
            ASSERT_TRUE(QFile::link(voiceModel, folder(u"silero-vad/silero_vad.onnx"_s)));
        }
    }

    /// Recognises all of it as one piece, speech or not.
    static QString trial(SpeechEngine &engine, const Sound &sound)
    {
        QStringList texts;
        const auto decoder =
            engine.makeTrialDecoder([&texts](const SpeechResult &result) { texts.append(result.text); });
        hearAll(*decoder, sound);
        decoder->finish();
        return texts.join(u' ');
    }
    Sound spoken(const QString &text) const { return soundOf(testbed::speak(text, models.path())); }

    const QString voiceModel = QFileInfo(library).absolutePath() + u"/silero-vad/silero_vad.onnx"_s;
};

double shareOfSpeech(VoiceActivity &activity, const Sound &sound)
{
    const auto samples = scaled(samplesOf(sound));
    activity.reset();
    double windows = 0;
    double speech = 0;
    for (std::size_t at = 0; at + VoiceActivity::window <= samples.size(); at += VoiceActivity::window) {
        speech += activity.isSpeech(std::span(samples).subspan(at, VoiceActivity::window)) ? 1 : 0;
        ++windows;
    }
    return speech / windows;
}

} // namespace

TEST_F(OfflineRecogniserTest, distinguishesSpeechFromOtherSounds)
{
    SileroVoiceActivity activity(SherpaLibrary::open(library), voiceModel);
    EXPECT_GT(shareOfSpeech(activity, spoken(u"the quick brown fox jumps over the lazy dog"_s)), 0.5);
    EXPECT_EQ(shareOfSpeech(activity, silence(5)), 0);
    EXPECT_LT(shareOfSpeech(activity, noise(5, 0.05)), 0.02);
    EXPECT_LT(shareOfSpeech(activity, chords(5, 0.1)), 0.02);
    EXPECT_LT(shareOfSpeech(activity, tones(high, 5)), 0.02);
}

TEST_F(OfflineRecogniserTest, recognisesTransducersWholeUtterance)
{
    make(u"make_toy_nemo.py"_s, u"toy"_s, {u"offline"_s});
    EXPECT_EQ(trial(*engine(u"toy"_s), joined({tones(low, 0.4), tones(middle, 0.5), tones(high, 0.3)})),
              u"lo mid hi"_s);
}

TEST_F(OfflineRecogniserTest, recognisesNemoCtc)
{
    make(u"make_toy_offline.py"_s, u"toy"_s, {u"offline-nemo-ctc"_s});
    EXPECT_EQ(trial(*engine(u"toy"_s), joined({tones(low, 0.4), tones(high, 0.5)})), u"lo hi"_s);
}

TEST_F(OfflineRecogniserTest, recognisesSenseVoice)
{
    make(u"make_toy_offline.py"_s, u"toy"_s, {u"sense-voice"_s});
    EXPECT_EQ(trial(*engine(u"toy"_s), joined({tones(low, 0.4), tones(high, 0.5)})), u"lo hi"_s);
}

TEST_F(OfflineRecogniserTest, recognisesCanaryAndMoonshine)
{
    for (const auto &kind : {u"canary"_s, u"moonshine"_s}) {
        make(u"make_toy_offline.py"_s, kind, {kind});
        EXPECT_EQ(trial(*engine(kind), tones(low, 1.5)), u"lo"_s) << kind.toStdString();
        EXPECT_EQ(trial(*engine(kind), tones(high, 1.5)), u"hi"_s) << kind.toStdString();
    }
}

TEST_F(OfflineRecogniserTest, whisperGetsOnlyLanguagesItSupports)
{
    make(u"make_toy_offline.py"_s, u"toy"_s, {u"whisper"_s});
    OfflineRecogniser toy(SherpaLibrary::open(library), SherpaModel::examine(folder(u"toy"_s)));
    const auto samples = scaled(samplesOf(tones(high, 1.5)));
    EXPECT_EQ(toy.transcribe(samples, u"en"_s), u"hi"_s);
    EXPECT_EQ(toy.transcribe(samples, u"de"_s), u"tief"_s);
    EXPECT_NE(toy.transcribe(samples, u"jv"_s), QString()); // The library would end the process.
    EXPECT_EQ(toy.transcribe(samples, u"en"_s), u"hi"_s);
}

TEST_F(OfflineRecogniserTest, silenceAndNoiseGiveNoText)
{
    make(u"make_toy_nemo.py"_s, u"toy"_s, {u"offline"_s});
    const auto toy = engine(u"toy"_s);
    EXPECT_EQ(hear(*toy, silence(10)).finals, QStringList());
    EXPECT_EQ(hear(*toy, joined({noise(5, 0.02), tones(high, 2)})).finals, QStringList());
}

TEST_F(OfflineRecogniserTest, speechIsRecognisedAtEachPause)
{
    make(u"make_toy_nemo.py"_s, u"toy"_s, {u"offline"_s});
    const auto toy = engine(u"toy"_s);
    QStringList texts;
    const auto decoder = toy->makeDecoder([&texts](const SpeechResult &result) {
        if (result.isFinal) {
            texts.append(result.text);
        }
    });
    const Sound sentence = spoken(u"send the message to all of them"_s);
    hearAll(*decoder, joined({sentence, silence(1.5)}));
    EXPECT_EQ(texts.size(), 1); // While the recording goes on.
    hearAll(*decoder, sentence);
    decoder->finish();
    EXPECT_EQ(texts.size(), 2);
}

TEST_F(OfflineRecogniserTest, recordingsFollowEachOther)
{
    make(u"make_toy_nemo.py"_s, u"toy"_s, {u"offline"_s});
    const auto toy = engine(u"toy"_s);
    const Sound sentence = spoken(u"send the message"_s);
    const Heard first = hear(*toy, sentence);
    EXPECT_EQ(first.finals.size(), 1);
    EXPECT_EQ(hear(*toy, sentence).finals, first.finals);
}

TEST_F(OfflineRecogniserTest, needsModelForVoiceActivity)
{
    make(u"make_toy_nemo.py"_s, u"toy"_s, {u"offline"_s});
    const auto toy = engine(u"toy"_s);
    EXPECT_EQ(toy->problem(), QString());
    EXPECT_TRUE(toy->files().contains(QDir(models.path()).filePath(u"silero-vad/silero_vad.onnx"_s)));
    ASSERT_TRUE(QFile::remove(folder(u"silero-vad/silero_vad.onnx"_s)));
    EXPECT_TRUE(toy->problem().contains(u"speech-detection model"_s));
    EXPECT_THROW(toy->makeDecoder([](const SpeechResult &) {}), Error);
    EXPECT_FALSE(trial(*toy, tones(low, 1)).isEmpty()); // Its speed can be measured all the same.
}

TEST_F(OfflineRecogniserTest, refusesOtherModelForVoiceActivity)
{
    make(u"make_toy_nemo.py"_s, u"toy"_s, {u"offline"_s});
    EXPECT_TRUE(errorOf([this] {
                    SileroVoiceActivity(SherpaLibrary::open(library), folder(u"toy/encoder.onnx"_s));
                }).contains(u"no model for voice activity"_s));
}

TEST_F(OfflineRecogniserTest, refusesModelsOfAnotherKindBeforeLoadingThem)
{
    make(u"make_toy_nemo.py"_s, u"toy"_s, {u"streaming"_s});
    for (const auto &kind : {"whisper", "canary"}) {
        writeFile(folder(u"toy/talmo-model.json"_s), QByteArray("{\"kind\": \"") + kind + "\"}");
        EXPECT_TRUE(errorOf([this] { engine(u"toy"_s); }).contains(u"another kind"_s)) << kind;
    }
    make(u"make_toy_model.py"_s, u"single"_s);
    writeFile(folder(u"single/talmo-model.json"_s), "{\"kind\": \"sense-voice\"}");
    EXPECT_TRUE(errorOf([this] { engine(u"single"_s); }).contains(u"another kind"_s));
}

} // namespace talmo::test
