#include "SettingsFile.h"

#include "Base/Error.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>

namespace talmo::testbed {

void writeTalmoSettings(const QString &desktopFolder, QJsonObject settings)
{
    const QString welcomeShown = QStringLiteral("linux.welcomeShown");
    if (!settings.contains(welcomeShown)) {
        settings.insert(welcomeShown, true);
    }
    const QString folder = desktopFolder + QStringLiteral("/config/talmo");
    QDir().mkpath(folder);
    QFile file(folder + QStringLiteral("/settings.json"));
    const auto bytes = QJsonDocument(settings).toJson();
    if (!file.open(QFile::WriteOnly) || file.write(bytes) != bytes.size()) {
        throw Error(QStringLiteral("Cannot write the settings file: ") + file.errorString());
    }
}

} // namespace talmo::testbed
