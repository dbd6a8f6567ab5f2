#include "Base/SerialExecutor.h"
#include "Base/Text.h"
#include "Cleanup/CleanupInstructions.h"
#include "Cleanup/TextCleanupService.h"
#include "LanguageModel/LoopbackLanguageModel.h"
#include "Platform/Linux/System/LinuxServerTrust.h"
#include "Platform/Linux/System/LinuxSettings.h"
#include "Platform/Linux/System/TimerFdClock.h"
#include "Settings/TextTone.h"
#include "talmoctl/Command.h"
#include "talmoctl/Terminal.h"
#include "talmoctl/UserSettings.h"

#include <QCoro/QCoroFuture>

namespace talmo::ctl {

namespace {

const char *const rawDescription = "Do not add a newline to the output.";

void writeText(const Invocation &invocation, const QString &text)
{
    if (invocation.has("raw")) {
        writeOutput(text);
    } else if (!text.isEmpty()) {
        writeLine(text);
    }
}

/// `transcript`: not empty.
QCoro::Task<QString> cleanedText(QString transcript, bool usesModel, UserSettings settings)
{
    const auto executor = SerialExecutor::onNewThread(QStringLiteral("cleanup"));
    auto configuration = LinuxSettings::read(*settings.defaults).languageModel;
    if (!usesModel) {
        configuration.address = QStringLiteral("off");
    }
    const auto model = std::make_shared<LoopbackLanguageModel>(
        configuration, executor, std::make_shared<TimerFdClock>(), std::make_shared<LinuxServerTrust>());
    TextCleanupService service(executor, model);
    if (usesModel) {
        co_await model->refresh();
        if (service.unavailabilityMessage()) {
            complain(QStringLiteral("no language model, formatted by simple rules instead: ") + model->description());
        }
    }
    const QString text = co_await service.cleanup(transcript, usesModel, settings.values->conciseTextEnabled(),
                                                  settings.values->textTone(), settings.values->dictionaryWords());
    co_await model->shutDown();
    co_return text;
}

QCoro::Task<int> runCleanup(Invocation invocation, bool usesModel, UserSettings settings)
{
    const QString transcript = Text::trimWhitespaceAndNewlines(readInput());
    if (transcript.isEmpty()) {
        co_return EXIT_SUCCESS; // Nothing was said.
    }
    const QString text = co_await cleanedText(transcript, usesModel, settings);
    writeText(invocation, text);
    co_return EXIT_SUCCESS;
}

QCoro::Task<int> runFormat(Invocation invocation)
{
    return runCleanup(invocation, false, UserSettings());
}

QCoro::Task<int> runClean(Invocation invocation)
{
    const UserSettings settings;
    return runCleanup(invocation, settings.values->aiCleanupEnabled(), settings);
}

TextTone toneOf(const Invocation &invocation, TextTone usual)
{
    if (!invocation.has("tone")) {
        return usual;
    }
    const auto tone = textToneFromRawValue(invocation.value("tone"));
    if (!tone) {
        throw UsageError(QStringLiteral("unknown tone “%1”; choose standard, professional, friendly or polite")
                             .arg(invocation.value("tone")));
    }
    return *tone;
}

QStringList wordsOf(const Invocation &invocation, const QStringList &usual)
{
    const auto words = invocation.arguments->values(QStringLiteral("word"));
    if (invocation.has("no-words") && !words.isEmpty()) {
        throw UsageError(QStringLiteral("--word and --no-words cannot be combined"));
    }
    return invocation.has("no-words") || !words.isEmpty() ? words : usual;
}

bool conciseOf(const Invocation &invocation, bool usual)
{
    if (invocation.has("concise") && invocation.has("no-concise")) {
        throw UsageError(QStringLiteral("--concise and --no-concise cannot be combined"));
    }
    return invocation.has("concise") || (usual && !invocation.has("no-concise"));
}

QCoro::Task<int> runInstructions(Invocation invocation)
{
    const UserSettings settings;
    writeText(invocation,
              buildInstructions(wordsOf(invocation, settings.values->dictionaryWords()), invocation.has("bullets"),
                                conciseOf(invocation, settings.values->conciseTextEnabled()),
                                toneOf(invocation, settings.values->textTone())));
    co_return EXIT_SUCCESS;
}

} // namespace

Command formatCommand()
{
    return {QStringLiteral("format"),
            QStringLiteral("Format a transcript from stdin by simple rules, without a language model."),
            {},
            {flag("raw", rawDescription)},
            &runFormat};
}

Command cleanCommand()
{
    return {
        QStringLiteral("clean"),
        QStringLiteral("Clean up a transcript from stdin using your settings (and the language model, if enabled)."),
        {},
        {flag("raw", rawDescription)},
        &runClean};
}

Command instructionsCommand()
{
    return {QStringLiteral("instructions"),
            QStringLiteral("Print the instructions for the language model. Defaults come from your settings."),
            {},
            {option("tone", "tone", "standard, professional, friendly or polite."),
             flag("concise", "Ask for concise wording."), flag("no-concise", "Do not ask for concise wording."),
             flag("bullets", "Ask for a bullet list."), option("word", "word", "A word to preserve; can be repeated."),
             flag("no-words", "Preserve no words."), flag("raw", rawDescription)},
            &runInstructions};
}

} // namespace talmo::ctl
