#include "LanguageModel/ModelServerConnection.h"

#include "Base/Log.h"
#include "Base/Task.h"
#include "LanguageModel/AnswerSafety.h"
#include "LanguageModel/ModelServerAddress.h"
#include "LanguageModel/ModelServerProtocol.h"

#include <utility>

namespace talmo {

namespace {

constexpr Duration longestSilence = std::chrono::seconds(10);
/// Of an answer that makes progress all the time.
constexpr Duration longestAnswer = std::chrono::minutes(2);
/// A slow machine reads the instructions for as long, without a token.
constexpr Duration longestWarmUp = std::chrono::minutes(1);
constexpr Duration longestLook = std::chrono::seconds(1); // A probe makes two such requests.

constexpr int httpOk = 200;
constexpr int httpServiceUnavailable = 503;

QUrl at(const QUrl &base, const QString &path)
{
    QUrl url = base;
    url.setPath(base.path() + path);
    return url;
}

QString placeOf(const QUrl &base)
{
    return base.authority() + base.path();
}

} // namespace

/// The result of probing one address.
struct ModelServerConnection::Probe {
    enum class Outcome { Nobody, Untrusted, Stranger, Silent, Loading, Ready };
    Outcome outcome = Outcome::Nobody;
    QUrl base;
    QStringList models;
    /// Why the server is not used.
    QString problem;
};

ModelServerConnection::ModelServerConnection(LoopbackLanguageModel::Configuration configuration,
                                             std::shared_ptr<Clock> clock, std::shared_ptr<const ServerTrust> trust)
    : m_configuration(std::move(configuration)),
      m_clock(std::move(clock))
{
    if (m_configuration.address.trimmed().isEmpty()) {
        m_trust = std::move(trust);
    } else if (m_configuration.address.compare(QStringLiteral("off"), Qt::CaseInsensitive) == 0) {
        settle(UnavailableReason::DeviceNotEligible,
               QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "disabled in the settings")));
        return;
    }
    try {
        m_addresses = modelServerAddresses(m_configuration.address, m_configuration.usualPorts);
    } catch (const Error &error) {
        generalLog().error("%@", {error.localizedDescription()});
        settle(UnavailableReason::Other, error.localizedDescription());
    }
}

std::optional<UnavailableReason> ModelServerConnection::reason() const
{
    const std::lock_guard lock(m_mutex);
    return m_reason;
}

QString ModelServerConnection::description() const
{
    const std::lock_guard lock(m_mutex);
    return m_description;
}

LoopbackLanguageModel::Server ModelServerConnection::server() const
{
    const std::lock_guard lock(m_mutex);
    return m_server;
}

LoopbackHttp &ModelServerConnection::opened(std::unique_ptr<LoopbackHttp> &http) const
{
    if (m_isShutDown) {
        throw Cancelled();
    }
    if (!http) {
        http = std::make_unique<LoopbackHttp>(m_clock, m_trust);
    }
    return *http;
}

QFuture<void> ModelServerConnection::refresh()
{
    if (m_addresses.isEmpty() || m_isShutDown) {
        return makeReadyFuture();
    }
    if (!m_looking) {
        auto completion = Completion<void>::make();
        m_looking = completion->future();
        logEscapes(look(shared_from_this(), completion));
    }
    return m_looking.value_or(makeReadyFuture()); // The probe may have ended already.
}

