#pragma once

#include "Waiting.h"

#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include <chrono>
#include <optional>
#include <vector>

namespace talmo::testbed {

/// A program that the testbed runs, with every line it wrote. Ended, by its process id, when this goes.
class ChildProcess {
public:
    struct Line {
        QString text;
        std::chrono::steady_clock::time_point time;
    };

    /// Throws Error when the program cannot be started.
    ChildProcess(const QString &program, const QStringList &arguments, const QProcessEnvironment &environment);
    ~ChildProcess();
    ChildProcess(const ChildProcess &) = delete;
    ChildProcess &operator=(const ChildProcess &) = delete;

    const std::vector<Line> &lines() const { return m_lines; }
    /// The first line from number `from` on that contains this text; waits for it.
    std::optional<Line> waitForLine(const QString &text, Patience patience, std::size_t from = 0);
    QString output() const;

    bool isRunning() const { return m_process.state() == QProcess::Running; }
    qint64 processId() const { return m_process.processId(); }
    void writeLine(const QString &line);
    void closeInput() { m_process.closeWriteChannel(); }
    /// Asks it to end, waits, and ends it if it does not. Gives back the exit status, or -1 if it crashed or was
    /// killed.
    int terminate(Patience patience = std::chrono::seconds(10));
    /// At once, as if it had crashed.
    void kill();

private:
    void readLines();

    QProcess m_process;
    QByteArray m_pending;
    std::vector<Line> m_lines;
};

} // namespace talmo::testbed
