// Installing recognisers with talmoctl, from a server on loopback. A library that stands in for the engine's makes do
// without trained models.

#include "Support/Printing.h"
#include "Support/ProgramRun.h"
#include "Support/TestFileServer.h"
#include "Support/ToyArchives.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <csignal>

namespace talmo::test {

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

const QString program = QStringLiteral(TALMO_BIN "/talmoctl");

using Result = ProgramRun::Result;

/// A user with nothing installed, and a server with a library and models.
class SetupTest : public testing::Test {
protected:
    SetupTest()
    {
        environment.insert(u"XDG_CONFIG_HOME"_s, home.filePath(u"config"_s));
        environment.insert(u"XDG_DATA_HOME"_s, home.filePath(u"data"_s));
        environment.insert(u"XDG_CACHE_HOME"_s, home.filePath(u"cache"_s));
        environment.insert(u"XDG_RUNTIME_DIR"_s, home.path());
        environment.insert(u"LC_ALL"_s, u"en_GB.UTF-8"_s);
        archives.addModel(u"toy"_s);
        archives.addLibrary(u"library"_s, QStringLiteral(TALMO_STAND_IN_ENGINE));
        server = std::make_unique<TestFileServer>(files.path());
        setCatalogue({model(u"toy"_s, u"/toy.tar.gz"_s)});
    }
    /// An entry with the size and the checksum of the file at that address.
    QJsonObject entry(const QString &id, const QString &path) const
    {
        QFile file(files.filePath(path.section(u'?', 0, 0).mid(1)));
        EXPECT_TRUE(file.open(QFile::ReadOnly));
        const QByteArray content = file.readAll();
        const auto sum = QCryptographicHash::hash(content, QCryptographicHash::Sha256).toHex();
        return {{u"id"_s, id},
                {u"engine"_s, u"sherpa-onnx"_s},
                {u"address"_s, server->address(path)},
                {u"size"_s, content.size()},
                {u"sha256"_s, QString::fromLatin1(sum)},
                {u"licence"_s, u"licence of "_s + id}};
    }
    QJsonObject model(const QString &id, const QString &path, int cores = 1) const
    {
        auto made = entry(id, path);
        made[u"title"_s] = u"A "_s + id;
        made[u"languages"_s] = QJsonArray{u"en"_s};
        made[u"kind"_s] = u"nemo-ctc"_s;
        made[u"minLibrary"_s] = u"1.13.0"_s;
        made[u"cores"_s] = cores;
        return made;
    }
    void setCatalogue(const QJsonArray &models) const
    {
        auto library = entry(u"sherpa-onnx-1.13.8"_s, u"/library.tar.gz"_s);
        library[u"kind"_s] = u"library"_s;
        library[u"version"_s] = u"1.13.8"_s;
        QDir(home.path()).mkpath(u"config/talmo"_s);
        QFile file(home.filePath(u"config/talmo/models.json"_s));
        ASSERT_TRUE(file.open(QFile::WriteOnly));
        file.write(QJsonDocument(QJsonObject{{u"models"_s, models}, {u"components"_s, QJsonArray{library}}}).toJson());
    }
    Result talmoctl(const QStringList &arguments) const
    {
        ProgramRun run(environment, program, arguments);
        run.endInput();
        return run.result();
    }
    /// With a terminal, on which the user types this.
    Result talmoctlOnTerminal(const QString &command, const QByteArray &typed) const
    {
        ProgramRun run(environment, u"script"_s, {u"-qec"_s, program + u' ' + command, u"/dev/null"_s});
        run.type(typed);
        return run.result();
    }
    bool isInstalled(const QString &name) const { return QDir(home.filePath(u"data/talmo/models/"_s + name)).exists(); }

    QTemporaryDir files;
    ToyArchives archives{files.path()};
    QTemporaryDir home;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    std::unique_ptr<TestFileServer> server;
};

} // namespace

TEST_F(SetupTest, withoutTerminalOnlyAnnouncesInstallation)
{
    const auto result = talmoctl({u"setup"_s});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.output,
                AllOf(HasSubstr("sherpa-onnx-1.13.8, 1 MB, licence licence of sherpa-onnx-1.13.8"),
                      HasSubstr("A toy (English), 1 MB, licence licence of toy"), HasSubstr("Together")));
    EXPECT_THAT(result.errors, HasSubstr("talmoctl setup --yes"));
    EXPECT_TRUE(server->requests().isEmpty());
}

