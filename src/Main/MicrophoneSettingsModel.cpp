#include "Main/MicrophoneSettingsModel.h"

#include "Base/Log.h"
#include "Base/Task.h"
#include "Input/Audio/MicrophoneReport.h"
#include "UI/Style/Wording.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace talmo {

namespace {

const QString nameKey = QStringLiteral("linux.microphone");
/// Shown while it is not connected.
const QString titleKey = QStringLiteral("linux.microphoneTitle");

} // namespace

MicrophoneSettingsModel::MicrophoneSettingsModel(std::shared_ptr<UserDefaults> defaults, std::shared_ptr<Clock> clock,
                                                 std::function<void(const QString &)> apply)
    : m_defaults(std::move(defaults)),
      m_clock(std::move(clock)),
      m_apply(std::move(apply))
{
    m_apply(choice());
}

MicrophoneSettingsModel::~MicrophoneSettingsModel()
{
    m_retry.request_stop();
}

double MicrophoneSettingsModel::shareOfBar(float peak)
{
    constexpr double quietest = -50; // dB
    const double decibels = 20 * std::log10(std::max(static_cast<double>(peak), 1e-9));
    return std::clamp(1 - decibels / quietest, 0.0, 1.0);
}

QString MicrophoneSettingsModel::choice() const
{
    return m_defaults->string(nameKey).value_or(QString());
}

bool MicrophoneSettingsModel::isConnected(const QString &name) const
{
    const auto &all = m_inventory.microphones;
    return std::any_of(all.begin(), all.end(), [&name](const auto &each) { return each.name == name; });
}

QString MicrophoneSettingsModel::titleOf(const QString &name) const
{
    for (const auto &microphone : m_inventory.microphones) {
        if (microphone.name == name) {
            return microphone.title;
        }
    }
    return {};
}

QString MicrophoneSettingsModel::chosenTitle() const
{
    const QString title = titleOf(choice());
    return title.isEmpty() ? m_defaults->string(titleKey).value_or(choice()) : title;
}

QList<MicrophoneSettings::Choice> MicrophoneSettingsModel::choices() const
{
    const QString current = titleOf(m_inventory.defaultName);
    QList<Choice> choices{
        {QString(), current.isEmpty() ? Wording::text(QT_TRANSLATE_NOOP("Talmo", "System default"))
                                      : Wording::text(QT_TRANSLATE_NOOP("Talmo", "System default (%1)")).arg(current)}};
    for (const auto &microphone : m_inventory.microphones) {
        choices.append({microphone.name, microphone.title});
    }
    if (!choice().isEmpty() && !isConnected(choice())) {
        choices.append({choice(), Wording::text(QT_TRANSLATE_NOOP("Talmo", "%1 (not connected)")).arg(chosenTitle())});
    }
    return choices;
}

void MicrophoneSettingsModel::choose(const QString &name)
{
    const QString title = titleOf(name);
    Q_EMIT objectWillChange();
    m_defaults->set(nameKey, name);
    m_defaults->set(titleKey, title);
    m_silentPeaks = 0;
    generalLog().info("microphone: %@", {name.isEmpty() ? QStringLiteral("the default one") : name});
    m_apply(name);
    listen();
}

/// The chosen one, or the default one while that is missing; empty if there is none.
QString MicrophoneSettingsModel::usedName() const
{
    const QString name = isConnected(choice()) ? choice() : m_inventory.defaultName;
    return isConnected(name) ? name : QString();
}

bool MicrophoneSettingsModel::hasMicrophone() const
{
    return !m_isKnown || m_inventory.isAccessRefused || !usedName().isEmpty();
}

