#include "Benchmarks.h"
#include "SpokenText.h"

#include "Base/Task.h"
#include "Input/Audio/SpeexAudioConverter.h"
#include "Platform/Linux/System/TimerFdClock.h"
#include "Recognition/FileTranscription.h"
#include "Recognition/Recognisers.h"

#include <QCoro/QCoroFuture>

#include <QTemporaryDir>

namespace talmo::benchmarks {

namespace {

const QString language = QStringLiteral("en_US");

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

void measureRecognition(Figures &figures, int rounds)
{
    const auto decoder = SerialExecutor::onNewThread(QStringLiteral("decoder"));
    const auto recognisers =
        Recognisers::make(decoder, std::make_shared<TimerFdClock>(), {{}, EngineRegistry::embeddedChoice, {}});
    const auto service = std::make_shared<SpeechTranscriptionService>(
        recognisers.engines->platform(), std::make_shared<SpeexAudioConverterFactory>(),
        SerialExecutor::onNewThread(QStringLiteral("speech")), SerialExecutor::onCurrentThread());
    const QTemporaryDir folder;
    const QString sentence = QStringLiteral("thank you very much we will meet again on monday ");
    const QString shortest = QStringLiteral("last audio -> final text, embedded, 3 s");
    for (const int seconds : {3, 10, 30}) {
        const QString file = testbed::speak(sentence.repeated(seconds / 3), folder.path());
        for (int round = 0; round < rounds; ++round) {
            const auto heard =
                QCoro::waitFor(orNothing(transcribeFile(service, decoder, file, language, [](const QString &) {})));
            figures
                .row(QStringLiteral("last audio -> final text, embedded, %1 s").arg(seconds), QStringLiteral("ms"),
                     seconds == 3 ? QString() : shortest)
                .add(std::chrono::duration<double, std::milli>(heard.finishing).count());
        }
    }
}

} // namespace talmo::benchmarks
