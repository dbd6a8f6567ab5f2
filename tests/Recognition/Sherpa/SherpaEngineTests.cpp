// The neural recogniser with a generated model that tells low from high tones. Tests that need the library are skipped,
// with a message, unless TALMO_NEURAL_LIBRARY names it.

#include "Input/Audio/SpeexAudioConverter.h"
#include "Recognition/EngineRegistry.h"
#include "Recognition/FileTranscription.h"
#include "Recognition/ModelCheck.h"
#include "Recognition/Sherpa/SherpaEngine.h"
#include "Recognition/Sherpa/SherpaFiles.h"
#include "Recognition/Sherpa/StreamingRecogniser.h"
#include "SpokenText.h"
#include "Support/ManualClock.h"
#include "Support/Printing.h"
#include "Support/RecordingLog.h"
#include "Support/TestLoop.h"
#include "Support/Tones.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <algorithm>

namespace talmo::test {

namespace {

/// With the real library and a working model.
class SherpaEngineTest : public testing::Test {
protected:
    void SetUp() override
    {
        if (library.isEmpty()) {
            GTEST_SKIP() << "NOT TESTED: TALMO_NEURAL_LIBRARY does not name the neural recogniser's library.";
        }
        makeModel(u"make_toy_model.py"_s);
    }

    void makeModel(const QString &script)
    {
        QProcess maker;
        maker.start(u"/usr/bin/python3"_s,
                    {QStringLiteral(TALMO_TESTS_FOLDER "/Support/") + script, models.filePath(u"toy"_s)});
        ASSERT_TRUE(maker.waitForFinished() && maker.exitCode() == 0) << maker.readAllStandardError().constData();
    }

    EngineRegistry::Configuration configuration(const QString &choice = EngineRegistry::automaticChoice) const
    {
        const EngineFactories factories = EngineFactories::standard({library, {}});
        EngineRegistry::Configuration configured;
        configured.models = {models.path(), factories, [this](const SpeechEngine &engine, const QString &folder) {
                                 checkModelOnce(engine, library, folder);
                             }};
        configured.catalogue = ModelCatalogue::withUsersFile({});
        configured.choice = choice;
        return configured;
    }
    std::unique_ptr<EngineRegistry> engines(const EngineRegistry::Configuration &configured)
    {
        auto result = std::make_unique<EngineRegistry>(executor, clock, configured);
        EXPECT_TRUE(waitFor(result->modelsChecked()));
        return result;
    }
    QString hear(
        const EngineRegistry &speech, const QString &file,
        TranscriptionService::UpdateHandler onUpdate = [](const QString &) {})
    {
        return QCoro::waitFor(transcribeFile(serviceOf(speech), executor, file, u"en_US"_s, std::move(onUpdate))).text;
    }
    static std::shared_ptr<SpeechTranscriptionService> serviceOf(const EngineRegistry &speech)
    {
        return std::make_shared<SpeechTranscriptionService>(
            speech.platform(), std::make_shared<SpeexAudioConverterFactory>(), SerialExecutor::onNewThread(u"speech"_s),
            SerialExecutor::onCurrentThread());
    }
    /// The error of a recording; empty if there is none.
    QString problemWith(const EngineRegistry &speech, const QString &file)
    {
        return QCoro::waitFor(
            problemOf(transcribeFile(serviceOf(speech), executor, file, u"en_US"_s, [](const QString &) {})));
    }
    static QCoro::Task<QString> problemOf(QCoro::Task<FileTranscript> task)
    {
        QString problem;
        try {
            co_await task;
        } catch (const Error &error) {
            problem = error.localizedDescription();
        }
        co_return problem;
    }
    QString tones(std::initializer_list<double> frequencies)
    {
        const QString file = home.filePath(u"tones-%1.wav"_s.arg(frequencies.size()));
        writeTones(file, frequencies);
        return file;
    }

