#include "Platform/Linux/System/LinuxServerTrust.h"

#include "Platform/Linux/System/TcpOwners.h"

#include <QFile>

#include <utility>

#include <unistd.h>

namespace talmo {

namespace {

/// On Debian, as elsewhere, accounts of people start here.
constexpr uid_t firstPersonsUser = 1000;

QByteArray contentOf(const QString &path)
{
    QFile file(path); // An unreadable file means that no server is trusted.
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

LinuxServerTrust::LinuxServerTrust(QString folder, uid_t user)
    : m_folder(std::move(folder)),
      m_user(user)
{
}

uid_t LinuxServerTrust::ownUser()
{
    return ::geteuid();
}

bool LinuxServerTrust::isTrusted(const Endpoint &server, const Endpoint &client) const
{
    // The kernel returns its table in pieces, and a row may be missed while others come and go.
    constexpr int tries = 3;
    for (int attempt = 0; attempt < tries; ++attempt) {
        const auto owner = serverOwner(contentOf(m_folder + QStringLiteral("/tcp")),
                                       contentOf(m_folder + QStringLiteral("/tcp6")), server, client);
        if (owner) {
            return *owner == m_user || *owner < firstPersonsUser;
        }
    }
    return false;
}

} // namespace talmo
