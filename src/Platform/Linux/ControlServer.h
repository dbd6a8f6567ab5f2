#pragma once

#include <QCoro/QCoroTask>

#include <QFuture>
#include <QLocalServer>
#include <QLocalSocket>
#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>
#include <optional>

namespace talmo {

/// Does for other programs of this user what they ask for over the control socket. Main thread.
class ControlServer final : public QObject {
public:
    /// Carries out an insertion; may throw Error.
    using Insert = std::function<QCoro::Task<void>(QString)>;

    struct Actions {
        Insert insert;
        std::function<void()> openSettings;
        std::function<void(const QString &)> chooseRecogniser;
        /// The last dictation, or the words as they were heard; none when there is none.
        std::function<std::optional<QString>(bool isRaw)> lastDictation;
        /// False when there is no earlier clipboard.
        std::function<QFuture<bool>()> putEarlierClipboardBack;
    };

    explicit ControlServer(Actions actions);

    /// False, and said in the log, when the socket cannot be made. What lies there from before is replaced.
    bool listen(const QString &path);

private:
    void accept();
    void serve(QLocalSocket &socket, const QByteArray &request);
    static QCoro::Task<void> serveClipboard(QPointer<QLocalSocket> socket, QFuture<bool> done);
    static QCoro::Task<void> serveInsertion(QPointer<QLocalSocket> socket, QString text, Insert insert);

    Actions m_actions;
    QLocalServer m_server;
};

} // namespace talmo
