#include "talmoctl/Command.h"

namespace talmo::ctl {

QList<Command> allCommands()
{
    QList<Command> commands{formatCommand(),     cleanCommand(),  instructionsCommand(),
                            transcribeCommand(), insertCommand(), enginesCommand(),
                            checkModelCommand(), setupCommand(),  doctorCommand()};
    return commands + recoveryCommands() + keyCommands() + stateCommands() + pauseCommands() + modelCommands();
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
