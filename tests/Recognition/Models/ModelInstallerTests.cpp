// Installs models over a real connection from a misbehaving server to a real disk.

#include "Recognition/Models/ModelInstaller.h"

#include "Base/Error.h"
#include "Base/SerialExecutor.h"
#include "Support/ManualClock.h"
#include "Support/Printing.h"
#include "Support/RecordingLog.h"
#include "Support/TestFileServer.h"
#include "Support/TestLoop.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>

namespace talmo::test {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class ModelInstallerTest : public testing::Test {
protected:
    ModelInstallerTest()
    {
        QProcess maker;
        maker.start(u"python3"_s, {QStringLiteral(TALMO_TESTS_FOLDER "/Support/make_archives.py"), files.path()});
        EXPECT_TRUE(maker.waitForFinished() && maker.exitCode() == 0) << maker.readAllStandardError().constData();
        server = std::make_unique<TestFileServer>(files.path());
    }
    ModelEntry entry(const QString &path) const
    {
        ModelEntry made;
        made.id = u"toy"_s;
        made.languages = QStringList{u"en"_s};
        made.address = QUrl(server->address(path));
        made.licence = u"public domain"_s;
        return made;
    }
    /// An entry with a size and a checksum.
    ModelEntry measured(const QString &path) const
    {
        auto made = entry(path);
        QFile file(files.filePath(path.section(u'?', 0, 0).mid(1)));
        EXPECT_TRUE(file.open(QFile::ReadOnly));
        const QByteArray content = file.readAll();
        made.size = content.size();
        made.sha256 = QCryptographicHash::hash(content, QCryptographicHash::Sha256).toHex();
        return made;
    }
    QFuture<void> begin(const ModelEntry &wanted)
    {
        const auto onProgress = [this](const ModelProgress &each) { progress.push_back(each); };
        return executor->run<void>(
            [this, wanted, onProgress] { return installer.install(wanted, onProgress, stop.get_token(), terms); });
    }
    /// The error message; empty if installed. Pauses between retries take no time.
    QString install(const ModelEntry &wanted)
    {
        const auto future = begin(wanted);
        return outcome(future);
    }
    QString outcome(QFuture<void> future)
    {
        constexpr Duration longestPause = std::chrono::seconds(16);
        const auto isOver = [&] {
            const auto &asleep = clock->requestedSleeps();
            const bool pauses = !asleep.empty() && asleep.back() <= longestPause;
            if (!future.isFinished() && pauses && clock->sleeperCount() > 0) {
                clock->advance(longestPause);
            }
            return future.isFinished();
        };
        EXPECT_TRUE(testbed::waitUntil(isOver, std::chrono::seconds(30)));
        try {
            future.waitForFinished();
        } catch (const Error &error) {
            return error.localizedDescription();
        }
        return {};
    }
    QStringList inModelsFolder() const
    {
        return QDir(home.filePath(u"models"_s))
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    }
    void expectInstalled() const
    {
        EXPECT_EQ(inModelsFolder(), (QStringList{u".lock"_s, u"toy"_s}));
        EXPECT_EQ(QFile(home.filePath(u"models/toy/model.onnx"_s)).size(), 5001);
    }
    /// Expects neither the model nor an incomplete one, except for a partial download.
    void expectNothing(const QStringList &left = {}) const
    {
        EXPECT_EQ(inModelsFolder(), QStringList{u".lock"_s} + left);
    }

    QTemporaryDir files;
    QTemporaryDir home;
    std::unique_ptr<TestFileServer> server;
    std::shared_ptr<ManualClock> clock = std::make_shared<ManualClock>();
    ModelInstaller::Try tryModel = [](const QString &) { return std::optional<double>(); };
    InstallationTerms terms;
    ModelInstaller installer{ModelStore(home.filePath(u"models"_s)), clock,
                             [this](const QString &folder) { return tryModel(folder); }};
    std::shared_ptr<SerialExecutor> executor = SerialExecutor::onCurrentThread();
    std::stop_source stop;
    std::vector<ModelProgress> progress;
};

class HostileModels : public ModelInstallerTest, public testing::WithParamInterface<const char *> {};

} // namespace

