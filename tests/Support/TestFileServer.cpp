#include "Support/TestFileServer.h"

#include "Base/Error.h"

namespace talmo::test {

namespace {

constexpr testbed::Timeout timeout = std::chrono::seconds(15);

} // namespace

TestFileServer::TestFileServer(const QString &folder, const QString &certificate)
    : m_process(std::make_unique<testbed::ChildProcess>(
          QStringLiteral("python3"),
          QStringList{QStringLiteral(TALMO_TESTS_FOLDER "/Support/file_server.py"), folder} +
              (certificate.isEmpty() ? QStringList() : QStringList{certificate}),
          QProcessEnvironment::systemEnvironment()))
{
    const auto line = m_process->waitForLine(QStringLiteral("listening"), timeout);
    if (!line) {
        throw Error(QStringLiteral("The test's file server did not start: ") + m_process->output());
    }
    m_base = QStringLiteral("%1://127.0.0.1:%2")
                 .arg(certificate.isEmpty() ? QStringLiteral("http") : QStringLiteral("https"),
                      line->text.section(QLatin1Char(' '), 1));
}

QString TestFileServer::address(const QString &path) const
{
    return m_base + path;
}

QStringList TestFileServer::requests() const
{
    const auto mark = QStringLiteral("request ");
    QStringList found;
    for (const auto &line : m_process->lines()) {
        if (line.text.startsWith(mark)) {
            found.append(line.text.mid(mark.size()));
        }
    }
    return found;
}

bool TestFileServer::isOfferedOnlyHttp1() const
{
    return m_process->waitForLine(QStringLiteral("offered HTTP/1.1 only"), timeout) &&
           !m_process->output().contains(QStringLiteral("offered h2"));
}

bool TestFileServer::waitForRequests(qsizetype count) const
{
    return testbed::waitUntil([this, count] { return requests().size() >= count; }, timeout);
}

} // namespace talmo::test
