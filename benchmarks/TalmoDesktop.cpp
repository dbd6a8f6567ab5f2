#include "TalmoDesktop.h"

#include "Base/Error.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <utility>

namespace talmo::benchmarks {

namespace {

using testbed::ChildProcess;

/// The sum of the numbers in all lines of a file of /proc that begin with `name`.
double numbersIn(const QString &path, const QByteArray &name)
{
    QFile file(path);
    double sum = 0;
    if (file.open(QFile::ReadOnly)) {
        for (const auto &line : file.readAll().split('\n')) {
            sum += line.contains(name) ? line.simplified().split(' ').value(1).toDouble() : 0;
        }
    }
    return sum;
}

Time waitFor(ChildProcess &process, const QString &text, std::size_t from)
{
    const auto line = process.waitForLine(text, TalmoDesktop::timeout, from);
    if (!line) {
        throw Error(QStringLiteral("Timed out waiting for “%1”:\n%2").arg(text, process.output().right(4000)));
    }
    return line->time;
}

} // namespace

TalmoDesktop::TalmoDesktop(const QString &programs)
    : m_programs(programs.isEmpty() ? QCoreApplication::applicationDirPath() : programs)
{
    environment.insert(QStringLiteral("QT_LOGGING_RULES"),
                       QStringLiteral("talmo.general.debug=true;talmo.hotkey.debug=true"));
    openWindow();
}

void TalmoDesktop::openWindow()
{
    window.reset();
    const QString title = QStringLiteral("Target %1").arg(++m_windows);
    window = std::make_unique<ChildProcess>(
        QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("talmo-demo-window")), QStringList{title},
        environment);
    if (!desktop.waitForActiveWindow(title, timeout)) {
        throw Error(QStringLiteral("The window did not open."));
    }
}

std::pair<Time, Time> TalmoDesktop::startTalmo()
{
    talmo.reset();
    const Time before = std::chrono::steady_clock::now();
    talmo =
        std::make_unique<ChildProcess>(QDir(m_programs).filePath(QStringLiteral("talmo")), QStringList{}, environment);
    return {before, talmoSays(QStringLiteral("ready:"))};
}

Time TalmoDesktop::talmoSays(const QString &text, std::size_t from)
{
    return waitFor(*talmo, text, from);
}

Time TalmoDesktop::windowShows(const QString &text, std::size_t from)
{
    return waitFor(*window, text, from);
}

QString TalmoDesktop::talmoctl(const QStringList &arguments, const QString &input)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QDir(m_programs).filePath(QStringLiteral("talmoctl")), arguments);
    process.write(input.toUtf8());
    process.closeWriteChannel();
    const bool hasEnded = process.waitForFinished(static_cast<int>(timeout.count()));
    return hasEnded && process.exitCode() == 0 ? QString::fromUtf8(process.readAllStandardOutput()) : QString();
}

double TalmoDesktop::residentSize() const
{
    return numbersIn(QStringLiteral("/proc/%1/status").arg(talmo->processId()), "VmRSS:");
}

double TalmoDesktop::privateSize() const
{
    return numbersIn(QStringLiteral("/proc/%1/smaps_rollup").arg(talmo->processId()), "Private_");
}

double TalmoDesktop::switches() const
{
    const QDir tasks(QStringLiteral("/proc/%1/task").arg(talmo->processId()));
    double sum = 0;
    for (const auto &task : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        sum += numbersIn(tasks.filePath(task + QStringLiteral("/status")), "ctxt_switches:");
    }
    return sum;
}

} // namespace talmo::benchmarks
