#include "Recognition/Signal/InstalledVoiceActivity.h"

#include "Base/DetailedError.h"
#include "Base/Log.h"

namespace talmo {

std::shared_ptr<VoiceActivity> InstalledVoiceActivity::forRecording()
{
    // A recording that was given up may still hold it.
    const bool isTaken = m_activity && m_activity.use_count() > 1;
    try {
        if (m_load && (isTaken || !std::exchange(m_hasLooked, true))) {
            m_activity = m_load();
        }
        if (m_activity) {
            m_activity->reset();
        }
    } catch (const Error &error) {
        generalLog().error("voice activity detection: %@", {wholeDescription(error)});
        m_activity.reset();
    }
    return m_activity;
}

void InstalledVoiceActivity::unload()
{
    m_activity.reset();
    m_hasLooked = false;
}

} // namespace talmo
