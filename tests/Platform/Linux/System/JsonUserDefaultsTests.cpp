#include "Platform/Linux/System/JsonUserDefaults.h"

#include "Platform/Linux/System/SettingsFileFixture.h"
#include "Support/Printing.h"
#include "Support/RecordingLog.h"
#include "Support/WithoutRoot.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

using testing::IsEmpty;

class JsonUserDefaultsTest : public SettingsFileFixture {};

} // namespace

TEST_F(JsonUserDefaultsTest, readingCreatesNoFile)
{
    open();
    EXPECT_FALSE(QFileInfo::exists(QFileInfo(path).absolutePath()));
    EXPECT_THAT(log.lines(), IsEmpty());
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

} // namespace talmo::test