TEST_F(SetupTest, installsLibraryAndModelInOneProgress)
{
    const auto result = talmoctl({u"setup"_s, u"--yes"_s});
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_THAT(result.output, HasSubstr("Installed A toy (English). Talmo uses it from the next recording on."));
    EXPECT_THAT(result.errors, AllOf(HasSubstr("Downloading"), HasSubstr("Testing")));
    EXPECT_THAT(server->requests(), ElementsAre(u"/library.tar.gz whole -"_s, u"/toy.tar.gz whole -"_s));
    const auto again = talmoctl({u"setup"_s});
    EXPECT_EQ(again.status, 0);
    EXPECT_THAT(again.output, HasSubstr("installed already"));
    EXPECT_EQ(server->requests().size(), 2);
}

TEST_F(SetupTest, enginesListsInstalledAndBetterRecognisers)
{
    EXPECT_EQ(talmoctl({u"setup"_s, u"--yes"_s}).status, 0);
    setCatalogue({model(u"better"_s, u"/toy.tar.gz"_s), model(u"toy"_s, u"/toy.tar.gz"_s)});
    EXPECT_EQ(talmoctl({u"model"_s, u"use"_s, u"toy"_s}).status, 0);
    EXPECT_THAT(talmoctl({u"engines"_s}).output,
                AllOf(HasSubstr("sherpa-onnx: version 1.13.8 in"), HasSubstr("toy, language en, usable"),
                      HasSubstr("chosen: toy"), HasSubstr("better: A better (English) is more accurate")));
}

TEST_F(SetupTest, asksOnceOnTerminal)
{
    const auto refused = talmoctlOnTerminal(u"setup"_s, "n\n");
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.output, HasSubstr("Download and install? [Y/n]"));
    EXPECT_TRUE(server->requests().isEmpty());
    const auto accepted = talmoctlOnTerminal(u"setup"_s, "\n");
    EXPECT_EQ(accepted.status, 0) << accepted.output;
    EXPECT_TRUE(isInstalled(u"toy"_s));
}

TEST_F(SetupTest, installsOnlyWhatIsMissing)
{
    EXPECT_EQ(talmoctl({u"setup"_s, u"--yes"_s}).status, 0);
    ASSERT_TRUE(QDir(home.filePath(u"data/talmo/engines"_s)).removeRecursively());
    const auto result = talmoctl({u"setup"_s, u"--yes"_s});
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(server->requests().last(), u"/library.tar.gz whole -"_s);
}

TEST_F(SetupTest, interruptKeepsWhatWasDownloaded)
{
    setCatalogue({model(u"toy"_s, u"/toy.tar.gz?stall=100"_s)});
    ProgramRun run(environment, program, {u"setup"_s, u"--yes"_s});
    ASSERT_TRUE(server->waitForRequests(2));
    const QString part = home.filePath(u"data/talmo/models/.toy.part"_s);
    ASSERT_TRUE(testbed::waitUntil([&part] { return QFile(part).size() == 100; }, std::chrono::seconds(15)));
    ASSERT_EQ(::kill(static_cast<pid_t>(run.processId()), SIGINT), 0);
    const auto cancelled = run.result();
    EXPECT_EQ(cancelled.status, 130);
    EXPECT_THAT(cancelled.errors, HasSubstr("what has been downloaded is kept"));
    EXPECT_EQ(talmoctl({u"setup"_s, u"--yes"_s}).status, 0);
    EXPECT_THAT(server->requests().last().toStdString(), HasSubstr("bytes=100-"));
    EXPECT_TRUE(isInstalled(u"toy"_s));
}

TEST_F(SetupTest, tooSlowModelIsReplacedBySmallerOne)
{
    archives.addModel(u"large"_s);
    archives.addLibrary(u"library"_s, QStringLiteral(TALMO_SLOW_ENGINE));
    setCatalogue({model(u"large"_s, u"/large.tar.gz"_s, 2), model(u"small"_s, u"/toy.tar.gz"_s, 1)});
    const auto result = talmoctl({u"setup"_s, u"--yes"_s});
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_THAT(result.errors,
                testing::ContainsRegex("too slow for this computer: 0[.][0-9] s for each second of speech"));
    EXPECT_THAT(result.output, HasSubstr("Installed A small (English)"));
    EXPECT_FALSE(isInstalled(u"large"_s));
    EXPECT_THAT(talmoctl({u"model"_s, u"list"_s}).output, HasSubstr("too slow"));
}

