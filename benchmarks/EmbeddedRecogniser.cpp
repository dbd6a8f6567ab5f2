#include "EmbeddedRecogniser.h"

#include "Base/Task.h"
#include "Input/Audio/SpeexAudioConverter.h"
#include "Platform/Linux/System/TimerFdClock.h"
#include "Recognition/FileTranscription.h"

#include <QCoro/QCoroFuture>

namespace talmo::benchmarks {

namespace {

/// Waiting for a task that throws would never return.
QCoro::Task<FileTranscript> orNothing(QCoro::Task<FileTranscript> task)
{
    FileTranscript transcript;
    try {
        transcript = co_await task;
    } catch (const std::exception &error) {
        qWarning("%s", error.what());
    }
    co_return transcript;
}

} // namespace

EmbeddedRecogniser::EmbeddedRecogniser()
    : m_decoder(SerialExecutor::onNewThread(QStringLiteral("decoder"))),
      m_recognisers(
          Recognisers::make(m_decoder, std::make_shared<TimerFdClock>(), {{}, EngineRegistry::embeddedChoice, {}})),
      m_service(std::make_shared<SpeechTranscriptionService>(
          m_recognisers.engines->platform(), std::make_shared<SpeexAudioConverterFactory>(),
          SerialExecutor::onNewThread(QStringLiteral("speech")), SerialExecutor::onCurrentThread()))
{
}

double EmbeddedRecogniser::finishing(const QString &file, const OnText &onText)
{
    const auto heard =
        QCoro::waitFor(orNothing(transcribeFile(m_service, m_decoder, file, QStringLiteral("en_US"), onText)));
    return std::chrono::duration<double, std::milli>(heard.finishing).count();
}

} // namespace talmo::benchmarks
