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

/// The model server as it was found last, and the requests to it, one at a time. Shared with what is under way, so that
/// a late answer finds it. What is not said to be for any thread is for the executor's.
class ModelServerConnection final : public std::enable_shared_from_this<ModelServerConnection> {
public:
    ModelServerConnection(LoopbackLanguageModel::Configuration configuration, std::shared_ptr<Clock> clock,
                          std::shared_ptr<const ServerTrust> trust);

    /// Any thread.
    std::optional<UnavailableReason> reason() const;
    QString description() const;
    LoopbackLanguageModel::Server server() const;

    /// Looks anew; a call while it looks waits for the same answer.
    QFuture<void> refresh();

    /// Finishes when it is the caller's turn to ask, which endTurn() ends; fails with Cancelled.
    QFuture<void> turn();
    /// `isLate`: the server may still be busy with the request that was given up on.
    void endTurn(bool isLate);

    QFuture<HttpReply> ask(const QByteArray &request);
    QString modelName() const { return m_modelName; }
    /// What was known of the server no longer holds. `status`: what it answered, 0 for nothing.
    void requestFailed(int status);

    /// Ends the request under way and those that wait for their turn.
    void cancelRequests();
    /// The same, and lets go of everything; the last call.
    void shutDown();

private:
    struct Probe;

    static QCoro::Task<void> look(std::shared_ptr<ModelServerConnection> self,
                                  std::shared_ptr<Completion<void>> completion);
    static QCoro::Task<Probe> probe(std::shared_ptr<ModelServerConnection> self, QUrl base);
    static QCoro::Task<void> passTurnWhenFree(std::shared_ptr<ModelServerConnection> self);
    void passTurn();
    void take(const std::vector<Probe> &probes);
    void takeRefused(const std::vector<Probe> &probes);
    void takeUsable(const Probe &probe);
    void settle(std::optional<UnavailableReason> reason, const QString &description, const QString &model = {});
    LoopbackHttp &opened(std::unique_ptr<LoopbackHttp> &http) const;

    LoopbackLanguageModel::Configuration m_configuration;
    std::shared_ptr<Clock> m_clock;
    std::shared_ptr<const ServerTrust> m_trust; ///< Null when the user vouches for the server.
    QList<QUrl> m_addresses;
    // Both belong to the thread that they are made on.
    std::unique_ptr<LoopbackHttp> m_looks;
    std::unique_ptr<LoopbackHttp> m_requests;
    bool m_isShutDown = false;
    std::optional<QFuture<void>> m_looking;
    QUrl m_base;
    QString m_modelName;
    QStringList m_refused;
    bool m_isSilent = false; ///< Somebody met the last look with silence.
    bool m_isAsking = false;
    bool m_isTaken = false; ///< It is somebody's turn.
    std::deque<std::shared_ptr<Completion<void>>> m_waiting;

    mutable std::mutex m_mutex; ///< Guards what stands below; held for nothing but that.
    std::optional<UnavailableReason> m_reason = UnavailableReason::ModelNotReady;
    QString m_description = QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "not checked yet"));
    LoopbackLanguageModel::Server m_server;
};

} // namespace talmo
