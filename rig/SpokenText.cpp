#include "SpokenText.h"

#include "Base/Error.h"

#include <QCryptographicHash>
#include <QFile>
#include <QProcess>

namespace talmo::rig {

QString speak(const QString &text, const QString &folder, const QString &voice)
{
    const QByteArray name =
        QCryptographicHash::hash((voice + QLatin1Char('/') + text).toUtf8(), QCryptographicHash::Sha1);
    const QString file = QStringLiteral("%1/%2.wav").arg(folder, QString::fromLatin1(name.toHex()));
    QProcess process;
    process.start(QStringLiteral("flite"),
                  {QStringLiteral("-voice"), voice, QStringLiteral("-t"), text, QStringLiteral("-o"), file});
    constexpr int patience = 60000;
    if (!process.waitForFinished(patience) || process.exitCode() != 0 || !QFile::exists(file)) {
        throw Error(QStringLiteral("flite could not speak: ") + QString::fromUtf8(process.readAllStandardError()));
    }
    return file;
}

} // namespace talmo::rig
