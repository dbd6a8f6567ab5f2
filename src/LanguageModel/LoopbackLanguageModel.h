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
/// others'. Whether there is one is looked up when told to, never by a timer, and remembered in between.
///
/// Requests are sent one after the other: a server may edit no more than one at a time, and the time of those that it
/// lets wait would run out. Each has its ten seconds from when it is sent.
class LoopbackLanguageModel final : public LanguageModel {
public:
    struct Configuration {
        /// Empty to look at the usual ports; "off" to ask nobody, ever.
        QString address;
        /// Empty to take what the server offers first.
        QString modelName;
        QList<int> usualPorts = usualModelServerPorts();
    };

    /// Who gets the text, for people to see.
    struct Server {
        /// As the server names it; empty when none is used.
        QString model;
        /// "127.0.0.1:8080"
        QString place;
        /// Where programs answered that are not trusted.
        QStringList refused;
    };

    /// `executor`: the thread on which everything is sent and received, and on which sessions are made. `trust`: asked
    /// about every connection to a server that was found; one that the user gave the address of is trusted. An address
    /// that is not this machine's is said in the log and never used.
    LoopbackLanguageModel(const Configuration &configuration, std::shared_ptr<SerialExecutor> executor,
                          std::shared_ptr<Clock> clock, std::shared_ptr<const ServerTrust> trust);
    ~LoopbackLanguageModel() override;

    std::optional<UnavailableReason> unavailableReason() const override;
    std::shared_ptr<LanguageModelSession> makeSession(const QString &instructions) override;

    /// Looks anew, within two seconds. A call while it looks waits for the same answer. Any thread; never fails.
    QFuture<void> refresh();

    /// Which model where, or why there is none, for people who set it up. Any thread.
    QString description() const;
    Server server() const;

    /// Ends every request that is under way or waits for its turn, all at once, with Cancelled. Any thread.
    QFuture<void> cancelRequests();

    /// Lets go of every connection; the last call.
    QFuture<void> shutDown();

private:
    class Session;

    std::shared_ptr<SerialExecutor> m_executor;
    std::shared_ptr<ModelServerConnection> m_connection;
};

} // namespace talmo
