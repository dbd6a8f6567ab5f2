#include "Platform/Linux/System/LinuxSettings.h"
#include "Platform/Linux/System/ProcessMemory.h"
#include "Platform/Linux/System/SystemLocaleSource.h"
#include "Platform/Linux/System/TimerFdClock.h"
#include "Recognition/EngineFactories.h"
#include "Recognition/EngineRegistry.h"
#include "Recognition/ModelCheck.h"
#include "Recognition/Models/ModelStore.h"
#include "Recognition/Recognisers.h"
#include "Recognition/Recommendation.h"
#include "talmoctl/Command.h"
#include "talmoctl/Terminal.h"
#include "talmoctl/UserSettings.h"

namespace talmo::ctl {

namespace {

void describeEmbedded(SpeechEngine &engine)
{
    const QString problem = engine.problem();
    writeLine(
        QStringLiteral("embedded: %1, %2")
            .arg(engine.description(),
                 problem.isEmpty()
                     ? QStringLiteral("usable (%1)").arg(measure(engine, &ProcessMemory::usedMegabytes).description())
                     : QStringLiteral("unusable: %1").arg(problem)));
}

/// Measured in a child process, because some libraries abort on an invalid model.
void describeModel(const EngineFactories &factories, const QString &library, const QString &folder)
{
    QString name = QStringLiteral("unknown engine");
    try {
        const EngineFactory &factory = factories.forModel(folder);
        name = factory.engine;
        const auto engine = factory.make(QString(), folder);
        const QString report = measureApart(library, folder).description();
        writeLine(QStringLiteral("%1: %2, language %3, usable (%4)")
                      .arg(name, folder, engine->languages().join(QStringLiteral(", ")), report));
    } catch (const Error &error) {
        writeLine(QStringLiteral("%1: %2, unusable: %3").arg(name, folder, wholeDescription(error)));
    }
}

void describeModels(const EngineFactories &factories, const QString &library)
{
    const ModelStore store(ModelStore::standardFolder());
    const auto names = store.installed();
    if (names.isEmpty()) {
        writeLine(QStringLiteral("models: none in %1; run “talmoctl model list” to see them").arg(store.folder()));
    }
    for (const auto &name : names) {
        describeModel(factories, library, store.path(name));
    }
}

/// A problem with the library has already been reported.
void describeBetter(const EngineFactories &factories, const LinuxSettings &settings)
{
    const ModelCatalogue catalogue = Recognisers::catalogue(factories);
    const auto installer =
        Recognisers::installer(std::make_shared<TimerFdClock>(), factories, catalogue, settings.neuralLibrary);
    const QString locale = SystemLocaleSource(settings.dictationLanguage).currentIdentifier();
    try {
        const QString better = betterRecognition(catalogue, installer, locale);
        writeLine(QStringLiteral("better: ") +
                  (better.isEmpty() ? QStringLiteral("nothing for this computer") : better));
    } catch (const Error &error) {
        writeLine(QStringLiteral("better: ") + wholeDescription(error));
    }
}

QCoro::Task<int> runEngines(Invocation /*invocation*/)
{
    const UserSettings settings;
    const LinuxSettings linuxSettings = LinuxSettings::read(*settings.defaults);
    const EngineFactories factories = EngineFactories::standard({linuxSettings.neuralLibrary, {}});
    describeEmbedded(*factories.embedded);
    for (const auto &factory : factories.installable) {
        try {
            writeLine(QStringLiteral("%1: %2").arg(factory.engine, factory.library()));
        } catch (const Error &error) {
            writeLine(QStringLiteral("%1: %2").arg(factory.engine, wholeDescription(error)));
        }
    }
    describeModels(factories, linuxSettings.neuralLibrary);
    writeLine(QStringLiteral("chosen: ") + linuxSettings.speechEngine);
    describeBetter(factories, linuxSettings);
    co_return EXIT_SUCCESS;
}

QCoro::Task<int> runCheckModel(Invocation invocation)
{
    const QString model = invocation.arguments->positionalArguments().first();
    const EngineFactories factories = EngineFactories::standard({invocation.value("library"), {}});
    const auto engine =
        model == EngineRegistry::embeddedChoice ? factories.embedded : factories.forModel(model).make(QString(), model);
    const auto trial = invocation.has("load-only") ? ModelTrial::Load : ModelTrial::Hear;
    const ModelReport report = measure(*engine, &ProcessMemory::usedMegabytes, trial);
    writeLine(invocation.has("json") ? report.toLine() : QStringLiteral("usable (%1)").arg(report.description()));
    co_return EXIT_SUCCESS;
}

} // namespace

Command enginesCommand()
{
    return {QStringLiteral("engines"),
            QStringLiteral("List engines and models, and test each."),
            QString(),
            {},
            &runEngines};
}

Command checkModelCommand()
{
    return {QStringLiteral("check-model"),
            QStringLiteral("Load a model, run 10 s of audio through it, and report timing and memory."),
            QStringLiteral("FOLDER"),
            {option("library", "file", "Load this engine library instead of searching for one."),
             flag("load-only", "Only load the model."), flag("json", "Print the report as JSON.")},
            &runCheckModel};
}

} // namespace talmo::ctl
