#include "talmoctl/Command.h"

namespace talmo::ctl {

QList<Command> allCommands()
{
    const QList<Command> toSetUp{setupCommand(), doctorCommand(), enginesCommand()};
    const QList<Command> steps{transcribeCommand(), cleanCommand(),        formatCommand(),
                               insertCommand(),     instructionsCommand(), checkModelCommand()};
    return toSetUp + modelCommands() + keyCommands() + stateCommands() + pauseCommands() + recoveryCommands() + steps;
}

QCommandLineOption flag(const char *name, const char *description)
{
    return QCommandLineOption(QString::fromLatin1(name), QString::fromUtf8(description));
}

QCommandLineOption option(const char *name, const char *value, const char *description)
{
    return QCommandLineOption(QString::fromLatin1(name), QString::fromUtf8(description), QString::fromLatin1(value));
}

} // namespace talmo::ctl
