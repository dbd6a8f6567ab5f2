#pragma once

#include "LanguageModel/LoopbackHttp.h"
#include "LanguageModel/LoopbackLanguageModel.h"

#include <QCoro/QCoroTask>

#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace talmo {

/// The last known state of the model server, and the requests to it, one at a time. Shared with pending operations, so
/// that a late response still finds it. Executor's thread only, unless marked otherwise.
class ModelServerConnection final : public std::enable_shared_from_this<ModelServerConnection> {
public:
    ModelServerConnection(LoopbackLanguageModel::Configuration configuration, std::shared_ptr<Clock> clock,
                          std::shared_ptr<const ServerTrust> trust);

    /// Any thread.
    std::optional<UnavailableReason> reason() const;
    QString description() const;
    LoopbackLanguageModel::Server server() const;

    /// Probes the server; concurrent calls share one probe.
    QFuture<void> refresh();

    /// Finishes when it is the caller's turn to send a request; endTurn() ends the turn. Fails with Cancelled.
    QFuture<void> turn();
    /// `isLate`: the request timed out, and the server may still be busy with it.
    void endTurn(bool isLate);

    /// `reader`: shown the answer while it arrives.
    QFuture<HttpReply> ask(const QByteArray &request, BodyReader reader);
    QString modelName() const { return m_modelName; }
    /// The known state no longer holds. `status`: the HTTP status, 0 if there was no response.
    void requestFailed(int status);

    /// Has the server read the beginning of a conversation, unless it has a request to answer. The next turn() cancels
    /// it, and so does the next warmUp().
    void warmUp(const QString &instructions, const QString &promptStart);
    void cancelWarmUp();

    /// Cancels the current request and the queued ones.
    void cancelRequests();
    /// The same, and closes everything; must be the last call. Finishes when the last probe has ended.
    QFuture<void> shutDown();

private:
    struct Probe;

    static QCoro::Task<void> look(std::shared_ptr<ModelServerConnection> self,
                                  std::shared_ptr<Completion<void>> completion);
    static QCoro::Task<Probe> probe(std::shared_ptr<ModelServerConnection> self, QUrl base);
    static QCoro::Task<void> passTurnWhenFree(std::shared_ptr<ModelServerConnection> self);
    static QCoro::Task<void> warmUpOnceKnown(std::shared_ptr<ModelServerConnection> self, int number,
                                             QString instructions, QString promptStart);
    void passTurn();
    QUrl chatAddress() const;
    void take(const std::vector<Probe> &probes);
    void takeRefused(const std::vector<Probe> &probes);
    void takeUsable(const Probe &probe);
    void settle(std::optional<UnavailableReason> reason, const QString &description, const QString &model = {});
    LoopbackHttp &opened(std::unique_ptr<LoopbackHttp> &http) const;

    LoopbackLanguageModel::Configuration m_configuration;
    std::shared_ptr<Clock> m_clock;
    std::shared_ptr<const ServerTrust> m_trust; ///< Null if the user configured the server's address.
    QList<QUrl> m_addresses;
    // They belong to the thread they are created on.
    std::unique_ptr<LoopbackHttp> m_looks;
    std::unique_ptr<LoopbackHttp> m_requests;
    std::unique_ptr<LoopbackHttp> m_warmUps;
    bool m_isShutDown = false;
    std::optional<QFuture<void>> m_looking;
    QUrl m_base;
    QString m_modelName;
    QStringList m_refused;
    bool m_isSilent = false; ///< A server did not respond to the last probe in time.
    bool m_isAsking = false;
    bool m_isWarmingUp = false;
    int m_warmUp = 0;       ///< The number of the current warm-up, or of the next one.
    bool m_isTaken = false; ///< A caller has its turn.
    std::deque<std::shared_ptr<Completion<void>>> m_waiting;

    mutable std::mutex m_mutex; ///< Guards the members below, and is held only to access them.
    std::optional<UnavailableReason> m_reason = UnavailableReason::ModelNotReady;
    QString m_description = QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "not checked yet"));
    LoopbackLanguageModel::Server m_server;
};

} // namespace talmo
