#include "Recognition/EnginePlatform.h"

#include "Platform/Linux/System/TimerFdClock.h"
#include "Recognition/EngineAnalyzer.h"

#include <utility>

namespace talmo {

EnginePlatform::EnginePlatform(std::shared_ptr<SerialExecutor> executor)
    : m_executor(std::move(executor)),
      m_clock(std::make_shared<TimerFdClock>())
{
}

std::shared_ptr<SpeechTranscriber> EnginePlatform::makeTranscriber(const QString & /*supportedLocale*/,
                                                                   TranscriberConfiguration /*configuration*/)
{
    return std::make_shared<EngineTranscriber>();
}

QFuture<AssetStatus> EnginePlatform::assetStatus(const std::shared_ptr<SpeechTranscriber> & /*transcriber*/)
{
    return ready(isInstalled() ? AssetStatus::Installed : AssetStatus::Supported);
}

QFuture<std::optional<AudioFormat>>
EnginePlatform::bestAvailableAudioFormat(const std::shared_ptr<SpeechTranscriber> & /*transcriber*/)
{
    return ready(std::optional(AudioFormat{RecordingDecoder::sampleRate, 1, SampleType::Int16}));
}

std::shared_ptr<SpeechAnalyzer> EnginePlatform::makeAnalyzer(const std::shared_ptr<SpeechTranscriber> &transcriber)
{
    return std::make_shared<EngineAnalyzer>(std::dynamic_pointer_cast<EngineTranscriber>(transcriber), decoderMaker(),
                                            m_executor, m_clock);
}

} // namespace talmo
