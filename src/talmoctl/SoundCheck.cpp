#include "talmoctl/SoundCheck.h"

#include "Base/SerialExecutor.h"
#include "Input/Audio/MicrophoneReport.h"
#include "Platform/Linux/Sound/PulseMicrophones.h"

#include <QCoro/QCoroFuture>

#include <algorithm>
#include <cmath>
#include <utility>

namespace talmo::ctl {

namespace {

constexpr Duration answerStep = std::chrono::milliseconds(20);
constexpr int answerSteps = 50;
constexpr Duration listeningTime = std::chrono::seconds(2);

/// On the main thread.
struct Heard {
    std::optional<PulseMicrophones::Inventory> inventory;
    float peak = 0;
    bool hasPeaks = false;
};

const PulseMicrophones::Microphone *find(const PulseMicrophones::Inventory &inventory, const QString &name)
{
    for (const auto &microphone : inventory.microphones) {
        if (microphone.name == name) {
            return &microphone;
        }
    }
    return nullptr;
}

/// Nullopt if there is a microphone.
std::optional<CheckResult> withoutMicrophone(const std::optional<PulseMicrophones::Inventory> &inventory)
{
    CheckResult result{QStringLiteral("sound"), false, true, {}, {}};
    if (!inventory || !inventory->hasServer) {
        result.detail = QStringLiteral("The sound server is not running.");
        result.remedy = QStringLiteral("Start PipeWire or PulseAudio, or log in again.");
    } else if (inventory->isAccessRefused) {
        result.detail = QStringLiteral("The sound server does not let Talmo record.");
        result.remedy = QStringLiteral("Check the desktop's privacy settings.");
    } else if (inventory->microphones.isEmpty()) {
        result.detail = QStringLiteral("No microphone was found.");
        result.remedy = QStringLiteral("Plug one in, or enable one in the desktop's sound settings.");
    } else {
        return std::nullopt;
    }
    return result;
}

QString loudness(float peak)
{
    return QStringLiteral("loudest %1 dB").arg(std::lround(20 * std::log10(peak)));
}

CheckResult judge(const PulseMicrophones::Microphone &used, const QString &chosen, const Heard &heard)
{
    CheckResult result{QStringLiteral("sound"), false, true, {}, {}};
    if (!heard.hasPeaks) {
        result.detail = QStringLiteral("The microphone “%1” sends nothing.").arg(used.title);
        result.remedy = QStringLiteral("Choose another one in Talmo's settings.");
    } else if (heard.peak <= 0) {
        result.detail = QStringLiteral("The microphone “%1” gives only silence.").arg(used.title);
        result.remedy = QStringLiteral("Unmute it in the desktop's sound settings, or at the device.");
    } else {
        result.isOk = true;
        result.detail = QStringLiteral("%1, %2").arg(used.title, loudness(heard.peak));
    }
    if (!chosen.isEmpty() && used.name != chosen) {
        result.detail += QStringLiteral(" (the chosen one is not connected)");
    }
    return result;
}

} // namespace

QCoro::Task<SoundCheck> SoundCheck::run(QString microphone, std::shared_ptr<Clock> clock,
                                        std::function<void(float)> onPeak)
{
    const auto heard = std::make_shared<Heard>();
    const auto mainExecutor = SerialExecutor::onCurrentThread();
    const auto microphones = std::make_shared<PulseMicrophones>(
        [heard, mainExecutor](const PulseMicrophones::Inventory &inventory) {
            mainExecutor->post([heard, inventory] { heard->inventory = inventory; });
        },
        [heard, mainExecutor, onPeak](float peak) {
            mainExecutor->post([heard, onPeak, peak] {
                heard->hasPeaks = true;
                heard->peak = std::max(heard->peak, peak);
                onPeak(peak);
            });
        });
    microphones->follow();
    for (int step = 0; step < answerSteps && !heard->inventory; ++step) {
        const auto pause = clock->sleep(answerStep);
        co_await pause;
    }
    if (auto missing = withoutMicrophone(heard->inventory)) {
        co_return SoundCheck{*missing, std::nullopt};
    }
    const auto inventory = heard->inventory.value_or(PulseMicrophones::Inventory());
    const auto *used = find(inventory, microphone);
    used = used != nullptr ? used : find(inventory, inventory.defaultName);
    used = used != nullptr ? used : &inventory.microphones.first();
    microphones->listenTo(used->name);
    const auto listening = clock->sleep(listeningTime);
    co_await listening;
    microphones->stopFollowing();
    co_return SoundCheck{judge(*used, microphone, *heard), heard->hasPeaks ? std::optional(heard->peak) : std::nullopt};
}

} // namespace talmo::ctl
