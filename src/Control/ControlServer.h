#pragma once

#include "Base/Clock.h"

#include <QCoro/QCoroTask>

#include <QFuture>
#include <QLocalServer>
#include <QLocalSocket>
#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace talmo {

/// Does for other programs of this user what they ask for over the control socket. Programs of other users are turned
/// away unheard, and no client can keep the server busy: the length of a request, the time it may take to arrive and
/// the number of clients are bounded. Main thread.
class ControlServer final : public QObject {
public:
    /// Carries out an insertion; may throw Error.
    using Insert = std::function<QCoro::Task<void>(QString)>;

    struct Actions {
        Insert insert;
        std::function<void()> openSettings;
        /// Throws Error when the choice cannot be saved.
        std::function<QCoro::Task<void>(QString)> chooseRecogniser;
        /// The last dictation, or the words as they were heard; none when there is none.
        std::function<std::optional<QString>(bool isRaw)> lastDictation;
        /// False when there is no earlier clipboard.
        std::function<QFuture<bool>()> putEarlierClipboardBack;
    };

    ControlServer(Actions actions, std::shared_ptr<Clock> clock);

    /// False, and said in the log, when the socket cannot be made. What lies there from before is replaced.
    bool listen(const QString &path);

private:
    void accept();
    void listenTo(QLocalSocket &socket);
    static QCoro::Task<void> hangUpAt(QPointer<QLocalSocket> socket, QFuture<void> deadline);
    void serve(QLocalSocket &socket, const QByteArray &request);
    static QCoro::Task<void> serveClipboard(QPointer<QLocalSocket> socket, QFuture<bool> done);
    static QCoro::Task<void> serveAction(QPointer<QLocalSocket> socket, QString text, Insert action);

    Actions m_actions;
    std::shared_ptr<Clock> m_clock;
    QLocalServer m_server;
};

} // namespace talmo
