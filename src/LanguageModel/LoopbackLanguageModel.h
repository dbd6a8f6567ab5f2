#pragma once

#include "Base/Clock.h"
#include "Base/SerialExecutor.h"
#include "Cleanup/LanguageModel.h"
#include "LanguageModel/ModelServerAddress.h"
#include "LanguageModel/ServerTrust.h"

#include <QFuture>
#include <QString>
#include <QStringList>

#include <memory>

namespace talmo {

class ModelServerConnection;

/// The language model of a server on this machine that speaks the chat-completion protocol: llama.cpp's, Ollama's and
/// others'. The server is probed only on request, never by a timer, and remembered in between.
///
/// Requests are sent one at a time: a server may edit only one, and queued requests would exceed their timeout. Each
/// fails after ten seconds without a token, counted from when it is sent, and after two minutes in any case.
class LoopbackLanguageModel final : public LanguageModel {
public:
    struct Configuration {
        /// Empty to probe the usual ports; "off" to contact no server, ever.
        QString address;
        /// Empty to use the first model that the server offers.
        QString modelName;
        QList<int> usualPorts = usualModelServerPorts();
    };

    /// The server that receives the text, for display.
    struct Server {
        /// As the server names it; empty if no server is used.
        QString model;
        /// "127.0.0.1:8080"
        QString place;
        /// Where servers that are not trusted were found.
        QStringList refused;
    };

    /// `executor`: the thread for all traffic, and on which sessions are created. `trust`: consulted for every
    /// connection to a server that was discovered; a server whose address the user configured is trusted. An address
    /// that is not on this machine is logged and never used.
    LoopbackLanguageModel(const Configuration &configuration, std::shared_ptr<SerialExecutor> executor,
                          std::shared_ptr<Clock> clock, std::shared_ptr<const ServerTrust> trust);
    ~LoopbackLanguageModel() override;

    std::optional<UnavailableReason> unavailableReason() const override;
    std::shared_ptr<LanguageModelSession> makeSession(const QString &instructions) override;

    /// Probes the server (2 s timeout). Concurrent calls share one probe. Any thread; never fails.
    QFuture<void> refresh();

    /// The model and its address, or why there is none; for users who set one up. Any thread.
    QString description() const;
    Server server() const;

    /// Makes the server process these instructions ahead of time, so that it need not once there is a prompt.
    /// `promptStart`: what every prompt begins with. At most one is in progress: a later one replaces it, any request
    /// ends it, and none begins during a request. A failure has no effect. Any thread; returns at once.
    void warmUp(const QString &instructions, const QString &promptStart);
    void cancelWarmUp();

    /// Fails every pending or queued request at once with Cancelled. Any thread.
    QFuture<void> cancelRequests();

    /// Closes every connection; must be the last call.
    QFuture<void> shutDown();

private:
    class Session;

    std::shared_ptr<SerialExecutor> m_executor;
    std::shared_ptr<ModelServerConnection> m_connection;
};

} // namespace talmo
