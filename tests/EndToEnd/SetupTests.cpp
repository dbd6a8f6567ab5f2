// From nothing to a better recogniser, and a dictation with it: by one command, by one press in the menu, and at the
// first press of the key in a language without a recogniser. A library that recognises the same sentence in everything
// stands in for the neural engine's.

#include "EndToEnd/TalmoFixture.h"

#include "DesktopParts.h"
#include "Support/Printing.h"
#include "Support/TestFileServer.h"
#include "Support/Tones.h"
#include "Support/ToyArchives.h"
#include "VirtualPointer.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

namespace talmo::test {

namespace {

constexpr quint32 returnKey = 0xff0d;
constexpr quint32 upKey = 0xff52;

class SetupEndToEndTest : public TalmoFixture {
protected:
    SetupEndToEndTest() { prepare(u"en_US"_s, u"en"_s); }

    /// A user who dictates in that language, and a server with a model for it.
    void prepare(const QString &locale, const QString &language)
    {
        desktop.storeSettings({{u"linux.languageModelAddress"_s, u"off"_s}, {u"linux.dictationLanguage"_s, locale}});
        archives.addModel(u"toy"_s);
        archives.addLibrary(u"library"_s, QStringLiteral(TALMO_STAND_IN_ENGINE));
        server = std::make_unique<TestFileServer>(files.path());
        storeCatalogue(language, u"/toy.tar.gz"_s);
    }
    void storeCatalogue(const QString &language, const QString &path) const
    {
        const QJsonObject library{
            {u"id"_s, u"sherpa-onnx-1.13.8"_s}, {u"engine"_s, u"sherpa-onnx"_s},
            {u"kind"_s, u"library"_s},          {u"version"_s, u"1.13.8"_s},
            {u"licence"_s, u"Apache-2.0"_s},    {u"address"_s, server->address(u"/library.tar.gz"_s)}};
        const QJsonObject model{{u"id"_s, u"toy"_s},
                                {u"title"_s, u"Toy"_s},
                                {u"engine"_s, u"sherpa-onnx"_s},
                                {u"licence"_s, u"public domain"_s},
                                {u"languages"_s, QJsonArray{language}},
                                {u"address"_s, server->address(path)}};
        QFile file(desktop.folder() + u"/config/talmo/models.json"_s);
        ASSERT_TRUE(file.open(QFile::WriteOnly));
        file.write(QJsonDocument(QJsonObject{{u"components"_s, QJsonArray{library}}, {u"models"_s, QJsonArray{model}}})
                       .toJson());
    }
    int talmoctl(const QStringList &arguments)
    {
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(TALMO_BIN "/talmoctl"), arguments);
        EXPECT_TRUE(testbed::waitUntil([&process] { return process.state() == QProcess::NotRunning; },
                                       std::chrono::seconds(60)));
        return process.exitCode();
    }

    QTemporaryDir files;
    ToyArchives archives{files.path()};
    std::unique_ptr<TestFileServer> server;
};

} // namespace

TEST_F(SetupEndToEndTest, afterOneCommandNextPressUsesNewRecogniser)
{
    openQtWindow();
    startTalmo();
    dictate(u"hello world"_s);
    // The embedded engine serves meanwhile; a debug build on a busy machine takes its time with an unknown microphone.
    ASSERT_TRUE(talmo->waitForLine(u"state: idle"_s, std::chrono::seconds(60)));
    EXPECT_TRUE(windowShows(u"Hello world."_s));
    EXPECT_EQ(talmoctl({u"setup"_s, u"--yes"_s}), 0);
    ASSERT_TRUE(talmoSays(u"speech engine: sherpa-onnx 1.13.8"_s));
    dictate(u"hello world"_s);
    EXPECT_TRUE(windowShows(u"Hello world. Better words."_s));
    EXPECT_EQ(quitTalmo(), 0);
}

TEST_F(SetupEndToEndTest, afterOnePressInMenuNextPressUsesNewRecogniser)
{
    const auto tray = testbed::startTray(environment);
    testbed::VirtualPointer pointer;
    openQtWindow();
    startTalmo();
    constexpr QPoint icon(1012, 12);
    const auto panelComes = [this] {
        const auto shown = desktop.visibleWindows();
        return std::any_of(shown.begin(), shown.end(), [](const auto &each) {
            return each.program == "talmo" && !each.isManaged && each.geometry.width() > 100;
        });
    };
    ASSERT_TRUE(testbed::pollUntil(
        [&] {
            pointer.clickAt(icon);
            return testbed::pollUntil(panelComes, std::chrono::seconds(2));
        },
        timeout));
    keyboard.tap(upKey); // From the first command to the row above it.
    keyboard.tap(returnKey);
    ASSERT_TRUE(talmoSays(u"installing the speech model toy"_s));
    ASSERT_TRUE(talmoSays(u"speech engine: sherpa-onnx 1.13.8"_s));
    EXPECT_EQ(server->requests().size(), 2);
    ASSERT_TRUE(desktop.waitForActiveWindow(u"Talmo"_s, timeout)); // The settings show the progress.
    desktop.minimiseActiveWindow();
    ASSERT_TRUE(desktop.waitForActiveWindow(u"Target"_s, timeout));
    dictate(u"hello world"_s);
    EXPECT_TRUE(windowShows(u"Better words."_s));
    EXPECT_EQ(quitTalmo(), 0);
}

TEST_F(SetupEndToEndTest, firstPressInAnotherLanguageInstallsLibraryAndModel)
{
    prepare(u"fr_FR"_s, u"fr"_s);
    openQtWindow();
    startTalmo();
    dictate(u"hello world"_s);
    EXPECT_TRUE(windowShows(u"Better words."_s));
    EXPECT_EQ(server->requests().size(), 2);
}

} // namespace talmo::test
