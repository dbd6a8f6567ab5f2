#pragma once

#include "App/TalmoCoordinator.h"
#include "Settings/DictationOptions.h"

#include <QObject>

#include <memory>

namespace talmo {

/// The sounds of a dictation.
enum class SoundCue { Start, Stop, Error };

/// Plays the desktop's own sounds. Main thread; never blocks.
class CuePlayer {
public:
    virtual ~CuePlayer() = default;
    virtual void play(SoundCue cue) = 0;
};

/// Plays a sound when a recording starts, when it ends and when something goes wrong, for users who do not look, if
/// they have switched it on. Main thread.
class SoundCues final : public QObject {
    Q_OBJECT

public:
    /// The coordinator is the parent, and so outlives this.
    SoundCues(std::shared_ptr<DictationOptions> options, std::shared_ptr<CuePlayer> player,
              TalmoCoordinator &coordinator);

private:
    void stateMayHaveChanged();

    std::shared_ptr<DictationOptions> m_options;
    std::shared_ptr<CuePlayer> m_player;
    TalmoCoordinator &m_coordinator;
    TalmoState m_state;
};

} // namespace talmo
