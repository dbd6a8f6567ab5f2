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
#include "talmoctl/ReportingLanguageModel.h"
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

/// The language model that edits a transcript.
enum class Editor { Rules, Model };

/// What became of the language model's edit. `isAvailable`: before the request; `description`: of the model, or why
/// there is none.
QString editReport(bool isAvailable, const QString &description, const ReportingLanguageModel::Report &report)
{
    const auto rules = QStringLiteral("formatted by simple rules, not by a language model: ");
    if (!isAvailable) {
        return rules + description;
    }
    if (report.requests == 0) {
        return rules + QStringLiteral("there is no sentence to edit");
    }
    if (report.edited == report.requests) {
        return QStringLiteral("edited by the language model %1").arg(description);
    }
    if (report.edited == 0) {
        return rules + report.problem;
    }
    return QStringLiteral(
               "the language model edited %1 of %2 paragraphs; the others were formatted by simple rules: %3")
        .arg(report.edited)
        .arg(report.requests)
        .arg(report.problem);
}

/// `transcript`: not empty.
QCoro::Task<QString> cleanedText(QString transcript, Editor editor, UserSettings settings)
{
    const bool usesModel = editor == Editor::Model;
    const auto executor = SerialExecutor::onNewThread(QStringLiteral("cleanup"));
    auto configuration = LinuxSettings::read(*settings.defaults).languageModel;
    if (!usesModel) {
        configuration.address = QStringLiteral("off");
    }
    const auto model = std::make_shared<LoopbackLanguageModel>(
        configuration, executor, std::make_shared<TimerFdClock>(), std::make_shared<LinuxServerTrust>());
    const auto reporting = std::make_shared<ReportingLanguageModel>(model);
    TextCleanupService service(executor, reporting);
    if (usesModel) {
        co_await model->refresh();
    }
    const bool isAvailable = !model->unavailableReason();
    const QString description = model->description();
    const QString text = co_await service.cleanup(transcript, usesModel, settings.values->conciseTextEnabled(),
                                                  settings.values->textTone(), settings.values->dictionaryWords());
    co_await model->shutDown();
    if (usesModel) {
        complain(editReport(isAvailable, description, reporting->report()));
    }
    co_return text;
}

/// `whyNotModel`: what to report where only rules are used; empty for nothing.
QCoro::Task<int> runCleanup(Invocation invocation, Editor editor, UserSettings settings, QString whyNotModel)
{
    const QString transcript = Text::trimWhitespaceAndNewlines(readInput());
    if (transcript.isEmpty()) {
        co_return EXIT_SUCCESS; // Nothing was said.
    }
    if (!whyNotModel.isEmpty()) {
        complain(editReport(false, whyNotModel, {}));
    }
    const QString text = co_await cleanedText(transcript, editor, settings);
    writeText(invocation, text);
    co_return EXIT_SUCCESS;
}

QCoro::Task<int> runFormat(Invocation invocation)
{
    return runCleanup(invocation, Editor::Rules, UserSettings(), {});
}

QCoro::Task<int> runClean(Invocation invocation)
{
    const UserSettings settings;
    return settings.values->aiCleanupEnabled()
               ? runCleanup(invocation, Editor::Model, settings, {})
               : runCleanup(invocation, Editor::Rules, settings, QStringLiteral("AI cleanup is off in the settings"));
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
            QStringLiteral("Format a transcript from stdin with simple rules, without a language model."),
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
