// The neural recogniser end to end, with a generated model that tells low from high tones. Skipped, with a message,
// unless TALMO_NEURAL_LIBRARY names its library.

#include "EndToEnd/TalmoFixture.h"

#include "Support/Printing.h"
#include "Support/TestFileServer.h"
#include "Support/Tones.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace talmo::test {

namespace {

class NeuralEndToEndTest : public TalmoFixture {
protected:
    void SetUp() override
    {
        const QString library = qEnvironmentVariable("TALMO_NEURAL_LIBRARY");
        if (library.isEmpty()) {
            GTEST_SKIP() << "NOT TESTED: TALMO_NEURAL_LIBRARY does not name the neural recogniser's library.";
        }
        desktop.storeSettings({{u"linux.neuralLibrary"_s, library},
                               {u"linux.languageModelAddress"_s, u"off"_s},
                               {u"linux.dictationLanguage"_s, language}});
        makeModel(models + u"/toy"_s);
        writeTones(tone, {400});
    }
    void makeModel(const QString &folder) const
    {
        ASSERT_EQ(QProcess::execute(u"/usr/bin/python3"_s,
                                    {QStringLiteral(TALMO_TESTS_FOLDER "/Support/make_toy_model.py"), folder}),
                  0);
    }
    /// Holds the key, plays a low tone, releases.
    void dictateTone()
    {
        keyboard.press(key);
        ASSERT_TRUE(talmoSays(u"state: recording"_s));
        sound->play(tone);
        keyboard.release(key);
    }
    int talmoctl(const QStringList &arguments)
    {
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(TALMO_BIN "/talmoctl"), arguments);
        EXPECT_TRUE(testbed::waitUntil([&process] { return process.state() == QProcess::NotRunning; }, timeout));
        return process.exitCode();
    }

    QString language = u"en_US"_s;
    const QString models = desktop.folder() + u"/data/talmo/models"_s;
    const QString tone = desktop.folder() + u"/tone.wav"_s;
};

/// A model that was trained, and a person's voice.
class TrainedModelEndToEndTest : public TalmoFixture {
protected:
    void SetUp() override
    {
        const QString library = qEnvironmentVariable("TALMO_NEURAL_LIBRARY");
        const QString model = qEnvironmentVariable("TALMO_SPEECH_MODEL");
        if (library.isEmpty() || model.isEmpty()) {
            GTEST_SKIP()
                << "NOT TESTED: TALMO_NEURAL_LIBRARY and TALMO_SPEECH_MODEL do not name a library and a model.";
        }
        desktop.storeSettings({{u"linux.neuralLibrary"_s, library}, {u"linux.languageModelAddress"_s, u"off"_s}});
        const QString data = desktop.folder() + u"/data/talmo"_s;
        QDir().mkpath(data + u"/models"_s);
        QDir().mkpath(data + u"/engines/silero-vad"_s);
        const QString speech = u"/silero-vad/silero_vad.onnx"_s;
        ASSERT_TRUE(QFile::link(QFileInfo(library).absolutePath() + speech, data + u"/engines"_s + speech));
        ASSERT_TRUE(QFile::link(model, data + u"/models/moonshine-tiny-en"_s));
    }
};

/// A user whose language has no installed model.
class ModelInstallationEndToEndTest : public NeuralEndToEndTest {
protected:
    ModelInstallationEndToEndTest() { language = u"fr_FR"_s; }
    void SetUp() override
    {
        NeuralEndToEndTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) {
            return;
        }
        ASSERT_TRUE(QDir(models).rename(u"toy"_s, u"../french"_s));
        ASSERT_EQ(QProcess::execute(u"tar"_s, {u"-C"_s, models + u"/.."_s, u"-czf"_s,
                                               files.filePath(u"french.tar.gz"_s), u"french"_s}),
                  0);
        server = std::make_unique<TestFileServer>(files.path());
    }
    void storeCatalogue(const QString &path) const
    {
        QFile catalogue(desktop.folder() + u"/config/talmo/models.json"_s);
        ASSERT_TRUE(catalogue.open(QFile::WriteOnly));
        const QJsonObject entry{
            {u"id"_s, u"toy-fr"_s}, {u"languages"_s, QJsonArray{u"fr"_s}}, {u"address"_s, server->address(path)}};
        catalogue.write(QJsonDocument(QJsonObject{{u"models"_s, QJsonArray{entry}}}).toJson());
    }

    QTemporaryDir files;
    std::unique_ptr<TestFileServer> server;
};

} // namespace

