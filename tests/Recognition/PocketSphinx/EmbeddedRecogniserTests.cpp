#include "Recognition/PocketSphinx/PocketSphinxEngine.h"

#include "Input/Audio/SpeexAudioConverter.h"
#include "Recognition/FileTranscription.h"
#include "Recognition/PocketSphinx/MicrophoneCalibrationStore.h"
#include "SpokenText.h"
#include "Support/ManualClock.h"
#include "Support/Printing.h"
#include "Support/SinglePlatform.h"
#include "Support/TestLoop.h"
#include "Support/Tones.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

using namespace std::chrono_literals;

/// Transcribes synthesised speech with this vocabulary.
class Listener {
public:
    explicit Listener(const PersonalVocabulary &vocabulary = {}, MicrophoneKnowledge microphone = {},
                      InstalledVoiceActivity activity = InstalledVoiceActivity())
        : m_executor(SerialExecutor::onNewThread(u"decoder"_s)),
          m_engine(std::make_shared<PocketSphinxEngine>(QString(), std::move(microphone), std::move(activity))),
          m_service(std::make_shared<SpeechTranscriptionService>(
              platformWith(m_engine, m_executor), std::make_shared<SpeexAudioConverterFactory>(),
              SerialExecutor::onNewThread(u"speech"_s), SerialExecutor::onCurrentThread()))
    {
        m_engine->setVocabulary(vocabulary);
    }

    void setVocabulary(const PersonalVocabulary &vocabulary) { m_engine->setVocabulary(vocabulary); }

    QString hears(const QString &text) { return hearsFile(testbed::speak(text, m_folder.path())); }
    QString hearsNoisy(const QString &text, double noiseAmplitude)
    {
        const QString file = m_folder.filePath(u"noisy.wav"_s);
        writeWithNoise(testbed::speak(text, m_folder.path()), file, noiseAmplitude);
        return hearsFile(file);
    }
    QString hearsFile(const QString &file)
    {
        const QString text =
            QCoro::waitFor(transcribeFile(m_service, m_executor, file, u"en_US"_s, [](const QString &) {})).text;
        QCoro::waitFor(await(m_executor->call([] {}))); // What was learnt about the microphone comes after the text.
        return text;
    }

private:
    QTemporaryDir m_folder;
    std::shared_ptr<SerialExecutor> m_executor;
    std::shared_ptr<PocketSphinxEngine> m_engine;
    std::shared_ptr<SpeechTranscriptionService> m_service;
};

/// Takes everything for speech, or nothing.
class FixedActivity final : public VoiceActivity {
public:
    explicit FixedActivity(bool isSpeech)
        : m_isSpeech(isSpeech)
    {
    }
    bool isSpeech(std::span<const float> /*samples*/) override { return m_isSpeech; }
    void reset() override {}

private:
    bool m_isSpeech;
};

} // namespace

TEST(EmbeddedRecogniser, recognisesCustomVocabularyInUsersSpelling)
{
    Listener listener({{u"Kubernetes"_s, u"CloudFormation"_s}, {}});
    EXPECT_TRUE(listener.hears(u"the kubernetes cluster"_s).contains(u"Kubernetes"_s));
    EXPECT_TRUE(listener.hears(u"we used cloud formation before that"_s).contains(u"CloudFormation"_s));
    // Removed from the list, it is recognised as similar-sounding words again.
    listener.setVocabulary({});
    EXPECT_FALSE(listener.hears(u"the kubernetes cluster"_s).contains(u"Kubernetes"_s));
}

TEST(EmbeddedRecogniser, shortCustomWordIsNotHeardInOtherWords)
{
    const PersonalVocabulary vocabulary{{u"Talmo"_s, u"Terraform"_s, u"CloudFormation"_s, u"Kubernetes"_s}, {}};
    EXPECT_FALSE(Listener(vocabulary).hears(u"tell most of the people"_s).contains(u"Talmo"_s));
    EXPECT_TRUE(Listener(vocabulary).hears(u"talmo is a good program"_s).contains(u"Talmo"_s));
}

