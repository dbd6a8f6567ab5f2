#pragma once

#include "LanguageModel/ServerTrust.h"

#include <QString>

#include <sys/types.h>

namespace talmo {

/// Trusts programs of this user and of system accounts, such as a model server installed by the package manager. Asks
/// the kernel who owns the other end.
class LinuxServerTrust final : public ServerTrust {
public:
    /// `folder`: contains the kernel's files "tcp" and "tcp6"; `user`: the user to trust.
    explicit LinuxServerTrust(QString folder = QStringLiteral("/proc/net"), uid_t user = ownUser());

    bool isTrusted(const Endpoint &server, const Endpoint &client) const override;

private:
    static uid_t ownUser();

    QString m_folder;
    uid_t m_user;
};

} // namespace talmo
