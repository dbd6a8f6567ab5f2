#include "LanguageModel/LoopbackLanguageModel.h"

#include "Base/Log.h"
#include "Base/Task.h"
#include "LanguageModel/AnswerSafety.h"
#include "LanguageModel/AnswerStream.h"
#include "LanguageModel/ModelServerConnection.h"
#include "LanguageModel/ModelServerProtocol.h"

#include <utility>

namespace talmo {

namespace {

constexpr int httpOk = 200;

BodyProgress progressOf(AnswerStream::Progress progress)
{
    switch (progress) {
    case AnswerStream::Progress::None:
        return BodyProgress::None;
    case AnswerStream::Progress::Advanced:
        return BodyProgress::Advanced;
    case AnswerStream::Progress::Complete:
        break;
    }
    return BodyProgress::Complete;
}

BodyReader readerOf(std::shared_ptr<AnswerStream> stream)
{
    return [stream = std::move(stream)](const QByteArray &piece) { return progressOf(stream->take(piece)); };
}

} // namespace

class LoopbackLanguageModel::Session final : public LanguageModelSession {
public:
    Session(std::shared_ptr<ModelServerConnection> connection, std::shared_ptr<SerialExecutor> executor,
            QString instructions)
        : m_connection(std::move(connection)),
          m_executor(std::move(executor)),
          m_instructions(std::move(instructions))
    {
    }

    QFuture<QString> respond(const QString &prompt, const GenerationOptions &options) override
    {
        return m_executor->run<QString>([connection = m_connection, instructions = m_instructions, prompt, options] {
            return answerInTurn(connection, instructions, prompt, options);
        });
    }

private:
    static QCoro::Task<QString> answerInTurn(std::shared_ptr<ModelServerConnection> connection, QString instructions,
                                             QString prompt, GenerationOptions options)
    {
        const auto turn = connection->turn();
        co_await turn;
        try {
            const QString text = co_await answer(connection, instructions, prompt, options);
            connection->endTurn(false);
            co_return text;
        } catch (const TookTooLong &) {
            connection->endTurn(true);
            throw;
        } catch (...) {
            connection->endTurn(false);
            throw;
        }
    }

    static QCoro::Task<QString> answer(std::shared_ptr<ModelServerConnection> connection, QString instructions,
                                       QString prompt, GenerationOptions options)
    {
        if (connection->reason()) { // The server was lost while this request was queued.
            throw Error(QStringLiteral("The model server is no longer available."));
        }
        int status = 0;
        try {
            const auto request = chatRequest(connection->modelName(), instructions, prompt, options);
            const auto stream = std::make_shared<AnswerStream>();
            const BodyReader reader = readerOf(stream);
            const auto asking = connection->ask(request, reader);
            const HttpReply reply = co_await asking;
            status = reply.status;
            if (status != httpOk) {
                throw Error(QStringLiteral("The model server returned status %1.").arg(status));
            }
            const QString text = withoutControls(stream->text());
            requireProportion(text, prompt);
            co_return text;
        } catch (const Cancelled &) {
            throw;
        } catch (const Error &error) {
            generalLog().info("the language model's edit failed: %s", {error.localizedDescription()});
            connection->requestFailed(status);
            throw;
        }
    }

    std::shared_ptr<ModelServerConnection> m_connection;
    std::shared_ptr<SerialExecutor> m_executor;
    QString m_instructions;
};

LoopbackLanguageModel::LoopbackLanguageModel(const Configuration &configuration,
                                             std::shared_ptr<SerialExecutor> executor, std::shared_ptr<Clock> clock,
                                             std::shared_ptr<const ServerTrust> trust)
    : m_executor(std::move(executor)),
      m_connection(std::make_shared<ModelServerConnection>(configuration, std::move(clock), std::move(trust)))
{
}

LoopbackLanguageModel::~LoopbackLanguageModel() = default;

std::optional<UnavailableReason> LoopbackLanguageModel::unavailableReason() const
{
    return m_connection->reason();
}

QString LoopbackLanguageModel::description() const
{
    return m_connection->description();
}

std::shared_ptr<LanguageModelSession> LoopbackLanguageModel::makeSession(const QString &instructions)
{
    return std::make_shared<Session>(m_connection, m_executor, instructions);
}

QFuture<void> LoopbackLanguageModel::refresh()
{
    return m_executor->run<void>([connection = m_connection] { return await<void>(connection->refresh()); });
}

LoopbackLanguageModel::Server LoopbackLanguageModel::server() const
{
    return m_connection->server();
}

void LoopbackLanguageModel::warmUp(const QString &instructions, const QString &promptStart)
{
    m_executor->post(
        [connection = m_connection, instructions, promptStart] { connection->warmUp(instructions, promptStart); });
}

void LoopbackLanguageModel::cancelWarmUp()
{
    m_executor->post([connection = m_connection] { connection->cancelWarmUp(); });
}

QFuture<void> LoopbackLanguageModel::cancelRequests()
{
    return m_executor->call([connection = m_connection] { connection->cancelRequests(); });
}

QFuture<void> LoopbackLanguageModel::shutDown()
{
    return m_executor->run<void>([connection = m_connection] { return await<void>(connection->shutDown()); });
}

} // namespace talmo
