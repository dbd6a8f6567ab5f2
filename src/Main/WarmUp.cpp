#include "Main/WarmUp.h"

#include "Base/Log.h"
#include "Cleanup/CleanupInstructions.h"
#include "Settings/TalmoSettings.h"

namespace talmo {

WarmUp::WarmUp(const Parts &parts, TalmoCoordinator &coordinator)
    : m_engines(parts.engines),
      m_preparation(PressPreparation::Parts{
          parts.eventMonitor, parts.services->gestures, parts.services->preroll, parts.clock,
          [trace = parts.services->trace, engines = parts.engines, locale = parts.locale, model = parts.languageModel] {
              trace->note(DictationTrace::Stage::Pressed);
              engines->warmUp(locale->currentIdentifier());
              model->refresh(); // Answered before the user has finished speaking.
          }}),
      m_instructions(coordinator, {[model = parts.languageModel](const QString &instructions) {
                                       model->warmUp(instructions, promptStart());
                                   },
                                   [model = parts.languageModel] { model->cancelWarmUp(); }})
{
    followState(coordinator);
    followDictionary();
    m_preparation.start();
}

/// One log line per state lets users who report a problem send what happened.
void WarmUp::followState(TalmoCoordinator &coordinator)
{
    const auto lastState = std::make_shared<TalmoState>(coordinator.state());
    connect(
        &coordinator, &Observable::objectWillChange, this,
        [this, &coordinator, lastState] {
            if (*lastState == coordinator.state()) {
                return;
            }
            *lastState = coordinator.state();
            m_engines->noteUse();
            generalLog().info("state: %s", {name(coordinator.state())});
        },
        Qt::QueuedConnection);
}

void WarmUp::followDictionary()
{
    const auto settings = TalmoSettings::shared();
    const auto publish = [engines = m_engines, settings] { engines->setWords(settings->dictionaryWords()); };
    connect(settings.get(), &Observable::objectWillChange, this, publish, Qt::QueuedConnection);
    publish();
}

} // namespace talmo
