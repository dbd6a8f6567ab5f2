// Talmo with the screen reader Orca. A speech module that writes down what it is to say stands in for a voice.

#include "Accessibility/AccessibilityBus.h"
#include "EndToEnd/TalmoFixture.h"

#include "DesktopParts.h"

#include <gmock/gmock.h>

#include <QDir>
#include <QFile>
#include <QLockFile>

#include <algorithm>

namespace talmo::test {

using testing::Contains;
using testing::HasSubstr;
using testing::Not;

namespace {

const char *const speechd = R"(LogLevel 1
AddModule "log" "sd_generic" "log.conf"
DefaultModule log
DefaultLanguage "en"
AudioOutputMethod "pulse"
)";
const char *const logModule = R"(GenericExecuteSynth "echo '$DATA' >> %1"
GenericCmdDependency "echo"
AddVoice "en" "MALE1" "en"
GenericLanguage "en" "en" "utf-8"
GenericDefaultCharset "utf-8"
)";

class OrcaTest : public TalmoFixture {
protected:
    OrcaTest()
    {
        environment.remove(u"NO_AT_BRIDGE"_s);
        write(u"speechd.conf"_s, QString::fromLatin1(speechd));
        write(u"modules/log.conf"_s, QString::fromLatin1(logModule).arg(log));
        switchAccessibilityOn(environment);
    }
    void startOrca()
    {
        ASSERT_TRUE(onlyOrca.lock()); // It does not start while the same user runs another one.
        orca = std::make_unique<testbed::ChildProcess>(u"orca"_s, QStringList(), environment);
        ASSERT_TRUE(hears("Screen reader on.")) << orca->output().toStdString();
    }
    /// A line for each utterance.
    std::vector<std::string> spoken() const
    {
        QFile file(log);
        std::vector<std::string> lines;
        if (file.open(QFile::ReadOnly)) {
            for (const auto &line : file.readAll().split('\n')) {
                lines.push_back(line.toStdString());
            }
        }
        return lines;
    }
    bool hears(const std::string &start)
    {
        return testbed::pollUntil(
            [&] {
                const auto lines = spoken();
                return std::any_of(lines.begin(), lines.end(),
                                   [&](const auto &line) { return line.starts_with(start); });
            },
            std::chrono::seconds(30));
    }
    std::ptrdiff_t times(const std::string &line) const
    {
        const auto lines = spoken();
        return std::count(lines.begin(), lines.end(), line);
    }

    const QString log = desktop.folder() + u"/spoken"_s;
    std::unique_ptr<testbed::ChildProcess> bus = testbed::startBus(environment);
    QLockFile onlyOrca{QDir(QDir::tempPath()).filePath(u"talmo-test-orca.lock"_s)};
    std::unique_ptr<testbed::ChildProcess> orca;

private:
    void write(const QString &name, const QString &text) const
    {
        const QDir folder(environment.value(u"XDG_CONFIG_HOME"_s) + u"/speech-dispatcher"_s);
        folder.mkpath(u"modules"_s);
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QFile::WriteOnly));
        file.write(text.toUtf8());
    }
};

} // namespace

TEST_F(OrcaTest, speaksStatesOfDictationOnce)
{
    startOrca();
    openQtWindow();
    startTalmo();
    dictate(u"hello world"_s);
    ASSERT_TRUE(hears("notification Inserted.")) << testing::PrintToString(spoken());
    // “Inserting…” is cut short where the end follows at once.
    for (const char *once : {"notification Listening.", "notification Cleaning up...", "notification Inserted."}) {
        EXPECT_EQ(times(once), 1) << once << testing::PrintToString(spoken());
    }
}

TEST_F(OrcaTest, readsSettingsControlByControl)
{
    startOrca();
    startTalmo();
    testbed::ChildProcess second(QStringLiteral(TALMO_BIN "/talmo"), {}, environment);
    ASSERT_TRUE(hears("Talmo Settings dialog")) << testing::PrintToString(spoken());
    keyboard.tap(testbed::VirtualKeyboard::tab);
    ASSERT_TRUE(hears("General page tab")) << testing::PrintToString(spoken());
    keyboard.tap(testbed::VirtualKeyboard::tab);
    ASSERT_TRUE(hears("Press the key you want push button.")) << testing::PrintToString(spoken());
    EXPECT_THAT(spoken(), Not(Contains(HasSubstr("pane"))));
}

} // namespace talmo::test
