#include "Platform/Linux/Gnome/ShellSettings.h"

#include <QStringList>

#undef signals
#include <gio/gio.h>

#include <memory>
#include <vector>

namespace talmo::ShellSettings {

namespace {

constexpr const char *schemaName = "org.gnome.shell";
constexpr const char *listKey = "enabled-extensions";

struct Unref {
    void operator()(GSettings *settings) const { g_object_unref(settings); }
};
using Settings = std::unique_ptr<GSettings, Unref>;

/// Null if GNOME Shell is not installed; GIO would end the program.
Settings open()
{
    auto *source = g_settings_schema_source_get_default();
    auto *schema = source != nullptr ? g_settings_schema_source_lookup(source, schemaName, TRUE) : nullptr;
    if (schema == nullptr) {
        return nullptr;
    }
    g_settings_schema_unref(schema);
    return Settings(g_settings_new(schemaName));
}

QStringList extensions(const Settings &settings)
{
    const std::unique_ptr<gchar *, decltype(&g_strfreev)> list(g_settings_get_strv(settings.get(), listKey),
                                                               &g_strfreev);
    QStringList all;
    for (auto **entry = list.get(); *entry != nullptr; ++entry) {
        all.append(QString::fromUtf8(*entry));
    }
    return all;
}

} // namespace

bool isEnabled(const QString &extension)
{
    const Settings settings = open();
    return settings && extensions(settings).contains(extension);
}

bool enable(const QString &extension)
{
    const Settings settings = open();
    if (!settings) {
        return false;
    }
    QStringList all = extensions(settings);
    if (all.contains(extension)) {
        return true;
    }
    all.append(extension);
    QList<QByteArray> utf8;
    std::vector<const gchar *> entries;
    for (const auto &entry : all) {
        utf8.append(entry.toUtf8());
        entries.push_back(utf8.last().constData());
    }
    entries.push_back(nullptr);
    const bool isStored = g_settings_set_strv(settings.get(), listKey, entries.data()) != FALSE;
    g_settings_sync(); // Written by another thread otherwise, perhaps after this process has ended.
    return isStored;
}

} // namespace talmo::ShellSettings