TEST_F(ModelInstallerTest, downloadsVerifiesUnpacksAndTestsBeforePublishing)
{
    tryModel = [this](const QString &folder) {
        EXPECT_TRUE(QFile::exists(folder + u"/model.onnx"_s));
        EXPECT_TRUE(QFile::exists(folder + u"/talmo-model.json"_s));
        EXPECT_FALSE(installer.store().isInstalled(u"toy"_s));
        return std::optional<double>();
    };
    EXPECT_EQ(install(measured(u"/good.tar.gz"_s)), QString());
    expectInstalled();
    std::vector<ModelProgress::Phase> phases;
    for (const auto &each : progress) {
        if (phases.empty() || phases.back() != each.phase) {
            phases.push_back(each.phase);
        }
    }
    using enum ModelProgress::Phase;
    EXPECT_THAT(phases, ElementsAre(Downloading, Checking, Unpacking, Trying));
    QFile notes(home.filePath(u"models/toy/talmo-model.json"_s));
    ASSERT_TRUE(notes.open(QFile::ReadOnly));
    const auto object = QJsonDocument::fromJson(notes.readAll()).object();
    EXPECT_EQ(object.value(u"licence"_s).toString(), u"public domain"_s);
    EXPECT_EQ(object.value(u"source"_s).toString(), server->address(u"/good.tar.gz"_s));
}

TEST_F(ModelInstallerTest, acceptsArchiveWithoutTopLevelFolder)
{
    EXPECT_EQ(install(entry(u"/flat.tar.gz"_s)), QString());
    expectInstalled();
}

TEST_F(ModelInstallerTest, replacesInstalledModel)
{
    EXPECT_EQ(install(entry(u"/flat.tar.gz"_s)), QString());
    QFile(home.filePath(u"models/toy/tokens.txt"_s)).remove();
    EXPECT_EQ(install(entry(u"/good.zip"_s)), QString());
    expectInstalled();
    EXPECT_TRUE(QFile::exists(home.filePath(u"models/toy/tokens.txt"_s)));
}

TEST_F(ModelInstallerTest, resumesAfterBrokenConnection)
{
    EXPECT_EQ(install(measured(u"/good.zip?break=2000"_s)), QString());
    expectInstalled();
    EXPECT_EQ(server->requests(), (QStringList{u"/good.zip whole -"_s, u"/good.zip bytes=2000- \"mark-1\""_s}));
}

TEST_F(ModelInstallerTest, nextInstallationResumesCancelledOne)
{
    auto future = begin(measured(u"/good.zip?stall=2000"_s));
    ASSERT_TRUE(waitFor([this] { return !progress.empty() && progress.back().done == 2000; }));
    stop.request_stop();
    EXPECT_EQ(outcome(future), Cancelled().localizedDescription());
    expectNothing({u".toy.part"_s, u".toy.part.json"_s});
    stop = {};
    EXPECT_EQ(install(measured(u"/good.zip?stall=2000"_s)), QString());
    EXPECT_THAT(server->requests().last().toStdString(), HasSubstr("bytes=2000-"));
    expectInstalled();
}

TEST_F(ModelInstallerTest, changedFileIsDownloadedAgain)
{
    EXPECT_EQ(install(entry(u"/good.zip?break=2000&changing=1"_s)), QString());
    EXPECT_THAT(server->requests().last().toStdString(),
                HasSubstr("bytes=2000- \"mark-1\"")); // The file with this mark is gone.
    expectInstalled();
}

TEST_F(ModelInstallerTest, weakETagIsDownloadedAgain)
{
    EXPECT_EQ(install(entry(u"/good.zip?break=2000&weak=1"_s)), QString());
    EXPECT_EQ(server->requests().last(), u"/good.zip whole -"_s);
    expectInstalled();
}

TEST_F(ModelInstallerTest, restartsIfServerCannotResume)
{
    EXPECT_EQ(install(measured(u"/good.zip?break=2000&plain=1"_s)), QString());
    expectInstalled();
}

TEST_F(ModelInstallerTest, restartsIfServerResumesAtWrongOffset)
{
    EXPECT_EQ(install(measured(u"/good.zip?break=2000&elsewhere=1"_s)), QString());
    EXPECT_EQ(server->requests().last(), u"/good.zip whole -"_s);
    expectInstalled();
}

TEST_F(ModelInstallerTest, givesUpOnRepeatedlyBrokenConnection)
{
    EXPECT_THAT(install(entry(u"/good.zip?break=2000&always=1&plain=1"_s)).toStdString(), HasSubstr("onnection"));
    EXPECT_EQ(server->requests().size(), 5);
}

TEST_F(ModelInstallerTest, connectionTimesOutAfter30SecondsOfSilence)
{
    auto future = begin(measured(u"/good.zip?stall=2000"_s));
    ASSERT_TRUE(waitFor([this] { return !progress.empty() && progress.back().done == 2000; }));
    clock->advance(std::chrono::seconds(61));
    EXPECT_EQ(outcome(future), QString());
    expectInstalled();
}

