#include "Main/MicrophoneSettingsModel.h"

#include "SoundServer.h"
#include "Support/ManualClock.h"
#include "Support/MemoryUserDefaults.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"
#include "Support/Tones.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

class MicrophoneSettingsModelTest : public testing::Test {
protected:
    MicrophoneSettingsModelTest()
    {
        sound.addNamedMicrophone(u"headset"_s, u"Jabra Evolve"_s);
        sound.addNamedMicrophone(u"silent"_s, u"Broken"_s, true);
        model.setFollowing(true);
    }
    ~MicrophoneSettingsModelTest() override
    {
        model.setFollowing(false);
        clock->advance(MicrophoneSettingsModel::retryTime);
        settle();
    }
    QStringList names() const
    {
        QStringList names;
        for (const auto &choice : model.choices()) {
            names.append(choice.name);
        }
        return names;
    }
    bool becomes(const std::function<bool()> &condition) { return testbed::pollUntil(condition, 10s); }

    QTemporaryDir folder;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    testbed::SoundServer sound{folder.path() + u"/sound"_s, environment};
    std::shared_ptr<MemoryUserDefaults> defaults = std::make_shared<MemoryUserDefaults>();
    std::shared_ptr<ManualClock> clock = std::make_shared<ManualClock>();
    QString applied;
    MicrophoneSettingsModel model{defaults, clock, [this](const QString &name) { applied = name; }};
};

} // namespace

TEST_F(MicrophoneSettingsModelTest, listsMicrophonesAsTheyComeAndGo)
{
    EXPECT_TRUE(becomes([this] { return names() == QStringList{u""_s, u"mic"_s, u"headset"_s, u"silent"_s}; }))
        << names().join(u' ').toStdString();
    model.choose(u"headset"_s);
    EXPECT_EQ(applied, u"headset"_s);
    EXPECT_EQ(model.problem(), QString());
    sound.removeNamedMicrophone(u"headset"_s);
    EXPECT_TRUE(becomes([this] { return model.problem().startsWith(u"“Jabra Evolve” is not connected."_s); }));
    EXPECT_EQ(model.choices().last().title, u"Jabra Evolve (not connected)"_s);
    EXPECT_EQ(MicrophoneSettingsModel(defaults, clock, [](const QString &) {}).choice(), u"headset"_s);
    sound.addNamedMicrophone(u"headset"_s, u"Jabra Evolve"_s);
    EXPECT_TRUE(becomes([this] { return model.problem().isEmpty(); }));
}

TEST_F(MicrophoneSettingsModelTest, recordsOnlyWhileListening)
{
    ASSERT_TRUE(becomes([this] { return names().size() == 4; }));
    EXPECT_EQ(sound.recordings(), 0);
    model.setListening(true);
    EXPECT_TRUE(becomes([this] { return sound.recordings() == 1; }));
    model.setFollowing(false);
    EXPECT_TRUE(becomes([this] { return sound.recordings() == 0; }));
    EXPECT_FALSE(model.isListening());
    model.setFollowing(true);
}

TEST_F(MicrophoneSettingsModelTest, reportsSilentMicrophoneUntilSoundArrives)
{
    ASSERT_TRUE(becomes([this] { return names().size() == 4; }));
    model.choose(u"silent"_s);
    model.setListening(true);
    EXPECT_TRUE(
        becomes([this] { return model.problem() == u"The microphone “Broken” gives only silence. Is it muted?"_s; }));
    EXPECT_EQ(model.level(), 0);
    model.choose(u"headset"_s);
    EXPECT_EQ(model.problem(), QString());
}

TEST_F(MicrophoneSettingsModelTest, showsLevelOfPlayedSound)
{
    ASSERT_TRUE(becomes([this] { return names().size() == 4; }));
    const QString file = folder.filePath(u"tone.wav"_s);
    writeTones(file, {1000, 1000, 1000});
    model.setListening(true);
    ASSERT_TRUE(becomes([this] { return sound.recordings() == 1; }));
    const auto player = sound.startPlaying(file);
    EXPECT_TRUE(becomes([this] { return model.level() > 0.5; }));
}

TEST_F(MicrophoneSettingsModelTest, findsAServerThatComesLater)
{
    ASSERT_TRUE(becomes([this] { return model.hasMicrophone() && names().size() == 4; }));
    sound.killServer();
    EXPECT_TRUE(becomes([this] { return model.problem().contains(u"sound server is not running"_s); }));
    EXPECT_FALSE(model.hasMicrophone());
    sound.restartServer();
    EXPECT_TRUE(becomes([this] {
        clock->advance(MicrophoneSettingsModel::retryTime);
        return model.hasMicrophone();
    }));
}

TEST(MicrophoneLevel, speechFillsTheUpperHalfOfTheBar)
{
    EXPECT_EQ(MicrophoneSettingsModel::shareOfBar(0), 0);
    EXPECT_EQ(MicrophoneSettingsModel::shareOfBar(1), 1);
    EXPECT_GT(MicrophoneSettingsModel::shareOfBar(0.1F), 0.5);
    EXPECT_LT(MicrophoneSettingsModel::shareOfBar(0.001F), 0.1);
}

} // namespace talmo::test
