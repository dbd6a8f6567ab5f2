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
        // A request for a list has a line more, at the end: it begins with the same text.
        const QString instructions =
            buildInstructions(settings.dictionaryWords(), false, settings.conciseTextEnabled(), settings.textTone());
        if (m_instructions != instructions) {
            m_instructions = instructions;
            m_parts.warmUp(instructions);
        }
    } else if (isRecording || state != TalmoState::processing()) {
        cancel(); // While a sentence is processed, its own request ends the preparation.
    }
}

void InstructionsWarmUp::cancel()
{
    if (std::exchange(m_instructions, std::nullopt)) {
        m_parts.cancel();
    }
}

} // namespace talmo
