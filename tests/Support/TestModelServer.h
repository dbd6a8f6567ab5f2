#pragma once

#include "ChildProcess.h"

#include <QJsonObject>

#include <memory>

namespace talmo::test {

/// A chat-completion server in a process of its own, on a loopback port; see model_server.py for how it can behave.
class TestModelServer {
public:
    /// A port of 0 has the system choose one.
    explicit TestModelServer(int port = 0,
                             const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment(),
                             const QStringList &options = {});

    int port() const { return m_port; }
    QString address() const { return QStringLiteral("http://127.0.0.1:%1").arg(m_port); }

    /// From the next request on.
    void behave(const QJsonObject &changes);
    /// What chat requests get: one rule for all of them.
    void answerWith(const QJsonObject &rule);
    /// Dies at once, connections and all.
    void kill() { m_process->kill(); }

    /// The chat requests so far, in the order in which they came: their JSON bodies.
    std::vector<QJsonObject> chats() const;
    /// Every request so far: "path", "headers", "body".
    std::vector<QJsonObject> requests() const;
    /// Waits for this many chat requests.
    bool waitForChats(std::size_t count) const;

private:
    std::unique_ptr<testbed::ChildProcess> m_process;
    std::size_t m_behaviours = 0;
    int m_port = 0;
};

} // namespace talmo::test
