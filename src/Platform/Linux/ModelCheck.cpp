#include "Platform/Linux/ModelCheck.h"

#include "Base/Error.h"
#include "Platform/Linux/SherpaLibrary.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>

#include <vector>

namespace talmo {

void checkModelApart(const QString &libraryPath, const QString &modelFolder)
{
    constexpr int patience = 120000;
    const QString program = QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("talmoctl"));
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, {QStringLiteral("check-model"), QStringLiteral("--library"), libraryPath, modelFolder});
    if (!process.waitForFinished(patience)) {
        process.kill();
        process.waitForFinished();
        throw Error(QStringLiteral("The model in %1 could not be checked: %2").arg(modelFolder, process.errorString()));
    }
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        const QString output = QString::fromUtf8(process.readAll()).trimmed();
        throw Error(QStringLiteral("The model in %1 cannot be used: %2")
                        .arg(modelFolder, output.section(QLatin1Char('\n'), -1)));
    }
}

void checkModelHere(const QString &libraryPath, const QString &modelFolder)
{
    const auto recogniser =
        SherpaLibrary::Recogniser::load(SherpaLibrary::open(libraryPath), SherpaModel::examine(modelFolder));
    // A model can be loaded and fail over the first sound.
    constexpr std::size_t aSecond = 16000;
    SherpaLibrary::Stream stream(recogniser);
    stream.accept(std::vector<float>(aSecond));
    stream.inputFinished();
    stream.text();
}

} // namespace talmo