TEST_F(SetupTest, explainsHowToAcceptRenewedFile)
{
    auto renewed = model(u"toy"_s, u"/toy.tar.gz"_s);
    renewed[u"size"_s] = renewed[u"size"_s].toInteger() + 1;
    setCatalogue({renewed});
    const auto result = talmoctl({u"setup"_s, u"--yes"_s});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors, HasSubstr("talmoctl model install toy --accept-renewed"));
    const auto accepted = talmoctl({u"model"_s, u"install"_s, u"toy"_s, u"--accept-renewed"_s});
    EXPECT_EQ(accepted.status, 0) << accepted.errors;
    EXPECT_TRUE(isInstalled(u"toy"_s));
}

TEST_F(SetupTest, refusesModelsOfUnknownKinds)
{
    auto strange = model(u"strange"_s, u"/toy.tar.gz"_s);
    strange[u"kind"_s] = u"of-another-time"_s;
    setCatalogue({strange});
    const auto listed = talmoctl({u"model"_s, u"list"_s}).output;
    EXPECT_THAT(listed, testing::StartsWith("strange               unsupported"));
    EXPECT_THAT(listed, HasSubstr("not usable: Talmo has no engine for models of the kind “of-another-time”"));
    EXPECT_THAT(talmoctl({u"model"_s, u"install"_s, u"strange"_s}).errors, HasSubstr("no engine"));
    EXPECT_THAT(talmoctl({u"setup"_s}).output, Not(HasSubstr("strange")));
    EXPECT_TRUE(server->requests().isEmpty());
}

TEST_F(SetupTest, listsModelsAsJson)
{
    const auto result = talmoctl({u"model"_s, u"list"_s, u"--json"_s});
    EXPECT_EQ(result.status, 0);
    const auto list = QJsonDocument::fromJson(QByteArray::fromStdString(result.output)).array();
    ASSERT_GT(list.size(), 40);
    const auto toy = list.first().toObject();
    EXPECT_EQ(toy[u"id"_s].toString(), u"toy"_s);
    EXPECT_EQ(toy[u"state"_s].toString(), u"-"_s);
    for (const auto &value : list) {
        for (const auto &key :
             {u"size"_s, u"sha256"_s, u"languages"_s, u"punctuation"_s, u"licence"_s, u"minLibrary"_s, u"kind"_s}) {
            EXPECT_TRUE(value.toObject().contains(key)) << key.toStdString();
        }
    }
}

TEST_F(SetupTest, modelsCanBeInstalledChosenAndRemoved)
{
    EXPECT_THAT(talmoctl({u"model"_s, u"list"_s}).output,
                testing::MatchesRegex("toy +- +A toy\n.*(.|\n)*kroko-de(.|\n)*"));
    const auto installed = talmoctl({u"model"_s, u"install"_s, u"toy"_s});
    EXPECT_EQ(installed.status, 0) << installed.errors;
    EXPECT_THAT(installed.output, AllOf(HasSubstr("Licence: licence of toy"), HasSubstr("Installed toy.")));
    EXPECT_THAT(installed.errors, AllOf(HasSubstr("Downloading"), HasSubstr("Unpacking")));
    EXPECT_THAT(talmoctl({u"model"_s, u"list"_s}).output, testing::StartsWith("toy                   installed"));
    EXPECT_EQ(talmoctl({u"model"_s, u"use"_s, u"toy"_s}).output, "Using toy from the next recording on.\n");
    EXPECT_THAT(talmoctl({u"model"_s, u"list"_s}).output, testing::StartsWith("toy                   chosen"));
    EXPECT_EQ(talmoctl({u"model"_s, u"use"_s, u"automatic"_s}).output, "Using automatic from the next recording on.\n");
    EXPECT_EQ(talmoctl({u"model"_s, u"remove"_s, u"toy"_s}).output, "Removed toy.\n");
    EXPECT_EQ(talmoctl({u"model"_s, u"remove"_s, u"toy"_s}).status, 1);
    EXPECT_EQ(talmoctl({u"model"_s, u"use"_s, u"toy"_s}).status, 1);
    EXPECT_EQ(talmoctl({u"model"_s, u"install"_s, u"none"_s}).status, 1);
}

TEST_F(SetupTest, uncheckedModelIsSaidToBeUnverified)
{
    auto unchecked = model(u"toy"_s, u"/toy.tar.gz"_s);
    unchecked.remove(u"sha256"_s);
    setCatalogue({unchecked});
    EXPECT_THAT(talmoctl({u"setup"_s}).output, HasSubstr("integrity not verified"));
    EXPECT_THAT(talmoctl({u"model"_s, u"install"_s, u"toy"_s}).output, HasSubstr("integrity not verified"));
}

} // namespace talmo::test