TEST_F(NeuralEndToEndTest, dictatesIntoAWindow)
{
    openQtWindow();
    startTalmo();
    ASSERT_TRUE(talmoSays(u"speech engine: "_s));
    dictateTone();
    EXPECT_TRUE(windowShows(u"Lo"_s));
    EXPECT_TRUE(talmoSays(u"state: idle"_s));
    EXPECT_EQ(quitTalmo(), 0);
}

TEST_F(TrainedModelEndToEndTest, personsSentenceIsTypedWithPunctuation)
{
    openQtWindow();
    startTalmo();
    ASSERT_TRUE(talmoSays(u"speech engine: "_s));
    keyboard.press(key);
    ASSERT_TRUE(talmoSays(u"state: recording"_s));
    sound->play(u"/usr/share/pocketsphinx/test/data/librivox/sense_and_sensibility_01_austen_64kb-0930.wav"_s);
    keyboard.release(key);
    const QString prefix = u"cleaned transcript: "_s;
    const auto line = talmo->waitForLine(prefix, timeout);
    ASSERT_TRUE(line);
    const QString text = line->text.mid(line->text.indexOf(prefix) + prefix.size());
    EXPECT_TRUE(windowShows(text));
    // Playback on a busy machine has gaps, in which a word may be heard as two.
    EXPECT_EQ(QString(text).remove(u' '), u"Hemightevenhavebeenmadeamiablehimself."_s);
}

TEST_F(NeuralEndToEndTest, damagedModelIsReportedAndEmbeddedRecogniserIsUsed)
{
    ASSERT_TRUE(QFile(models + u"/toy/model.onnx"_s).resize(1500));
    openQtWindow();
    startTalmo();
    ASSERT_TRUE(talmoSays(u"the speech model toy is not used"_s));
    dictate(u"hello world"_s);
    EXPECT_TRUE(windowShows(u"Hello world."_s));
}

TEST_F(NeuralEndToEndTest, recogniserCanBeChangedWhileRunning)
{
    openQtWindow();
    startTalmo();
    ASSERT_TRUE(talmoSays(u"speech engine: "_s));
    EXPECT_EQ(talmoctl({u"model"_s, u"use"_s, u"embedded"_s}), 0);
    ASSERT_TRUE(talmoSays(u"recogniser: embedded"_s));
    dictate(u"hello world"_s);
    EXPECT_TRUE(windowShows(u"Hello world."_s));
    ASSERT_TRUE(talmoSays(u"state: idle"_s));
    EXPECT_EQ(quitTalmo(), 0);
    startTalmo(); // The choice persists.
    dictate(u"thank you very much"_s);
    EXPECT_TRUE(windowShows(u"Hello world.Thank you very much."_s));
}

TEST_F(ModelInstallationEndToEndTest, installsMissingModelOnFirstPress)
{
    storeCatalogue(u"/french.tar.gz?break=300"_s);
    openQtWindow();
    startTalmo();
    dictateTone();
    EXPECT_TRUE(windowShows(u"Lo"_s));
    EXPECT_EQ(server->requests().size(), 2);
}

TEST_F(ModelInstallationEndToEndTest, reportsRemovedModelOnNextPress)
{
    storeCatalogue(u"/french.tar.gz"_s);
    openQtWindow();
    startTalmo();
    dictateTone();
    EXPECT_TRUE(windowShows(u"Lo"_s));
    ASSERT_TRUE(talmoSays(u"state: idle"_s));
    ASSERT_TRUE(QDir(models + u"/toy-fr"_s).removeRecursively());
    keyboard.press(key);
    EXPECT_TRUE(talmoSays(u"error: The on-device speech model for this language isn't installed yet. Installing it "
                          u"once requires an internet connection; after that, transcription works fully offline."_s));
    keyboard.release(key);
}

TEST_F(ModelInstallationEndToEndTest, unavailableModelIsAnError)
{
    storeCatalogue(u"/french.tar.gz?status=404"_s);
    openQtWindow();
    startTalmo();
    keyboard.press(key);
    EXPECT_TRUE(talmoSays(u"error: The server does not deliver this file at present. Try again later."_s));
    keyboard.release(key);
    EXPECT_EQ(quitTalmo(), 0);
}

TEST_F(ModelInstallationEndToEndTest, quittingCancelsDownload)
{
    storeCatalogue(u"/french.tar.gz?stall=300"_s);
    openQtWindow();
    startTalmo();
    keyboard.press(key);
    ASSERT_TRUE(server->waitForRequests(1));
    EXPECT_EQ(quitTalmo(), 0);
    keyboard.release(key);
}

} // namespace talmo::test
