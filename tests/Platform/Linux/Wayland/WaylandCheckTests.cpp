// On weston, which offers a program nothing that Talmo needs.

#include "ChildProcess.h"
#include "Support/Printing.h"
#include "VirtualDesktop.h"

#include <gmock/gmock.h>

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

namespace talmo::test {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using namespace std::chrono_literals;

namespace {

class BareCompositorTest : public testing::Test {
protected:
    static constexpr testbed::Timeout timeout = 60s;

    void SetUp() override
    {
        QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        environment.insert(u"XDG_RUNTIME_DIR"_s, folder.path());
        environment.insert(u"HOME"_s, folder.path());
        environment.insert(u"XDG_CONFIG_HOME"_s, folder.path());
        environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, u"unix:path=/nonexistent"_s);
        environment.remove(u"DISPLAY"_s);
        environment.remove(u"SWAYSOCK"_s);
        weston = std::make_unique<testbed::ChildProcess>(
            u"weston"_s, QStringList{u"--backend=headless-backend.so"_s, u"--use-pixman"_s, u"--socket=bare"_s},
            environment);
        ASSERT_TRUE(testbed::pollUntil([this] { return QFile::exists(folder.filePath(u"bare"_s)); }, timeout))
            << weston->output().toStdString();
        environment.insert(u"WAYLAND_DISPLAY"_s, u"bare"_s);
    }
    struct Outcome {
        int status = -1;
        std::string output;
        std::string errors;
    };
    Outcome run(const QString &program, const QStringList &arguments, const QByteArray &input = {}) const
    {
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(TALMO_BIN "/") + program, arguments);
        process.write(input);
        process.closeWriteChannel();
        EXPECT_TRUE(testbed::waitUntil([&process] { return process.state() == QProcess::NotRunning; }, timeout));
        return {process.exitCode(), process.readAllStandardOutput().toStdString(),
                process.readAllStandardError().toStdString()};
    }

    QTemporaryDir folder;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    std::unique_ptr<testbed::ChildProcess> weston;
};

} // namespace

TEST_F(BareCompositorTest, insertFailsWithSentence)
{
    const auto outcome = run(u"talmoctl"_s, {u"insert"_s}, "lost");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors, "talmoctl: This desktop does not let Talmo type into Wayland windows.\n");
}

TEST_F(BareCompositorTest, talmoRefusesToStart)
{
    const auto outcome = run(u"talmo"_s, {});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.errors, HasSubstr("Enable XWayland, then start Talmo again."));
}

TEST_F(BareCompositorTest, doctorNamesWhatIsMissing)
{
    const testbed::VirtualDesktop x11; // As XWayland would be, which crashes weston without a screen.
    environment.insert(u"DISPLAY"_s, x11.environment().value(u"DISPLAY"_s));
    const auto outcome = run(u"talmoctl"_s, {u"doctor"_s});
    EXPECT_THAT(outcome.output, AllOf(HasSubstr("Wayland, clipboard of X"), HasSubstr("may not tell Talmo about keys"),
                                      HasSubstr("talmoctl toggle"), HasSubstr("does not let Talmo type"),
                                      HasSubstr("paste the text with Ctrl+V")));
    EXPECT_THAT(outcome.output, Not(HasSubstr("can press the paste shortcut")));
}

} // namespace talmo::test
