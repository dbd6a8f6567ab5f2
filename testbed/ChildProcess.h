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

/// A child process and all lines it has written. The destructor ends it, by its process ID.
class ChildProcess {
public:
    struct Line {
        QString text;
        std::chrono::steady_clock::time_point time;
    };

    /// Throws Error if the program cannot be started.
    ChildProcess(const QString &program, const QStringList &arguments, const QProcessEnvironment &environment);
    ~ChildProcess();
    ChildProcess(const ChildProcess &) = delete;
    ChildProcess &operator=(const ChildProcess &) = delete;

    const std::vector<Line> &lines() const { return m_lines; }
    /// The first line that contains this text, from line number `from` on; waits for it.
    std::optional<Line> waitForLine(const QString &text, Timeout timeout, std::size_t from = 0);
    QString output() const;

    bool isRunning() const { return m_process.state() == QProcess::Running; }
    qint64 processId() const { return m_process.processId(); }
    void writeLine(const QString &line);
    void closeInput() { m_process.closeWriteChannel(); }
    /// Terminates the process, or kills it after the timeout. Returns the exit status, or -1 if it crashed or was
    /// killed.
    int terminate(Timeout timeout = std::chrono::seconds(10));
    /// Immediate, like a crash.
    void kill();

private:
    void readLines();

    QProcess m_process;
    QByteArray m_pending;
    std::vector<Line> m_lines;
};

} // namespace talmo::testbed
