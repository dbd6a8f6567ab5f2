#include "Base/DetailedError.h"
#include "Base/SerialExecutor.h"
#include "Platform/Linux/System/LinuxSettings.h"
#include "Platform/Linux/System/QuitSignals.h"
#include "Platform/Linux/System/SystemLocaleSource.h"
#include "Platform/Linux/System/TimerFdClock.h"
#include "Recognition/EngineRegistry.h"
#include "Recognition/Models/ModelSize.h"
#include "Recognition/Recognisers.h"
#include "Recognition/Recommendation.h"
#include "talmoctl/Command.h"
#include "talmoctl/ProgressBar.h"
#include "talmoctl/Terminal.h"
#include "talmoctl/UserSettings.h"

#include <QCoro/QCoroFuture>

#include <memory>
#include <stop_token>

#include <unistd.h>

namespace talmo::ctl {

namespace {

/// There is something to install, but nobody to ask.
constexpr int unaskedStatus = 3;
/// As a shell reports a program that an interrupt has ended.
constexpr int interruptedStatus = 130;

/// What the command works with.
struct Setup {
    QString locale;
    EngineFactories factories;
    ModelCatalogue catalogue;
    RecogniserInstaller installer;

    static Setup of(const LinuxSettings &settings)
    {
        const EngineFactories factories = EngineFactories::standard({settings.neuralLibrary, {}});
        const ModelCatalogue catalogue = Recognisers::catalogue(factories);
        return {SystemLocaleSource(settings.dictationLanguage).currentIdentifier(), factories, catalogue,
                Recognisers::installer(std::make_shared<TimerFdClock>(), factories, catalogue, settings.neuralLibrary)};
    }
};

/// Null if there is nothing to install.
std::optional<Recommendation> wanted(const Setup &setup, const QString &name)
{
    if (name.isEmpty()) {
        return Recommendation::forLocale(setup.installer, setup.catalogue, setup.locale);
    }
    const ModelEntry *model = setup.catalogue.find(name);
    if (model == nullptr || !setup.factories.support(*model)) {
        throw Error(QStringLiteral("unknown model “%1”; run “talmoctl model list” to see the names").arg(name));
    }
    const auto parts = setup.installer.partsOf(*model, true);
    return parts.empty() ? std::nullopt : std::optional(Recommendation{*model, parts});
}

void describe(const Recommendation &wanted)
{
    writeLine(QStringLiteral("To be downloaded for better recognition:"));
    for (const auto &part : wanted.parts) {
        const bool isModel = part.id == wanted.model.id;
        const QString title = isModel ? wanted.title() : part.title;
        const QString size = readableSize(part);
        writeLine(QStringLiteral("  %1, %2, licence %3")
                      .arg(title, size.isEmpty() ? QStringLiteral("size unknown") : size, part.licence));
        writeLine(QStringLiteral("    ") + part.address.toString());
        if (part.sha256.isEmpty()) {
            writeLine(QStringLiteral("    No checksum on record; integrity not verified."));
        }
    }
    if (const QString size = wanted.size(); !size.isEmpty()) {
        writeLine(QStringLiteral("Together %1. Speech is still recognised on this computer only.").arg(size));
    }
}

bool isTerminal()
{
    return ::isatty(STDIN_FILENO) == 1 && ::isatty(STDOUT_FILENO) == 1;
}

/// Enter means yes; the end of the input means no.
bool askUser(const QString &question)
{
    writeOutput(question + QStringLiteral(" [Y/n] "));
    const QString answer = readInputLine().toLower();
    return answer == QStringLiteral("\n") || answer.startsWith(QLatin1Char('y'));
}

/// The status to exit with; nullopt if the user agrees. Without a terminal only the option means yes.
std::optional<int> refusal(const Invocation &invocation, const QString &question)
{
    if (invocation.has("yes")) {
        return std::nullopt;
    }
    if (!isTerminal()) {
        complain(
            QStringLiteral("nothing was installed; run “talmoctl setup --yes” to install this without a question"));
        return unaskedStatus;
    }
    return askUser(question) ? std::nullopt : std::optional<int>(EXIT_FAILURE);
}

enum class Outcome { Installed, Cancelled, TooSlow };

/// A stop is a request to cancel; what has been downloaded stays. On a thread of its own: unpacking blocks, and an
/// interrupt must cancel it as well.
QCoro::Task<Outcome> install(Setup setup, ModelEntry model, std::stop_token stop)
{
    const auto bar = std::make_shared<ProgressBar>();
    const ModelInstaller::OnProgress show = [bar](const ModelProgress &progress) { bar->show(progress); };
    const auto terms = Recognisers::termsFor(setup.catalogue, model, setup.locale);
    const auto executor = SerialExecutor::onNewThread(QStringLiteral("talmo-install"));
    const QFuture<void> end = executor->run<void>([installer = setup.installer, model, show, stop, terms] {
        return installer.install(model, show, stop, terms);
    });
    Outcome outcome = Outcome::Installed;
    std::exception_ptr failure;
    try {
        co_await end;
    } catch (const ModelTooSlow &error) {
        complain(wholeDescription(error));
        outcome = Outcome::TooSlow;
    } catch (const Error &) {
        QCoreApplication::processEvents(); // An interrupt may also have ended the model's trial.
        failure = stop.stop_requested() ? nullptr : std::current_exception();
        outcome = Outcome::Cancelled;
    }
    // Cancelled tasks, such as the download's watchdog, end in the thread's next iterations.
    constexpr int turns = 3;
    for (int turn = 0; turn < turns; ++turn) {
        const QFuture<void> passed = executor->call([] {});
        co_await passed;
    }
    if (failure) {
        std::rethrow_exception(failure);
    }
    co_return outcome;
}

/// The model was installed to be used.
void chooseAutomatically(const UserSettings &settings)
{
    if (LinuxSettings::read(*settings.defaults).speechEngine == EngineRegistry::embeddedChoice) {
        writeLine(QStringLiteral(
            "Your settings prefer the built-in recogniser; run “talmoctl model use automatic” to use this one."));
    }
}

void tellOfBetter(const Setup &setup)
{
    if (const QString better = betterRecognition(setup.catalogue, setup.installer, setup.locale); !better.isEmpty()) {
        writeLine(better);
    }
}

QCoro::Task<int> runSetup(Invocation invocation)
{
    const UserSettings settings;
    const Setup setup = Setup::of(LinuxSettings::read(*settings.defaults));
    auto next = wanted(setup, invocation.value("model"));
    if (!next && setup.catalogue.bestFor(setup.locale) == nullptr) {
        throw Error(QStringLiteral("there is no model for the language “%1”").arg(setup.locale));
    }
    if (!next) {
        writeLine(QStringLiteral("A better recogniser is installed already."));
        tellOfBetter(setup);
        co_return EXIT_SUCCESS;
    }
    describe(*next);
    QString question = QStringLiteral("Download and install?");
    std::stop_source stop;
    std::unique_ptr<QuitSignals> interrupts;
    while (true) {
        if (const auto status = refusal(invocation, question)) {
            co_return *status;
        }
        if (!interrupts) { // Not earlier, so that an interrupt ends the question.
            QuitSignals::install();
            interrupts = std::make_unique<QuitSignals>();
            QObject::connect(interrupts.get(), &QuitSignals::quitRequested, [&stop] { stop.request_stop(); });
        }
        const Outcome outcome = co_await install(setup, next->model, stop.get_token());
        if (outcome == Outcome::Cancelled) {
            complain(QStringLiteral("cancelled; what has been downloaded is kept, and “talmoctl setup” continues"));
            co_return interruptedStatus;
        }
        if (outcome == Outcome::Installed) {
            break;
        }
        const ModelEntry smaller = *setup.catalogue.nextSmaller(next->model, setup.locale);
        next = Recommendation{smaller, setup.installer.partsOf(smaller, true)};
        question =
            QStringLiteral("Install %1 instead, %2, licence %3?").arg(next->title(), next->size(), next->licences());
    }
    writeLine(QStringLiteral("Installed %1. Talmo uses it from the next recording on.").arg(next->title()));
    chooseAutomatically(settings);
    tellOfBetter(setup);
    co_return EXIT_SUCCESS;
}

} // namespace

Command setupCommand()
{
    return {QStringLiteral("setup"),
            QStringLiteral("Install better recognition: a neural model for your language, and its library."),
            QString(),
            {flag("yes", "Do not ask."), option("model", "name", "Install this model instead of the recommended one.")},
            &runSetup};
}

} // namespace talmo::ctl
