#include "Base/SerialExecutor.h"
#include "Platform/Linux/FileTranscription.h"
#include "Platform/Linux/LinuxSettings.h"
#include "Platform/Linux/PocketSphinxPlatform.h"
#include "Platform/Linux/SoundFileEngine.h"
#include "Platform/Linux/SpeechEngines.h"
#include "Platform/Linux/SpeexAudioConverter.h"
#include "Platform/Linux/SystemLocaleSource.h"
#include "Speech/SpeechTranscriptionService.h"
#include "Speech/TranscriptionError.h"
#include "talmoctl/Command.h"
#include "talmoctl/Terminal.h"
#include "talmoctl/UserSettings.h"

#include <QCoro/QCoroFuture>

namespace talmo::ctl {

namespace {

/// The recogniser as it is when the user dictates: it hears the same words.
std::shared_ptr<PocketSphinxPlatform> usersRecogniser(const UserSettings &settings,
                                                      const std::shared_ptr<SerialExecutor> &executor)
{
    auto platform = std::make_shared<PocketSphinxPlatform>(executor);
    platform->setVocabulary(
        {settings.values->dictionaryWords(), Pronunciation::readSoundsLike(SpeechEngines::pronunciationsPath())});
    return platform;
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

QCoro::Task<int> runTranscribe(Invocation invocation)
{
    const QString path = invocation.arguments->positionalArguments().first();
    const SoundFileEngine check(path); // What cannot be read is said before a model is installed for it.
    const UserSettings settings;
    const auto recogniser = SerialExecutor::onNewThread(QStringLiteral("decoder"));
    const auto service = std::make_shared<SpeechTranscriptionService>(
        usersRecogniser(settings, recogniser), std::make_shared<SpeexAudioConverterFactory>(),
        SerialExecutor::onNewThread(QStringLiteral("speech")), SerialExecutor::onCurrentThread());
    const QString language =
        invocation.has("language")
            ? invocation.value("language")
            : SystemLocaleSource(LinuxSettings::read(*settings.defaults).dictationLanguage).currentIdentifier();
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
            QStringLiteral("Recognise the speech in a sound file, the way a dictation does."),
            QStringLiteral("FILE"),
            {flag("live", "Show every line on the way: the transcript so far, whenever it changes."),
             option("language", "locale", "The language spoken, such as en_US, instead of the one you dictate in.")},
            &runTranscribe};
}

} // namespace talmo::ctl
