#pragma once

#include "Base/Clock.h"
#include "Base/SerialExecutor.h"
#include "Platform/Linux/PocketSphinxPlatform.h"

#include <QCoro/QCoroTask>

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <stop_token>

namespace talmo {

/// The embedded recogniser in Talmo's household: it hears the user's own words, knows the microphones from earlier
/// runs, and gives its memory back when nobody has dictated for a while. Main thread.
class EmbeddedSpeech {
public:
    /// `executor`: the thread on which everything is decoded. `microphoneName`: asked on that thread.
    EmbeddedSpeech(std::shared_ptr<SerialExecutor> executor, std::shared_ptr<Clock> clock,
                   std::function<QString()> microphoneName);

    const std::shared_ptr<PocketSphinxPlatform> &platform() const { return m_platform; }

    /// From the next recording on.
    void setWords(const QStringList &words);
    /// Somebody dictates, or has just done so: the model stays for ten minutes from now.
    void noteUse();

    /// Where the user says how words sound: lines such as "Nguyen = win".
    static QString pronunciationsPath();

private:
    static QCoro::Task<void> unloadLater(std::shared_ptr<PocketSphinxPlatform> platform, std::shared_ptr<Clock> clock,
                                         std::stop_token stop);

    std::shared_ptr<SerialExecutor> m_executor;
    std::shared_ptr<Clock> m_clock;
    std::shared_ptr<PocketSphinxPlatform> m_platform;
    std::stop_source m_idle;
};

} // namespace talmo
