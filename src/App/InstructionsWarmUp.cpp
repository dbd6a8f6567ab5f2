#include "App/InstructionsWarmUp.h"

#include "Cleanup/CleanupInstructions.h"

#include <utility>

namespace talmo {

InstructionsWarmUp::InstructionsWarmUp(const TalmoCoordinator &coordinator, Parts parts)
    : m_coordinator(coordinator),
      m_parts(std::move(parts))
{
    // The coordinator announces changes of the settings as well.
    connect(&coordinator, &Observable::objectWillChange, this, [this] { update(); }, Qt::QueuedConnection);
}

InstructionsWarmUp::~InstructionsWarmUp()
{
    cancel();
}

void InstructionsWarmUp::update()
{
    const auto &settings = m_coordinator.settings();
    const TalmoState &state = m_coordinator.state();
    const bool isRecording = state == TalmoState::recording();
    if (isRecording && settings.aiCleanupEnabled()) {
        const Choices choices{settings.dictionaryWords(), settings.conciseTextEnabled(), settings.textTone()};
        if (m_given != choices) {
            m_given = choices;
            // A request for a list has a line more, at the end: it begins with the same text.
            m_parts.warmUp(buildInstructions(choices.dictionaryWords, false, choices.isConcise, choices.tone));
        }
    } else if (isRecording || state != TalmoState::processing()) {
        cancel(); // While a sentence is processed, its own request ends the preparation.
    }
}

void InstructionsWarmUp::cancel()
{
    if (std::exchange(m_given, std::nullopt)) {
        m_parts.cancel();
    }
}

} // namespace talmo
