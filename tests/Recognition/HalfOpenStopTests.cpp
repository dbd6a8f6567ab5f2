// Stopping after a start that failed halfway.

#include "Base/Task.h"
#include "Input/Audio/AudioRecorder.h"
#include "Input/Audio/SpeexAudioConverter.h"
#include "Speech/SpeechTranscriptionService.h"
#include "Support/FakeAudioEngine.h"
#include "Support/MadeUpEngine.h"
#include "Support/Printing.h"
#include "Support/SinglePlatform.h"
#include "Support/TestLoop.h"

#include <gmock/gmock.h>

namespace talmo::test {

using testing::ElementsAre;

namespace {

QCoro::Task<void> startAndStop(SpeechTranscriptionService *service, std::shared_ptr<RecorderService> recorder,
                               QStringList *outcomes)
{
    const auto onUpdate = [](const QString &) {};
    const auto onError = [](const std::exception_ptr &) {};
    try {
        co_await service->startTranscription(recorder, u"en_US"_s, onUpdate, onError);
        outcomes->append(u"started"_s);
    } catch (const Error &error) {
        outcomes->append(error.localizedDescription());
    }
    try {
        const QString text = co_await service->stopTranscription();
        outcomes->append(u"text: "_s + text);
    } catch (const Error &error) {
        outcomes->append(error.localizedDescription());
    }
}

} // namespace

TEST(HalfOpenStop, completesAfterRecorderFailedToStart)
{
    const auto executor = SerialExecutor::onCurrentThread();
    SpeechTranscriptionService service(platformWith(std::make_shared<MadeUpEngine>()),
                                       std::make_shared<SpeexAudioConverterFactory>(), executor, executor);
    const auto engine = std::make_shared<FakeAudioEngine>();
    engine->startFailure = std::make_exception_ptr(Error(u"busy"_s));
    QStringList outcomes;
    logEscapes(startAndStop(&service, std::make_shared<AudioRecorder>(engine), &outcomes));
    settle();
    EXPECT_THAT(outcomes, ElementsAre(u"Couldn't start audio capture: busy"_s, u"text: "_s));
}

} // namespace talmo::test
