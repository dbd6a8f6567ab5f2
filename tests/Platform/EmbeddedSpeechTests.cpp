#include "Platform/Linux/SpeechEngines.h"

#include "Platform/Linux/FileTranscription.h"
#include "Platform/Linux/SpeexAudioConverter.h"
#include "SpokenText.h"
#include "Support/ManualClock.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"
#include "Support/Tones.h"

#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <unistd.h>

#if defined(__has_feature) // clang's way to tell; g++ has macros.
#define TALMO_HAS_FEATURE(feature) __has_feature(feature)
#else
#define TALMO_HAS_FEATURE(feature) 0
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || TALMO_HAS_FEATURE(address_sanitizer) ||           \
    TALMO_HAS_FEATURE(thread_sanitizer)
static constexpr bool isSanitized = true;
#else
static constexpr bool isSanitized = false;
#endif

namespace talmo::test {

namespace {

using namespace std::chrono_literals;

/// A recogniser with these words, which is told to transcribe what a voice says.
class Listener {
public:
    explicit Listener(const PersonalVocabulary &vocabulary = {}, MicrophoneKnowledge microphone = {})
        : m_executor(SerialExecutor::onNewThread(u"decoder"_s)),
          m_platform(std::make_shared<PocketSphinxPlatform>(m_executor, QString(), std::move(microphone))),
          m_service(std::make_shared<SpeechTranscriptionService>(
              m_platform, std::make_shared<SpeexAudioConverterFactory>(), SerialExecutor::onNewThread(u"speech"_s),
              SerialExecutor::onCurrentThread()))
    {
        m_platform->setVocabulary(vocabulary);
    }

    void setVocabulary(const PersonalVocabulary &vocabulary) { m_platform->setVocabulary(vocabulary); }

    QString hears(const QString &text) { return hearsFile(rig::speak(text, m_folder.path())); }
    QString hearsNoisy(const QString &text, double noiseAmplitude)
    {
        const QString file = m_folder.filePath(u"noisy.wav"_s);
        writeWithNoise(rig::speak(text, m_folder.path()), file, noiseAmplitude);
        return hearsFile(file);
    }
    QString hearsFile(const QString &file)
    {
        return QCoro::waitFor(transcribeFile(m_service, m_executor, file, u"en_US"_s, [](const QString &) {})).text;
    }

private:
    QTemporaryDir m_folder;
    std::shared_ptr<SerialExecutor> m_executor;
    std::shared_ptr<PocketSphinxPlatform> m_platform;
    std::shared_ptr<SpeechTranscriptionService> m_service;
};

double residentMegabytes()
{
    QFile file(u"/proc/self/statm"_s);
    EXPECT_TRUE(file.open(QFile::ReadOnly));
    const double pages = file.readAll().split(' ').value(1).toDouble();
    return pages * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1'000'000;
}

Pronunciation pronunciation(Pronunciation::SoundsLike soundsLike = {})
{
    static const QHash<QString, QByteArray> dictionary{
        {u"cloud"_s, "K L AW D"}, {u"formation"_s, "F AO R M EY SH AH N"}, {u"win"_s, "W IH N"}};
    return Pronunciation([](const QString &word) { return dictionary.value(word); }, std::move(soundsLike));
}

} // namespace

TEST(SpokenParts, areTheWordsThatASpellingIsMadeOf)
{
    EXPECT_EQ(spokenParts(u"CloudFormation"_s), (QStringList{u"Cloud"_s, u"Formation"_s}));
    EXPECT_EQ(spokenParts(u"Xylophone Works"_s), (QStringList{u"Xylophone"_s, u"Works"_s}));
    EXPECT_EQ(spokenParts(u"MySQLServer"_s), (QStringList{u"My"_s, u"SQL"_s, u"Server"_s}));
    EXPECT_EQ(spokenParts(u"O'Neill-Smith"_s), (QStringList{u"O"_s, u"Neill"_s, u"Smith"_s}));
    EXPECT_EQ(spokenParts(u"Kubernetes"_s), QStringList{u"Kubernetes"_s});
    EXPECT_EQ(spokenParts(u"Mary's"_s), QStringList{u"Mary's"_s});
    EXPECT_EQ(spokenParts(u"k8s"_s), (QStringList{u"k"_s, u"8"_s, u"s"_s}));
    EXPECT_EQ(spokenParts(u"!!!"_s), QStringList());
}

TEST(Pronunciation, takesKnownWordsFromTheDictionaryAndSpellsOutTheRest)
{
    EXPECT_EQ(pronunciation().of(u"CloudFormation"_s), "K L AW D F AO R M EY SH AH N");
    EXPECT_EQ(pronunciation().of(u"SQL"_s), "EH S K Y UW EH L");
    EXPECT_EQ(pronunciation().of(u"Grafana"_s).split(' ').first(), "G");
    EXPECT_EQ(pronunciation().of(u"日本"_s), "");
    EXPECT_EQ(pronunciation().of({}), "");
}

TEST(Pronunciation, theUserKnowsBetter)
{
    EXPECT_EQ(pronunciation({{u"nguyen"_s, u"win"_s}}).of(u"Nguyen"_s), "W IH N");
    EXPECT_EQ(pronunciation({{u"cloud"_s, u"win"_s}}).of(u"Cloud"_s), "W IH N");
}

TEST(Pronunciation, accentsAreNoObstacle)
{
    EXPECT_EQ(pronunciation().of(u"Zsófia"_s), pronunciation().of(u"Zsofia"_s));
    EXPECT_EQ(pronunciation().of(u"Wrocław"_s), pronunciation().of(u"Wroclaw"_s));
}

TEST(Pronunciation, readsWhatTheUserWrote)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"pronunciations.txt"_s));
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    file.write("# names\nNguyen = win\n\ngarbage\n= nothing\nSiobhan=shiv awn\nempty =\n\xff\xfe = x\n");
    file.close();
    const auto read = Pronunciation::readSoundsLike(file.fileName());
    EXPECT_EQ(read.value(u"nguyen"_s), u"win"_s);
    EXPECT_EQ(read.value(u"siobhan"_s), u"shiv awn"_s);
    EXPECT_EQ(read.size(), 3);
    EXPECT_TRUE(Pronunciation::readSoundsLike(folder.filePath(u"none"_s)).isEmpty());
}