TEST_F(ModelInstallerTest, endlessHeaderCountsAsSilence)
{
    auto future = begin(measured(u"/good.zip?endless=1"_s));
    ASSERT_TRUE(server->waitForRequests(1));
    clock->advance(std::chrono::seconds(61));
    EXPECT_EQ(outcome(future), QString());
    EXPECT_EQ(server->requests().size(), 2);
    expectInstalled();
}

TEST_F(ModelInstallerTest, retriesBusyServerWithGrowingDelay)
{
    EXPECT_EQ(install(measured(u"/good.zip?fail=3"_s)), QString());
    expectInstalled();
    EXPECT_EQ(server->requests().size(), 4);
    std::vector<Duration> pauses;
    for (const auto each : clock->requestedSleeps()) {
        if (each < std::chrono::seconds(30)) {
            pauses.push_back(each);
        }
    }
    EXPECT_THAT(pauses, ElementsAre(std::chrono::seconds(1), std::chrono::seconds(2), std::chrono::seconds(4)));
}

TEST_F(ModelInstallerTest, reportsMissingModelImmediately)
{
    EXPECT_THAT(install(entry(u"/good.zip?status=404"_s)).toStdString(), HasSubstr("404"));
    EXPECT_EQ(server->requests().size(), 1);
    expectNothing();
}

TEST_F(ModelInstallerTest, rejectsWrongSize)
{
    auto wanted = measured(u"/good.zip"_s);
    wanted.size = *wanted.size + 1;
    EXPECT_THAT(install(wanted).toStdString(), HasSubstr("talmoctl model install toy --accept-renewed"));
    expectNothing();
    wanted.size = *wanted.size - 2;
    EXPECT_THAT(install(wanted).toStdString(), HasSubstr("probably renewed"));
    expectNothing();
}

TEST_F(ModelInstallerTest, checksKnownSizeWithoutContentLength)
{
    EXPECT_EQ(install(measured(u"/good.zip?silent=1"_s)), QString());
    expectInstalled();
    auto wanted = measured(u"/good.tar.gz?silent=1"_s);
    wanted.size = *wanted.size - 10;
    EXPECT_NE(install(wanted), QString());
}

TEST_F(ModelInstallerTest, rejectsWrongChecksum)
{
    auto wanted = measured(u"/good.zip"_s);
    wanted.sha256[0] = wanted.sha256[0] == '0' ? '1' : '0';
    const RecordingLog log;
    EXPECT_THAT(install(wanted).toStdString(), HasSubstr("talmoctl model install toy --accept-renewed"));
    EXPECT_TRUE(log.lines().back().contains(u"Checksum mismatch"_s));
    expectNothing();
}

TEST_F(ModelInstallerTest, renewedFileIsInstalledOnceAccepted)
{
    auto wanted = measured(u"/good.zip"_s);
    wanted.size = *wanted.size + 1;
    wanted.sha256[0] = wanted.sha256[0] == '0' ? '1' : '0';
    terms.acceptsRenewed = true;
    EXPECT_EQ(install(wanted), QString());
    expectInstalled();
}

TEST_F(ModelInstallerTest, slowModelIsInstalledOnlyIfAnySpeedWillDo)
{
    tryModel = [](const QString &) { return std::optional(0.6); };
    terms.largestShareOfSpeech = 0.5;
    EXPECT_THAT(install(measured(u"/good.zip"_s)).toStdString(), HasSubstr("0.6 s for each second of speech"));
    expectNothing();
    terms.largestShareOfSpeech.reset();
    EXPECT_EQ(install(measured(u"/good.zip"_s)), QString());
    expectInstalled();
}

TEST_F(ModelInstallerTest, installsSingleFileUnderItsOwnName)
{
    QFile model(files.filePath(u"voice.onnx"_s));
    ASSERT_TRUE(model.open(QFile::WriteOnly));
    model.write("\x08 not an archive");
    model.close();
    EXPECT_EQ(install(measured(u"/voice.onnx"_s)), QString());
    EXPECT_EQ(QFile(home.filePath(u"models/toy/voice.onnx"_s)).size(), model.size());
}

TEST_F(ModelInstallerTest, reportsUnreachableServerAfterRetries)
{
    auto wanted = entry(u"/good.zip"_s);
    wanted.address = QUrl(u"http://127.0.0.1:9/x"_s); // Nothing listens on the discard port.
    EXPECT_THAT(install(wanted).toStdString(), HasSubstr("Check the network connection"));
    expectNothing();
}

