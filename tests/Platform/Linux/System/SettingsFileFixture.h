#pragma once

#include "Platform/Linux/System/JsonUserDefaults.h"
#include "Support/Printing.h"
#include "Support/RecordingLog.h"
#include "Support/TestLoop.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <sys/stat.h>

namespace talmo::test {

/// A settings file in a folder of its own.
class SettingsFileFixture : public testing::Test {
protected:
    const QString key = u"talmo.textTone"_s;
    const QString aiCleanup = u"talmo.aiCleanupEnabled"_s;
    QTemporaryDir folder;
    QString path = folder.filePath(u"talmo/settings.json"_s);
    RecordingLog log;

    std::shared_ptr<JsonUserDefaults> open() const
    {
        return std::make_shared<JsonUserDefaults>(path, SerialExecutor::onNewThread(u"settings"_s));
    }
    /// Opens the file as the program opens the user's.
    std::shared_ptr<JsonUserDefaults> openAsUser() const
    {
        const QByteArray before = qgetenv("XDG_CONFIG_HOME");
        qputenv("XDG_CONFIG_HOME", folder.path().toUtf8());
        auto defaults = JsonUserDefaults::ofThisUser(SerialExecutor::onNewThread(u"settings"_s));
        before.isNull() ? qunsetenv("XDG_CONFIG_HOME") : qputenv("XDG_CONFIG_HOME", before);
        return defaults;
    }
    static unsigned modeOf(const QString &name)
    {
        struct stat status{};
        EXPECT_EQ(stat(QFile::encodeName(name).constData(), &status), 0);
        return status.st_mode & 0777U;
    }
    static void set(JsonUserDefaults &defaults, const QString &name, const DefaultsValue &value)
    {
        defaults.set(name, value);
        EXPECT_TRUE(waitFor(defaults.written()));
    }
    void put(const QByteArray &content) const
    {
        QDir().mkpath(QFileInfo(path).absolutePath());
        QFile file(path);
        ASSERT_TRUE(file.open(QFile::WriteOnly));
        file.write(content);
    }
    QByteArray content() const { return contentOf(path); }
    static QByteArray contentOf(const QString &name)
    {
        QFile file(name);
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
    }
    QJsonObject object() const { return QJsonDocument::fromJson(content()).object(); }
    QStringList filesInFolder() const
    {
        auto names = QFileInfo(path).dir().entryList(QDir::Files | QDir::Hidden, QDir::Name);
        names.removeAll(u"settings.json.lock"_s);
        return names;
    }
    bool logSays(const QString &text) const
    {
        for (const auto &line : log.lines()) {
            if (line.contains(text)) {
                return true;
            }
        }
        return false;
    }
};

} // namespace talmo::test