TEST(MicrophoneMemory, lastsFromOneRunToTheNext)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"state/talmo/microphones.json"_s);
    {
        MicrophoneMemory memory(path);
        EXPECT_TRUE(memory.recall(u"desk"_s).isEmpty());
        memory.remember(u"desk"_s, {40, -3.5, 1});
        memory.remember(u"lap"_s, {20, 1, 1});
        EXPECT_EQ(memory.recall(u"desk"_s), (MicrophoneMemory::Mean{40, -3.5, 1}));
    }
    EXPECT_EQ(MicrophoneMemory(path).recall(u"desk"_s), (MicrophoneMemory::Mean{40, -3.5, 1}));
}

TEST(MicrophoneMemory, whatCannotBeReadIsLearntAgain)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"microphones.json"_s);
    for (const QByteArray content : {"{\"desk\": [1, 2", "[]", "{\"desk\": \"x\"}", "{\"desk\": [1, \"x\"]}",
                                     "{\"desk\": [1e300, 2]}", "{\"desk\": [null]}", ""}) {
        QFile file(path);
        ASSERT_TRUE(file.open(QFile::WriteOnly));
        file.write(content);
        file.close();
        EXPECT_TRUE(MicrophoneMemory(path).recall(u"desk"_s).isEmpty()) << content.constData();
    }
    MicrophoneMemory nowhere(u"/proc/nowhere/microphones.json"_s);
    nowhere.remember(u"desk"_s, {1});
    EXPECT_EQ(nowhere.recall(u"desk"_s), MicrophoneMemory::Mean{1});
}

TEST(EmbeddedRecogniser, hearsPersonalWordsAndSpellsThemAsTheUserDoes)
{
    Listener listener({{u"Kubernetes"_s, u"CloudFormation"_s}, {}});
    EXPECT_TRUE(listener.hears(u"the kubernetes cluster"_s).contains(u"Kubernetes"_s));
    EXPECT_TRUE(listener.hears(u"we used cloud formation before that"_s).contains(u"CloudFormation"_s));
    // Taken out of the list, it is heard as what it sounds like again.
    listener.setVocabulary({});
    EXPECT_FALSE(listener.hears(u"the kubernetes cluster"_s).contains(u"Kubernetes"_s));
}

TEST(EmbeddedRecogniser, anyListOfWordsWillDo)
{
    QStringList words{u"日本"_s,  u"!!!"_s,   u"two\nlines"_s, u"hello"_s,
                      u"hello"_s, u"(odd)"_s, u"<s>"_s,        QString(3000, QLatin1Char('x'))};
    for (int count = 0; count < 300; ++count) {
        words.append(u"Wordnumber%1"_s.arg(QChar('a' + count % 26)) + QString(count / 26, QLatin1Char('o')));
    }
    Listener listener({words, {}});
    EXPECT_FALSE(listener.hears(u"thank you very much"_s).isEmpty());
}

