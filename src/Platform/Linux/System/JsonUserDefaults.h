#pragma once

#include "Base/SerialExecutor.h"
#include "Settings/UserDefaults.h"

#include <QFuture>
#include <QJsonObject>
#include <QString>

#include <memory>

namespace talmo {

class SettingsFile;

/// The user's settings in a JSON file. Read once; written on a thread of its own after every change, in order.
class JsonUserDefaults final : public UserDefaults {
public:
    /// `writer`: the thread that may wait for the disk.
    /// `inPlaceOfDamaged`: the values to begin with where there is a file that cannot be used.
    JsonUserDefaults(const QString &path, std::shared_ptr<SerialExecutor> writer,
                     const QJsonObject &inPlaceOfDamaged = {});

    /// The settings of this user. A file that cannot be used leaves AI cleanup off until it is switched on again: the
    /// user may have chosen that nothing is sent to a server.
    static std::shared_ptr<JsonUserDefaults> ofThisUser(std::shared_ptr<SerialExecutor> writer);

    /// The file among the user's configuration, whether it is there or not.
    static QString standardPath();

    std::optional<bool> boolean(const QString &key) const override;
    std::optional<QString> string(const QString &key) const override;
    std::optional<QStringList> stringArray(const QString &key) const override;
    void set(const QString &key, const DefaultsValue &value) override;
    void registerDefault(const QString &key, const DefaultsValue &value) override;

    /// Finishes once everything set so far has been written, or has failed to be.
    QFuture<void> written() const;

    /// The same, but fails with Error, fit for the user, while anything set so far is not on the disk.
    QFuture<void> saved() const;

private:
    QJsonValue find(const QString &key, bool (*isOfType)(const QJsonValue &)) const;

    std::shared_ptr<SettingsFile> m_file; ///< The writer's, once construction is over.
    std::shared_ptr<SerialExecutor> m_writer;
    QJsonObject m_stored;
    QJsonObject m_registered;
};

} // namespace talmo
