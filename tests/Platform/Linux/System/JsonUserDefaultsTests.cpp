#include "Platform/Linux/System/JsonUserDefaults.h"

#include "ChildProcess.h"
#include "Support/FileSizeLimit.h"
#include "Support/Printing.h"
#include "Support/RecordingLog.h"
#include "Support/TestLoop.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <sys/stat.h>
#include <unistd.h>

namespace talmo::test {

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::IsEmpty;

const QString key = u"talmo.textTone"_s;
const QString aiCleanup = u"talmo.aiCleanupEnabled"_s;

class JsonUserDefaultsTest : public testing::Test {
protected:
    QTemporaryDir folder;
    QString path = folder.filePath(u"talmo/settings.json"_s);
    RecordingLog log;

    std::shared_ptr<JsonUserDefaults> open() const
    {
        return std::make_shared<JsonUserDefaults>(path, SerialExecutor::onNewThread(u"settings"_s));
    }
    /// Opens the file as the program opens the user's.
    std::shared_ptr<JsonUserDefaults> openAsUser() const
    {
        const QByteArray before = qgetenv("XDG_CONFIG_HOME");
        qputenv("XDG_CONFIG_HOME", folder.path().toUtf8());
        auto defaults = JsonUserDefaults::ofThisUser(SerialExecutor::onNewThread(u"settings"_s));
        before.isNull() ? qunsetenv("XDG_CONFIG_HOME") : qputenv("XDG_CONFIG_HOME", before);
        return defaults;
    }
    static unsigned modeOf(const QString &name)
    {
        struct stat status{};
        EXPECT_EQ(stat(QFile::encodeName(name).constData(), &status), 0);
        return status.st_mode & 0777U;
    }
    static void set(JsonUserDefaults &defaults, const QString &name, const DefaultsValue &value)
    {
        defaults.set(name, value);
        EXPECT_TRUE(waitFor(defaults.written()));
    }
    void put(const QByteArray &content) const
    {
        QDir().mkpath(QFileInfo(path).absolutePath());
        QFile file(path);
        ASSERT_TRUE(file.open(QFile::WriteOnly));
        file.write(content);
    }
    QByteArray content() const { return contentOf(path); }
    static QByteArray contentOf(const QString &name)
    {
        QFile file(name);
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
    }
    QJsonObject object() const { return QJsonDocument::fromJson(content()).object(); }
    QStringList filesInFolder() const
    {
        auto names = QFileInfo(path).dir().entryList(QDir::Files | QDir::Hidden, QDir::Name);
        names.removeAll(u"settings.json.lock"_s);
        return names;
    }
    bool logSays(const QString &text) const
    {
        for (const auto &line : log.lines()) {
            if (line.contains(text)) {
                return true;
            }
        }
        return false;
    }
};

/// Drops root while it lives, because root ignores file permissions.
class WithoutRoot {
public:
    WithoutRoot()
    {
        if (m_isRoot && seteuid(nobody) != 0) {
            ADD_FAILURE() << "cannot act as another user";
        }
    }
    ~WithoutRoot()
    {
        if (m_isRoot && seteuid(0) != 0) {
            std::abort();
        }
    }
    WithoutRoot(const WithoutRoot &) = delete;
    WithoutRoot &operator=(const WithoutRoot &) = delete;

private:
    static constexpr uid_t nobody = 65534;
    bool m_isRoot = geteuid() == 0;
};

} // namespace

TEST_F(JsonUserDefaultsTest, readingCreatesNoFile)
{
    open();
    EXPECT_FALSE(QFileInfo::exists(QFileInfo(path).absolutePath()));
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(JsonUserDefaultsTest, fileAndFolderArePrivate)
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

TEST_F(JsonUserDefaultsTest, readableFileBecomesPrivate)
{
    put("{}");
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther | QFile::ReadGroup);
    set(*open(), key, u"polite"_s);
    EXPECT_EQ(QFile::permissions(path) & (QFile::ReadOther | QFile::ReadGroup), QFile::Permissions());
}

TEST_F(JsonUserDefaultsTest, acceptsOnlyBooleansAsBoolean)
{
    put(R"({"a": 1, "b": "true", "c": 0, "d": null, "e": true, "f": [true]})");
    const auto defaults = open();
    for (const auto &name : {u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"f"_s}) {
        EXPECT_FALSE(defaults->boolean(name)) << name.toStdString();
    }
    EXPECT_EQ(defaults->boolean(u"e"_s), true);
}

TEST_F(JsonUserDefaultsTest, rejectsArraysWithNonStrings)
{
    put(R"({"a": ["x", 1], "b": ["x", null], "c": {"0": "x"}, "d": []})");
    const auto defaults = open();
    EXPECT_FALSE(defaults->stringArray(u"a"_s));
    EXPECT_FALSE(defaults->stringArray(u"b"_s));
    EXPECT_FALSE(defaults->stringArray(u"c"_s));
    EXPECT_EQ(defaults->stringArray(u"d"_s), QStringList());
}

TEST_F(JsonUserDefaultsTest, keepsUnknownKeys)
{
    put(R"({"somebody.else": {"deep": [1, 2.5, null]}, "large": 9007199254740993})");
    set(*open(), key, u"polite"_s);
    EXPECT_EQ(object().value(u"somebody.else"_s), QJsonDocument::fromJson(R"({"deep": [1, 2.5, null]})").object());
    EXPECT_EQ(object().value(u"large"_s).toInteger(), 9007199254740993);
    EXPECT_EQ(object().value(key), u"polite"_s);
}

