#pragma once

#include "LanguageModel/ServerTrust.h"

#include <QString>

#include <sys/types.h>

namespace talmo {

/// Trusts the programs of this user and those of the system's own accounts, such as a model server that the package
/// manager installed. Asks the kernel who holds the other end.
class LinuxServerTrust final : public ServerTrust {
public:
    /// `folder`: where the kernel's files "tcp" and "tcp6" lie; `user`: the one to trust.
    explicit LinuxServerTrust(QString folder = QStringLiteral("/proc/net"), uid_t user = ownUser());

    bool isTrusted(const Endpoint &server, const Endpoint &client) const override;

private:
    static uid_t ownUser();

    QString m_folder;
    uid_t m_user;
};

} // namespace talmo
