#pragma once

#include <QMap>
#include <QString>

#include <functional>
#include <optional>

namespace talmo {

/// An exception of the platform's audio layer, told as an ordinary error.
struct CaughtAudioException {
    QString domain;
    int code = 0;
    QMap<QString, QString> userInfo;

    static QString localizedDescriptionKey() { return QStringLiteral("NSLocalizedDescriptionKey"); }
    static QString exceptionNameKey() { return QStringLiteral("TLExceptionName"); }

    QString localizedDescription() const { return userInfo.value(localizedDescriptionKey()); }
};

/// Guards a block of work against platform exceptions, and only against those.
class TLExceptionCatcher {
public:
    /// True when `work` finished; `error` is then left alone. After a caught PlatformException false, with the error
    /// stored if a place for it was given. Anything else passes through.
    static bool run(const std::function<void()> &work, std::optional<CaughtAudioException> *error);
};

} // namespace talmo
