#include "Support/TestModelServer.h"

#include "Base/Error.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace talmo::test {

namespace {

constexpr testbed::Timeout timeout = std::chrono::seconds(15);

/// No edit fits into one token.
bool isWarmUp(const QJsonObject &chat)
{
    return chat.value(QStringLiteral("max_tokens")) == 1;
}

} // namespace

TestModelServer::TestModelServer(int port, const QProcessEnvironment &environment, const QStringList &options)
    : m_process(std::make_unique<testbed::ChildProcess>(
          QStringLiteral("python3"),
          QStringList{QStringLiteral(TALMO_TESTS_FOLDER "/Support/model_server.py"), QString::number(port)} + options,
          environment))
{
    const auto line = m_process->waitForLine(QStringLiteral("listening"), timeout);
    if (!line) {
        throw Error(QStringLiteral("The test's model server did not start: ") + m_process->output());
    }
    m_port = line->text.section(QLatin1Char(' '), 1).toInt();
}

void TestModelServer::behave(const QJsonObject &changes)
{
    m_process->writeLine(QString::fromUtf8(QJsonDocument(changes).toJson(QJsonDocument::Compact)));
    ++m_behaviours;
    const auto isApplied = [this] {
        std::size_t applied = 0;
        for (const auto &line : m_process->lines()) {
            applied += line.text == QStringLiteral("behaving") ? 1U : 0U;
        }
        return applied >= m_behaviours;
    };
    if (!testbed::waitUntil(isApplied, timeout)) {
        throw Error(QStringLiteral("The test's model server does not listen: ") + m_process->output());
    }
}

void TestModelServer::answerWith(const QJsonObject &rule)
{
    behave({{QStringLiteral("chat"), QJsonArray{rule}}});
}

std::vector<QJsonObject> TestModelServer::reports(const QString &word) const
{
    const QString mark = word + QLatin1Char(' ');
    std::vector<QJsonObject> found;
    for (const auto &line : m_process->lines()) {
        if (line.text.startsWith(mark)) {
            found.push_back(QJsonDocument::fromJson(line.text.mid(mark.size()).toUtf8()).object());
        }
    }
    return found;
}

std::vector<QJsonObject> TestModelServer::requests() const
{
    return reports(QStringLiteral("request"));
}

std::vector<QJsonObject> TestModelServer::allChats() const
{
    std::vector<QJsonObject> found;
    for (const auto &request : requests()) {
        if (request.value(QStringLiteral("path")).toString().endsWith(QStringLiteral("/v1/chat/completions"))) {
            found.push_back(
                QJsonDocument::fromJson(request.value(QStringLiteral("body")).toString().toUtf8()).object());
        }
    }
    return found;
}

std::vector<QJsonObject> TestModelServer::chats() const
{
    auto found = allChats();
    std::erase_if(found, &isWarmUp);
    return found;
}

std::vector<QJsonObject> TestModelServer::warmUps() const
{
    auto found = allChats();
    std::erase_if(found, [](const QJsonObject &chat) { return !isWarmUp(chat); });
    return found;
}

bool TestModelServer::waitForWarmUps(std::size_t count) const
{
    return testbed::waitUntil([this, count] { return warmUps().size() >= count; }, timeout);
}

bool TestModelServer::waitForChats(std::size_t count) const
{
    return testbed::waitUntil([this, count] { return chats().size() >= count; }, timeout);
}

bool TestModelServer::waitForReports(const QString &word, std::size_t count) const
{
    return testbed::waitUntil([this, word, count] { return reports(word).size() >= count; }, timeout);
}

} // namespace talmo::test