    const QString library = qEnvironmentVariable("TALMO_NEURAL_LIBRARY");
    QTemporaryDir home;
    QDir models = [this] {
        QDir(home.path()).mkpath(u"models"_s);
        return QDir(home.filePath(u"models"_s));
    }();
    std::shared_ptr<SerialExecutor> executor = SerialExecutor::onNewThread(u"decoder"_s);
    std::shared_ptr<ManualClock> clock = std::make_shared<ManualClock>();
};

/// What the stand-in library recognises with such a model in a German recording: it says which language it was told.
QString heardInGerman(bool isNemo, const QStringList &languages)
{
    SherpaModel model;
    model.isNemo = isNemo;
    model.languages = languages;
    const auto recogniser =
        std::make_shared<StreamingRecogniser>(SherpaLibrary::open(QStringLiteral(TALMO_STAND_IN_ENGINE)), model);
    QString text;
    const auto publish = [&text](const SpeechResult &result) { text = result.text; };
    const auto decoder = recogniser->makeDecoder(
        {u"de"_s, {}, ReadableText(ReadableText::Letters::AsWritten, PersonalSpelling({}), nullptr), publish});
    decoder->process(std::vector<std::int16_t>(RecordingDecoder::sampleRate));
    decoder->finish();
    return text;
}

} // namespace

TEST(StreamingRecogniser, nemoModelOfSeveralLanguagesIsToldWhichIsSpoken)
{
    EXPECT_EQ(heardInGerman(true, {u"en"_s, u"de"_s}), u"Better words.de"_s);
    EXPECT_EQ(heardInGerman(true, {u"de"_s}), u"Better words."_s);
    EXPECT_EQ(heardInGerman(false, {u"en"_s, u"de"_s}), u"Better words."_s);
}

TEST_F(SherpaEngineTest, recognisesTones)
{
    const auto speech = engines(configuration());
    QStringList updates;
    const QString heard = hear(*speech, tones({400, 5000}), [&updates](const QString &text) { updates.append(text); });
    EXPECT_TRUE(heard.startsWith(u"lo"_s)) << heard.toStdString();
    EXPECT_TRUE(heard.contains(u"hi"_s)) << heard.toStdString();
    EXPECT_GT(updates.size(), 1);
    EXPECT_TRUE(updates.first().startsWith(u"lo"_s)) << updates.first().toStdString();
}

TEST_F(SherpaEngineTest, transcribesSeveralRecordingsInTurn)
{
    const auto speech = engines(configuration());
    const QString low = tones({400});
    EXPECT_TRUE(hear(*speech, low).startsWith(u"lo"_s));
    EXPECT_TRUE(hear(*speech, low).startsWith(u"lo"_s));
}

TEST_F(SherpaEngineTest, fallsBackToEmbeddedEngineOnDamagedModel)
{
    RecordingLog log;
    QFile model(models.filePath(u"toy/model.onnx"_s));
    ASSERT_TRUE(model.resize(1500)); // Long enough to look like a model.
    const auto speech = engines(configuration());
    EXPECT_EQ(speech->engines().size(), 1U); // The embedded engine.
    ASSERT_EQ(speech->models().size(), 1U);
    EXPECT_EQ(speech->models().front().problem, u"This speech model cannot be used. Install it again."_s);
    const auto lines = log.lines();
    EXPECT_TRUE(std::any_of(lines.begin(), lines.end(), [this](const auto &line) {
        return line.contains(u"cannot be used"_s) && line.contains(models.filePath(u"toy"_s));
    })) << "the log says which, and why";
    EXPECT_EQ(hear(*speech, testbed::speak(u"thank you very much"_s, home.path())), u"thank you very much"_s);
}

TEST_F(SherpaEngineTest, fallsBackToEmbeddedEngineOnMismatchedTokens)
{
    RecordingLog log;
    writeFile(models.filePath(u"toy/tokens.txt"_s), "a 0\n<blk> 1\n"); // The library aborts the process on such tokens.
    const auto speech = engines(configuration());
    EXPECT_EQ(hear(*speech, testbed::speak(u"thank you very much"_s, home.path())), u"thank you very much"_s);
}

TEST_F(SherpaEngineTest, usesAnotherEngineAfterFailureDuringRecording)
{
    writeFile(models.filePath(u"toy/tokens.txt"_s), "\u2581lo 0\n<blk> 3\n"); // There is no token for "hi".
    auto configured = configuration();
    configured.models.check = [](const SpeechEngine &, const QString &) {};
    const auto speech = engines(configured);
    EXPECT_EQ(problemWith(*speech, tones({5000})),
              u"Speech recognition failed. Try again; if it fails again, choose another recogniser in the settings."_s);
    EXPECT_EQ(hear(*speech, testbed::speak(u"thank you very much"_s, home.path())), u"thank you very much"_s);
}

TEST_F(SherpaEngineTest, modelOfAnotherLanguageIsNotUsedForEnglish)
{
    writeFile(models.filePath(u"toy/talmo-model.json"_s), R"({"language": "fr"})");
    const auto speech = engines(configuration());
    EXPECT_EQ(hear(*speech, testbed::speak(u"thank you very much"_s, home.path())), u"thank you very much"_s);
    const auto french = speech->platform()->supportedLocale(u"fr_FR"_s).result();
    EXPECT_EQ(french, u"fr_FR"_s);
}

TEST_F(SherpaEngineTest, userCanChooseEmbeddedEngine)
{
    const auto speech = engines(configuration(EngineRegistry::embeddedChoice));
    const QString spoken = testbed::speak(u"thank you very much"_s, home.path());
    EXPECT_EQ(hear(*speech, spoken), u"thank you very much"_s);
    speech->choose(EngineRegistry::automaticChoice);
    EXPECT_NE(hear(*speech, spoken), u"thank you very much"_s);
    speech->choose(u"toy"_s);
    EXPECT_NE(hear(*speech, spoken), u"thank you very much"_s);
}

TEST_F(SherpaEngineTest, chosenEmbeddedEngineYieldsForUnsupportedLanguage)
{
    writeFile(models.filePath(u"toy/talmo-model.json"_s), R"({"languages": ["fr", "it"]})");
    const auto speech = engines(configuration(EngineRegistry::embeddedChoice));
    EXPECT_EQ(speech->platform()->supportedLocale(u"it_IT"_s).result(), u"it_IT"_s);
}

TEST_F(SherpaEngineTest, chosenModelComesBeforeOthersOfItsLanguage)
{
    ASSERT_EQ(QProcess::execute(u"cp"_s, {u"-r"_s, models.filePath(u"toy"_s), models.filePath(u"another"_s)}), 0);
    const auto speech = engines(configuration());
    ASSERT_EQ(speech->engines().size(), 3U);
    EXPECT_TRUE(speech->engines().front()->description().contains(u"another"_s));
    speech->choose(u"toy"_s);
    EXPECT_TRUE(speech->engines().front()->description().contains(u"toy"_s));
}

TEST_F(SherpaEngineTest, deletedModelIsNotUsed)
{
    const auto speech = engines(configuration());
    ASSERT_EQ(speech->engines().size(), 2U);
    ASSERT_TRUE(QDir(models.filePath(u"toy"_s)).removeRecursively());
    EXPECT_EQ(hear(*speech, testbed::speak(u"thank you very much"_s, home.path())), u"thank you very much"_s);
    EXPECT_TRUE(waitFor([&speech] { return speech->models().empty(); }));
}

TEST_F(SherpaEngineTest, modelAddedWhileRunningIsUsed)
{
    ASSERT_TRUE(QDir(home.path()).rename(u"models/toy"_s, u"kept"_s));
    const auto speech = engines(configuration());
    EXPECT_EQ(speech->engines().size(), 1U); // The embedded engine.
    ASSERT_TRUE(QDir(home.path()).rename(u"kept"_s, u"models/toy"_s));
    EXPECT_TRUE(waitFor([&speech] { return speech->engines().size() == 2U; }));
    EXPECT_TRUE(hear(*speech, tones({400})).startsWith(u"lo"_s));
}

TEST_F(SherpaEngineTest, checksModelOnlyWhenChanged)
{
    const SherpaEngine toy(u"toy"_s, SherpaLibrary::open(library), models.filePath(u"toy"_s));
    EXPECT_EQ(engines(configuration())->engines().size(), 2U);
    // If this model is recorded as good, nothing is loaded: an invalid file goes unnoticed.
    QFile model(models.filePath(u"toy/model.onnx"_s));
    ASSERT_TRUE(model.open(QFile::ReadWrite));
    const auto changed = model.fileTime(QFile::FileModificationTime);
    model.write("no model"); // Only the content differs; modification time is restored below.
    model.flush();
    ASSERT_TRUE(model.setFileTime(changed, QFile::FileModificationTime));
    EXPECT_NO_THROW(checkModelOnce(toy, library, models.filePath(u"toy"_s)));
    ASSERT_TRUE(model.setFileTime(changed.addSecs(1), QFile::FileModificationTime));
    EXPECT_THROW(checkModelOnce(toy, library, models.filePath(u"toy"_s)), Error);
}

TEST_F(SherpaEngineTest, writesVocabularyInUsersSpelling)
{
    const auto speech = engines(configuration());
    speech->setWords({u"LO"_s});
    EXPECT_TRUE(hear(*speech, tones({400})).startsWith(u"LO"_s));
}

TEST_F(SherpaEngineTest, modelWithHotWordsRecognisesThem)
{
    ASSERT_TRUE(QDir(models.filePath(u"toy"_s)).removeRecursively());
    makeModel(u"make_toy_transducer.py"_s);
    const auto speech = engines(configuration());
    ASSERT_EQ(speech->engines().size(), 2U);
    const QString sound = tones({400, 5000});
    EXPECT_EQ(hear(*speech, sound), u"lo hi"_s); // In lower case, although the model's tokens are upper case.
    speech->setWords({u"HiFi/Audio"_s, u"Low"_s});
    EXPECT_EQ(hear(*speech, sound), u"Low hi"_s);
    speech->setWords({});
    EXPECT_EQ(hear(*speech, sound), u"lo hi"_s);
}

TEST_F(SherpaEngineTest, reportsModelPerformance)
{
    const ModelReport report = measureApart(library, models.filePath(u"toy"_s));
    EXPECT_GT(report.secondsToLoad, 0);
    EXPECT_GT(report.megabytes, 0);
    EXPECT_GT(report.shareOfSpeech, 0);
    EXPECT_LT(report.shareOfSpeech, 1);
}

} // namespace talmo::test
