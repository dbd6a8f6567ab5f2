#include "SpokenText.h"

#include "Base/Error.h"

#include <QCryptographicHash>
#include <QFile>
#include <QProcess>

namespace talmo::testbed {

namespace {

const QString festivalPrefix = QStringLiteral("festival:");

void run(const QString &program, const QStringList &arguments, const QByteArray &input)
{
    QProcess process;
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    constexpr int timeout = 60000;
    if (!process.waitForFinished(timeout) || process.exitCode() != 0) {
        throw Error(program + QStringLiteral(" failed to synthesise speech: ") +
                    QString::fromUtf8(process.readAllStandardError()));
    }
}

} // namespace

QString speak(const QString &text, const QString &folder, const QString &voice)
{
    const QByteArray name =
        QCryptographicHash::hash((voice + QLatin1Char('/') + text).toUtf8(), QCryptographicHash::Sha1);
    const QString file = QStringLiteral("%1/%2.wav").arg(folder, QString::fromLatin1(name.toHex()));
    if (QFile::exists(file)) {
        return file;
    }
    if (voice.startsWith(festivalPrefix)) {
        run(QStringLiteral("text2wave"),
            {QStringLiteral("-eval"), QStringLiteral("(voice_%1)").arg(voice.mid(festivalPrefix.size())),
             QStringLiteral("-o"), file},
            text.toUtf8());
    } else {
        run(QStringLiteral("flite"),
            {QStringLiteral("-voice"), voice, QStringLiteral("-t"), text, QStringLiteral("-o"), file}, {});
    }
    if (!QFile::exists(file)) {
        throw Error(QStringLiteral("The synthesised speech is empty."));
    }
    return file;
}

} // namespace talmo::testbed