TEST_F(ModelInstallerTest, refusesUnsafeRedirect)
{
    EXPECT_THAT(install(entry(u"/good.zip?to=http://example.org/x"_s)).toStdString(), HasSubstr("not HTTPS"));
    EXPECT_THAT(install(entry(u"/good.zip?to=file:///etc/passwd"_s)).toStdString(), testing::Not(testing::IsEmpty()));
    expectNothing();
    EXPECT_EQ(install(entry(u"/x?to="_s + server->address(u"/good.zip"_s))), QString());
    expectInstalled();
}

TEST_F(ModelInstallerTest, rejectsUntrustedCertificate)
{
    QProcess maker;
    maker.start(u"openssl"_s, {u"req"_s, u"-x509"_s, u"-newkey"_s, u"rsa:2048"_s, u"-nodes"_s, u"-days"_s, u"1"_s,
                               u"-subj"_s, u"/CN=127.0.0.1"_s, u"-keyout"_s, home.filePath(u"key"_s), u"-out"_s,
                               home.filePath(u"certificate"_s)});
    ASSERT_TRUE(maker.waitForFinished() && maker.exitCode() == 0) << maker.readAllStandardError().constData();
    QFile both(home.filePath(u"both"_s));
    ASSERT_TRUE(both.open(QFile::WriteOnly));
    for (const auto &name : {u"key"_s, u"certificate"_s}) {
        QFile part(home.filePath(name));
        ASSERT_TRUE(part.open(QFile::ReadOnly));
        both.write(part.readAll());
    }
    both.close();
    const TestFileServer secure(files.path(), both.fileName());
    auto wanted = entry(u"/good.zip"_s);
    wanted.address = QUrl(secure.address(u"/good.zip"_s));
    EXPECT_THAT(install(wanted).toStdString(), HasSubstr("cannot be trusted"));
    EXPECT_TRUE(secure.requests().isEmpty());
    EXPECT_TRUE(secure.isOfferedOnlyHttp1()); // The headers of HTTP/2 would be read without any limit.
}

TEST_F(ModelInstallerTest, fullDiskIsReportedAndCleanedUp)
{
    // A file size limit fails in the same way as a full disk.
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    constexpr rlim_t little = 100000;
    const rlimit limited{little, before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limited), 0);
    const QString problem = install(entry(u"/large.bin"_s));
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
    std::signal(SIGXFSZ, handler);
    EXPECT_THAT(problem.toStdString(), StartsWith("The download cannot be saved. Free some space"));
    expectNothing();
}

TEST_F(ModelInstallerTest, rejectsModelThatEngineCannotUse)
{
    tryModel = [](const QString &) -> std::optional<double> { throw Error(u"it will not do"_s); };
    EXPECT_EQ(install(entry(u"/good.zip"_s)), u"it will not do"_s);
    EXPECT_FALSE(installer.store().isInstalled(u"toy"_s));
}

TEST_F(ModelInstallerTest, allowsOneInstallationAcrossProcesses)
{
    const auto held = installer.store().lock();
    EXPECT_THAT(install(entry(u"/good.zip"_s)).toStdString(), HasSubstr("Another model"));
    EXPECT_TRUE(server->requests().isEmpty());
}

TEST_F(ModelInstallerTest, removesLeftoversOfDeadProcess)
{
    QDir().mkpath(home.filePath(u"models/.unpacking-abc/half"_s));
    QDir().mkpath(home.filePath(u"models/.removed-toy/half"_s));
    EXPECT_TRUE(installer.store().installed().isEmpty());
    EXPECT_EQ(install(entry(u"/good.zip"_s)), QString());
    expectInstalled();
}

TEST_F(ModelInstallerTest, removesModel)
{
    EXPECT_EQ(install(entry(u"/good.zip"_s)), QString());
    const auto lock = installer.store().lock();
    installer.store().remove(u"toy"_s);
    expectNothing();
    EXPECT_THROW(installer.store().remove(u"toy"_s), Error);
    EXPECT_THROW(installer.store().remove(u".."_s), Error);
    EXPECT_THROW(installer.store().remove(u"../models"_s), Error);
}

