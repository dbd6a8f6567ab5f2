#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <variant>

namespace talmo {

using DefaultsValue = std::variant<bool, QString, QStringList>;

/// Named values that outlive the process. Main thread only; no call waits for the disk.
///
/// Reads are typed: what is stored as another type counts as missing, so "true" and 1 are no Booleans. Under what is
/// stored lie the registered defaults, which are never stored. Nothing here fails: what cannot be kept is said in the
/// log, and the running process goes on with the values it has.
class UserDefaults {
public:
    virtual ~UserDefaults() = default;

    virtual std::optional<bool> boolean(const QString &key) const = 0;
    virtual std::optional<QString> string(const QString &key) const = 0;
    /// None when the array holds anything but strings.
    virtual std::optional<QStringList> stringArray(const QString &key) const = 0;

    /// Stores the value and has it written at once, also when it is the one that is there already.
    virtual void set(const QString &key, const DefaultsValue &value) = 0;

    virtual void registerDefault(const QString &key, const DefaultsValue &value) = 0;
};

} // namespace talmo
