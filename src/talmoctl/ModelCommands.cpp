#include "Base/Error.h"
#include "Control/ControlSocket.h"
#include "Platform/Linux/System/LinuxSettings.h"
#include "Platform/Linux/System/TimerFdClock.h"
#include "Recognition/ModelCheck.h"
#include "Recognition/Models/ModelSize.h"
#include "Recognition/RecogniserChoice.h"
#include "Recognition/Recognisers.h"
#include "talmoctl/Command.h"
#include "talmoctl/ProgressBar.h"
#include "talmoctl/Terminal.h"
#include "talmoctl/UserSettings.h"

#include <QCoro/QCoroFuture>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <vector>

namespace talmo::ctl {

namespace {

QString sizeOf(const ModelEntry &entry)
{
    const QString size = readableSize(entry);
    return size.isEmpty() ? QStringLiteral("size unknown") : size;
}

/// What "model list" knows of a model.
struct ListedModel {
    ModelEntry entry;
    bool isInCatalogue = true;
    /// "-", "installed", "chosen", "too slow" or "unsupported".
    QString state;
    /// Why it cannot be used; empty if it can.
    QString problem() const
    {
        return state == QLatin1String("unsupported")
                   ? QStringLiteral("not usable: Talmo has no engine for models of the kind “%1”").arg(entry.kind)
                   : QString();
    }
};

std::vector<ListedModel> listedModels()
{
    const UserSettings settings;
    const LinuxSettings linuxSettings = LinuxSettings::read(*settings.defaults);
    const EngineFactories factories = EngineFactories::standard({linuxSettings.neuralLibrary, {}});
    const QString choice = RecogniserChoice::of(linuxSettings.speechEngine).final;
    const ModelStore store(ModelStore::standardFolder());
    const auto stateOf = [&](const ModelEntry &entry, bool isInCatalogue) {
        if (store.isInstalled(entry.id)) {
            return entry.id == choice ? QStringLiteral("chosen") : QStringLiteral("installed");
        }
        if (isInCatalogue && !factories.support(entry)) {
            return QStringLiteral("unsupported");
        }
        return store.isKnownSlow(entry.id) ? QStringLiteral("too slow") : QStringLiteral("-");
    };
    const ModelCatalogue known = Recognisers::catalogue(factories);
    std::vector<ListedModel> models;
    for (const auto &entry : known.entries()) {
        models.push_back({entry, true, stateOf(entry, true)});
    }
    for (const auto &name : store.installed()) {
        if (known.find(name) == nullptr) {
            ModelEntry entry;
            entry.id = name;
            models.push_back({entry, false, stateOf(entry, false)});
        }
    }
    return models;
}

void describe(const ListedModel &model)
{
    const ModelEntry &entry = model.entry;
    if (!model.isInCatalogue) {
        writeLine(QStringLiteral("%1  %2  (not in the catalogue)").arg(entry.id, -20).arg(model.state, -11));
        return;
    }
    writeLine(QStringLiteral("%1  %2  %3").arg(entry.id, -20).arg(model.state, -11).arg(entry.title));
    writeLine(QStringLiteral("    %1; %2; %3; licence %4")
                  .arg(entry.engine, entry.languages.join(QStringLiteral(", ")), sizeOf(entry), entry.licence));
    for (const auto &line : {entry.gives, model.problem()}) {
        if (!line.isEmpty()) {
            writeLine(QStringLiteral("    ") + line);
        }
    }
}

QJsonObject toJson(const ListedModel &model)
{
    const ModelEntry &entry = model.entry;
    QJsonObject object{{QStringLiteral("id"), entry.id}, {QStringLiteral("state"), model.state}};
    if (!model.isInCatalogue) {
        return object;
    }
    if (!model.problem().isEmpty()) {
        object[QStringLiteral("problem")] = model.problem();
    }
    object[QStringLiteral("title")] = entry.title;
    object[QStringLiteral("engine")] = entry.engine;
    object[QStringLiteral("kind")] = entry.kind;
    object[QStringLiteral("languages")] = QJsonArray::fromStringList(entry.languages);
    object[QStringLiteral("address")] = entry.address.toString();
    object[QStringLiteral("size")] = entry.size ? QJsonValue(*entry.size) : QJsonValue();
    object[QStringLiteral("sha256")] = QString::fromLatin1(entry.sha256);
    object[QStringLiteral("licence")] = entry.licence;
    object[QStringLiteral("licenceAddress")] = entry.licenceAddress.toString();
    object[QStringLiteral("punctuation")] = entry.hasPunctuation;
    object[QStringLiteral("minLibrary")] = entry.minLibrary;
    object[QStringLiteral("cores")] = entry.cores;
    return object;
}

QCoro::Task<int> runList(Invocation invocation)
{
    const auto models = listedModels();
    if (invocation.has("json")) {
        QJsonArray list;
        for (const auto &model : models) {
            list.append(toJson(model));
        }
        writeOutput(QString::fromUtf8(QJsonDocument(list).toJson()));
        co_return EXIT_SUCCESS;
    }
    for (const auto &model : models) {
        describe(model);
    }
    co_return EXIT_SUCCESS;
}

/// Printed before the download starts, so that the user can still cancel it.
void tellBefore(const std::vector<ModelEntry> &parts)
{
    for (const auto &part : parts) {
        writeLine(
            QStringLiteral("%1: %2, %3, from %4").arg(part.id, part.title, sizeOf(part), part.address.toString()));
        writeLine(QStringLiteral("Licence: %1 %2").arg(part.licence, part.licenceAddress.toString()));
        if (part.sha256.isEmpty()) {
            writeLine(QStringLiteral("No checksum on record; integrity not verified."));
        }
    }
}

QCoro::Task<int> runInstall(Invocation invocation)
{
    const QString id = invocation.arguments->positionalArguments().first();
    const UserSettings settings;
    const QString library = LinuxSettings::read(*settings.defaults).neuralLibrary;
    const EngineFactories factories = EngineFactories::standard({library, {}});
    const ModelCatalogue known = Recognisers::catalogue(factories);
    const ModelEntry *found = known.find(id);
    if (found == nullptr) {
        throw Error(QStringLiteral("unknown model “%1”; run “talmoctl model list” to see the names").arg(id));
    }
    const ModelEntry entry = *found;
    if (!factories.support(entry)) {
        throw Error(QStringLiteral("this Talmo has no engine for models of the kind “%1”").arg(entry.kind));
    }
    const auto clock = std::make_shared<TimerFdClock>();
    const RecogniserInstaller installer = Recognisers::installer(clock, factories, known, library);
    tellBefore(installer.partsOf(entry));
    InstallationTerms terms;
    terms.acceptsRenewed = invocation.has("accept-renewed");
    {
        const auto bar = std::make_shared<ProgressBar>();
        const ModelInstaller::OnProgress show = [bar](const ModelProgress &progress) { bar->show(progress); };
        co_await installer.install(entry, show, {}, terms);
    }
    const auto report = ModelReport::noted(installer.store().path(id));
    if (report && report->shareOfSpeech > largestShareOfSpeech) {
        complain(ModelTooSlow(report->shareOfSpeech).localizedDescription());
    }
    writeLine(QStringLiteral("Installed %1.").arg(id));
    co_return EXIT_SUCCESS;
}

QCoro::Task<int> runRemove(Invocation invocation)
{
    const QString id = invocation.arguments->positionalArguments().first();
    const ModelStore store(ModelStore::standardFolder());
    const auto lock = store.lock();
    store.remove(id);
    writeLine(QStringLiteral("Removed %1.").arg(id));
    co_return EXIT_SUCCESS;
}

/// Throws Error unless it can be chosen.
void requireChoice(const QString &id, const QString &other)
{
    if (id != EngineRegistry::automaticChoice && id != other &&
        !ModelStore(ModelStore::standardFolder()).isInstalled(id)) {
        throw Error(QStringLiteral("model “%1” is not installed; install it first, or choose “%2” or “%3”")
                        .arg(id, EngineRegistry::automaticChoice, other));
    }
}

/// A running Talmo is asked to change its setting, because it does not notice changes of the file; else the file is
/// written.
QCoro::Task<int> runUse(Invocation invocation)
{
    RecogniserChoice chosen;
    chosen.final = invocation.arguments->positionalArguments().first();
    requireChoice(chosen.final, EngineRegistry::embeddedChoice);
    if (invocation.has("live")) {
        chosen.live = invocation.value("live");
    }
    if (chosen.live != EngineRegistry::embeddedChoice) {
        requireChoice(chosen.live, RecogniserChoice::none());
    }
    const QString choice = chosen.stored();
    constexpr int timeout = 2000;
    const auto answer = ControlSocket::exchange(ControlSocket::recogniserRequest(choice), timeout, timeout);
    if (answer) {
        ControlSocket::checkAnswer(*answer);
    } else {
        const UserSettings settings;
        settings.defaults->set(LinuxSettings::speechEngineKey(), choice);
        co_await settings.defaults->saved();
    }
    writeLine(QStringLiteral("Using %1 from the next recording on.").arg(chosen.final));
    co_return EXIT_SUCCESS;
}

} // namespace

QList<Command> modelCommands()
{
    const QString name = QStringLiteral("NAME");
    return {{QStringLiteral("model list"),
             QStringLiteral("List installed and available speech models."),
             QString(),
             {flag("json", "Print the list as JSON.")},
             &runList},
            {QStringLiteral("model install"),
             QStringLiteral("Download and install a speech model, with the library it needs."),
             name,
             {flag("accept-renewed", "Accept another file than the one that Talmo knows.")},
             &runInstall},
            {QStringLiteral("model remove"), QStringLiteral("Remove an installed speech model."), name, {}, &runRemove},
            {QStringLiteral("model use"),
             QStringLiteral("Choose the recogniser: an installed model, “embedded” or “automatic”."),
             name,
             {option("live", "name",
                     "Show its text while an offline model has none yet; or “none”. The best there is if left out.")},
             &runUse}};
}

} // namespace talmo::ctl
