#pragma once

#include "Base/Clock.h"
#include "Base/SerialExecutor.h"
#include "Platform/Linux/Sound/PulseMicrophones.h"
#include "Settings/MicrophoneSettings.h"
#include "Settings/UserDefaults.h"

#include <QPointer>

#include <functional>
#include <memory>
#include <stop_token>

namespace talmo {

/// The sound server's microphones. Connects to it only while followed.
class MicrophoneSettingsModel final : public MicrophoneSettings {
public:
    /// How often to look for a missing server while followed.
    static constexpr Duration retryTime = std::chrono::seconds(2);
    /// So many peaks without any sound, two seconds of them, are the silence of a muted microphone.
    static constexpr int silentPeaks = 50;

    /// `apply`: has the next recording use the named microphone.
    MicrophoneSettingsModel(std::shared_ptr<UserDefaults> defaults, std::shared_ptr<Clock> clock,
                            std::function<void(const QString &)> apply);
    ~MicrophoneSettingsModel() override;

    QList<Choice> choices() const override;
    QString choice() const override;
    void choose(const QString &name) override;
    QString problem() const override;
    bool hasMicrophone() const override;
    void setFollowing(bool isFollowing) override;
    void setListening(bool isListening) override;
    bool isListening() const override { return m_isListening; }
    double level() const override { return m_level; }

    /// The chosen one's title, also while it is not connected.
    QString chosenTitle() const;

    /// The share of a level bar for a peak from 0 to 1. Logarithmic, as loudness is heard: speech is in the upper half.
    static double shareOfBar(float peak);

private:
    void take(const PulseMicrophones::Inventory &inventory);
    void takePeak(float peak);
    void listen();
    QString usedName() const;
    QString titleOf(const QString &name) const;
    bool isConnected(const QString &name) const;
    void post(std::function<void(PulseMicrophones &)> work);
    static QCoro::Task<void> retryLater(QPointer<MicrophoneSettingsModel> self, QFuture<void> time);

    std::shared_ptr<UserDefaults> m_defaults;
    std::shared_ptr<Clock> m_clock;
    std::function<void(const QString &)> m_apply;
    std::shared_ptr<SerialExecutor> m_mainExecutor = SerialExecutor::onCurrentThread();
    PulseMicrophones::Inventory m_inventory;
    bool m_isKnown = false;
    int m_followers = 0;
    bool m_isListening = false;
    QString m_listenedTo;
    double m_level = 0;
    int m_silentPeaks = 0;
    std::stop_source m_retry;
    /// Used on the executor, which is started when it is first needed, and ends before it.
    std::shared_ptr<PulseMicrophones> m_microphones;
    std::shared_ptr<SerialExecutor> m_executor;
};

} // namespace talmo
