#include "Platform/Linux/Session/XdgAutostart.h"

#include "Base/Application.h"
#include "Base/Error.h"
#include "Files/PrivateFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <memory>
#include <utility>

#undef signals // GLib has a member of that name.
#include <glib.h>

namespace talmo {

namespace {

constexpr const char *group = G_KEY_FILE_DESKTOP_GROUP;
constexpr const char *execKey = G_KEY_FILE_DESKTOP_KEY_EXEC;
constexpr const char *hiddenKey = G_KEY_FILE_DESKTOP_KEY_HIDDEN;
/// GNOME's own settings use this key to switch an entry off without removing it.
constexpr const char *gnomeEnabledKey = "X-GNOME-Autostart-enabled";

/// A desktop entry; keys that Talmo does not use are preserved.
class DesktopEntry {
public:
    explicit DesktopEntry(const QString &path)
        : m_keys(g_key_file_new(), &g_key_file_unref)
    {
        constexpr auto everything = GKeyFileFlags(G_KEY_FILE_KEEP_COMMENTS | G_KEY_FILE_KEEP_TRANSLATIONS);
        g_key_file_load_from_file(get(), QFile::encodeName(path).constData(), everything, nullptr);
    }

    GKeyFile *get() const { return m_keys.get(); }

    bool flag(const char *key, bool missing) const
    {
        GError *error = nullptr;
        const bool value = g_key_file_get_boolean(get(), group, key, &error) != 0;
        if (error != nullptr) {
            g_error_free(error);
            return missing;
        }
        return value;
    }

    QByteArray text(const char *key) const
    {
        const std::unique_ptr<char, decltype(&g_free)> value(g_key_file_get_string(get(), group, key, nullptr),
                                                             &g_free);
        return {value.get()};
    }

    void set(const char *key, const QByteArray &value) { g_key_file_set_string(get(), group, key, value.constData()); }
    void set(const char *key, bool value) { g_key_file_set_boolean(get(), group, key, value ? 1 : 0); }
    void remove(const char *key) { g_key_file_remove_key(get(), group, key, nullptr); }

    void save(const QString &path) const
    {
        gsize size = 0;
        const std::unique_ptr<char, decltype(&g_free)> text(g_key_file_to_data(get(), &size, nullptr), &g_free);
        PrivateFile::write(path, QByteArray(text.get(), static_cast<qsizetype>(size)));
    }

private:
    std::unique_ptr<GKeyFile, decltype(&g_key_file_unref)> m_keys;
};

/// Quotes one argument of a command line by the rules for desktop entries.
QByteArray quoted(const QString &argument)
{
    QByteArray result = "\"";
    for (const char character : QFile::encodeName(argument)) {
        if (QByteArray("\"`$\\").contains(character)) {
            result += '\\';
        } else if (character == '%') {
            result += '%';
        }
        result += character;
    }
    return result + '"';
}

/// Whether the command line's program exists: it does not in an entry written before Talmo was moved.
bool isExecutable(const QByteArray &commandLine)
{
    int count = 0;
    char **words = nullptr;
    if (g_shell_parse_argv(commandLine.constData(), &count, &words, nullptr) == 0) {
        return false;
    }
    const QByteArray program = QByteArray(words[0]).replace("%%", "%");
    g_strfreev(words);
    return !QStandardPaths::findExecutable(QFile::decodeName(program)).isEmpty();
}

QString entryName()
{
    return bundleIdentifier() + QStringLiteral(".desktop");
}

} // namespace

XdgAutostart::XdgAutostart(QString program, QString userFolder, QStringList systemFolders)
    : m_program(std::move(program)),
      m_userFolder(std::move(userFolder)),
      m_systemFolders(std::move(systemFolders))
{
}

XdgAutostart XdgAutostart::forThisSession(const QString &program)
{
    auto folders = QStandardPaths::standardLocations(QStandardPaths::GenericConfigLocation);
    for (auto &folder : folders) {
        folder += QStringLiteral("/autostart");
    }
    const QString userFolder = folders.takeFirst();
    return {program, userFolder, folders};
}

QString XdgAutostart::userEntry() const
{
    return m_userFolder + QLatin1Char('/') + entryName();
}

/// The entry that is in effect: the first one found. Empty if there is none.
QString XdgAutostart::effectiveEntry() const
{
    for (const auto &folder : QStringList{m_userFolder} + m_systemFolders) {
        const QString path = folder + QLatin1Char('/') + entryName();
        if (QFileInfo::exists(path)) {
            return path;
        }
    }
    return {};
}

LoginItemStatus XdgAutostart::status() const
{
    const QString path = effectiveEntry();
    if (path.isEmpty()) {
        return LoginItemStatus::NotRegistered;
    }
    const DesktopEntry entry(path);
    const bool isOn = !entry.flag(hiddenKey, false) && entry.flag(gnomeEnabledKey, true);
    return isOn && isExecutable(entry.text(execKey)) ? LoginItemStatus::Enabled : LoginItemStatus::NotRegistered;
}

void XdgAutostart::registerItem()
{
    if (!QDir().mkpath(m_userFolder)) {
        throw Error(QStringLiteral("Cannot create the folder %1.").arg(m_userFolder));
    }
    DesktopEntry entry(userEntry());
    entry.set(G_KEY_FILE_DESKTOP_KEY_TYPE, QByteArray(G_KEY_FILE_DESKTOP_TYPE_APPLICATION));
    entry.set(G_KEY_FILE_DESKTOP_KEY_NAME, QByteArray("Talmo"));
    entry.set(G_KEY_FILE_DESKTOP_KEY_COMMENT, QByteArray("Hold a key, speak, let go"));
    entry.set(execKey, quoted(m_program));
    entry.set(G_KEY_FILE_DESKTOP_KEY_TERMINAL, false);
    entry.remove(hiddenKey);
    entry.set(gnomeEnabledKey, true);
    entry.save(userEntry());
}

void XdgAutostart::unregisterItem()
{
    if (QFileInfo::exists(userEntry()) && !QFile::remove(userEntry())) {
        throw Error(QStringLiteral("Cannot remove %1.").arg(userEntry()));
    }
    if (effectiveEntry().isEmpty()) {
        return;
    }
    // An entry in the system's folders can only be overridden.
    if (!QDir().mkpath(m_userFolder)) {
        throw Error(QStringLiteral("Cannot create the folder %1.").arg(m_userFolder));
    }
    DesktopEntry entry(effectiveEntry());
    entry.set(hiddenKey, true);
    entry.save(userEntry());
}

} // namespace talmo
