#pragma once

#include "ChildProcess.h"

#include <QJsonObject>

#include <memory>

namespace talmo::test {

/// A chat-completion server in a separate process on a loopback port; model_server.py lists its behaviours.
class TestModelServer {
public:
    /// Port 0: the system chooses one.
    explicit TestModelServer(int port = 0,
                             const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment(),
                             const QStringList &options = {});

    int port() const { return m_port; }
    QString address() const { return QStringLiteral("http://127.0.0.1:%1").arg(m_port); }

    /// Changes the behaviour from the next request on.
    void behave(const QJsonObject &changes);
    /// Answers all chat requests by this rule.
    void answerWith(const QJsonObject &rule);
    /// Kills the process and thereby its connections.
    void kill() { m_process->kill(); }

    /// The JSON bodies of the requests for an edit so far, in order of arrival.
    std::vector<QJsonObject> chats() const;
    /// Those of the requests that only have the server read its instructions.
    std::vector<QJsonObject> warmUps() const;
    /// Every request so far: "path", "headers", "body".
    std::vector<QJsonObject> requests() const;
    /// Wait for this many such requests.
    bool waitForChats(std::size_t count) const;
    bool waitForWarmUps(std::size_t count) const;
    /// What the server has reported under "prompt", "answered", "abandoned" or "sent".
    std::vector<QJsonObject> reports(const QString &word) const;
    bool waitForReports(const QString &word, std::size_t count) const;

private:
    std::vector<QJsonObject> allChats() const;

    std::unique_ptr<testbed::ChildProcess> m_process;
    std::size_t m_behaviours = 0;
    int m_port = 0;
};

} // namespace talmo::test
