#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <variant>

namespace talmo {

using DefaultsValue = std::variant<bool, QString, QStringList>;

/// Persistent named values. Main thread only; no call blocks on the disk.
///
/// Reads are typed: a value of another type counts as missing, so "true" and 1 are not Booleans. Registered defaults
/// apply where nothing is stored; they are never stored themselves. Nothing here fails: a value that cannot be saved is
/// logged, and the process continues with the values it has.
class UserDefaults {
public:
    virtual ~UserDefaults() = default;

    virtual std::optional<bool> boolean(const QString &key) const = 0;
    virtual std::optional<QString> string(const QString &key) const = 0;
    /// Nullopt if the array contains anything but strings.
    virtual std::optional<QStringList> stringArray(const QString &key) const = 0;

    /// Stores the value and starts writing it, even if it is unchanged.
    virtual void set(const QString &key, const DefaultsValue &value) = 0;

    virtual void registerDefault(const QString &key, const DefaultsValue &value) = 0;
};

} // namespace talmo
