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

/// What was asked for cannot be meant: exit status 2, and a hint.
class UsageError : public Error {
public:
    using Error::Error;
};

/// What a command is given. The parser has read the command line already.
struct Invocation {
    std::shared_ptr<QCommandLineParser> arguments;
    std::shared_ptr<Background> background;

    bool has(const char *option) const { return arguments->isSet(QString::fromLatin1(option)); }
    QString value(const char *option) const { return arguments->value(QString::fromLatin1(option)); }
};

/// One of the things that talmoctl does. `run` gives back the exit status; what it throws is told to the user.
struct Command {
    /// One word, or two for the commands of a family: "model list".
    QString name;
    QString summary;
    /// The name of its one argument; empty for none.
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
QList<Command> modelCommands();
QList<Command> recoveryCommands();

QCommandLineOption flag(const char *name, const char *description);
QCommandLineOption option(const char *name, const char *value, const char *description);

} // namespace talmo::ctl
