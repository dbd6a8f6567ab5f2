#include "App/SoundCues.h"

#include <optional>
#include <utility>

namespace talmo {

namespace {

std::optional<SoundCue> cueFor(const TalmoState &before, const TalmoState &now)
{
    if (now.is(TalmoState::Case::Recording)) {
        return SoundCue::Start;
    }
    if (now.is(TalmoState::Case::Error)) {
        return SoundCue::Error;
    }
    return before.is(TalmoState::Case::Recording) ? std::optional(SoundCue::Stop) : std::nullopt;
}

} // namespace

SoundCues::SoundCues(std::shared_ptr<DictationOptions> options, std::shared_ptr<CuePlayer> player,
                     TalmoCoordinator &coordinator)
    : QObject(&coordinator),
      m_options(std::move(options)),
      m_player(std::move(player)),
      m_coordinator(coordinator),
      m_state(coordinator.state())
{
    // Queued: changes are announced before they are stored.
    connect(&coordinator, &Observable::objectWillChange, this, [this] { stateMayHaveChanged(); }, Qt::QueuedConnection);
}

void SoundCues::stateMayHaveChanged()
{
    const TalmoState &now = m_coordinator.state();
    if (now == m_state) {
        return;
    }
    const auto cue = cueFor(std::exchange(m_state, now), now);
    if (cue && m_options->isOn(DictationOption::Sounds)) {
        m_player->play(*cue);
    }
}

} // namespace talmo
