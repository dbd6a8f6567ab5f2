#include "Platform/Linux/Sound/PulsePreroll.h"

#include <utility>

namespace talmo {

PulsePreroll::PulsePreroll(std::shared_ptr<PulseAudioEngine> engine, std::shared_ptr<SerialExecutor> executor)
    : m_engine(std::move(engine)),
      m_executor(std::move(executor))
{
}

void PulsePreroll::post(void (PulseAudioEngine::*call)())
{
    m_executor->post([engine = m_engine, call] { (*engine.*call)(); });
}

} // namespace talmo
