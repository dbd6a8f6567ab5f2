#include "Faults/FaultFixture.h"

#include <QFile>

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

class SettingsFault : public FaultTest {
protected:
    void dictateWithSettings(const QByteArray &bytes)
    {
        writeSettings(bytes);
        startTalmo();
        nextDictationWorks();
        EXPECT_EQ(quitTalmo(), 0);
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
    dictateWithSettings({});
}

static const FaultRegistration damagedRow("Settings", "The settings file is damaged", "As above");
TEST_F(SettingsFault, damaged)
{
    dictateWithSettings("{\"talmo.aiCleanupEnabled\": fal");
    EXPECT_TRUE(QFile::exists(settingsPath() + u".corrupt"_s));
}

static const FaultRegistration utf8Row("Settings", "The settings file is not UTF-8", "As above");
TEST_F(SettingsFault, notUtf8)
{
    dictateWithSettings("{\"talmo.hotkeyDisplayName\": \"\xff\xfe\"}");
}

static const FaultRegistration deepRow("Settings", "The settings file is nested 100,000 deep", "As above");
TEST_F(SettingsFault, nestedDeeply)
{
    dictateWithSettings(QByteArray(100'000, '['));
}

static const FaultRegistration hugeRow("Settings", "The settings file has 100 MB", "As above");
TEST_F(SettingsFault, huge)
{
    dictateWithSettings(QByteArray(qsizetype(100) << 20, ' '));
}

FAULT(Settings, folderCannotBeMade, "The settings cannot be read or written", "The defaults")
{
    environment.insert(u"XDG_CONFIG_HOME"_s, u"/proc"_s); // Not even root can create a file there.
    startTalmo();
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
