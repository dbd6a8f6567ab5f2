#include "Platform/Linux/System/SettingsFile.h"

#include "ChildProcess.h"
#include "Platform/Linux/System/SettingsFileFixture.h"
#include "Support/FileSizeLimit.h"
#include "Support/Printing.h"
#include "Support/RecordingLog.h"
#include "Support/TestLoop.h"
#include "Support/WithoutRoot.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

#include <gmock/gmock.h>

#include <sys/stat.h>

namespace talmo::test {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SettingsFileTest : public SettingsFileFixture {};

} // namespace

TEST_F(SettingsFileTest, fileAndFolderArePrivate)
{
    const mode_t before = umask(0);
    set(*open(), key, u"polite"_s);
    umask(before);
    struct stat status{};
    ASSERT_EQ(stat(QFile::encodeName(path).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
    ASSERT_EQ(stat(QFile::encodeName(QFileInfo(path).absolutePath()).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0700U);
}

TEST_F(SettingsFileTest, readableFileBecomesPrivate)
{
    put("{}");
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther | QFile::ReadGroup);
    set(*open(), key, u"polite"_s);
    EXPECT_EQ(QFile::permissions(path) & (QFile::ReadOther | QFile::ReadGroup), QFile::Permissions());
}

TEST_F(SettingsFileTest, keepsConcurrentChangesOfOtherProcess)
{
    const auto ours = open();
    set(*open(), u"talmo.other"_s, u"theirs"_s);
    set(*ours, key, u"polite"_s);
    EXPECT_EQ(object(), (QJsonObject{{u"talmo.other"_s, u"theirs"_s}, {key, u"polite"_s}}));
}

TEST_F(SettingsFileTest, damagedFileIsBackedUpAndNeverOverwritten)
{
    for (const QByteArray &damaged :
         {QByteArray("{\"talmo.textTone\": \"pol"), QByteArray(), QByteArray("[]"), QByteArray("\xff\xfe\x00", 3)}) {
        put(damaged);
        const auto before = filesInFolder();
        const auto defaults = open();
        EXPECT_FALSE(defaults->string(key));
        QStringList added = filesInFolder();
        for (const auto &name : before) {
            added.removeAll(name);
        }
        ASSERT_EQ(added.size(), 1);
        EXPECT_EQ(contentOf(QFileInfo(path).dir().filePath(added.first())), damaged);
        EXPECT_EQ(modeOf(QFileInfo(path).dir().filePath(added.first())), 0600U);
        EXPECT_TRUE(logSays(added.first()));
        set(*defaults, key, u"polite"_s);
        EXPECT_EQ(object(), (QJsonObject{{key, u"polite"_s}}));
    }
    EXPECT_THAT(filesInFolder(),
                ElementsAre(u"settings.json"_s, u"settings.json.corrupt"_s, u"settings.json.corrupt-2"_s,
                            u"settings.json.corrupt-3"_s, u"settings.json.corrupt-4"_s));
}

TEST_F(SettingsFileTest, unreplaceableDamagedFileStaysDamaged)
{
    put("{\"talmo");
    {
        const FileSizeLimit full(0);
        EXPECT_EQ(openAsUser()->boolean(aiCleanup), false);
    }
    EXPECT_EQ(content(), "{\"talmo") << "a missing file would mean the defaults";
    EXPECT_EQ(openAsUser()->boolean(aiCleanup), false);
}

TEST_F(SettingsFileTest, savedFailsUntilEverythingIsOnDisk)
{
    const auto defaults = open();
    const auto isSaved = [&defaults] {
        const auto saving = defaults->saved();
        EXPECT_TRUE(waitFor(saving));
        try {
            QFuture<void>(saving).waitForFinished();
            return true;
        } catch (const Error &) {
            return false;
        }
    };
    EXPECT_TRUE(isSaved()) << "nothing was set";
    {
        const FileSizeLimit full(0);
        set(*defaults, key, u"polite"_s);
    }
    EXPECT_FALSE(isSaved());
    set(*defaults, u"talmo.other"_s, true);
    EXPECT_TRUE(isSaved());
}

TEST_F(SettingsFileTest, tightensLooseFolderAndLock)
{
    put("{}");
    QFile lock(path + u".lock"_s);
    ASSERT_TRUE(lock.open(QFile::WriteOnly));
    ASSERT_EQ(chmod(QFile::encodeName(lock.fileName()).constData(), 0644), 0);
    ASSERT_EQ(chmod(QFile::encodeName(QFileInfo(path).absolutePath()).constData(), 0755), 0);
    set(*open(), key, u"polite"_s);
    EXPECT_EQ(modeOf(lock.fileName()), 0600U);
    EXPECT_EQ(modeOf(QFileInfo(path).absolutePath()), 0700U);
}

TEST_F(SettingsFileTest, fileDamagedWhileRunningIsBackedUpAndRewritten)
{
    const auto defaults = open();
    set(*defaults, u"talmo.a"_s, true);
    put("{\"talmo.a\": tr");
    set(*defaults, u"talmo.b"_s, true);
    EXPECT_EQ(object(), (QJsonObject{{u"talmo.a"_s, true}, {u"talmo.b"_s, true}}));
    EXPECT_EQ(contentOf(path + u".corrupt"_s), "{\"talmo.a\": tr");
}

TEST_F(SettingsFileTest, fileRemovedWhileRunningIsRewrittenInFull)
{
    const auto defaults = open();
    set(*defaults, u"talmo.a"_s, true);
    QFile::remove(path);
    set(*defaults, u"talmo.b"_s, false);
    EXPECT_EQ(object(), (QJsonObject{{u"talmo.a"_s, true}, {u"talmo.b"_s, false}}));
}

TEST_F(SettingsFileTest, readOnlyFolderKeepsValuesInMemory)
{
    put(R"({"talmo.a": true})");
    const QByteArray before = content();
    QFile::setPermissions(folder.path(), QFile::Permissions::fromInt(0x7755));
    QFile::setPermissions(QFileInfo(path).absolutePath(), QFile::Permissions::fromInt(0x5555));
    QFile::setPermissions(path, QFile::Permissions::fromInt(0x4444));
    const auto defaults = open();
    {
        const WithoutRoot somebody;
        set(*defaults, key, u"polite"_s);
    }
    EXPECT_EQ(defaults->string(key), u"polite"_s);
    EXPECT_EQ(content(), before);
    EXPECT_TRUE(logSays(u"The settings cannot be saved"_s));
    QFile::setPermissions(QFileInfo(path).absolutePath(), QFile::Permissions::fromInt(0x7700));
    QFile::setPermissions(path, QFile::Permissions::fromInt(0x6600));
    set(*defaults, u"talmo.b"_s, true);
    EXPECT_EQ(object(), (QJsonObject{{u"talmo.a"_s, true}, {key, u"polite"_s}, {u"talmo.b"_s, true}}))
        << "unsaved values are written with the next change";
}

TEST_F(SettingsFileTest, unreadableFileIsLeftAlone)
{
    put(R"({"talmo.a": true})");
    const QByteArray before = content();
    QFile::setPermissions(folder.path(), QFile::Permissions::fromInt(0x7777));
    QFile::setPermissions(QFileInfo(path).absolutePath(), QFile::Permissions::fromInt(0x7777));
    QFile::setPermissions(path, QFile::Permissions());
    {
        const WithoutRoot somebody;
        const auto defaults = open();
        EXPECT_FALSE(defaults->boolean(u"talmo.a"_s));
        EXPECT_TRUE(logSays(u"The settings cannot be read"_s));
        set(*defaults, key, u"polite"_s);
        EXPECT_EQ(defaults->string(key), u"polite"_s);
    }
    EXPECT_TRUE(logSays(u"The settings cannot be saved"_s));
    EXPECT_EQ(content(), before);
    EXPECT_FALSE(filesInFolder().contains(u"settings.json.corrupt"_s));
}

TEST_F(SettingsFileTest, firstFailedWriteIsReportedOnce)
{
    const auto defaults = open();
    QStringList told;
    defaults->setOnWriteFailed([&told](const char *problem) { told.append(QString::fromUtf8(problem)); });
    {
        const FileSizeLimit full(0);
        set(*defaults, key, u"polite"_s);
        set(*defaults, key, u"friendly"_s);
    }
    EXPECT_EQ(told, QStringList{u"The settings could not be saved. Is the disk full?"_s});
    set(*defaults, key, u"polite"_s);
    {
        const FileSizeLimit full(0);
        set(*defaults, key, u"friendly"_s);
    }
    EXPECT_EQ(told.size(), 2) << "saved in between";
}

TEST_F(SettingsFileTest, fullDiskKeepsOldFileAndValuesInMemory)
{
    const auto defaults = open();
    set(*defaults, key, u"polite"_s);
    const QByteArray before = content();
    {
        const FileSizeLimit limit(1024);
        set(*defaults, u"talmo.dictionaryWords"_s, QStringList(500, u"word"_s));
    }
    EXPECT_EQ(content(), before);
    EXPECT_EQ(defaults->stringArray(u"talmo.dictionaryWords"_s)->size(), 500);
    EXPECT_TRUE(logSays(u"The settings cannot be saved"_s));
    EXPECT_FALSE(filesInFolder().join(u' ').contains(u"settings.json."_s)) << filesInFolder().join(u' ').toStdString();
    set(*defaults, key, u"friendly"_s);
    EXPECT_EQ(object().value(u"talmo.dictionaryWords"_s).toArray().size(), 500);
}

TEST_F(SettingsFileTest, pipeOrFolderAtPathDoesNotBlock)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    ASSERT_EQ(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    set(*open(), key, u"polite"_s);
    EXPECT_TRUE(logSays(u"The settings cannot be saved"_s));
    QFile::remove(path);
    QDir().mkpath(path);
    set(*open(), key, u"polite"_s);
    EXPECT_TRUE(QFileInfo(path).isDir());
}

TEST_F(SettingsFileTest, twoProcessesLoseNoChanges)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    const auto environment = QProcessEnvironment::systemEnvironment();
    const QString program = QStringLiteral(TALMO_BIN "/talmo-settings-writer");
    testbed::ChildProcess first(program, {path, u"first"_s, u"50"_s}, environment);
    testbed::ChildProcess second(program, {path, u"second"_s, u"50"_s}, environment);
    const auto bothEnded = [&] { return !first.isRunning() && !second.isRunning(); };
    int looks = 0;
    while (!testbed::pollUntil(bothEnded, std::chrono::milliseconds(10))) {
        ASSERT_LT(++looks, 3000) << "the writers do not finish";
        ASSERT_TRUE(content().isEmpty() || QJsonDocument::fromJson(content()).isObject()) << content().toStdString();
    }
    EXPECT_EQ(object().size(), 100);
}

TEST_F(SettingsFileTest, killWhileWritingLeavesCompleteFile)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    const QString program = QStringLiteral(TALMO_BIN "/talmo-settings-writer");
    for (int round = 0; round < 20; ++round) {
        testbed::ChildProcess writer(program, {path, u"key"_s, u"0"_s}, QProcessEnvironment::systemEnvironment());
        ASSERT_TRUE(writer.waitForLine(u"set"_s, std::chrono::seconds(30), std::size_t(round)))
            << writer.output().toStdString();
        writer.kill();
        ASSERT_TRUE(QJsonDocument::fromJson(content()).isObject()) << round;
    }
    const auto defaults = open();
    EXPECT_TRUE(defaults->string(u"key0"_s));
    set(*defaults, key, u"polite"_s);
    EXPECT_EQ(object().value(key), u"polite"_s) << "a dead process's lock does not block";
    EXPECT_THAT(log.lines(), IsEmpty());
}

} // namespace talmo::test
