#pragma once

#include <QByteArray>
#include <QLocalSocket>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace talmo {

/// A connection to sway's control socket. Main thread.
class SwayIpc {
public:
    /// Null if this session is not sway's, or sway does not respond within half a second.
    static std::unique_ptr<SwayIpc> open();
    ~SwayIpc();
    SwayIpc(const SwayIpc &) = delete;
    SwayIpc &operator=(const SwayIpc &) = delete;

    /// False if sway refuses the command or does not respond within half a second.
    bool run(const QString &command);
    /// Called when a binding of Talmo's is triggered, with the words after its mark.
    void setOnBinding(std::function<void(const QString &)> callback) { m_onBinding = std::move(callback); }
    /// Called when sway has read its configuration again, and thereby forgotten every binding that was added.
    void setOnReload(std::function<void()> callback) { m_onReload = std::move(callback); }

    /// The command of a binding that does nothing in sway but is reported to Talmo.
    static QString bindingCommand(const QString &words);

    bool isAlive() const { return m_events.state() == QLocalSocket::ConnectedState; }

private:
    enum class Message : quint32 { RunCommand = 0, Subscribe = 2 };
    struct Received {
        quint32 type = 0;
        QByteArray payload;
    };

    SwayIpc() = default;
    bool connectTo(const QString &path);
    static void send(QLocalSocket &socket, Message type, const QByteArray &payload);
    /// Takes the first whole message off the bytes received.
    static std::optional<Received> takeMessage(QByteArray &bytes);
    static std::optional<Received> waitForMessage(QLocalSocket &socket, QByteArray &bytes);
    void readEvents();
    void handleEvent(const Received &event);

    QLocalSocket m_commands;
    QLocalSocket m_events;
    QByteArray m_commandBytes;
    QByteArray m_eventBytes;
    std::function<void(const QString &)> m_onBinding;
    std::function<void()> m_onReload;
};

} // namespace talmo
