#pragma once

#include "ChildProcess.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace talmo::test {

/// Serves a folder's files on a loopback port from a separate process; file_server.py lists its misbehaviours.
class TestFileServer {
public:
    explicit TestFileServer(const QString &folder, const QString &certificate = {});

    /// The full URL of a path such as "/model.tar.gz?break=100".
    QString address(const QString &path) const;
    /// The requests so far: "/model.tar.gz whole -", "/model.tar.gz bytes=100- \"mark-1\"".
    QStringList requests() const;
    bool waitForRequests(qsizetype count) const;
    /// A client has begun a TLS connection, and offered no other protocol than HTTP/1.1.
    bool isOfferedOnlyHttp1() const;

private:
    std::unique_ptr<testbed::ChildProcess> m_process;
    QString m_base;
};

} // namespace talmo::test