QCoro::Task<void> ModelServerConnection::look(std::shared_ptr<ModelServerConnection> self,
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
QCoro::Task<ModelServerConnection::Probe> ModelServerConnection::probe(std::shared_ptr<ModelServerConnection> self,
                                                                       QUrl base)
{
    Probe result{Probe::Outcome::Stranger, base, {}, {}};
    try {
        const auto listing = self->opened(self->m_looks).get(at(base, QStringLiteral("/v1/models")), longestLook);
        const HttpReply models = co_await listing;
        if (models.status == httpOk) {
            result.models = modelNames(models.body);
            // llama.cpp's server lists its model while still loading it, but reports that here. Other servers have no
            // such page.
            const auto asking = self->opened(self->m_looks).get(at(base, QStringLiteral("/health")), longestLook);
            const HttpReply health = co_await asking;
            result.outcome = health.status == httpServiceUnavailable ? Probe::Outcome::Loading : Probe::Outcome::Ready;
        } else if (models.status == httpServiceUnavailable) {
            result.outcome = Probe::Outcome::Loading;
        } else {
            result.problem = QStringLiteral("it returned status %1").arg(models.status);
        }
    } catch (const NobodyListens &) {
        result.outcome = Probe::Outcome::Nobody;
    } catch (const UntrustedServer &error) {
        result.outcome = Probe::Outcome::Untrusted;
        result.problem = error.localizedDescription();
    } catch (const TookTooLong &error) {
        result.outcome = Probe::Outcome::Silent;
        result.problem = error.localizedDescription();
    } catch (const Error &error) {
        result.problem = error.localizedDescription();
    }
    co_return result;
}

/// Uses the first server that is usable or still loading.
void ModelServerConnection::take(const std::vector<Probe> &probes)
{
    takeRefused(probes);
    const Probe *stranger = nullptr;
    m_isSilent = false;
    for (const auto &found : probes) {
        switch (found.outcome) {
        case Probe::Outcome::Nobody:
        case Probe::Outcome::Untrusted:
            continue;
        case Probe::Outcome::Silent:
            if ((m_isAsking || m_isWarmingUp) && !reason() && found.base == m_base) {
                return; // It is busy with our own request: a server that handles one request at a time is still there.
            }
            m_isSilent = true;
            [[fallthrough]];
        case Probe::Outcome::Stranger:
            stranger = &found;
            continue;
        case Probe::Outcome::Loading:
        case Probe::Outcome::Ready:
            takeUsable(found);
            return;
        }
    }
    // Anything may listen on a usual port; a configured address should be a model server.
    if (stranger != nullptr && !m_trust) {
        settle(UnavailableReason::Other,
               QStringLiteral("%1 is not a model server: %2").arg(stranger->base.toString(), stranger->problem));
    } else if (!m_refused.isEmpty()) {
        settle(
            UnavailableReason::Other,
            QStringLiteral("ignoring another user's process at %1; to use it anyway, set its address in the settings")
                .arg(m_refused.join(QStringLiteral(", "))));
    } else {
        settle(UnavailableReason::AppleIntelligenceNotEnabled,
               QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "no model server is running on this machine")));
    }
}

void ModelServerConnection::takeRefused(const std::vector<Probe> &probes)
{
    QStringList refused;
    for (const auto &found : probes) {
        if (found.outcome == Probe::Outcome::Untrusted) {
            refused.append(placeOf(found.base));
        }
    }
    if (refused != m_refused && !refused.isEmpty()) {
        generalLog().error("language model: ignoring another user's process at %s",
                           {refused.join(QStringLiteral(", "))});
    }
    m_refused = refused;
}

void ModelServerConnection::takeUsable(const Probe &probe)
{
    const QString place = probe.base.toString();
    if (probe.outcome == Probe::Outcome::Loading) {
        settle(UnavailableReason::ModelNotReady, QStringLiteral("%1 is still loading its model").arg(place));
        return;
    }
    m_base = probe.base;
    m_modelName = m_configuration.modelName.isEmpty() ? preferredModel(probe.models) : m_configuration.modelName;
    if (m_modelName.isEmpty()) {
        settle(UnavailableReason::Other, QStringLiteral("%1 has no model that can generate text").arg(place));
        return;
    }
    constexpr qsizetype mostShown = 80;
    const QString shown = withoutControls(m_modelName).simplified().left(mostShown);
    settle(std::nullopt, QStringLiteral("%1 at %2").arg(shown, place), shown);
}

void ModelServerConnection::settle(std::optional<UnavailableReason> reason, const QString &description,
                                   const QString &model)
{
    {
        const std::lock_guard lock(m_mutex);
        m_server = {model, model.isEmpty() ? QString() : placeOf(m_base), m_refused};
        if (m_reason == reason && m_description == description) {
            return;
        }
        m_reason = reason;
        m_description = description;
    }
    generalLog().info("language model: %s", {description});
}

QFuture<HttpReply> ModelServerConnection::ask(const QByteArray &request, BodyReader reader)
{
    m_isAsking = true;
    return opened(m_requests).postJson(chatAddress(), request, {longestSilence, longestAnswer}, std::move(reader));
}

