#pragma once

#include "App/SoundCues.h"
#include "Base/SerialExecutor.h"

#include <memory>

namespace talmo {

/// Plays the sounds of the desktop's sound theme. Connects to the sound server at the first one, on its own thread,
/// since a server that hangs blocks the connection.
class EventSounds final : public CuePlayer {
public:
    EventSounds();
    ~EventSounds() override;

    void play(SoundCue cue) override;

private:
    class Player;
    std::shared_ptr<Player> m_player; ///< Used only by the thread.
    std::shared_ptr<SerialExecutor> m_executor;
};

} // namespace talmo
