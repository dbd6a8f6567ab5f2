#pragma once

#include "Waiting.h"

#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include <gtest/gtest.h>

#include <chrono>
#include <string>

namespace talmo::test {

/// A program that a test runs and whose output it reads.
class ProgramRun {
public:
    struct Result {
        /// -1 if a signal ended it.
        int status = -1;
        std::string output;
        std::string errors;
    };

    ProgramRun(const QProcessEnvironment &environment, const QString &program, const QStringList &arguments)
    {
        m_process.setProcessEnvironment(environment);
        m_process.start(program, arguments);
    }

    void type(const QByteArray &input) { m_process.write(input); }
    void endInput() { m_process.closeWriteChannel(); }
    qint64 processId() const { return m_process.processId(); }

    /// Waits for its end. Some programs recognise ten seconds of speech, which takes minutes on a busy machine.
    Result result()
    {
        constexpr std::chrono::seconds longestRun(200);
        EXPECT_TRUE(testbed::waitUntil([this] { return m_process.state() == QProcess::NotRunning; }, longestRun));
        return {m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1,
                m_process.readAllStandardOutput().toStdString(), m_process.readAllStandardError().toStdString()};
    }

private:
    QProcess m_process;
};

} // namespace talmo::test