TEST_F(JsonUserDefaultsTest, keepsConcurrentChangesOfOtherProcess)
{
    const auto ours = open();
    set(*open(), u"talmo.other"_s, u"theirs"_s);
    set(*ours, key, u"polite"_s);
    EXPECT_EQ(object(), (QJsonObject{{u"talmo.other"_s, u"theirs"_s}, {key, u"polite"_s}}));
}

TEST_F(JsonUserDefaultsTest, damagedFileIsBackedUpAndNeverOverwritten)
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

TEST_F(JsonUserDefaultsTest, damagedFileDisablesAiCleanupPermanently)
{
    for (const QByteArray &damaged : {QByteArray("{\"talmo.aiCleanupEnabled\": fal"), QByteArray()}) {
        put(damaged);
        for (const auto *start : {"first", "next"}) {
            EXPECT_EQ(openAsUser()->boolean(aiCleanup), false) << start;
        }
        EXPECT_TRUE(logSays(u"talmo.aiCleanupEnabled"_s));
    }
    set(*openAsUser(), aiCleanup, true);
    EXPECT_EQ(openAsUser()->boolean(aiCleanup), true) << "enabled again";
}

TEST_F(JsonUserDefaultsTest, missingFileUsesDefaults)
{
    EXPECT_EQ(openAsUser()->boolean(aiCleanup), std::nullopt);
    EXPECT_FALSE(QFileInfo::exists(path));
}

TEST_F(JsonUserDefaultsTest, unreplaceableDamagedFileStaysDamaged)
{
    put("{\"talmo");
    {
        const FileSizeLimit full(0);
        EXPECT_EQ(openAsUser()->boolean(aiCleanup), false);
    }
    EXPECT_EQ(content(), "{\"talmo") << "a missing file would mean the defaults";
    EXPECT_EQ(openAsUser()->boolean(aiCleanup), false);
}

TEST_F(JsonUserDefaultsTest, unreadableFileDisablesAiCleanup)
{
    QDir().mkpath(path); // Not even root can read a folder as a file.
    EXPECT_EQ(openAsUser()->boolean(aiCleanup), false);
    QDir().rmdir(path);
    ASSERT_EQ(symlink("/nonexistent/settings.json", QFile::encodeName(path).constData()), 0);
    EXPECT_EQ(openAsUser()->boolean(aiCleanup), false) << "the file may be on an unmounted disk";
}

TEST_F(JsonUserDefaultsTest, inaccessibleFolderDisablesAiCleanup)
{
    put("{}");
    QFile::setPermissions(folder.path(), QFile::Permissions());
    {
        const WithoutRoot somebody;
        EXPECT_EQ(openAsUser()->boolean(aiCleanup), false);
    }
    QFile::setPermissions(folder.path(), QFile::Permissions::fromInt(0x7700));
}

TEST_F(JsonUserDefaultsTest, fileDamagedWhileRunningDoesNotEnableAiCleanup)
{
    const auto defaults = openAsUser();
    put("{\"talmo");
    set(*defaults, key, u"polite"_s);
    EXPECT_EQ(object(), (QJsonObject{{key, u"polite"_s}, {aiCleanup, false}}));
}

TEST_F(JsonUserDefaultsTest, savedFailsUntilEverythingIsOnDisk)
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

TEST_F(JsonUserDefaultsTest, tightensLooseFolderAndLock)
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

TEST_F(JsonUserDefaultsTest, fileDamagedWhileRunningIsBackedUpAndRewritten)
{
    const auto defaults = open();
    set(*defaults, u"talmo.a"_s, true);
    put("{\"talmo.a\": tr");
    set(*defaults, u"talmo.b"_s, true);
    EXPECT_EQ(object(), (QJsonObject{{u"talmo.a"_s, true}, {u"talmo.b"_s, true}}));
    EXPECT_EQ(contentOf(path + u".corrupt"_s), "{\"talmo.a\": tr");
}

TEST_F(JsonUserDefaultsTest, fileRemovedWhileRunningIsRewrittenInFull)
{
    const auto defaults = open();
    set(*defaults, u"talmo.a"_s, true);
    QFile::remove(path);
    set(*defaults, u"talmo.b"_s, false);
    EXPECT_EQ(object(), (QJsonObject{{u"talmo.a"_s, true}, {u"talmo.b"_s, false}}));
}

TEST_F(JsonUserDefaultsTest, readOnlyFolderKeepsValuesInMemory)
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

TEST_F(JsonUserDefaultsTest, unreadableFileIsLeftAlone)
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

TEST_F(JsonUserDefaultsTest, firstFailedWriteIsReportedOnce)
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

TEST_F(JsonUserDefaultsTest, fullDiskKeepsOldFileAndValuesInMemory)
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

TEST_F(JsonUserDefaultsTest, pipeOrFolderAtPathDoesNotBlock)
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

TEST_F(JsonUserDefaultsTest, twoProcessesLoseNoChanges)
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

TEST_F(JsonUserDefaultsTest, killWhileWritingLeavesCompleteFile)
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