TEST(EmbeddedRecogniser, acceptsAnyVocabulary)
{
    QStringList words{u"日本"_s,  u"!!!"_s,   u"two\nlines"_s, u"hello"_s,
                      u"hello"_s, u"(odd)"_s, u"<s>"_s,        QString(3000, QLatin1Char('x'))};
    for (int count = 0; count < 300; ++count) {
        words.append(u"Wordnumber%1"_s.arg(QChar('a' + count % 26)) + QString(count / 26, QLatin1Char('o')));
    }
    Listener listener({words, {}});
    EXPECT_FALSE(listener.hears(u"thank you very much"_s).isEmpty());
}

TEST(EmbeddedRecogniser, recognisesCommandsOnlyNextToPauses)
{
    Listener listener;
    EXPECT_TRUE(listener.hears(u"water the plants, new line, feed the cat"_s).contains(u" new line "_s));
    EXPECT_TRUE(
        listener.hears(u"that was the summer, new paragraph, then came the winter"_s).contains(u" new paragraph "_s));
    EXPECT_FALSE(listener.hears(u"the new lion at the zoo is very young"_s).contains(u"new line"_s));
}

TEST(EmbeddedRecogniser, reusesKnownMicrophoneCalibration)
{
    const auto memory = std::make_shared<MicrophoneCalibrationStore>();
    Listener listener({}, {[] { return u"desk"_s; }, memory});
    EXPECT_EQ(listener.hears(u"thank you very much"_s), u"thank you very much"_s);
    EXPECT_FALSE(memory->recall(u"desk"_s).isEmpty());
    Listener next({}, {[] { return u"desk"_s; }, memory});
    EXPECT_EQ(next.hears(u"thank you very much"_s), u"thank you very much"_s);
}

TEST(EmbeddedRecogniser, recognisesListRequestsOnlyAtTheEnd)
{
    Listener listener;
    EXPECT_EQ(listener.hears(u"call the bank and pay the rent as bullet points"_s),
              u"call the bank and pay the rent as bullet points"_s);
    EXPECT_EQ(listener.hears(u"as the list shows we are late"_s), u"as the list shows we are late"_s);
}

TEST(EmbeddedRecogniser, recognisesSpeechInNoise)
{
    Listener listener;
    constexpr double loudNoise = 0.02;
    listener.hearsNoisy(u"thank you very much"_s, loudNoise); // Calibrates the microphone.
    for (const auto &text :
         {u"see you tomorrow"_s, u"hello world"_s, u"it takes about an hour to drive to the airport"_s}) {
        EXPECT_EQ(listener.hearsNoisy(text, loudNoise), text);
    }
}

TEST(EmbeddedRecogniser, doesNotMistakeMonotonousVoiceForMusic)
{
    Listener listener;
    EXPECT_EQ(listener.hearsNoisy(u"we will meet again on monday"_s, 0.002), u"we will meet again on monday"_s);
}

TEST(EmbeddedRecogniser, recognisesWordsOnlyWhereInstalledDetectionHearsSpeech)
{
    for (const bool isSpeech : {true, false}) {
        Listener listener({}, {},
                          InstalledVoiceActivity([isSpeech] { return std::make_shared<FixedActivity>(isSpeech); }));
        EXPECT_EQ(listener.hears(u"thank you very much"_s), isSpeech ? u"thank you very much"_s : QString());
    }
}

TEST(EmbeddedRecogniser, recognisesNoWordsInChords)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(u"chords.wav"_s);
    writeTones(file, {400, 600, 400, 600}, 4);
    Listener listener;
    EXPECT_EQ(listener.hearsFile(file), QString());
    EXPECT_EQ(listener.hears(u"thank you very much"_s), u"thank you very much"_s);
}

} // namespace talmo::test
