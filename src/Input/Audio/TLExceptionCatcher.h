#pragma once

#include <QMap>
#include <QString>

#include <functional>
#include <optional>

namespace talmo {

/// An exception from the platform's audio layer, as an ordinary error.
struct CaughtAudioException {
    QString domain;
    int code = 0;
    QMap<QString, QString> userInfo;

    static QString localizedDescriptionKey() { return QStringLiteral("NSLocalizedDescriptionKey"); }
    static QString exceptionNameKey() { return QStringLiteral("TLExceptionName"); }

    QString localizedDescription() const { return userInfo.value(localizedDescriptionKey()); }
};

/// Runs work that may throw PlatformException, and catches only that.
class TLExceptionCatcher {
public:
    /// True if `work` finished; `error` is then unchanged. False after a PlatformException, stored in `error` unless
    /// that is null. Other exceptions propagate.
    static bool run(const std::function<void()> &work, std::optional<CaughtAudioException> *error);
};

} // namespace talmo