TEST_F(ModelInstallerTest, removeRefusesLinksAndPathsElsewhere)
{
    const QString outside = home.filePath(u"outside/precious"_s);
    QDir().mkpath(outside);
    const auto lock = installer.store().lock();
    ASSERT_TRUE(QFile::link(home.filePath(u"outside"_s), home.filePath(u"models/linked"_s)));
    for (const auto &name :
         {u"linked"_s, u"../outside"_s, u"linked/precious"_s, outside, u"."_s, u".lock"_s, QString()}) {
        EXPECT_THROW(installer.store().remove(name), Error) << name.toStdString();
    }
    EXPECT_TRUE(QFileInfo(outside).isDir());
    EXPECT_TRUE(QFileInfo(home.filePath(u"models/linked"_s)).isSymLink());
}

TEST_F(ModelInstallerTest, cleanupFollowsNoLinks)
{
    QDir().mkpath(home.filePath(u"outside/precious"_s));
    QDir().mkpath(home.filePath(u"models"_s));
    ASSERT_TRUE(QFile::link(home.filePath(u"outside"_s), home.filePath(u"models/.removed-toy"_s)));
    installer.store().lock();
    EXPECT_TRUE(QFileInfo(home.filePath(u"outside/precious"_s)).isDir());
}

TEST_F(ModelInstallerTest, installingOverLinkReplacesOnlyTheLink)
{
    QDir().mkpath(home.filePath(u"outside/precious"_s));
    QDir().mkpath(home.filePath(u"models"_s));
    ASSERT_TRUE(QFile::link(home.filePath(u"outside"_s), home.filePath(u"models/toy"_s)));
    EXPECT_EQ(install(entry(u"/good.zip"_s)), QString());
    expectInstalled();
    EXPECT_TRUE(QFileInfo(home.filePath(u"outside/precious"_s)).isDir());
}

TEST_F(ModelInstallerTest, everythingIsPrivateWhateverTheUmask)
{
    const mode_t before = umask(0);
    EXPECT_EQ(install(entry(u"/good-model.tar.gz"_s)), QString());
    auto future = begin(measured(u"/good.zip?stall=2000"_s));
    EXPECT_TRUE(waitFor([this] { return progress.back().done == 2000; }));
    stop.request_stop();
    outcome(future); // Leaves a partial download and its metadata.
    umask(before);
    QDirIterator each(home.filePath(u"models"_s), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                      QDirIterator::Subdirectories);
    int count = 0;
    while (each.hasNext()) {
        struct stat status{};
        ASSERT_EQ(stat(QFile::encodeName(each.next()).constData(), &status), 0);
        EXPECT_EQ(status.st_mode & 0077U, 0U) << each.filePath().toStdString();
        ++count;
    }
    EXPECT_GT(count, 4);
    EXPECT_EQ(QFile::permissions(home.filePath(u"models"_s)) & QFile::Permissions::fromInt(0x77), QFile::Permissions());
}

TEST_P(HostileModels, areRejectedAndLeaveNothingBehind)
{
    EXPECT_NE(install(entry(u'/' + QString::fromLatin1(GetParam()))), QString());
    expectNothing();
    EXPECT_EQ(QDir(home.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList{u"models"_s});
    EXPECT_FALSE(QFile::exists(u"/tmp/talmo-outside"_s));
}

INSTANTIATE_TEST_SUITE_P(All, HostileModels,
                         testing::Values("upwards.tar.gz", "absolute.tar.gz", "symlink.tar.gz", "bomb.tar.gz",
                                         "holes.tar.gz", "truncated.tar.gz", "text.tar.gz"),
                         [](const auto &test) {
                             return QString::fromLatin1(test.param).section(u'.', 0, 0).toStdString();
                         });

TEST(ModelProgress, describesProgress)
{
    using enum ModelProgress::Phase;
    EXPECT_EQ((ModelProgress{Downloading, 12'300'000, 120'000'000, {}}).description(), u"Downloading: 12 of 120 MB"_s);
    EXPECT_EQ((ModelProgress{Downloading, 60'000'000, 120'000'000, 3'000'000}).description(),
              u"Downloading: 60 of 120 MB, 3.0 MB/s, 20 s left"_s);
    EXPECT_EQ((ModelProgress{Downloading, 60'000'000, 120'000'000, 200'000}).description(),
              u"Downloading: 60 of 120 MB, 0.2 MB/s, 5 min left"_s);
    EXPECT_EQ((ModelProgress{Downloading, 12'300'000, std::nullopt, {}}).description(), u"Downloading: 12 MB"_s);
    EXPECT_EQ((ModelProgress{Unpacking, 1, 2, {}}).share(), 0.5);
    EXPECT_EQ((ModelProgress{Trying, 0, std::nullopt, {}}).share(), std::nullopt);
    EXPECT_EQ((ModelProgress{Downloading, 0, 0, {}}).share(), std::nullopt);
}

} // namespace talmo::test
