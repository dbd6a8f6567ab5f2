#include "Base/DetailedError.h"
#include "Base/SerialExecutor.h"
#include "Base/Task.h"
#include "talmoctl/Background.h"
#include "talmoctl/Command.h"
#include "talmoctl/Terminal.h"

#include <QCoreApplication>
#include <QLoggingCategory>

#include <algorithm>

namespace talmo::ctl {

namespace {

constexpr int usageStatus = 2;

QString overview()
{
    QString text = QStringLiteral("Usage: talmoctl COMMAND [options]\n\n"
                                  "Run Talmo's dictation steps from the command line.\n\nCommands:\n");
    for (const auto &command : allCommands()) {
        const QString usage = command.argument.isEmpty() ? command.name : command.name + u' ' + command.argument;
        text += QStringLiteral("  %1 %2\n").arg(usage, -20).arg(command.summary);
    }
    return text + QStringLiteral("\nOptions:\n"
                                 "  --help               Show this help, or the help of a command.\n"
                                 "  --version            Show the version.\n");
}

int complainOfUsage(const QString &problem, const QString &command = {})
{
    complain(problem);
    const QString help =
        command.isEmpty() ? QStringLiteral("talmoctl --help") : QStringLiteral("talmoctl %1 --help").arg(command);
    complain(QStringLiteral("try “%1” for help").arg(help));
    return usageStatus;
}

/// Waits for a command, reports its error, and ends the event loop with its exit status.
QCoro::Task<void> follow(QFuture<int> end, QString command)
{
    int status = EXIT_FAILURE;
    try {
        status = co_await end;
    } catch (const UsageError &error) {
        status = complainOfUsage(error.localizedDescription(), command);
    } catch (...) {
        complain(wholeDescription(std::current_exception()));
    }
    QCoreApplication::exit(status);
}

int runCommand(const Command &command, const QStringList &arguments, std::shared_ptr<Background> background)
{
    const auto parser = std::make_shared<QCommandLineParser>();
    parser->setApplicationDescription(command.summary);
    parser->addOptions(command.options);
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Show this help."));
    parser->addOption(help);
    if (!command.argument.isEmpty()) {
        parser->addPositionalArgument(command.argument, QString());
    }
    if (!parser->parse(arguments)) {
        return complainOfUsage(parser->errorText(), command.name);
    }
    if (parser->isSet(help)) {
        // The parser's usage line names only the program.
        const QString program = QCoreApplication::arguments().constFirst();
        writeOutput(parser->helpText().replace(program, QStringLiteral("talmoctl ") + command.name));
        return EXIT_SUCCESS;
    }
    if (parser->positionalArguments().size() != (command.argument.isEmpty() ? 0 : 1)) {
        return complainOfUsage(command.argument.isEmpty() ? QStringLiteral("“%1” takes no arguments").arg(command.name)
                                                          : QStringLiteral("“%1” takes one argument").arg(command.name),
                               command.name);
    }
    const Invocation invocation{parser, std::move(background)};
    const auto executor = SerialExecutor::onCurrentThread();
    logEscapes(follow(executor->run<int>([run = command.run, invocation] { return run(invocation); }), command.name));
    return QCoreApplication::exec();
}

int runArguments(QStringList arguments, std::shared_ptr<Background> background)
{
    const QString first = arguments.value(1);
    if (first.isEmpty()) {
        return complainOfUsage(QStringLiteral("no command given"));
    }
    if (first == QStringLiteral("--help") || first == QStringLiteral("-h")) {
        writeOutput(overview());
        return EXIT_SUCCESS;
    }
    if (first == QStringLiteral("--version") || first == QStringLiteral("-v")) {
        writeLine(QStringLiteral("talmoctl ") + QCoreApplication::applicationVersion());
        return EXIT_SUCCESS;
    }
    const auto commands = allCommands();
    const QString family = first + QLatin1Char(' ');
    const bool isOfFamily = std::any_of(commands.begin(), commands.end(),
                                        [&family](const Command &command) { return command.name.startsWith(family); });
    const QString name = isOfFamily ? family + arguments.value(2) : first;
    const auto found = std::find_if(commands.begin(), commands.end(),
                                    [&name](const Command &command) { return command.name == name; });
    if (found == commands.end()) {
        return complainOfUsage(QStringLiteral("unknown command “%1”").arg(name.trimmed()));
    }
    arguments.remove(1, isOfFamily ? 2 : 1);
    return runCommand(*found, arguments, std::move(background));
}

int run(int argc, char **argv, std::shared_ptr<Background> background)
{
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("talmoctl"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TALMO_VERSION));
    // Only the log's errors belong beside a command's output.
    QLoggingCategory::setFilterRules(QStringLiteral("talmo.general.info=false\ntalmo.hotkey.info=false"));
    qSetMessagePattern(QStringLiteral("talmoctl: %{message}"));
    try {
        return runArguments(QCoreApplication::arguments(), std::move(background));
    } catch (...) {
        complain(wholeDescription(std::current_exception()));
        return EXIT_FAILURE;
    }
}

} // namespace

} // namespace talmo::ctl

int main(int argc, char **argv)
{
    using namespace talmo::ctl;
    const auto work = [argc, argv](std::shared_ptr<Background> background) {
        return run(argc, argv, std::move(background));
    };
    // The only command that may have to stay in the background.
    if (argc > 1 && QByteArray(argv[1]) == "insert") {
        return Background::run(work);
    }
    return work(std::make_shared<Background>());
}
