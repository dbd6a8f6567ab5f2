#pragma once

#include "Recognition/EngineSpeechPlatform.h"
#include "Support/ManualClock.h"

namespace talmo::test {

/// A platform with one engine, on the test's thread or another decoder thread.
inline std::shared_ptr<EngineSpeechPlatform>
platformWith(std::shared_ptr<SpeechEngine> engine,
             std::shared_ptr<SerialExecutor> executor = SerialExecutor::onCurrentThread())
{
    auto platform = std::make_shared<EngineSpeechPlatform>(std::move(executor), std::make_shared<ManualClock>());
    platform->setEngines({std::move(engine)});
    return platform;
}

} // namespace talmo::test
