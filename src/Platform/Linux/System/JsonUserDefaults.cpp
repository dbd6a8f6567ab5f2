#include "Platform/Linux/System/JsonUserDefaults.h"

#include "Base/Error.h"
#include "Platform/Linux/System/SettingsFile.h"
#include "Settings/TalmoSettings.h"

#include <QJsonArray>
#include <QStandardPaths>

#include <algorithm>
#include <utility>

namespace talmo {

namespace {

bool isBoolean(const QJsonValue &value)
{
    return value.isBool();
}

bool isString(const QJsonValue &value)
{
    return value.isString();
}

bool isStringArray(const QJsonValue &value)
{
    const auto array = value.toArray();
    return value.isArray() && std::all_of(array.begin(), array.end(), [](const auto &item) { return item.isString(); });
}

struct ToJson {
    QJsonValue operator()(bool value) const { return value; }
    QJsonValue operator()(const QString &value) const { return value; }
    QJsonValue operator()(const QStringList &value) const { return QJsonArray::fromStringList(value); }
};

const char *const notSaved = QT_TRANSLATE_NOOP("Talmo", "The settings could not be saved. Is the disk full?");

} // namespace

JsonUserDefaults::JsonUserDefaults(const QString &path, std::shared_ptr<SerialExecutor> writer,
                                   const QJsonObject &inPlaceOfDamaged)
    : m_file(std::make_shared<SettingsFile>(path, inPlaceOfDamaged)),
      m_writer(std::move(writer)),
      m_stored(m_file->read())
{
}

std::shared_ptr<JsonUserDefaults> JsonUserDefaults::ofThisUser(std::shared_ptr<SerialExecutor> writer)
{
    return std::make_shared<JsonUserDefaults>(standardPath(), std::move(writer),
                                              QJsonObject{{aiCleanupEnabledKey(), false}});
}

QString JsonUserDefaults::standardPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/talmo/settings.json");
}

/// The stored value if it has the requested type, else the registered one, else an undefined value.
QJsonValue JsonUserDefaults::find(const QString &key, bool (*isOfType)(const QJsonValue &)) const
{
    for (const auto *layer : {&m_stored, &m_registered}) {
        const auto value = layer->value(key);
        if (isOfType(value)) {
            return value;
        }
    }
    return QJsonValue::Undefined;
}

std::optional<bool> JsonUserDefaults::boolean(const QString &key) const
{
    const auto value = find(key, &isBoolean);
    return value.isUndefined() ? std::nullopt : std::optional(value.toBool());
}

std::optional<QString> JsonUserDefaults::string(const QString &key) const
{
    const auto value = find(key, &isString);
    return value.isUndefined() ? std::nullopt : std::optional(value.toString());
}

std::optional<QStringList> JsonUserDefaults::stringArray(const QString &key) const
{
    const auto value = find(key, &isStringArray);
    if (value.isUndefined()) {
        return std::nullopt;
    }
    QStringList strings;
    for (const auto &item : value.toArray()) {
        strings.append(item.toString());
    }
    return strings;
}

void JsonUserDefaults::set(const QString &key, const DefaultsValue &value)
{
    const auto json = std::visit(ToJson(), value);
    m_stored.insert(key, json);
    m_writer->post([file = m_file, change = QJsonObject{{key, json}}, all = m_stored, onFailed = m_onWriteFailed] {
        const bool wasWritten = file->isAllWritten();
        file->write(change, all);
        if (wasWritten && !file->isAllWritten() && onFailed) {
            onFailed(notSaved);
        }
    });
}

void JsonUserDefaults::registerDefault(const QString &key, const DefaultsValue &value)
{
    m_registered.insert(key, std::visit(ToJson(), value));
}

QFuture<void> JsonUserDefaults::written() const
{
    return m_writer->call([] {});
}

QFuture<void> JsonUserDefaults::saved() const
{
    return m_writer->call([file = m_file] {
        if (!file->isAllWritten()) {
            throw Error(QString::fromUtf8(notSaved));
        }
    });
}

} // namespace talmo
