// A model and what it needs, installed as one download from a server on loopback.

#include "Recognition/Models/RecogniserInstaller.h"

#include "Base/SerialExecutor.h"
#include "Support/ManualClock.h"
#include "Support/Printing.h"
#include "Support/TestFileServer.h"
#include "Support/TestLoop.h"
#include "Support/ToyArchives.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

using testing::ElementsAre;

class RecogniserInstallerTest : public testing::Test {
protected:
    RecogniserInstallerTest()
    {
        const ToyArchives archives(files.path());
        archives.addModel(u"model"_s);
        archives.addModel(u"library"_s);
        server = std::make_unique<TestFileServer>(files.path());
        model = entry(u"model"_s, u"/model.tar.gz"_s);
        model.languages = QStringList{u"en"_s};
    }
    ModelEntry entry(const QString &id, const QString &path) const
    {
        ModelEntry made;
        made.id = id;
        made.address = QUrl(server->address(path));
        made.size = QFileInfo(files.filePath(path.section(u'?', 0, 0).mid(1))).size();
        return made;
    }
    /// The error; empty if installed.
    QString install()
    {
        const auto show = [this](const ModelProgress &each) { progress.push_back(each); };
        const QFuture<void> end =
            executor->run<void>([this, show] { return installer.install(model, show, {}, terms); });
        EXPECT_TRUE(testbed::waitUntil([&end] { return end.isFinished(); }, std::chrono::seconds(30)));
        try {
            QFuture<void>(end).waitForFinished();
        } catch (const Error &error) {
            return error.localizedDescription();
        }
        return {};
    }

    QTemporaryDir files;
    QTemporaryDir home;
    std::unique_ptr<TestFileServer> server;
    ModelEntry model;
    std::vector<ModelEntry> missing;
    std::optional<double> share;
    InstallationTerms terms;
    std::vector<ModelProgress> progress;
    std::shared_ptr<ManualClock> clock = std::make_shared<ManualClock>();
    ModelStore models{home.filePath(u"models"_s)};
    ModelStore components{home.filePath(u"engines"_s)};
    RecogniserInstaller installer{ModelInstaller(models, clock, [this](const QString &) { return share; }),
                                  ModelInstaller(components, clock, [](const QString &) { return std::nullopt; }),
                                  clock, [this](const ModelEntry &) { return missing; }};
    std::shared_ptr<SerialExecutor> executor = SerialExecutor::onCurrentThread();
};

} // namespace

TEST_F(RecogniserInstallerTest, installsMissingComponentsBesideModel)
{
    missing = {entry(u"library"_s, u"/library.tar.gz"_s)};
    EXPECT_EQ(install(), QString());
    EXPECT_TRUE(components.isInstalled(u"library"_s));
    EXPECT_TRUE(models.isInstalled(u"model"_s));
    EXPECT_THAT(server->requests(), ElementsAre(u"/library.tar.gz whole -"_s, u"/model.tar.gz whole -"_s));
}

TEST_F(RecogniserInstallerTest, progressOfAllPartsNeverGoesBack)
{
    missing = {entry(u"library"_s, u"/library.tar.gz"_s)};
    const qint64 total = *missing.front().size + *model.size;
    EXPECT_EQ(install(), QString());
    qint64 before = 0;
    for (const auto &each : progress) {
        EXPECT_EQ(each.total, total);
        EXPECT_GE(each.done, before);
        before = each.done;
    }
    EXPECT_EQ(before, total);
}

TEST_F(RecogniserInstallerTest, componentStaysWhenModelFails)
{
    missing = {entry(u"library"_s, u"/library.tar.gz"_s)};
    model.address = QUrl(server->address(u"/model.tar.gz?status=404"_s));
    EXPECT_NE(install(), QString());
    EXPECT_TRUE(components.isInstalled(u"library"_s));
    EXPECT_FALSE(models.isInstalled(u"model"_s));
}

TEST_F(RecogniserInstallerTest, keepsInstalledModelIfAsked)
{
    EXPECT_EQ(install(), QString());
    missing = {entry(u"library"_s, u"/library.tar.gz"_s)};
    terms.keepsInstalled = true;
    EXPECT_EQ(install(), QString());
    EXPECT_EQ(server->requests().size(), 2);
    EXPECT_TRUE(components.isInstalled(u"library"_s));
}

TEST_F(RecogniserInstallerTest, slowModelIsNotedAndNotInstalled)
{
    share = 0.9;
    terms.largestShareOfSpeech = 0.5;
    EXPECT_THAT(install().toStdString(), testing::HasSubstr("too slow"));
    EXPECT_TRUE(models.isKnownSlow(u"model"_s));
    EXPECT_FALSE(models.isInstalled(u"model"_s));
}

} // namespace talmo::test
