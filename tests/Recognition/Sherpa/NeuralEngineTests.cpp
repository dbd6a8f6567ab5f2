// The neural recogniser, with a made model that tells low sound from high. Those that need its library are skipped,
// and say so, where TALMO_NEURAL_LIBRARY does not name it.

#include "Input/Audio/SpeexAudioConverter.h"
#include "Recognition/EngineRegistry.h"
#include "Recognition/FileTranscription.h"
#include "Recognition/ModelCheck.h"
#include "Recognition/Sherpa/SherpaEngine.h"
#include "Recognition/Text/RecognisedText.h"
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

QString errorOf(const std::function<void()> &call)
{
    try {
        call();
    } catch (const Error &error) {
        return error.localizedDescription();
    }
    return {};
}

void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    file.write(content);
}

const QByteArray tokens = "\u2581lo 0\n\u2581hi 1\n\u2581mid 2\n<blk> 3\n";

class ModelFolderTest : public testing::Test {
protected:
    ModelFolderTest()
    {
        write(path(u"tokens.txt"_s), tokens);
        write(path(u"model.onnx"_s), QByteArray("\x08") + QByteArray(2000, 'x'));
    }
    QString path(const QString &name) const { return folder.filePath(name); }
    QString complaint() const
    {
        return errorOf([this] { SherpaModel::examine(folder.path()); });
    }

    QTemporaryDir folder;
};

