#include "Faults/FaultFixture.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <csignal>

namespace talmo::test {

std::vector<FaultRow> &faultTable()
{
    static std::vector<FaultRow> table;
    return table;
}

void FaultTest::signalTalmo(int signal)
{
    ::kill(static_cast<pid_t>(talmo->processId()), signal);
}

void FaultTest::signalWindow(int signal)
{
    ::kill(static_cast<pid_t>(window->processId()), signal);
}

QString FaultTest::settingsPath() const
{
    return environment.value(u"XDG_CONFIG_HOME"_s) + u"/talmo/settings.json"_s;
}

void FaultTest::writeSettings(const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(settingsPath()).path());
    QFile file(settingsPath());
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    ASSERT_EQ(file.write(bytes), bytes.size());
}

} // namespace talmo::test
