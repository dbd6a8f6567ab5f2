#include "Platform/Linux/System/LinuxSettings.h"
#include "Recognition/ModelCheck.h"
#include "Recognition/PocketSphinx/PocketSphinxDecoder.h"
#include "Recognition/Sherpa/SherpaLibrary.h"
#include "Recognition/SpeechEngines.h"
#include "talmoctl/Command.h"
#include "talmoctl/Terminal.h"
#include "talmoctl/UserSettings.h"

namespace talmo::ctl {

namespace {

void describeEmbedded()
{
    const auto model = PocketSphinxPlatform::debianModelFolder();
    if (!PocketSphinxDecoder::isModelInstalled(model)) {
        writeLine(QStringLiteral("embedded: PocketSphinx, English, not installed; the package is pocketsphinx-en-us"));
        return;
    }
    writeLine(QStringLiteral("embedded: PocketSphinx, English, model in %1, usable (%2)")
                  .arg(model, checkEmbeddedHere(model).description()));
}

/// Loads the model once, apart, so that what is said is true.
void describeModel(const SherpaLibrary &library, const QString &folder)
{
    try {
        const SherpaModel model = SherpaModel::examine(folder);
        const QString report = checkModelApart(library.path(), folder).description();
        writeLine(QStringLiteral("neural: %1, language %2, usable (%3)")
                      .arg(folder, model.languages.join(QStringLiteral(", ")), report));
    } catch (const Error &error) {
        writeLine(QStringLiteral("neural: %1, not usable: %2").arg(folder, error.localizedDescription()));
    }
}

QCoro::Task<int> runEngines(Invocation /*invocation*/)
{
    const UserSettings settings;
    const LinuxSettings linuxSettings = LinuxSettings::read(*settings.defaults);
    describeEmbedded();
    const ModelStore store(ModelStore::standardFolder());
    try {
        const auto library = SherpaLibrary::open(linuxSettings.neuralLibrary);
        writeLine(QStringLiteral("neural: sherpa-onnx %1 in %2").arg(library->version(), library->path()));
        const auto names = store.installed();
        if (names.isEmpty()) {
            writeLine(QStringLiteral("neural: no models in %1; talmoctl model list says which there are")
                          .arg(store.folder()));
        }
        for (const auto &name : names) {
            describeModel(*library, store.path(name));
        }
    } catch (const Error &error) {
        writeLine(QStringLiteral("neural: ") + error.localizedDescription());
    }
    writeLine(QStringLiteral("chosen: ") + linuxSettings.speechEngine);
    co_return EXIT_SUCCESS;
}

QCoro::Task<int> runCheckModel(Invocation invocation)
{
    const ModelReport report =
        checkModelHere(invocation.value("library"), invocation.arguments->positionalArguments().first());
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