/// With the real library and a model that works.
class NeuralEngineTest : public testing::Test {
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
        configured.embedded = factories.embedded;
        configured.models = {
            models.path(), factories.installable,
            [this](const SpeechEngine &engine, const QString &folder) { checkModelOnce(engine, library, folder); }};
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
    /// What goes wrong with a recording; empty where nothing does.
    QString problemWith(const EngineRegistry &speech, const QString &file)
    {
        return QCoro::waitFor(
            problemOf(transcribeFile(serviceOf(speech), executor, file, u"en_US"_s, [](const QString &) {})));
    }
    static QCoro::Task<QString> problemOf(QCoro::Task<FileTranscript> task)
    {
        try {
            co_await task;
        } catch (const Error &error) {
            co_return error.localizedDescription();
        }
        co_return QString();
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

} // namespace

TEST(NeuralLibrary, whereThereIsNoneItSaysWhereItLooked)
{
    const QString missing = errorOf([] { SherpaLibrary::open(u"/nonexistent/lib.so"_s); });
    EXPECT_TRUE(missing.contains(u"/nonexistent/lib.so"_s)) << missing.toStdString();
}

TEST(NeuralLibrary, whatIsNoLibraryIsRefused)
{
    const QTemporaryDir folder;
    write(folder.filePath(u"lib.so"_s), "this is no library");
    EXPECT_TRUE(errorOf([&] { SherpaLibrary::open(folder.filePath(u"lib.so"_s)); }).contains(u"cannot be loaded"_s));
}

TEST(NeuralLibrary, anOldOneIsRefusedBeforeAnythingElseIsAskedOfIt)
{
    EXPECT_EQ(errorOf([] { SherpaLibrary::open(QStringLiteral(TALMO_OLD_ENGINE)); }),
              u"The neural recogniser's library is version 1.12.12; Talmo needs 1.12.13 or later."_s);
}

TEST(NeuralLibrary, oneThatLacksSomethingIsRefused)
{
    EXPECT_TRUE(errorOf([] { SherpaLibrary::open(QStringLiteral(TALMO_LACKING_ENGINE)); }).contains(u"lacks"_s));
}

TEST_F(ModelFolderTest, whatLooksRightIsAccepted)
{
    EXPECT_EQ(complaint(), QString());
    EXPECT_EQ(SherpaModel::examine(folder.path()).kind, SherpaModel::Kind::NemoCtc);
    EXPECT_EQ(SherpaModel::examine(folder.path()).languages, QStringList{u"en"_s});
    write(path(u"talmo-model.json"_s), R"({"language": "de", "kind": "zipformer-ctc"})");
    EXPECT_EQ(SherpaModel::examine(folder.path()).kind, SherpaModel::Kind::ZipformerCtc);
    EXPECT_EQ(SherpaModel::examine(folder.path()).languages, QStringList{u"de"_s});
}

TEST_F(ModelFolderTest, theThreePartsOfATransducerAreFoundAndTheSmallNumbersPreferred)
{
    for (const auto &name : {u"encoder-epoch-99.onnx"_s, u"encoder-epoch-99.int8.onnx"_s, u"decoder.onnx"_s}) {
        write(path(name), QByteArray("\x08") + QByteArray(2000, 'x'));
    }
    EXPECT_TRUE(complaint().contains(u"joiner"_s));
    write(path(u"joiner.onnx"_s), QByteArray("\x08") + QByteArray(2000, 'x'));
    const auto model = SherpaModel::examine(folder.path());
    EXPECT_EQ(model.kind, SherpaModel::Kind::Transducer);
    EXPECT_EQ(model.encoder, u"encoder-epoch-99.int8.onnx"_s);
}

TEST_F(ModelFolderTest, everyDamageHasItsComplaint)
{
    write(path(u"model.onnx"_s), QByteArray("\x08") + "short");
    EXPECT_TRUE(complaint().contains(u"damaged"_s));
    write(path(u"model.onnx"_s), QByteArray(5000, '<'));
    EXPECT_TRUE(complaint().contains(u"no model"_s));
    QFile::remove(path(u"model.onnx"_s));
    EXPECT_TRUE(complaint().contains(u"There is no model"_s));
    write(path(u"tokens.txt"_s), "lo\nhi\n");
    EXPECT_TRUE(complaint().contains(u"damaged"_s));
    write(path(u"tokens.txt"_s), "lo 0\nhi 1\n");
    EXPECT_TRUE(complaint().contains(u"no blank"_s));
    write(path(u"tokens.txt"_s), "");
    EXPECT_TRUE(complaint().contains(u"cannot be read"_s));
    EXPECT_TRUE(errorOf([] { SherpaModel::examine(u"/nonexistent"_s); }).contains(u"no folder"_s));
}

TEST_F(NeuralEngineTest, recognisesWhatItWasMadeFor)
{
    const auto speech = engines(configuration());
    QStringList updates;
    const QString heard = hear(*speech, tones({400, 5000}), [&updates](const QString &text) { updates.append(text); });
    EXPECT_TRUE(heard.startsWith(u"lo"_s)) << heard.toStdString();
    EXPECT_TRUE(heard.contains(u"hi"_s)) << heard.toStdString();
    EXPECT_GT(updates.size(), 1);
    EXPECT_TRUE(updates.first().startsWith(u"lo"_s)) << updates.first().toStdString();
}

TEST_F(NeuralEngineTest, severalRecordingsOneAfterTheOther)
{
    const auto speech = engines(configuration());
    const QString low = tones({400});
    EXPECT_TRUE(hear(*speech, low).startsWith(u"lo"_s));
    EXPECT_TRUE(hear(*speech, low).startsWith(u"lo"_s));
}

TEST_F(NeuralEngineTest, theEmbeddedRecogniserGoesOnWhereTheModelIsDamaged)
{
    RecordingLog log;
    QFile model(models.filePath(u"toy/model.onnx"_s));
    ASSERT_TRUE(model.resize(1500)); // Long enough to look like one.
    const auto speech = engines(configuration());
    EXPECT_EQ(speech->engines().size(), 1U); // The embedded one.
    ASSERT_EQ(speech->models().size(), 1U);
    EXPECT_TRUE(speech->models().front().problem.contains(u"cannot be used"_s));
    const auto lines = log.lines();
    EXPECT_TRUE(
        std::any_of(lines.begin(), lines.end(), [](const auto &line) { return line.contains(u"cannot be used"_s); }));
    EXPECT_EQ(hear(*speech, testbed::speak(u"thank you very much"_s, home.path())), u"thank you very much"_s);
}

TEST_F(NeuralEngineTest, theEmbeddedRecogniserGoesOnWhereTheTokensAreNotTheModels)
{
    RecordingLog log;
    write(models.filePath(u"toy/tokens.txt"_s), "a 0\n<blk> 1\n"); // The library ends the process over such things.
    const auto speech = engines(configuration());
    EXPECT_EQ(hear(*speech, testbed::speak(u"thank you very much"_s, home.path())), u"thank you very much"_s);
}

TEST_F(NeuralEngineTest, whereTheModelFailsInTheMiddleTheNextRecordingIsAnotherRecognisers)
{
    write(models.filePath(u"toy/tokens.txt"_s), "\u2581lo 0\n<blk> 3\n"); // "hi" is nothing it can write down.
    auto configured = configuration();
    configured.models.check = [](const SpeechEngine &, const QString &) {};
    const auto speech = engines(configured);
    EXPECT_EQ(problemWith(*speech, tones({5000})), u"The neural recogniser failed."_s);
    EXPECT_EQ(hear(*speech, testbed::speak(u"thank you very much"_s, home.path())), u"thank you very much"_s);
}

TEST_F(NeuralEngineTest, aModelOfAnotherLanguageIsNotUsedForEnglish)
{
    write(models.filePath(u"toy/talmo-model.json"_s), R"({"language": "fr"})");
    const auto speech = engines(configuration());
    EXPECT_EQ(hear(*speech, testbed::speak(u"thank you very much"_s, home.path())), u"thank you very much"_s);
    const auto french = speech->platform()->supportedLocale(u"fr_FR"_s).result();
    EXPECT_EQ(french, u"fr_FR"_s);
}

TEST_F(NeuralEngineTest, theUserMayWantTheEmbeddedOne)
{
    const auto speech = engines(configuration(EngineRegistry::embeddedChoice));
    const QString spoken = testbed::speak(u"thank you very much"_s, home.path());
    EXPECT_EQ(hear(*speech, spoken), u"thank you very much"_s);
    speech->choose(EngineRegistry::automaticChoice);
    EXPECT_NE(hear(*speech, spoken), u"thank you very much"_s);
    speech->choose(u"toy"_s);
    EXPECT_NE(hear(*speech, spoken), u"thank you very much"_s);
}

TEST_F(NeuralEngineTest, theEmbeddedOneStandsBackWhereItCannotHelp)
{
    write(models.filePath(u"toy/talmo-model.json"_s), R"({"languages": ["fr", "it"]})");
    const auto speech = engines(configuration(EngineRegistry::embeddedChoice));
    EXPECT_EQ(speech->platform()->supportedLocale(u"it_IT"_s).result(), u"it_IT"_s);
}

TEST_F(NeuralEngineTest, theChosenModelGoesBeforeTheOthersOfItsLanguage)
{
    ASSERT_EQ(QProcess::execute(u"cp"_s, {u"-r"_s, models.filePath(u"toy"_s), models.filePath(u"another"_s)}), 0);
    const auto speech = engines(configuration());
    ASSERT_EQ(speech->engines().size(), 3U);
    EXPECT_TRUE(speech->engines().front()->description().contains(u"another"_s));
    speech->choose(u"toy"_s);
    EXPECT_TRUE(speech->engines().front()->description().contains(u"toy"_s));
}

TEST_F(NeuralEngineTest, aModelThatWasDeletedIsNotUsedAnyMore)
{
    const auto speech = engines(configuration());
    ASSERT_EQ(speech->engines().size(), 2U);
    ASSERT_TRUE(QDir(models.filePath(u"toy"_s)).removeRecursively());
    EXPECT_EQ(hear(*speech, testbed::speak(u"thank you very much"_s, home.path())), u"thank you very much"_s);
    EXPECT_TRUE(waitFor([&speech] { return speech->models().empty(); }));
}

TEST_F(NeuralEngineTest, aModelThatComesWhileTalmoRunsIsUsed)
{
    ASSERT_TRUE(QDir(home.path()).rename(u"models/toy"_s, u"kept"_s));
    const auto speech = engines(configuration());
    EXPECT_EQ(speech->engines().size(), 1U); // The embedded one.
    ASSERT_TRUE(QDir(home.path()).rename(u"kept"_s, u"models/toy"_s));
    EXPECT_TRUE(waitFor([&speech] { return speech->engines().size() == 2U; }));
    EXPECT_TRUE(hear(*speech, tones({400})).startsWith(u"lo"_s));
}

TEST_F(NeuralEngineTest, aModelIsLoadedForACheckOnlyWhenItIsAnotherOne)
{
    EXPECT_EQ(engines(configuration())->engines().size(), 2U);
    // Where it is noted that this very model is good, nothing is started: not even what cannot be.
    QFile model(models.filePath(u"toy/model.onnx"_s));
    ASSERT_TRUE(model.open(QFile::ReadWrite));
    const auto changed = model.fileTime(QFile::FileModificationTime);
    model.write("no model"); // Of the same size, and unchanged as far as anybody can see.
    model.flush();
    ASSERT_TRUE(model.setFileTime(changed, QFile::FileModificationTime));
    const SherpaEngine toy(u"toy"_s, library, models.filePath(u"toy"_s));
    EXPECT_NO_THROW(checkModelOnce(toy, library, models.filePath(u"toy"_s)));
    ASSERT_TRUE(model.setFileTime(changed.addSecs(1), QFile::FileModificationTime));
    EXPECT_THROW(checkModelOnce(toy, library, models.filePath(u"toy"_s)), Error);
}

TEST_F(NeuralEngineTest, wordsAreWrittenAsTheUserSpellsThem)
{
    const auto speech = engines(configuration());
    speech->setWords({u"LO"_s});
    EXPECT_TRUE(hear(*speech, tones({400})).startsWith(u"LO"_s));
}

TEST_F(NeuralEngineTest, aModelThatCanBeToldWordsListensForThem)
{
    ASSERT_TRUE(QDir(models.filePath(u"toy"_s)).removeRecursively());
    makeModel(u"make_toy_transducer.py"_s);
    const auto speech = engines(configuration());
    ASSERT_EQ(speech->engines().size(), 2U);
    const QString sound = tones({400, 5000});
    EXPECT_EQ(hear(*speech, sound), u"lo hi"_s); // Not shouted, though the model knows capitals only.
    speech->setWords({u"HiFi/Audio"_s, u"Low"_s});
    EXPECT_EQ(hear(*speech, sound), u"Low hi"_s);
    speech->setWords({});
    EXPECT_EQ(hear(*speech, sound), u"lo hi"_s);
}

TEST_F(NeuralEngineTest, sayHowItDoes)
{
    const ModelReport report = measureApart(library, models.filePath(u"toy"_s));
    EXPECT_GT(report.secondsToLoad, 0);
    EXPECT_GT(report.megabytes, 0);
    EXPECT_GT(report.shareOfSpeech, 0);
    EXPECT_LT(report.shareOfSpeech, 1);
}

TEST(RecognisedText, capitalsAloneAreNobodysWish)
{
    EXPECT_EQ(tidied(u"HELLO WORLD"_s), u"hello world"_s);
    EXPECT_EQ(tidied(u"Hello, World."_s), u"Hello, World."_s);
    EXPECT_EQ(tidied(u" spaces around "_s), u"spaces around"_s);
}

TEST(RecognisedText, theMarksAroundACommandGoWithIt)
{
    EXPECT_EQ(tidied(u"Buy milk, new line, eggs."_s), u"Buy milk new line eggs."_s);
    EXPECT_EQ(tidied(u"Thanks. New paragraph. Best regards."_s), u"Thanks. New paragraph Best regards."_s);
    EXPECT_EQ(tidied(u"New line."_s), u"New line"_s);
    EXPECT_EQ(tidied(u"Milk and eggs, as a list."_s), u"Milk and eggs as a list"_s);
    EXPECT_EQ(tidied(u"As bullet points: milk, eggs."_s), u"As bullet points milk, eggs."_s);
    EXPECT_EQ(tidied(u"A renewed newline, I say."_s), u"A renewed newline, I say."_s);
}

TEST(RecognisedText, theUsersWordsAreSpelledAsTheUserDoes)
{
    const PersonalSpelling spelling({u"CloudFormation"_s, u"Rust"_s, u"Rust Belt"_s, u"C++"_s, u"  "_s, u"Zo\u00eb"_s});
    EXPECT_EQ(spelling.applied(u"cloud formation and cloudformation in rust"_s),
              u"CloudFormation and CloudFormation in Rust"_s);
    EXPECT_EQ(spelling.applied(u"the rust belt, trusted"_s), u"the Rust Belt, trusted"_s);
    EXPECT_EQ(spelling.applied(u"c++ it is"_s), u"C++ it is"_s);
    EXPECT_EQ(spelling.applied(u"ZO\u00cb"_s), u"Zo\u00eb"_s);
    EXPECT_TRUE(spelling.spokenForms().contains(u"cloud formation"_s));
    EXPECT_EQ(PersonalSpelling({}).applied(u"as it was"_s), u"as it was"_s);
}

} // namespace talmo::test
