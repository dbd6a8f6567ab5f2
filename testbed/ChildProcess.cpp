#include "ChildProcess.h"

#include "Base/Error.h"

#include <csignal>
#include <sys/prctl.h>

namespace talmo::testbed {

ChildProcess::ChildProcess(const QString &program, const QStringList &arguments, const QProcessEnvironment &environment)
{
    m_process.setProcessEnvironment(environment);
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    // The testbed may itself be killed; its child processes must end with it.
    m_process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    QObject::connect(&m_process, &QProcess::readyRead, &m_process, [this] { readLines(); });
    m_process.start(program, arguments);
    if (!m_process.waitForStarted()) {
        throw Error(QStringLiteral("Cannot start %1: %2").arg(program, m_process.errorString()));
    }
}

ChildProcess::~ChildProcess()
{
    terminate();
}

void ChildProcess::readLines()
{
    m_pending += m_process.readAll();
    const auto now = std::chrono::steady_clock::now();
    for (auto end = m_pending.indexOf('\n'); end >= 0; end = m_pending.indexOf('\n')) {
        m_lines.push_back({QString::fromUtf8(m_pending.left(end)), now});
        m_pending.remove(0, end + 1);
    }
}

std::optional<ChildProcess::Line> ChildProcess::waitForLine(const QString &text, Timeout timeout, std::size_t from)
{
    std::size_t next = from;
    const auto isFound = [this, &text, &next] {
        while (next < m_lines.size() && !m_lines[next].text.contains(text)) {
            ++next;
        }
        return next < m_lines.size();
    };
    const bool found = waitUntil([&] { return isFound() || !isRunning(); }, timeout) && isFound();
    return found ? std::optional(m_lines[next]) : std::nullopt;
}

QString ChildProcess::output() const
{
    QString all;
    for (const auto &line : m_lines) {
        all += line.text + QLatin1Char('\n');
    }
    return all;
}

void ChildProcess::writeLine(const QString &line)
{
    m_process.write(line.toUtf8() + '\n');
}

int ChildProcess::terminate(Timeout timeout)
{
    if (m_process.state() != QProcess::NotRunning) {
        m_process.terminate();
        if (!m_process.waitForFinished(static_cast<int>(timeout.count()))) {
            kill();
        }
        readLines();
    }
    return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
}

void ChildProcess::kill()
{
    m_process.kill();
    m_process.waitForFinished();
}

} // namespace talmo::testbed
