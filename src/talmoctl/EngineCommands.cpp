#include "Platform/Linux/System/LinuxSettings.h"
#include "Platform/Linux/System/ProcessMemory.h"
#include "Recognition/EngineFactories.h"
#include "Recognition/EngineRegistry.h"
#include "Recognition/ModelCheck.h"
#include "Recognition/Models/ModelStore.h"
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
                     : QStringLiteral("not usable: %1").arg(problem)));
}

/// Measured in a child process, because some libraries abort on an invalid model.
void describeModel(const EngineFactories &factories, const QString &neuralLibrary, const QString &folder)
{
    try {
        const auto engine = factories.forModel(folder).make(QString(), folder);
        const QString report = measureApart(neuralLibrary, folder).description();
        writeLine(QStringLiteral("neural: %1, language %2, usable (%3)")
                      .arg(folder, engine->languages().join(QStringLiteral(", ")), report));
    } catch (const Error &error) {
        writeLine(QStringLiteral("neural: %1, not usable: %2").arg(folder, error.localizedDescription()));
    }
}

void describeModels(const EngineFactories &factories, const QString &neuralLibrary)
{
    const ModelStore store(ModelStore::standardFolder());
    const auto names = store.installed();
    if (names.isEmpty()) {
        writeLine(
            QStringLiteral("neural: no models in %1; talmoctl model list says which there are").arg(store.folder()));
    }
    for (const auto &name : names) {
        describeModel(factories, neuralLibrary, store.path(name));
    }
}

QCoro::Task<int> runEngines(Invocation /*invocation*/)
{
    const UserSettings settings;
    const LinuxSettings linuxSettings = LinuxSettings::read(*settings.defaults);
    const EngineFactories factories = EngineFactories::standard({linuxSettings.neuralLibrary, {}});
    describeEmbedded(*factories.embedded);
    try {
        for (const auto &factory : factories.installable) {
            writeLine(QStringLiteral("neural: ") + factory.library());
        }
        describeModels(factories, linuxSettings.neuralLibrary);
    } catch (const Error &error) {
        writeLine(QStringLiteral("neural: ") + error.localizedDescription());
    }
    writeLine(QStringLiteral("chosen: ") + linuxSettings.speechEngine);
    co_return EXIT_SUCCESS;
}

QCoro::Task<int> runCheckModel(Invocation invocation)
{
    const QString folder = invocation.arguments->positionalArguments().first();
    const EngineFactories factories = EngineFactories::standard({invocation.value("library"), {}});
    const auto engine = factories.forModel(folder).make(QString(), folder);
    const ModelReport report = measure(*engine, &ProcessMemory::usedMegabytes);
    writeLine(invocation.has("json") ? report.toLine() : QStringLiteral("usable (%1)").arg(report.description()));
    co_return EXIT_SUCCESS;
}

} // namespace

Command enginesCommand()
{
    return {QStringLiteral("engines"),
            QStringLiteral("Say which recognisers and models there are, and try them."),
            QString(),
            {},
            &runEngines};
}

Command checkModelCommand()
{
    return {QStringLiteral("check-model"),
            QStringLiteral("Load a neural recogniser's model, let it hear ten seconds, and say how it did."),
            QStringLiteral("FOLDER"),
            {option("library", "file", "The neural recogniser's library, instead of looking for it."),
             flag("json", "Say how it did as JSON.")},
            &runCheckModel};
}

} // namespace talmo::ctl
