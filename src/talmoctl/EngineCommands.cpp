#include "Platform/Linux/LinuxSettings.h"
#include "Platform/Linux/ModelCheck.h"
#include "Platform/Linux/PocketSphinxDecoder.h"
#include "Platform/Linux/SherpaLibrary.h"
#include "Platform/Linux/SpeechEngines.h"
#include "talmoctl/Command.h"
#include "talmoctl/Terminal.h"
#include "talmoctl/UserSettings.h"

#include <QDir>
#include <QElapsedTimer>

namespace talmo::ctl {

namespace {

void describeEmbedded()
{
    const auto model = PocketSphinxPlatform::debianModelFolder();
    writeLine(QStringLiteral("embedded: PocketSphinx, English, %1")
                  .arg(PocketSphinxDecoder::isModelInstalled(model)
                           ? QStringLiteral("model in ") + model
                           : QStringLiteral("not installed; the package is pocketsphinx-en-us")));
}

/// Loads the model once, apart, so that what is said is true.
void describeModel(const SherpaLibrary &library, const QString &folder)
{
    QElapsedTimer timer;
    timer.start();
    try {
        const SherpaModel model = SherpaModel::examine(folder);
        checkModelApart(library.path(), folder);
        writeLine(QStringLiteral("neural: %1, language %2, usable (loaded and tried in %3 s)")
                      .arg(folder, model.language)
                      .arg(static_cast<double>(timer.elapsed()) / 1000, 0, 'f', 1));
    } catch (const Error &error) {
        writeLine(QStringLiteral("neural: %1, not usable: %2").arg(folder, error.localizedDescription()));
    }
}

QCoro::Task<int> runEngines(Invocation /*invocation*/)
{
    const UserSettings settings;
    const LinuxSettings linuxSettings = LinuxSettings::read(*settings.defaults);
    describeEmbedded();
    const QDir models(SpeechEngines::standardModelsFolder());
    try {
        const auto library = SherpaLibrary::open(linuxSettings.neuralLibrary);
        writeLine(QStringLiteral("neural: sherpa-onnx %1 in %2").arg(library->version(), library->path()));
        const auto names = models.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
        if (names.isEmpty()) {
            writeLine(QStringLiteral("neural: no models in %1").arg(models.path()));
        }
        for (const auto &name : names) {
            describeModel(*library, models.filePath(name));
        }
    } catch (const Error &error) {
        writeLine(QStringLiteral("neural: ") + error.localizedDescription());
    }
    if (linuxSettings.isEmbeddedEngineOnly) {
        writeLine(QStringLiteral("Only the embedded recogniser is used: the settings say so."));
    }
    co_return EXIT_SUCCESS;
}

QCoro::Task<int> runCheckModel(Invocation invocation)
{
    checkModelHere(invocation.value("library"), invocation.arguments->positionalArguments().first());
    writeLine(QStringLiteral("usable"));
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
            QStringLiteral("Load a neural recogniser's model and let it hear a second of silence."),
            QStringLiteral("FOLDER"),
            {option("library", "file", "The neural recogniser's library, instead of looking for it.")},
            &runCheckModel};
}

} // namespace talmo::ctl
