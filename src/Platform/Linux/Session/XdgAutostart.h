#pragma once

#include "Settings/LoginItem.h"

#include <QString>
#include <QStringList>

namespace talmo {

/// Launches Talmo at login by an entry in the desktop's autostart folder.
class XdgAutostart final : public LoginItem {
public:
    /// `program`: the absolute path of the program to start. Entries are written to `userFolder`; the system's folders
    /// are only read, since an entry there counts too unless the user's folder overrides it.
    XdgAutostart(QString program, QString userFolder, QStringList systemFolders);

    /// For this program, with the folders of this session.
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
