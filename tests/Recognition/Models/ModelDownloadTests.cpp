#include "Recognition/Models/ModelDownload.h"

#include "Recognition/Models/ModelInstallerFixture.h"
#include "Support/Printing.h"
#include "Support/TestFileServer.h"
#include "Support/TestLoop.h"

#include <QFile>
#include <QProcess>

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class ModelDownloadTest : public ModelInstallerFixture {};

} // namespace

TEST_F(ModelDownloadTest, resumesAfterBrokenConnection)
{
    EXPECT_EQ(install(measured(u"/good.zip?break=2000"_s)), QString());
    expectInstalled();
    EXPECT_EQ(server->requests(), (QStringList{u"/good.zip whole -"_s, u"/good.zip bytes=2000- \"mark-1\""_s}));
}

TEST_F(ModelDownloadTest, slowDiskHoldsUpServerInsteadOfFillingMemory)
{
    QFile large(files.filePath(u"large.zip"_s));
    ASSERT_TRUE(large.open(QFile::WriteOnly) && large.resize(qint64(64) << 20));
    qint64 last = 0;
    qint64 mostAtOnce = 0;
    int slowWrites = 10;
    const auto onProgress = [&](const ModelProgress &each) {
        mostAtOnce = std::max(mostAtOnce, each.done - last);
        last = each.done;
        if (slowWrites-- > 0) {
            testbed::sleepFor(std::chrono::milliseconds(20)); // The disk; the server could send everything meanwhile.
        }
    };
    const auto future = executor->run<void>(
        [&] { return installer.install(measured(u"/large.zip"_s), onProgress, stop.get_token(), terms); });
    EXPECT_NE(outcome(future), QString()) << "it is no archive";
    EXPECT_EQ(last, large.size());
    EXPECT_LE(mostAtOnce, qint64(2) << 20);
}

TEST_F(ModelDownloadTest, nextInstallationResumesCancelledOne)
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

TEST_F(ModelDownloadTest, changedFileIsDownloadedAgain)
{
    EXPECT_EQ(install(entry(u"/good.zip?break=2000&changing=1"_s)), QString());
    EXPECT_THAT(server->requests().last().toStdString(),
                HasSubstr("bytes=2000- \"mark-1\"")); // The file with this mark is gone.
    expectInstalled();
}

TEST_F(ModelDownloadTest, weakETagIsDownloadedAgain)
{
    EXPECT_EQ(install(entry(u"/good.zip?break=2000&weak=1"_s)), QString());
    EXPECT_EQ(server->requests().last(), u"/good.zip whole -"_s);
    expectInstalled();
}

TEST_F(ModelDownloadTest, restartsIfServerCannotResume)
{
    EXPECT_EQ(install(measured(u"/good.zip?break=2000&plain=1"_s)), QString());
    expectInstalled();
}

TEST_F(ModelDownloadTest, restartsIfServerResumesAtWrongOffset)
{
    EXPECT_EQ(install(measured(u"/good.zip?break=2000&elsewhere=1"_s)), QString());
    EXPECT_EQ(server->requests().last(), u"/good.zip whole -"_s);
    expectInstalled();
}

TEST_F(ModelDownloadTest, givesUpOnRepeatedlyBrokenConnection)
{
    EXPECT_THAT(install(entry(u"/good.zip?break=2000&always=1&plain=1"_s)).toStdString(), HasSubstr("onnection"));
    EXPECT_EQ(server->requests().size(), 5);
}

TEST_F(ModelDownloadTest, connectionTimesOutAfter30SecondsOfSilence)
{
    auto future = begin(measured(u"/good.zip?stall=2000"_s));
    ASSERT_TRUE(waitFor([this] { return !progress.empty() && progress.back().done == 2000; }));
    clock->advance(std::chrono::seconds(61));
    EXPECT_EQ(outcome(future), QString());
    expectInstalled();
}

TEST_F(ModelDownloadTest, endlessHeaderCountsAsSilence)
{
    auto future = begin(measured(u"/good.zip?endless=1"_s));
    ASSERT_TRUE(server->waitForRequests(1));
    clock->advance(std::chrono::seconds(61));
    EXPECT_EQ(outcome(future), QString());
    EXPECT_EQ(server->requests().size(), 2);
    expectInstalled();
}

TEST_F(ModelDownloadTest, retriesBusyServerWithGrowingDelay)
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

TEST_F(ModelDownloadTest, reportsMissingModelImmediately)
{
    EXPECT_EQ(install(entry(u"/good.zip?status=404"_s)),
              u"The server does not deliver this file at present. Try again later. (404 Not Found)"_s);
    EXPECT_EQ(server->requests().size(), 1);
    expectNothing();
}

TEST_F(ModelDownloadTest, rejectsWrongSize)
{
    auto wanted = measured(u"/good.zip"_s);
    wanted.size = *wanted.size + 1;
    EXPECT_THAT(install(wanted).toStdString(), HasSubstr("talmoctl model install toy --accept-renewed"));
    expectNothing();
    wanted.size = *wanted.size - 2;
    EXPECT_THAT(install(wanted).toStdString(), HasSubstr("probably renewed"));
    expectNothing();
}

TEST_F(ModelDownloadTest, checksKnownSizeWithoutContentLength)
{
    EXPECT_EQ(install(measured(u"/good.zip?silent=1"_s)), QString());
    expectInstalled();
    auto wanted = measured(u"/good.tar.gz?silent=1"_s);
    wanted.size = *wanted.size - 10;
    EXPECT_NE(install(wanted), QString());
}

TEST_F(ModelDownloadTest, reportsUnreachableServerAfterRetries)
{
    auto wanted = entry(u"/good.zip"_s);
    wanted.address = QUrl(u"http://127.0.0.1:9/x"_s); // Nothing listens on the discard port.
    EXPECT_THAT(install(wanted).toStdString(), HasSubstr("Check the network connection"));
    expectNothing();
}

TEST_F(ModelDownloadTest, refusesUnsafeRedirect)
{
    EXPECT_THAT(install(entry(u"/good.zip?to=http://example.org/x"_s)).toStdString(), HasSubstr("not HTTPS"));
    EXPECT_THAT(install(entry(u"/good.zip?to=file:///etc/passwd"_s)).toStdString(), testing::Not(testing::IsEmpty()));
    expectNothing();
    EXPECT_EQ(install(entry(u"/x?to="_s + server->address(u"/good.zip"_s))), QString());
    expectInstalled();
}

TEST_F(ModelDownloadTest, rejectsUntrustedCertificate)
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

} // namespace talmo::test
