#include "Recognition/ModelCheck.h"

#include "Base/Error.h"
#include "Base/Log.h"
#include "Files/PrivateFile.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <algorithm>
#include <functional>
#include <limits>
#include <random>
#include <span>
#include <vector>

namespace talmo {

namespace {

constexpr std::size_t sampleRate = 16000;
constexpr std::size_t blockSize = 2048;

/// Ten seconds in which there is something to recognise for any model: murmur, hiss, and pauses between them.
std::vector<std::int16_t> someSound()
{
    constexpr std::size_t seconds = 10;
    constexpr float loudness = 0.2F;
    std::minstd_rand generator;
    std::normal_distribution<float> noise(0, loudness);
    std::vector<std::int16_t> sound(seconds * sampleRate);
    float last = 0;
    for (std::size_t index = 0; index < sound.size(); ++index) {
        enum { Murmur, Hiss, Pause, Count };
        const auto kind = index * 2 / sampleRate % Count;
        const float sample = noise(generator);
        const float difference = sample - last;
        last = kind == Murmur ? (sample + 3 * last) / 4 : sample;
        const float audible = kind == Pause ? 0 : std::clamp(kind == Murmur ? last : difference, -1.0F, 1.0F);
        sound[index] = static_cast<std::int16_t>(audible * std::numeric_limits<std::int16_t>::max());
    }
    return sound;
}

double secondsOf(const std::function<void()> &work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    constexpr double nanosecondsInOne = 1e9;
    return static_cast<double>(timer.nsecsElapsed()) / nanosecondsInOne;
}

/// Changes whenever the library or a file of the model does.
QByteArray identityOf(const SpeechEngine &engine)
{
    QStringList parts;
    for (const auto &path : engine.files()) {
        const QFileInfo file(path);
        parts.append(QStringLiteral("%1 %2 %3")
                         .arg(file.fileName())
                         .arg(file.size())
                         .arg(file.lastModified().toMSecsSinceEpoch()));
    }
    return parts.join(QLatin1Char('\n')).toUtf8();
}

} // namespace

QString ModelReport::description() const
{
    return QStringLiteral("loaded in %1 s, %2 MB, %3 of the time spoken")
        .arg(secondsToLoad, 0, 'f', 2)
        .arg(megabytes, 0, 'f', 0)
        .arg(shareOfSpeech, 0, 'f', 3);
}

QString ModelReport::toLine() const
{
    return QString::fromUtf8(QJsonDocument(QJsonObject{{QStringLiteral("secondsToLoad"), secondsToLoad},
                                                       {QStringLiteral("megabytes"), megabytes},
                                                       {QStringLiteral("shareOfSpeech"), shareOfSpeech}})
                                 .toJson(QJsonDocument::Compact));
}

ModelReport ModelReport::fromOutput(const QString &output)
{
    const auto line = output.trimmed().section(QLatin1Char('\n'), -1).toUtf8();
    const auto object = QJsonDocument::fromJson(line).object();
    const auto number = [&object](const char *key) { return object.value(QLatin1String(key)).toDouble(); };
    return {number("secondsToLoad"), number("megabytes"), number("shareOfSpeech")};
}

ModelReport measureApart(const QString &neuralLibrary, const QString &modelFolder)
{
    constexpr int patience = 120000;
    const QString program = QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("talmoctl"));
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    QStringList arguments{QStringLiteral("check-model"), QStringLiteral("--json")};
    if (!neuralLibrary.isEmpty()) {
        arguments += {QStringLiteral("--library"), neuralLibrary};
    }
    process.start(program, arguments + QStringList{modelFolder});
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
    return ModelReport::fromOutput(QString::fromUtf8(process.readAll()));
}

void checkModelOnce(const SpeechEngine &engine, const QString &neuralLibrary, const QString &modelFolder)
{
    const QByteArray identity = identityOf(engine);
    QFile note(QDir(modelFolder).filePath(QStringLiteral(".talmo-checked")));
    if (note.open(QFile::ReadOnly) && note.readAll() == identity) {
        return;
    }
    note.close();
    measureApart(neuralLibrary, modelFolder);
    try {
        PrivateFile::write(note.fileName(), identity);
    } catch (const Error &error) { // It is checked again next time.
        generalLog().info("a checked model could not be noted: %@", {error.localizedDescription()});
    }
}

/// A model can load and still fail over the first sound.
ModelReport measure(SpeechEngine &engine, const std::function<double()> &usedMegabytes)
{
    const auto sound = someSound();
    const auto hear = [&engine, &sound] {
        const auto decoder = engine.makeDecoder([](const SpeechResult &) {});
        for (std::size_t at = 0; at < sound.size(); at += blockSize) {
            decoder->process(std::span(sound).subspan(at, std::min(blockSize, sound.size() - at)));
        }
        decoder->finish();
    };
    ModelReport report;
    const double before = usedMegabytes();
    report.secondsToLoad = secondsOf([&engine] { engine.warmUp(); });
    report.shareOfSpeech = secondsOf(hear) * double(sampleRate) / double(sound.size());
    report.megabytes = usedMegabytes() - before;
    return report;
}

} // namespace talmo
