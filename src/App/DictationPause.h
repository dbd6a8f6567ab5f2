#pragma once

#include "Base/Observable.h"

namespace talmo {

/// Whether the dictation key is paused: until it is resumed, or Talmo ends. Main thread.
class DictationPause final : public Observable {
    Q_OBJECT

public:
    using Observable::Observable;

    bool isPaused() const { return m_isPaused; }
    void setPaused(bool isPaused)
    {
        if (isPaused != m_isPaused) {
            publish(m_isPaused, isPaused);
        }
    }

private:
    bool m_isPaused = false;
};

} // namespace talmo
