#include "Base/Error.h"
#include "Control/ControlSocket.h"
#include "LanguageModel/LoopbackLanguageModel.h"
#include "Platform/DesktopCheck.h"
#include "Platform/Linux/System/LinuxServerTrust.h"
#include "Platform/Linux/System/LinuxSettings.h"
#include "Platform/Linux/System/SingleInstance.h"
#include "Platform/Linux/System/SystemLocaleSource.h"
#include "Platform/Linux/System/TimerFdClock.h"
#include "Recognition/EngineFactories.h"
#include "Recognition/Models/ModelStore.h"
#include "Recognition/Recognisers.h"
#include "Recognition/Recommendation.h"
#include "talmoctl/Command.h"
#include "talmoctl/SoundCheck.h"
#include "talmoctl/Terminal.h"
#include "talmoctl/UserSettings.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>

#include <unistd.h>

namespace talmo::ctl {

namespace {

/// A bar that moves while the microphone is listened to, on a terminal only.
void showMeter(float peak)
{
    constexpr int width = 30;
    constexpr double quietest = -50; // dB
    const double decibels = 20 * std::log10(std::max(double(peak), 1e-9));
    const int lit = std::clamp(static_cast<int>(std::lround((1 - decibels / quietest) * width)), 0, width);
    writeOutput(QStringLiteral("\rSay something: [%1%2]").arg(QString(lit, u'#'), QString(width - lit, u' ')));
}

void ignorePeak(float /*peak*/) {}

/// The installed models of the language that can be used.
QStringList usableModels(const EngineFactories &factories, const QString &locale)
{
    QStringList usable;
    const ModelStore store(ModelStore::standardFolder());
    for (const auto &name : store.installed()) {
        try {
            if (factories.forModel(store.path(name)).make(name, store.path(name))->speaks(locale)) {
                usable.append(name);
            }
        } catch (const Error &) { // NOLINT(bugprone-empty-catch): “talmoctl engines” says why.
        }
    }
    return usable;
}

QList<CheckResult> checkRecognition(const LinuxSettings &settings)
{
    const EngineFactories factories = EngineFactories::standard({settings.neuralLibrary, {}});
    const QString locale = SystemLocaleSource(settings.dictationLanguage).currentIdentifier();
    const QString language = languageNames({locale.section(u'_', 0, 0)});
    const QStringList models = usableModels(factories, locale);
    const bool isEmbeddedUsable = factories.embedded->speaks(locale) && factories.embedded->problem().isEmpty();
    const QString setup = QStringLiteral("Run “talmoctl setup”.");
    CheckResult engine{QStringLiteral("engine"), !models.isEmpty() || isEmbeddedUsable, true, {}, {}};
    engine.detail = !models.isEmpty()  ? QStringLiteral("Neural, for %1.").arg(language)
                    : isEmbeddedUsable ? QStringLiteral("Built in, for %1.").arg(language)
                                       : QStringLiteral("Dictating in %1 needs another recogniser.").arg(language);
    engine.remedy = engine.isOk ? QString() : setup;
    CheckResult model{QStringLiteral("model"), !models.isEmpty(), false, models.join(QStringLiteral(", ")), {}};
    if (models.isEmpty()) {
        model.detail = QStringLiteral("No better recogniser is installed for %1.").arg(language);
        model.remedy = setup;
    }
    return {engine, model};
}

QCoro::Task<CheckResult> checkModelServer(LinuxSettings settings, std::shared_ptr<Clock> clock)
{
    const auto executor = SerialExecutor::onNewThread(QStringLiteral("talmo-cleanup"));
    const auto model = std::make_shared<LoopbackLanguageModel>(settings.languageModel, executor, clock,
                                                               std::make_shared<LinuxServerTrust>());
    const auto probed = model->refresh();
    co_await probed;
    const bool isThere = !model->unavailableReason().has_value();
    CheckResult result{QStringLiteral("model server"), isThere, false, model->description(), {}};
    if (!isThere) {
        result.remedy = QStringLiteral("Not needed. For AI cleanup, start a language model server on this computer, "
                                       "such as Ollama or llama.cpp.");
    }
    const auto closed = model->shutDown();
    co_await closed;
    co_return result;
}

QByteArray asJson(const QList<CheckResult> &results, std::optional<float> peak, bool isOk)
{
    QJsonArray checks;
    for (const auto &result : results) {
        QJsonObject check{{QStringLiteral("name"), result.name},
                          {QStringLiteral("state"), result.isOk ? QStringLiteral("ok") : QStringLiteral("missing")},
                          {QStringLiteral("needed"), result.isNeeded},
                          {QStringLiteral("detail"), result.detail}};
        if (!result.remedy.isEmpty()) {
            check.insert(QStringLiteral("remedy"), result.remedy);
        }
        if (result.name == QStringLiteral("sound") && peak) {
            check.insert(QStringLiteral("peak"), double(*peak));
        }
        checks.append(check);
    }
    return QJsonDocument(QJsonObject{{QStringLiteral("ok"), isOk}, {QStringLiteral("checks"), checks}})
        .toJson(QJsonDocument::Indented);
}

void print(const QList<CheckResult> &results, bool isOk)
{
    for (const auto &result : results) {
        const QString state = result.isOk       ? QStringLiteral("ok")
                              : result.isNeeded ? QStringLiteral("MISSING")
                                                : QStringLiteral("missing");
        writeLine(QStringLiteral("%1 %2 %3").arg(state, -8).arg(result.name, -13).arg(result.detail));
        if (!result.remedy.isEmpty()) {
            writeLine(QString(23, u' ') + result.remedy);
        }
    }
    writeLine(isOk ? QStringLiteral("You can dictate.") : QStringLiteral("You cannot dictate yet."));
}

QCoro::Task<int> runDoctor(Invocation invocation)
{
    const UserSettings settings;
    const LinuxSettings linuxSettings = LinuxSettings::read(*settings.defaults);
    const auto clock = std::make_shared<TimerFdClock>();
    const bool isJson = invocation.has("json");
    const bool hasMeter = !isJson && ::isatty(STDOUT_FILENO) == 1;
    const QString microphone = settings.defaults->string(QStringLiteral("linux.microphone")).value_or(QString());
    const SoundCheck sound = co_await SoundCheck::run(microphone, clock, hasMeter ? &showMeter : &ignorePeak);
    if (hasMeter) {
        writeOutput(QStringLiteral("\r%1\r").arg(QString(50, u' ')));
    }
    QList<CheckResult> results{sound.result};
    results += checkRecognition(linuxSettings);
    const bool isRunning = !SingleInstance(ControlSocket::lockPath()).isFirst();
    results += checkDesktop({linuxSettings.standInKeys, linuxSettings.readKeyboards, isRunning});
    const CheckResult server = co_await checkModelServer(linuxSettings, clock);
    results.append(server);
    const bool isOk = std::all_of(results.begin(), results.end(),
                                  [](const CheckResult &result) { return result.isOk || !result.isNeeded; });
    if (isJson) {
        writeOutput(QString::fromUtf8(asJson(results, sound.peak, isOk)));
    } else {
        print(results, isOk);
    }
    co_return isOk ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace

Command doctorCommand()
{
    return {QStringLiteral("doctor"),
            QStringLiteral("Check everything that dictation uses, and say what to do about what is missing."),
            QString(),
            {flag("json", "Print the results as JSON.")},
            &runDoctor};
}

} // namespace talmo::ctl