TEST(EmbeddedRecogniser, hearsCommandsBesidePausesAndNowhereElse)
{
    Listener listener;
    EXPECT_TRUE(listener.hears(u"water the plants, new line, feed the cat"_s).contains(u" new line "_s));
    EXPECT_TRUE(
        listener.hears(u"that was the summer, new paragraph, then came the winter"_s).contains(u" new paragraph "_s));
    EXPECT_FALSE(listener.hears(u"the new lion at the zoo is very young"_s).contains(u"new line"_s));
}

TEST(EmbeddedRecogniser, knowsAMicrophoneAgain)
{
    const auto memory = std::make_shared<MicrophoneMemory>();
    Listener listener({}, {[] { return u"desk"_s; }, memory});
    EXPECT_EQ(listener.hears(u"thank you very much"_s), u"thank you very much"_s);
    EXPECT_FALSE(memory->recall(u"desk"_s).isEmpty());
    Listener next({}, {[] { return u"desk"_s; }, memory});
    EXPECT_EQ(next.hears(u"thank you very much"_s), u"thank you very much"_s);
}

TEST(EmbeddedRecogniser, hearsRequestsForAListAtTheEndOnly)
{
    Listener listener;
    EXPECT_EQ(listener.hears(u"call the bank and pay the rent as bullet points"_s),
              u"call the bank and pay the rent as bullet points"_s);
    EXPECT_EQ(listener.hears(u"as the list shows we are late"_s), u"as the list shows we are late"_s);
}

TEST(EmbeddedRecogniser, hearsThroughNoise)
{
    Listener listener;
    constexpr double loudNoise = 0.02;
    listener.hearsNoisy(u"thank you very much"_s, loudNoise); // By which it learns what it sounds like here.
    for (const auto &text :
         {u"see you tomorrow"_s, u"hello world"_s, u"it takes about an hour to drive to the airport"_s}) {
        EXPECT_EQ(listener.hearsNoisy(text, loudNoise), text);
    }
}

TEST(EmbeddedRecogniser, takesNoMonotonousVoiceForMusic)
{
    Listener listener;
    EXPECT_EQ(listener.hearsNoisy(u"we will meet again on monday"_s, 0.002), u"we will meet again on monday"_s);
}

TEST(EmbeddedRecogniser, hearsNoWordsInChords)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(u"chords.wav"_s);
    writeTones(file, {400, 600, 400, 600}, 4);
    Listener listener;
    EXPECT_EQ(listener.hearsFile(file), QString());
    EXPECT_EQ(listener.hears(u"thank you very much"_s), u"thank you very much"_s);
}

TEST(SpeechEngines, givesItsMemoryBackAfterTenIdleMinutes)
{
    const auto clock = std::make_shared<ManualClock>();
    SpeechEngines speech(SerialExecutor::onCurrentThread(), clock, [] { return u"desk"_s; }, {});
    speech.warmUp(u"en_US"_s);
    settle();
    ASSERT_TRUE(speech.embedded()->isLoaded());
    speech.noteUse();
    clock->advance(9min);
    speech.noteUse();
    clock->advance(9min);
    EXPECT_TRUE(speech.embedded()->isLoaded());
    clock->advance(1min);
    EXPECT_FALSE(speech.embedded()->isLoaded());
}

TEST(SpeechEngines, leavesTheSystemNearlyTheMemoryThatItFound)
{
    if (isSanitized) {
        GTEST_SKIP() << "the sanitizers keep memory of their own";
    }
    const auto clock = std::make_shared<ManualClock>();
    SpeechEngines speech(SerialExecutor::onCurrentThread(), clock, [] { return u"desk"_s; }, {});
    const auto before = residentMegabytes();
    speech.warmUp(u"en_US"_s);
    speech.noteUse();
    settle();
    const auto loaded = residentMegabytes() - before;
    EXPECT_GT(loaded, 60);
    clock->advance(10min);
    settle();
    EXPECT_LT(residentMegabytes() - before, loaded / 5);
}

TEST(SpeechEngines, otherWordsMeanAnotherModelNextTime)
{
    SpeechEngines speech(SerialExecutor::onCurrentThread(), std::make_shared<ManualClock>(), {}, {});
    speech.warmUp(u"en_US"_s);
    settle();
    ASSERT_TRUE(speech.embedded()->isLoaded());
    speech.setWords({u"Kubernetes"_s});
    settle();
    EXPECT_FALSE(speech.embedded()->isLoaded());
    speech.setWords({u"Kubernetes"_s});
    speech.warmUp(u"en_US"_s);
    settle();
    EXPECT_TRUE(speech.embedded()->isLoaded());
}

} // namespace talmo::test
