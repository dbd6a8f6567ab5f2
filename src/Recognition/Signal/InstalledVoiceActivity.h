#pragma once

#include "Recognition/Signal/VoiceActivity.h"

#include <functional>
#include <memory>
#include <utility>

namespace talmo {

/// Voice activity detection that the user may have installed. One thread.
class InstalledVoiceActivity {
public:
    /// Null if none is installed. Throws Error if it cannot be used.
    using Load = std::function<std::shared_ptr<VoiceActivity>()>;

    /// Without `load` none is ever installed.
    explicit InstalledVoiceActivity(Load load = {})
        : m_load(std::move(load))
    {
    }

    /// Reset, for one recording; null if there is none. It is loaded once, and looked for again after unload().
    std::shared_ptr<VoiceActivity> forRecording();
    void unload();

private:
    Load m_load;
    std::shared_ptr<VoiceActivity> m_activity;
    bool m_hasLooked = false;
};

} // namespace talmo
