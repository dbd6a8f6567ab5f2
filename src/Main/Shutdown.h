#pragma once

#include "Main/Executors.h"
#include "Main/Services.h"
#include "Platform/Linux/System/JsonUserDefaults.h"
#include "Platform/Linux/System/TimerFdClock.h"
#include "Recognition/Models/SpeechModels.h"

#include <QCoro/QCoroTask>

#include <memory>

namespace talmo {

/// How long a sentence that is being finished may hold up the end of the program, or of the session.
inline constexpr Duration longestLastDictation = std::chrono::seconds(5);

struct ShutdownParts {
    Executors executors;
    std::shared_ptr<Services> services;
    std::shared_ptr<const Desktop> desktop;
    std::shared_ptr<SpeechModels> models;
    std::shared_ptr<LoopbackLanguageModel> languageModel;
    std::shared_ptr<JsonUserDefaults> defaults;
    std::shared_ptr<TimerFdClock> clock;
};

/// Ends everything in the order in which nothing is lost: the sentence under way is inserted or left on the clipboard,
/// then capture, recognition and downloads stop, the clipboard is restored, and the settings are written. Needs a
/// running event loop.
QCoro::Task<void> shutDown(ShutdownParts parts);

} // namespace talmo