QString MicrophoneSettingsModel::problem() const
{
    if (!m_isKnown) {
        return {};
    }
    if (m_inventory.isAccessRefused) {
        return Wording::text(QT_TRANSLATE_NOOP(
            "Talmo", "The sound server does not let Talmo record. Check the desktop's privacy settings."));
    }
    if (!m_inventory.hasServer) {
        return Wording::errorText(MicrophoneReport{MicrophoneReport::Finding::NoServer, {}}.message());
    }
    if (usedName().isEmpty()) {
        return Wording::text(QT_TRANSLATE_NOOP("Talmo", "No microphone was found. Plug one in, or enable one in the "
                                                        "desktop's sound settings."));
    }
    if (m_silentPeaks >= silentPeaks) {
        return Wording::errorText(
            MicrophoneReport{MicrophoneReport::Finding::OnlySilence, titleOf(usedName())}.message());
    }
    if (!choice().isEmpty() && !isConnected(choice())) {
        return Wording::text(QT_TRANSLATE_NOOP("Talmo", "“%1” is not connected. Until it is, the system's default "
                                                        "microphone is used."))
            .arg(chosenTitle());
    }
    return {};
}

void MicrophoneSettingsModel::post(std::function<void(PulseMicrophones &)> work)
{
    if (!m_executor) {
        m_executor = SerialExecutor::onNewThread(QStringLiteral("talmo-microphones"));
        const QPointer<MicrophoneSettingsModel> self(this);
        const auto toSelf = [self, executor = m_mainExecutor](auto call) {
            executor->post([self, call] {
                if (self) {
                    call(*self);
                }
            });
        };
        m_microphones = std::make_shared<PulseMicrophones>(
            [toSelf](const PulseMicrophones::Inventory &inventory) {
                toSelf([inventory](MicrophoneSettingsModel &model) { model.take(inventory); });
            },
            [toSelf](float peak) { toSelf([peak](MicrophoneSettingsModel &model) { model.takePeak(peak); }); });
    }
    m_executor->post([microphones = m_microphones, work = std::move(work)] { work(*microphones); });
}

void MicrophoneSettingsModel::setFollowing(bool isFollowing)
{
    m_followers += isFollowing ? 1 : -1;
    if (isFollowing && m_followers == 1) {
        post([](PulseMicrophones &microphones) { microphones.follow(); });
    }
    if (m_followers > 0) {
        return;
    }
    m_retry.request_stop();
    setListening(false);
    post([](PulseMicrophones &microphones) { microphones.stopFollowing(); });
}

void MicrophoneSettingsModel::take(const PulseMicrophones::Inventory &inventory)
{
    if (m_followers > 0 && !inventory.hasServer) {
        m_retry.request_stop();
        m_retry = std::stop_source();
        logEscapes(retryLater(this, m_clock->sleep(retryTime, m_retry.get_token())));
    }
    if (m_followers == 0 || (m_isKnown && inventory == m_inventory)) {
        return;
    }
    publish(m_inventory, inventory);
    m_isKnown = true;
    listen();
}

QCoro::Task<void> MicrophoneSettingsModel::retryLater(QPointer<MicrophoneSettingsModel> self, QFuture<void> time)
{
    try {
        co_await time;
    } catch (const Cancelled &) {
        co_return;
    }
    if (self && self->m_followers > 0) {
        self->post([](PulseMicrophones &microphones) { microphones.follow(); });
    }
}

void MicrophoneSettingsModel::setListening(bool isListening)
{
    if (m_isListening == isListening) {
        return;
    }
    publish(m_isListening, isListening);
    m_silentPeaks = 0;
    listen();
    if (!isListening) {
        m_level = 0;
        Q_EMIT levelChanged();
    }
}

/// Listens to the chosen microphone, or to its substitute.
void MicrophoneSettingsModel::listen()
{
    const QString name = m_isListening ? usedName() : QString();
    if (std::exchange(m_listenedTo, name) != name) {
        post([name](PulseMicrophones &microphones) { microphones.listenTo(name); });
    }
}

void MicrophoneSettingsModel::takePeak(float peak)
{
    if (!m_isListening) {
        return;
    }
    const bool isSilent = peak <= 0;
    if (isSilent ? m_silentPeaks + 1 == silentPeaks : m_silentPeaks >= silentPeaks) {
        Q_EMIT objectWillChange();
    }
    m_silentPeaks = isSilent ? m_silentPeaks + 1 : 0;
    m_level = shareOfBar(peak);
    Q_EMIT levelChanged();
}

} // namespace talmo
