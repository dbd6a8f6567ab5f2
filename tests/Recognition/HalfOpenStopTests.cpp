// A stop that comes after a start has failed halfway.

#include "Base/Task.h"
#include "Input/Audio/AudioRecorder.h"
#include "Input/Audio/SpeexAudioConverter.h"
#include "Recognition/EnginePlatform.h"
#include "Speech/SpeechTranscriptionService.h"
#include "Support/FakeAudioEngine.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"

#include <gmock/gmock.h>

namespace talmo::test {

using testing::ElementsAre;

namespace {

/// An engine that nobody gets to use.
class UnusedPlatform final : public EnginePlatform {
public:
    explicit UnusedPlatform(std::shared_ptr<SerialExecutor> executor)
        : EnginePlatform(std::move(executor))
    {
    }
    QFuture<std::optional<QString>> supportedLocale(const QString &locale) override
    {
        return ready(std::optional(locale));
    }
    QFuture<std::shared_ptr<AssetInstallationRequest>>
    assetInstallationRequest(const std::shared_ptr<SpeechTranscriber> &) override
    {
        return ready(std::shared_ptr<AssetInstallationRequest>());
    }

protected:
    bool isInstalled() const override { return true; }
    MakeRecordingDecoder decoderMaker() override { return {}; }
};

QCoro::Task<void> startAndStop(SpeechTranscriptionService *service, std::shared_ptr<RecorderService> recorder,
                               QStringList *outcomes)
{
    try {
        co_await service->startTranscription(
            recorder, u"en_US"_s, [](const QString &) {}, [](const std::exception_ptr &) {});
        outcomes->append(u"started"_s);
    } catch (const Error &error) {
        outcomes->append(error.localizedDescription());
    }
    try {
        outcomes->append(u"text: "_s + co_await service->stopTranscription());
    } catch (const Error &error) {
        outcomes->append(error.localizedDescription());
    }
}

} // namespace

TEST(HalfOpenStop, endsAfterTheRecorderFailedToStart)
{
    const auto executor = SerialExecutor::onCurrentThread();
    SpeechTranscriptionService service(std::make_shared<UnusedPlatform>(executor),
                                       std::make_shared<SpeexAudioConverterFactory>(), executor, executor);
    const auto engine = std::make_shared<FakeAudioEngine>();
    engine->startFailure = std::make_exception_ptr(Error(u"busy"_s));
    QStringList outcomes;
    logEscapes(startAndStop(&service, std::make_shared<AudioRecorder>(engine), &outcomes));
    settle();
    EXPECT_THAT(outcomes, ElementsAre(u"Couldn't start audio capture: busy"_s, u"text: "_s));
}

} // namespace talmo::test
