#include "Base/SerialExecutor.h"
#include "Input/AudioRecorder.h"
#include "Platform/Linux/JsonUserDefaults.h"
#include "Platform/Linux/LinuxSettings.h"
#include "Platform/Linux/PocketSphinxPlatform.h"
#include "Platform/Linux/SoundFileEngine.h"
#include "Platform/Linux/SpeexAudioConverter.h"
#include "Platform/Linux/SystemLocaleSource.h"
#include "Speech/SpeechTranscriptionService.h"
#include "Speech/TranscriptionError.h"
#include "talmoctl/Command.h"
#include "talmoctl/Terminal.h"

#include <QCoro/QCoroFuture>

namespace talmo::ctl {

namespace {

QString dictationLanguage()
{
    const JsonUserDefaults defaults(JsonUserDefaults::standardPath(), SerialExecutor::onCurrentThread());
    return SystemLocaleSource(LinuxSettings::read(defaults).dictationLanguage).currentIdentifier();
}

QCoro::Task<void> ensureModel(std::shared_ptr<SpeechTranscriptionService> service, QString language)
{
    const ModelStatus status = co_await service->modelStatus(language);
    if (!status.supported) {
        throw TranscriptionError(TranscriptionError::Case::LocaleNotSupported);
    }
    if (!status.installed) {
        co_await service->installModel(language);
    }
}

/// Hands the file out as fast as the recogniser takes it: it gets a turn for every buffer.
QCoro::Task<void> play(std::shared_ptr<SoundFileEngine> file, std::shared_ptr<SerialExecutor> recogniser)
{
    while (file->deliverNext()) {
        const auto turn = recogniser->call([] {});
        co_await turn;
    }
}

QCoro::Task<int> runTranscribe(Invocation invocation)
{
    const auto file = std::make_shared<SoundFileEngine>(invocation.arguments->positionalArguments().first());
    const auto recorder = std::make_shared<AudioRecorder>(file);
    const auto recogniser = SerialExecutor::onNewThread(QStringLiteral("decoder"));
    const auto service = std::make_shared<SpeechTranscriptionService>(
        std::make_shared<PocketSphinxPlatform>(recogniser), std::make_shared<SpeexAudioConverterFactory>(),
        SerialExecutor::onNewThread(QStringLiteral("speech")), SerialExecutor::onCurrentThread());
    const QString language = invocation.has("language") ? invocation.value("language") : dictationLanguage();
    co_await ensureModel(service, language);

    const auto lastLine = std::make_shared<QString>();
    const auto writeIfNew = [lastLine](const QString &text) {
        if (text != *lastLine) {
            writeLine(text);
            *lastLine = text;
        }
    };
    TranscriptionService::UpdateHandler onUpdate = [](const QString &) {};
    if (invocation.has("live")) {
        onUpdate = writeIfNew;
    }
    const auto failure = std::make_shared<std::exception_ptr>();
    TranscriptionService::ErrorHandler onError = [failure](const std::exception_ptr &error) { *failure = error; };
    co_await service->startTranscription(recorder, language, onUpdate, onError);
    co_await play(file, recogniser);
    const QString transcript = co_await service->stopTranscription();
    if (*failure) {
        std::rethrow_exception(*failure);
    }
    if (transcript.isEmpty()) {
        throw Error(QStringLiteral("No speech detected."));
    }
    writeIfNew(transcript);
    co_return EXIT_SUCCESS;
}

} // namespace

Command transcribeCommand()
{
    return {QStringLiteral("transcribe"),
            QStringLiteral("Recognise the speech in a sound file, the way a dictation does."),
            QStringLiteral("FILE"),
            {flag("live", "Show every line on the way: the transcript so far, whenever it changes."),
             option("language", "locale", "The language spoken, such as en_US, instead of the one you dictate in.")},
            &runTranscribe};
}

} // namespace talmo::ctl
