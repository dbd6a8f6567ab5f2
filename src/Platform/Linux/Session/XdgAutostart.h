#pragma once

#include "Settings/LoginItem.h"

#include <QString>
#include <QStringList>

namespace talmo {

/// Started at login by an entry in the desktop's autostart folder.
class XdgAutostart final : public LoginItem {
public:
    /// `program`: what the entry starts, as an absolute path. `userFolder` is where it is written; the system's
    /// folders are only looked at, since an entry of ours there counts too unless the user's overrides it.
    XdgAutostart(QString program, QString userFolder, QStringList systemFolders);

    /// The program that runs just now, in this session's folders.
    static XdgAutostart forThisSession(const QString &program);

    LoginItemStatus status() const override;
    void registerItem() override;
    void unregisterItem() override;

private:
    QString userEntry() const;
    QString effectiveEntry() const;

    QString m_program;
    QString m_userFolder;
    QStringList m_systemFolders;
};

} // namespace talmo
