#pragma once

#include "Base/SerialExecutor.h"
#include "Settings/UserDefaults.h"

#include <QFuture>
#include <QJsonObject>
#include <QString>

#include <functional>
#include <memory>
#include <utility>

namespace talmo {

class SettingsFile;

/// The user's settings in a JSON file. Read once; written in order on a separate thread after every change.
class JsonUserDefaults final : public UserDefaults {
public:
    /// `writer`: the thread that may block on the disk. `inPlaceOfDamaged`: the initial values if the file is unusable.
    JsonUserDefaults(const QString &path, std::shared_ptr<SerialExecutor> writer,
                     const QJsonObject &inPlaceOfDamaged = {});

    /// The settings of this user. If the file is unusable, AI cleanup stays off until it is switched on again: the user
    /// may have chosen that nothing is sent to a server.
    static std::shared_ptr<JsonUserDefaults> ofThisUser(std::shared_ptr<SerialExecutor> writer);

    /// Called on the writer's thread with a text for the user when a value cannot be written, unless the one before
    /// could not either.
    void setOnWriteFailed(std::function<void(const char *)> callback) { m_onWriteFailed = std::move(callback); }

    /// The path of the file in the user's configuration folder, whether it exists or not.
    static QString standardPath();

    std::optional<bool> boolean(const QString &key) const override;
    std::optional<QString> string(const QString &key) const override;
    std::optional<QStringList> stringArray(const QString &key) const override;
    void set(const QString &key, const DefaultsValue &value) override;
    void registerDefault(const QString &key, const DefaultsValue &value) override;

    /// Finishes once everything set so far has been written or has failed to be.
    QFuture<void> written() const;

    /// Like written(), but fails with an Error that can be shown to the user while anything set so far is not on disk.
    QFuture<void> saved() const;

private:
    QJsonValue find(const QString &key, bool (*isOfType)(const QJsonValue &)) const;

    std::shared_ptr<SettingsFile> m_file; ///< Used only by the writer after construction.
    std::shared_ptr<SerialExecutor> m_writer;
    std::function<void(const char *)> m_onWriteFailed;
    QJsonObject m_stored;
    QJsonObject m_registered;
};

} // namespace talmo
