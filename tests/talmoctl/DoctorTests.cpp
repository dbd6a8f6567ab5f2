// “talmoctl doctor” on a desktop of its own, healthy and not.

#include "ChildProcess.h"
#include "SoundServer.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"
#include "Support/Tones.h"
#include "VirtualDesktop.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

namespace talmo::test {

namespace {

using namespace std::chrono_literals;

class DoctorTest : public testing::Test {
protected:
    DoctorTest()
    {
        environment.insert(u"LC_ALL"_s, u"en_US.UTF-8"_s);
        const QString tone = desktop.folder() + u"/tone.wav"_s;
        writeTones(tone, {500, 1000, 500, 1000, 500, 1000});
        player = sound.startPlaying(tone);
    }
    /// Runs it to its end.
    void examine(const QStringList &options = {u"--json"_s})
    {
        testbed::ChildProcess doctor(QStringLiteral(TALMO_BIN "/talmoctl"), QStringList{u"doctor"_s} + options,
                                     environment);
        ASSERT_TRUE(testbed::waitUntil([&doctor] { return !doctor.isRunning(); }, 30s));
        status = doctor.terminate();
        output = doctor.output();
        all = QJsonDocument::fromJson(output.mid(output.indexOf(u'{')).toUtf8()).object(); // After the log.
    }
    QJsonObject check(const QString &name) const
    {
        for (const auto &each : all.value(u"checks"_s).toArray()) {
            if (each.toObject().value(u"name"_s).toString() == name) {
                return each.toObject();
            }
        }
        return {};
    }
    void expectMissing(const QString &name) const
    {
        EXPECT_EQ(status, EXIT_FAILURE);
        EXPECT_FALSE(all.value(u"ok"_s).toBool(true));
        EXPECT_EQ(check(name).value(u"state"_s).toString(), u"missing"_s) << output.toStdString();
        EXPECT_FALSE(check(name).value(u"remedy"_s).toString().isEmpty());
    }

    testbed::VirtualDesktop desktop;
    QProcessEnvironment environment = desktop.environment();
    testbed::SoundServer sound{desktop.folder() + u"/sound"_s, environment};
    std::unique_ptr<testbed::ChildProcess> player;
    int status = -1;
    QString output;
    QJsonObject all;
};

} // namespace

TEST_F(DoctorTest, findsNothingMissingOnAHealthyDesktop)
{
    examine();
    EXPECT_EQ(status, EXIT_SUCCESS) << output.toStdString();
    EXPECT_TRUE(all.value(u"ok"_s).toBool());
    for (const auto &name : {u"sound"_s, u"engine"_s, u"desktop"_s, u"key"_s, u"paste"_s, u"overlay"_s}) {
        EXPECT_EQ(check(name).value(u"state"_s).toString(), u"ok"_s) << name.toStdString();
    }
    EXPECT_GT(check(u"sound"_s).value(u"peak"_s).toDouble(), 0);
    EXPECT_EQ(check(u"key"_s).value(u"detail"_s).toString(), u"Hold Right Ctrl."_s);
    for (const auto &name : {u"model"_s, u"tray"_s, u"model server"_s}) {
        EXPECT_EQ(check(name).value(u"state"_s).toString(), u"missing"_s) << name.toStdString();
        EXPECT_FALSE(check(name).value(u"needed"_s).toBool(true)) << name.toStdString();
    }
}

TEST_F(DoctorTest, suggestsRemedyWithoutSoundServer)
{
    sound.killServer();
    examine();
    expectMissing(u"sound"_s);
}

TEST_F(DoctorTest, reportsMutedMicrophone)
{
    sound.muteMicrophone(true);
    examine();
    expectMissing(u"sound"_s);
    EXPECT_TRUE(check(u"sound"_s).value(u"detail"_s).toString().contains(u"gives only silence"_s));
}

TEST_F(DoctorTest, suggestsRecogniserForUnsupportedLanguage)
{
    desktop.storeSettings({{u"linux.languageModelAddress"_s, u"off"_s}, {u"linux.dictationLanguage"_s, u"de_DE"_s}});
    examine();
    expectMissing(u"engine"_s);
    EXPECT_EQ(check(u"engine"_s).value(u"detail"_s).toString(), u"Dictating in German needs another recogniser."_s);
}

TEST_F(DoctorTest, reportsUnknownKeyInSettings)
{
    desktop.storeSettings(
        {{u"linux.languageModelAddress"_s, u"off"_s}, {u"linux.standInKeys"_s, QJsonArray{u"Contrl_R"_s}}});
    examine();
    expectMissing(u"key"_s);
}

TEST_F(DoctorTest, printsALineForEachCheck)
{
    environment.remove(u"DISPLAY"_s);
    examine({});
    EXPECT_EQ(status, EXIT_FAILURE);
    EXPECT_TRUE(output.contains(u"MISSING  desktop"_s)) << output.toStdString();
    EXPECT_TRUE(output.contains(u"Log in to an X11 session"_s));
    EXPECT_TRUE(output.contains(u"You cannot dictate yet."_s));
}

} // namespace talmo::test
