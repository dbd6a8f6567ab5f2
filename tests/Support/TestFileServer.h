#pragma once

#include "ChildProcess.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace talmo::test {

/// Serves a folder's files on a loopback port, from a process of its own; see file_server.py for how it misbehaves.
class TestFileServer {
public:
    explicit TestFileServer(const QString &folder, const QString &certificate = {});

    /// "/model.tar.gz?break=100" as a whole address.
    QString address(const QString &path) const;
    /// What was asked for so far: "/model.tar.gz whole -", "/model.tar.gz bytes=100- \"mark-1\"".
    QStringList requests() const;
    bool waitForRequests(qsizetype count) const;

private:
    std::unique_ptr<testbed::ChildProcess> m_process;
    QString m_base;
};

} // namespace talmo::test
