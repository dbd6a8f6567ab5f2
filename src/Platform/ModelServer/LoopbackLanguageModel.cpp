#include "Platform/ModelServer/LoopbackLanguageModel.h"

#include "Base/Log.h"
#include "Base/Task.h"
#include "Platform/ModelServer/LoopbackHttp.h"
#include "Platform/ModelServer/ModelServerAddress.h"
#include "Platform/ModelServer/ModelServerProtocol.h"

#include <atomic>
#include <mutex>
#include <utility>
#include <vector>

namespace talmo {

namespace {

constexpr Duration longestAnswer = std::chrono::seconds(10);
constexpr Duration longestLook = std::chrono::seconds(1); // Two of them make a probe.

constexpr int httpOk = 200;
constexpr int httpServiceUnavailable = 503;

QUrl at(const QUrl &base, const QString &path)
{
    QUrl url = base;
    url.setPath(base.path() + path);
    return url;
}

/// What was found at one address.
struct Probe {
    enum class Outcome { Nobody, Stranger, Loading, Ready };
    Outcome outcome = Outcome::Nobody;
    QUrl base;
    QStringList models;
    /// Why a stranger is one.
    QString problem;
};

} // namespace

/// The server as it was found last. Shared with what is under way, so that a late answer finds it.
class LoopbackLanguageModel::Server final : public std::enable_shared_from_this<Server> {
public:
    Server(Configuration configuration, std::shared_ptr<SerialExecutor> executor, std::shared_ptr<Clock> clock)
        : m_configuration(std::move(configuration)),
          m_executor(std::move(executor)),
          m_clock(std::move(clock))
    {
        if (m_configuration.address.compare(QStringLiteral("off"), Qt::CaseInsensitive) == 0) {
            settle(UnavailableReason::DeviceNotEligible, QStringLiteral("switched off in the settings"));
            return;
        }
        try {
            m_addresses = modelServerAddresses(m_configuration.address);
        } catch (const Error &error) {
            generalLog().error("%@", {error.localizedDescription()});
            settle(UnavailableReason::Other, error.localizedDescription());
        }
    }

    std::optional<UnavailableReason> reason() const
    {
        const std::lock_guard lock(m_mutex);
        return m_reason;
    }
    QString description() const
    {
        const std::lock_guard lock(m_mutex);
        return m_description;
    }

    // From here on: the executor's thread only.
    QFuture<void> refresh();
    QFuture<HttpReply> ask(const QByteArray &request);
    void requestFailed(int status);
    QString modelName() const { return m_modelName; }
    void shutDown()
    {
        m_isShutDown = true;
        m_http.reset();
    }

private:
    static QCoro::Task<void> look(std::shared_ptr<Server> self, std::shared_ptr<Completion<void>> completion);
    static QCoro::Task<Probe> probe(std::shared_ptr<Server> self, QUrl base);
    void take(const std::vector<Probe> &probes);
    void settle(std::optional<UnavailableReason> reason, const QString &description);
    LoopbackHttp &http();

    Configuration m_configuration;
    std::shared_ptr<SerialExecutor> m_executor;
    std::shared_ptr<Clock> m_clock;
    QList<QUrl> m_addresses;
    std::unique_ptr<LoopbackHttp> m_http;
    bool m_isShutDown = false;
    std::optional<QFuture<void>> m_looking;
    QUrl m_base;
    QString m_modelName;

