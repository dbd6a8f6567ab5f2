#pragma once

#include <QCoro/QCoroTask>

#include <QLocalServer>
#include <QLocalSocket>
#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>

namespace talmo {

/// Does for other programs of this user what they ask for over the control socket. Main thread.
class ControlServer final : public QObject {
public:
    /// Carries out an insertion; may throw Error.
    using Insert = std::function<QCoro::Task<void>(QString)>;

    explicit ControlServer(Insert insert);

    /// False, and said in the log, when the socket cannot be made or another Talmo has it.
    bool listen(const QString &path);

private:
    void accept();
    static QCoro::Task<void> serve(QPointer<QLocalSocket> socket, QByteArray request, Insert insert);

    Insert m_insert;
    QLocalServer m_server;
};

} // namespace talmo
