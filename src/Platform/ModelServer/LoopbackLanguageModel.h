#pragma once

#include "Base/Clock.h"
#include "Base/SerialExecutor.h"
#include "Cleanup/LanguageModel.h"

#include <QFuture>
#include <QString>

#include <memory>

namespace talmo {

/// The language model of a server on this machine that speaks the chat-completion protocol: llama.cpp's, Ollama's and
/// others'. Whether there is one is looked up when told to, never by a timer, and remembered in between.
class LoopbackLanguageModel final : public LanguageModel {
public:
    struct Configuration {
        /// Empty to look at the usual ports; "off" to ask nobody, ever.
        QString address;
        /// Empty to take what the server offers first.
        QString modelName;
    };

    /// `executor`: the thread on which everything is sent and received, and on which sessions are made. An address
    /// that is not this machine's is said in the log and never used.
    LoopbackLanguageModel(const Configuration &configuration, std::shared_ptr<SerialExecutor> executor,
                          std::shared_ptr<Clock> clock);
    ~LoopbackLanguageModel() override;

    std::optional<UnavailableReason> unavailableReason() const override;
    std::shared_ptr<LanguageModelSession> makeSession(const QString &instructions) override;

    /// Looks anew, within two seconds. A call while it looks waits for the same answer. Any thread; never fails.
    QFuture<void> refresh();

    /// Which model where, or why there is none, for people who set it up. Any thread.
    QString description() const;

    /// Lets go of every connection; the last call.
    QFuture<void> shutDown();

private:
    class Server;
    class Session;

    std::shared_ptr<SerialExecutor> m_executor;
    std::shared_ptr<Server> m_server;
};

} // namespace talmo
