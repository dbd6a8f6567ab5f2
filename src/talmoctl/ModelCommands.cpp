#include "Base/Error.h"
#include "Control/ControlSocket.h"
#include "Platform/Linux/System/LinuxSettings.h"
#include "Platform/Linux/System/TimerFdClock.h"
#include "Recognition/RecogniserChoice.h"
#include "Recognition/Recognisers.h"
#include "talmoctl/Command.h"
#include "talmoctl/Terminal.h"
#include "talmoctl/UserSettings.h"

#include <QCoro/QCoroFuture>

#include <unistd.h>

namespace talmo::ctl {

namespace {

ModelCatalogue catalogue()
{
    return ModelCatalogue::withUsersFile(ModelCatalogue::usersPath());
}

QString sizeOf(const ModelEntry &entry)
{
    constexpr double megabyte = 1e6;
    if (entry.size) {
        return QStringLiteral("%1 MB").arg(static_cast<double>(*entry.size) / megabyte, 0, 'f', 1);
    }
    return entry.roughMegabytes ? QStringLiteral("about %1 MB").arg(*entry.roughMegabytes)
                                : QStringLiteral("size unknown");
}

void describe(const ModelEntry &entry, const QString &state)
{
    writeLine(QStringLiteral("%1  %2  %3").arg(entry.id, -20).arg(state, -11).arg(entry.title));
    writeLine(QStringLiteral("    %1; %2; %3; licence %4")
                  .arg(entry.engine, entry.languages.join(QStringLiteral(", ")), sizeOf(entry), entry.licence));
    if (!entry.gives.isEmpty()) {
        writeLine(QStringLiteral("    ") + entry.gives);
    }
}

QCoro::Task<int> runList(Invocation /*invocation*/)
{
    const UserSettings settings;
    const ModelStore store(ModelStore::standardFolder());
    const QString choice = RecogniserChoice::of(LinuxSettings::read(*settings.defaults).speechEngine).final;
    const auto stateOf = [&store, &choice](const QString &name) {
        if (!store.isInstalled(name)) {
            return QStringLiteral("-");
        }
        return name == choice ? QStringLiteral("chosen") : QStringLiteral("installed");
    };
    const ModelCatalogue known = catalogue();
    for (const auto &entry : known.entries()) {
        describe(entry, stateOf(entry.id));
    }
    for (const auto &name : store.installed()) {
        if (known.find(name) == nullptr) {
            writeLine(QStringLiteral("%1  %2  (not in the catalogue)").arg(name, -20).arg(stateOf(name), -11));
        }
    }
    co_return EXIT_SUCCESS;
}

/// On stderr: a progress bar on a terminal, else one line per step.
class ProgressBar {
public:
    void show(const ModelProgress &progress)
    {
        if (::isatty(STDERR_FILENO) == 0) {
            if (!m_last || m_last->phase != progress.phase) {
                complain(progress.description());
            }
            m_last = progress;
            return;
        }
        m_last = progress;
        constexpr int width = 30;
        const int filled = static_cast<int>(progress.share().value_or(0) * width);
        const QString bar = QStringLiteral("#").repeated(filled) + QStringLiteral(".").repeated(width - filled);
        writeRaw(QStringLiteral("\r[%1] %2\x1b[K").arg(bar, progress.description()));
        m_isOpen = true;
    }
    ~ProgressBar()
    {
        if (m_isOpen) {
            writeRaw(QStringLiteral("\n"));
        }
    }
    ProgressBar() = default;
    ProgressBar(const ProgressBar &) = delete;
    ProgressBar &operator=(const ProgressBar &) = delete;

private:
    static void writeRaw(const QString &text)
    {
        const QByteArray bytes = text.toUtf8();
        std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stderr);
    }

    std::optional<ModelProgress> m_last;
    bool m_isOpen = false;
};

/// Printed before the download starts, so that the user can still cancel it.
void tellBefore(const ModelEntry &entry, const EngineFactories &factories)
{
    writeLine(QStringLiteral("%1: %2, from %3").arg(entry.id, entry.title, entry.address.toString()));
    writeLine(QStringLiteral("Licence: %1 %2").arg(entry.licence, entry.licenceAddress.toString()));
    if (entry.sha256.isEmpty()) {
        writeLine(QStringLiteral("No checksum on record; integrity not verified."));
    }
    if (!factories.forEntry(entry).isLibraryInstalled()) {
        writeLine(QStringLiteral("The engine's library is not installed; “scripts/neural-library --user” installs it. "
                                 "Until then the model is neither tested nor used."));
    }
}

QCoro::Task<int> runInstall(Invocation invocation)
{
    const QString id = invocation.arguments->positionalArguments().first();
    const ModelCatalogue known = catalogue();
    const ModelEntry *found = known.find(id);
    if (found == nullptr) {
        throw Error(QStringLiteral("unknown model “%1”; run “talmoctl model list” to see the names").arg(id));
    }
    const ModelEntry entry = *found;
    const UserSettings settings;
    const QString library = LinuxSettings::read(*settings.defaults).neuralLibrary;
    const EngineFactories factories = EngineFactories::standard({library, {}});
    tellBefore(entry, factories);
    {
        const auto bar = std::make_shared<ProgressBar>();
        const ModelInstaller installer = Recognisers::installer(std::make_shared<TimerFdClock>(), factories, library);
        const ModelInstaller::OnProgress show = [bar](const ModelProgress &progress) { bar->show(progress); };
        co_await installer.install(entry, show, {});
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
    constexpr int patience = 2000;
    const auto answer = ControlSocket::exchange(ControlSocket::recogniserRequest(choice), patience, patience);
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
             {},
             &runList},
            {QStringLiteral("model install"),
             QStringLiteral("Download and install a speech model."),
             name,
             {},
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
