#include "Base/SerialExecutor.h"
#include "Input/Audio/SoundFileEngine.h"
#include "Input/Audio/SpeexAudioConverter.h"
#include "Platform/Linux/System/LinuxSettings.h"
#include "Platform/Linux/System/SystemLocaleSource.h"
#include "Platform/Linux/System/TimerFdClock.h"
#include "Recognition/FileTranscription.h"
#include "Recognition/Recognisers.h"
#include "Speech/SpeechTranscriptionService.h"
#include "Speech/TranscriptionError.h"
#include "talmoctl/Command.h"
#include "talmoctl/Terminal.h"
#include "talmoctl/UserSettings.h"

#include <QCoro/QCoroFuture>

namespace talmo::ctl {

namespace {

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

QCoro::Task<int> runTranscribe(Invocation invocation)
{
    const QString path = invocation.arguments->positionalArguments().first();
    const SoundFileEngine check(path); // Fails on an unreadable file before a model is downloaded for it.
    const UserSettings settings;
    LinuxSettings linuxSettings = LinuxSettings::read(*settings.defaults);
    if (invocation.has("engine")) {
        linuxSettings.speechEngine = invocation.value("engine");
    }
    const auto recogniser = SerialExecutor::onNewThread(QStringLiteral("decoder"));
    // The engines and the vocabulary of a dictation.
    const auto recognisers = Recognisers::make(recogniser, std::make_shared<TimerFdClock>(),
                                               {{linuxSettings.neuralLibrary, {}}, linuxSettings.speechEngine, {}});
    co_await recognisers.engines->modelsChecked();
    recognisers.engines->setWords(settings.values->dictionaryWords());
    const auto service = std::make_shared<SpeechTranscriptionService>(
        recognisers.engines->platform(), std::make_shared<SpeexAudioConverterFactory>(),
        SerialExecutor::onNewThread(QStringLiteral("speech")), SerialExecutor::onCurrentThread());
    const QString language = invocation.has("language")
                                 ? invocation.value("language")
                                 : SystemLocaleSource(linuxSettings.dictationLanguage).currentIdentifier();
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
    const FileTranscript heard = co_await transcribeFile(service, recogniser, path, language, onUpdate);
    const QString transcript = heard.text;
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
            QStringLiteral("Transcribe a sound file the way a dictation is transcribed."),
            QStringLiteral("FILE"),
            {flag("live", "Print the transcript so far whenever it changes."),
             option("language", "locale", "The spoken language, such as en_US (default: the one you dictate in)."),
             option("engine", "name", "The recogniser: “embedded” or the name of an installed model.")},
            &runTranscribe};
}

} // namespace talmo::ctl