QUrl ModelServerConnection::chatAddress() const
{
    return at(m_base, QStringLiteral("/v1/chat/completions"));
}

void ModelServerConnection::warmUp(const QString &instructions, const QString &promptStart)
{
    if (m_isTaken || m_isShutDown) {
        return; // The server is editing.
    }
    cancelWarmUp();
    logEscapes(warmUpOnceKnown(shared_from_this(), m_warmUp, instructions, promptStart));
}

/// `number`: that of this warm-up; it ends as soon as there is a later one.
QCoro::Task<void> ModelServerConnection::warmUpOnceKnown(std::shared_ptr<ModelServerConnection> self, int number,
                                                         QString instructions, QString promptStart)
{
    const QFuture<void> looking = self->m_looking.value_or(makeReadyFuture());
    co_await looking;
    if (number != self->m_warmUp || self->m_isShutDown || self->reason()) {
        co_return;
    }
    GenerationOptions options;
    options.maximumResponseTokens = 1;
    const auto request = chatRequest(self->m_modelName, instructions, promptStart, options);
    self->m_isWarmingUp = true;
    const auto begin = self->m_clock->now();
    const auto asking = self->opened(self->m_warmUps).postJson(self->chatAddress(), request, longestWarmUp);
    try {
        const HttpReply reply = co_await asking;
        const auto took = std::chrono::duration_cast<std::chrono::milliseconds>(self->m_clock->now() - begin);
        generalLog().debug("language model: read the instructions in %s ms, status %s",
                           {QString::number(took.count()), QString::number(reply.status)});
    } catch (const Cancelled &) { // NOLINT(bugprone-empty-catch): whoever cancelled it knows.
    } catch (const Error &error) {
        // No reason to look for another server: the request for the edit will find out.
        generalLog().debug("language model: cannot prepare: %s", {error.localizedDescription()});
    }
    if (number == self->m_warmUp) {
        self->m_isWarmingUp = false;
    }
}

void ModelServerConnection::cancelWarmUp()
{
    ++m_warmUp;
    m_isWarmingUp = false;
    m_warmUps.reset();
}

void ModelServerConnection::requestFailed(int status)
{
    if (status == httpServiceUnavailable) {
        settle(UnavailableReason::ModelNotReady,
               QStringLiteral("%1 is still loading its model").arg(m_base.toString()));
    }
    refresh();
}

QFuture<void> ModelServerConnection::turn()
{
    cancelWarmUp(); // What the server has read by now, it need not read again.
    if (!std::exchange(m_isTaken, true)) {
        return makeReadyFuture();
    }
    return m_waiting.emplace_back(Completion<void>::make())->future();
}

void ModelServerConnection::endTurn(bool isLate)
{
    m_isAsking = false;
    if (isLate && !m_waiting.empty()) {
        logEscapes(passTurnWhenFree(shared_from_this()));
    } else {
        passTurn();
    }
}

/// A server that does not respond while it edits must not be sent the next request before it is free, or that one would
/// time out as well. It gets as long again as for a token; after that it counts as hung.
QCoro::Task<void> ModelServerConnection::passTurnWhenFree(std::shared_ptr<ModelServerConnection> self)
{
    const Instant latest = self->m_clock->now() + longestSilence;
    do {
        const auto looking = self->refresh();
        co_await looking;
    } while (self->m_isSilent && !self->m_waiting.empty() && self->m_clock->now() < latest);
    self->passTurn();
}

void ModelServerConnection::passTurn()
{
    m_isTaken = !m_waiting.empty();
    if (m_isTaken) {
        const auto next = m_waiting.front();
        m_waiting.pop_front();
        next->finish();
    }
}

void ModelServerConnection::cancelRequests()
{
    for (const auto &waiting : std::exchange(m_waiting, {})) {
        waiting->fail(std::make_exception_ptr(Cancelled()));
    }
    m_requests.reset();
    cancelWarmUp();
}

QFuture<void> ModelServerConnection::shutDown()
{
    m_isShutDown = true;
    cancelRequests();
    m_looks.reset();
    return m_looking.value_or(makeReadyFuture());
}

} // namespace talmo
