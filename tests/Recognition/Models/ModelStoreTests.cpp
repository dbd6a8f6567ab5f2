#include "Recognition/Models/ModelStore.h"

#include "Base/Error.h"
#include "Recognition/Models/ModelInstallerFixture.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>

#include <gmock/gmock.h>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>

namespace talmo::test {

namespace {

using testing::HasSubstr;
using testing::StartsWith;

class ModelStoreTest : public ModelInstallerFixture {};

} // namespace

TEST_F(ModelStoreTest, fullDiskIsReportedAndCleanedUp)
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

TEST_F(ModelStoreTest, allowsOneInstallationAcrossProcesses)
{
    const auto held = installer.store().lock();
    EXPECT_THAT(install(entry(u"/good.zip"_s)).toStdString(), HasSubstr("Another model"));
    EXPECT_TRUE(server->requests().isEmpty());
}

TEST_F(ModelStoreTest, removesLeftoversOfDeadProcess)
{
    QDir().mkpath(home.filePath(u"models/.unpacking-abc/half"_s));
    QDir().mkpath(home.filePath(u"models/.removed-toy/half"_s));
    EXPECT_TRUE(installer.store().installed().isEmpty());
    EXPECT_EQ(install(entry(u"/good.zip"_s)), QString());
    expectInstalled();
}

TEST_F(ModelStoreTest, removesModel)
{
    EXPECT_EQ(install(entry(u"/good.zip"_s)), QString());
    const auto lock = installer.store().lock();
    installer.store().remove(u"toy"_s);
    expectNothing();
    EXPECT_THROW(installer.store().remove(u"toy"_s), Error);
    EXPECT_THROW(installer.store().remove(u".."_s), Error);
    EXPECT_THROW(installer.store().remove(u"../models"_s), Error);
}

TEST_F(ModelStoreTest, removeRefusesLinksAndPathsElsewhere)
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

TEST_F(ModelStoreTest, cleanupFollowsNoLinks)
{
    QDir().mkpath(home.filePath(u"outside/precious"_s));
    QDir().mkpath(home.filePath(u"models"_s));
    ASSERT_TRUE(QFile::link(home.filePath(u"outside"_s), home.filePath(u"models/.removed-toy"_s)));
    installer.store().lock();
    EXPECT_TRUE(QFileInfo(home.filePath(u"outside/precious"_s)).isDir());
}

TEST_F(ModelStoreTest, installingOverLinkReplacesOnlyTheLink)
{
    QDir().mkpath(home.filePath(u"outside/precious"_s));
    QDir().mkpath(home.filePath(u"models"_s));
    ASSERT_TRUE(QFile::link(home.filePath(u"outside"_s), home.filePath(u"models/toy"_s)));
    EXPECT_EQ(install(entry(u"/good.zip"_s)), QString());
    expectInstalled();
    EXPECT_TRUE(QFileInfo(home.filePath(u"outside/precious"_s)).isDir());
}

TEST_F(ModelStoreTest, everythingIsPrivateWhateverTheUmask)
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

} // namespace talmo::test
