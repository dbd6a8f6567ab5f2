#pragma once

#include "App/InstructionsWarmUp.h"
#include "App/PressPreparation.h"
#include "Main/Services.h"
#include "Recognition/EngineRegistry.h"

#include <QObject>

#include <memory>

namespace talmo {

/// Has everything ready by the time it is needed: models load at the press, while a hold is still undecided; the user's
/// own words reach the engines as they are entered; models stay loaded while somebody dictates; the language model
/// reads its instructions while the user speaks. Main thread.
class WarmUp final : public QObject {
public:
    struct Parts {
        std::shared_ptr<EventMonitor> eventMonitor;
        std::shared_ptr<Services> services;
        std::shared_ptr<EngineRegistry> engines;
        std::shared_ptr<LoopbackLanguageModel> languageModel;
        std::shared_ptr<LocaleSource> locale;
        std::shared_ptr<Clock> clock;
    };

    /// Before the coordinator's own monitors start, which would otherwise see a press first.
    WarmUp(const Parts &parts, TalmoCoordinator &coordinator);

private:
    void followState(TalmoCoordinator &coordinator);
    void followDictionary();

    std::shared_ptr<EngineRegistry> m_engines;
    PressPreparation m_preparation;
    InstructionsWarmUp m_instructions;
};

} // namespace talmo