    mutable std::mutex m_mutex; ///< Guards what stands below; held for nothing but that.
    std::optional<UnavailableReason> m_reason = UnavailableReason::ModelNotReady;
    QString m_description = QStringLiteral("not looked for yet");
};

LoopbackHttp &LoopbackLanguageModel::Server::http()
{
    if (m_isShutDown) {
        throw Cancelled();
    }
    if (!m_http) {
        m_http = std::make_unique<LoopbackHttp>(m_clock); // Belongs to the thread it is made on.
    }
    return *m_http;
}

QFuture<void> LoopbackLanguageModel::Server::refresh()
{
    if (m_addresses.isEmpty() || m_isShutDown) {
        return ready();
    }
    if (!m_looking) {
        auto completion = Completion<void>::make();
        m_looking = completion->future();
        logEscapes(look(shared_from_this(), completion));
    }
    return m_looking.value_or(ready()); // Looking may have ended already.
}

QCoro::Task<void> LoopbackLanguageModel::Server::look(std::shared_ptr<Server> self,
                                                      std::shared_ptr<Completion<void>> completion)
{
    std::vector<QCoro::Task<Probe>> tasks;
    tasks.reserve(static_cast<std::size_t>(self->m_addresses.size()));
    for (const auto &address : std::as_const(self->m_addresses)) {
        tasks.push_back(probe(self, address));
    }
    std::vector<Probe> probes;
    probes.reserve(tasks.size());
    for (auto &task : tasks) {
        probes.push_back(co_await task);
    }
    if (!self->m_isShutDown) {
        self->take(probes);
    }
    self->m_looking.reset();
    completion->finish();
}

/// Never throws.
QCoro::Task<Probe> LoopbackLanguageModel::Server::probe(std::shared_ptr<Server> self, QUrl base)
{
    Probe result{Probe::Outcome::Stranger, base, {}, {}};
    try {
        const auto listing = self->http().get(at(base, QStringLiteral("/v1/models")), longestLook);
        const HttpReply models = co_await listing;
        if (models.status == httpOk) {
            result.models = modelNames(models.body);
            // llama.cpp's server lists its model while it still loads it, but says so here. Others know no such page.
            const auto asking = self->http().get(at(base, QStringLiteral("/health")), longestLook);
            const HttpReply health = co_await asking;
            result.outcome = health.status == httpServiceUnavailable ? Probe::Outcome::Loading : Probe::Outcome::Ready;
        } else if (models.status == httpServiceUnavailable) {
            result.outcome = Probe::Outcome::Loading;
        } else {
            result.problem = QStringLiteral("it answers with status %1").arg(models.status);
        }
    } catch (const NobodyListens &) {
        result.outcome = Probe::Outcome::Nobody;
    } catch (const Error &error) {
        result.problem = error.localizedDescription();
    }
    co_return result;
}

void LoopbackLanguageModel::Server::take(const std::vector<Probe> &probes)
{
    const Probe *stranger = nullptr;
    for (const auto &found : probes) {
        const QString place = found.base.toString();
        switch (found.outcome) {
        case Probe::Outcome::Nobody:
            continue;
        case Probe::Outcome::Stranger:
            stranger = &found;
            continue;
        case Probe::Outcome::Loading:
            settle(UnavailableReason::ModelNotReady, QStringLiteral("%1 is still loading its model").arg(place));
            return;
        case Probe::Outcome::Ready:
            m_base = found.base;
            m_modelName =
                m_configuration.modelName.isEmpty() ? preferredModel(found.models) : m_configuration.modelName;
            if (m_modelName.isEmpty()) {
                settle(UnavailableReason::Other, QStringLiteral("%1 has no model to write with").arg(place));
            } else {
                settle(std::nullopt, QStringLiteral("%1 at %2").arg(m_modelName, place));
            }
            return;
        }
    }
    // At a usual port anything may live; at the address that the user gave it should have been a model server.
    if (stranger != nullptr && !m_configuration.address.isEmpty()) {
        settle(UnavailableReason::Other,
               QStringLiteral("%1 is no model server: %2").arg(stranger->base.toString(), stranger->problem));
    } else {
        settle(UnavailableReason::AppleIntelligenceNotEnabled, QStringLiteral("no model server runs on this machine"));
    }
}

void LoopbackLanguageModel::Server::settle(std::optional<UnavailableReason> reason, const QString &description)
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_reason == reason && m_description == description) {
            return;
        }
        m_reason = reason;
        m_description = description;
    }
    generalLog().info("language model: %s", {description});
}

QFuture<HttpReply> LoopbackLanguageModel::Server::ask(const QByteArray &request)
{
    return http().postJson(at(m_base, QStringLiteral("/v1/chat/completions")), request, longestAnswer);
}

/// What was known of the server no longer holds.
void LoopbackLanguageModel::Server::requestFailed(int status)
{
    if (status == httpServiceUnavailable) {
        settle(UnavailableReason::ModelNotReady,
               QStringLiteral("%1 is still loading its model").arg(m_base.toString()));
    }
    refresh();
}

class LoopbackLanguageModel::Session final : public LanguageModelSession {
public:
    Session(std::shared_ptr<Server> server, std::shared_ptr<SerialExecutor> executor, QString instructions)
        : m_server(std::move(server)),
          m_executor(std::move(executor)),
          m_instructions(std::move(instructions))
    {
    }

    QFuture<QString> respond(const QString &prompt, const GenerationOptions &options) override
    {
        return m_executor->run<QString>([server = m_server, instructions = m_instructions, prompt, options] {
            return answer(server, instructions, prompt, options);
        });
    }

private:
    static QCoro::Task<QString> answer(std::shared_ptr<Server> server, QString instructions, QString prompt,
                                       GenerationOptions options)
    {
        int status = 0;
        try {
            const auto request = chatRequest(server->modelName(), instructions, prompt, options);
            const auto asking = server->ask(request);
            const HttpReply reply = co_await asking;
            status = reply.status;
            if (status != httpOk) {
                throw Error(QStringLiteral("The model server answers with status %1.").arg(status));
            }
            co_return chatAnswer(reply.body);
        } catch (const Error &error) {
            generalLog().info("the language model did not help: %s", {error.localizedDescription()});
            server->requestFailed(status);
            throw;
        }
    }

    std::shared_ptr<Server> m_server;
    std::shared_ptr<SerialExecutor> m_executor;
    QString m_instructions;
};

LoopbackLanguageModel::LoopbackLanguageModel(const Configuration &configuration,
                                             std::shared_ptr<SerialExecutor> executor, std::shared_ptr<Clock> clock)
    : m_executor(std::move(executor)),
      m_server(std::make_shared<Server>(configuration, m_executor, std::move(clock)))
{
}

LoopbackLanguageModel::~LoopbackLanguageModel() = default;

std::optional<UnavailableReason> LoopbackLanguageModel::unavailableReason() const
{
    return m_server->reason();
}

QString LoopbackLanguageModel::description() const
{
    return m_server->description();
}

std::shared_ptr<LanguageModelSession> LoopbackLanguageModel::makeSession(const QString &instructions)
{
    return std::make_shared<Session>(m_server, m_executor, instructions);
}

QFuture<void> LoopbackLanguageModel::refresh()
{
    return m_executor->run<void>([server = m_server] { return await<void>(server->refresh()); });
}

QFuture<void> LoopbackLanguageModel::shutDown()
{
    return m_executor->call([server = m_server] { server->shutDown(); });
}

} // namespace talmo
