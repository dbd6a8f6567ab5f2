#include "Faults/FaultFixture.h"
#include "Support/Notified.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

class SettingsFault : public FaultTest {
protected:
    void dictateWithUnusableSettings(const QByteArray &bytes)
    {
        writeSettings(bytes);
        startTalmo();
        nextDictationWorks();
        EXPECT_EQ(quitTalmo(), 0);
        EXPECT_EQ(contentOf(settingsPath() + u".corrupt"_s), bytes);
        const auto settings = QJsonDocument::fromJson(contentOf(settingsPath())).object();
        EXPECT_EQ(settings.value(u"talmo.aiCleanupEnabled"_s), QJsonValue(false));
    }
    static QByteArray contentOf(const QString &path)
    {
        QFile file(path);
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray("no file");
    }
};

} // namespace

static const FaultRegistration missingRow("Settings", "The settings file is missing", "The defaults");
TEST_F(SettingsFault, missing)
{
    QFile::remove(settingsPath());
    startTalmo();
    nextDictationWorks();
}

static const FaultRegistration emptyRow("Settings", "The settings file is empty",
                                        "The defaults, but no editing by a language model; the file is set aside");
TEST_F(SettingsFault, empty)
{
    dictateWithUnusableSettings({});
}

static const FaultRegistration damagedRow("Settings", "The settings file is damaged", "As above");
TEST_F(SettingsFault, damaged)
{
    dictateWithUnusableSettings("{\"talmo.aiCleanupEnabled\": fal");
}

static const FaultRegistration utf8Row("Settings", "The settings file is not UTF-8", "As above");
TEST_F(SettingsFault, notUtf8)
{
    dictateWithUnusableSettings("{\"talmo.hotkeyDisplayName\": \"\xff\xfe\"}");
}

static const FaultRegistration deepRow("Settings", "The settings file is nested 100,000 deep", "As above");
TEST_F(SettingsFault, nestedDeeply)
{
    dictateWithUnusableSettings(QByteArray(100'000, '['));
}

static const FaultRegistration hugeRow("Settings", "The settings file has 100 MB", "As above");
TEST_F(SettingsFault, huge)
{
    dictateWithUnusableSettings(QByteArray(qsizetype(100) << 20, ' '));
}

FAULT(Settings, folderCannotBeMade, "The settings cannot be read or written",
      "The defaults; a notification says that nothing is saved")
{
    const Notified user(environment);
    environment.insert(u"XDG_CONFIG_HOME"_s, u"/proc"_s); // Not even root can create a file there.
    startTalmo();
    EXPECT_TRUE(user.isTold(u"The settings could not be saved. Is the disk full?"_s));
    nextDictationWorks();
    EXPECT_EQ(quitTalmo(), 0);
}

FAULT(Settings, diskFull, "The disk is full", "Dictating works; what cannot be saved says so")
{
    startTalmoAfter(u"trap '' XFSZ; ulimit -f 0"_s); // Files may not grow.
    nextDictationWorks();
    testbed::ChildProcess choice(QStringLiteral(TALMO_BIN "/talmoctl"), {u"model"_s, u"use"_s, u"embedded"_s},
                                 environment);
    EXPECT_TRUE(testbed::waitUntil([&choice] { return !choice.isRunning(); }, timeout));
    EXPECT_NE(choice.terminate(), 0);
    EXPECT_THAT(choice.output().toStdString(), testing::HasSubstr("could not be saved"));
    nextDictationWorks();
    EXPECT_EQ(quitTalmo(), 0);
}

} // namespace talmo::test
