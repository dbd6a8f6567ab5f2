#pragma once

#include "Base/Error.h"

#include <QCoro/QCoroTask>

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QList>
#include <QString>

#include <memory>

namespace talmo::ctl {

class Background;

/// An invalid command line: exit status 2, and a hint at the help.
class UsageError : public Error {
public:
    using Error::Error;
};

/// What a command is called with. The command line has already been parsed.
struct Invocation {
    std::shared_ptr<QCommandLineParser> arguments;
    std::shared_ptr<Background> background;

    bool has(const char *option) const { return arguments->isSet(QString::fromLatin1(option)); }
    QString value(const char *option) const { return arguments->value(QString::fromLatin1(option)); }
};

/// A talmoctl command. `run` returns the exit status; what it throws is printed, and the exit status is then 1.
struct Command {
    /// One word, or two for the commands of a group: "model list".
    QString name;
    QString summary;
    /// The placeholder of its one argument; empty if it takes none.
    QString argument;
    QList<QCommandLineOption> options;
    QCoro::Task<int> (*run)(Invocation invocation);
};

QList<Command> allCommands();

Command formatCommand();
Command cleanCommand();
Command instructionsCommand();
Command transcribeCommand();
Command insertCommand();
Command enginesCommand();
Command checkModelCommand();
Command setupCommand();
Command doctorCommand();
QList<Command> modelCommands();
QList<Command> recoveryCommands();
QList<Command> keyCommands();
QList<Command> stateCommands();
QList<Command> pauseCommands();

QCommandLineOption flag(const char *name, const char *description);
QCommandLineOption option(const char *name, const char *value, const char *description);

} // namespace talmo::ctl
