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
#include <QStandardPaths>

#include <algorithm>
#include <functional>
#include <limits>
#include <random>
#include <span>
#include <vector>

namespace talmo {

namespace {

constexpr std::size_t sampleRate = RecordingDecoder::sampleRate;
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

QString reportPath(const QString &modelFolder)
{
    return QDir(modelFolder).filePath(QStringLiteral(".talmo-report"));
}

bool isNoted(const SpeechEngine &engine, const QString &note)
{
    QFile file(note);
    return file.open(QFile::ReadOnly) && file.readAll() == identityOf(engine);
}

void writeNote(const SpeechEngine &engine, const QString &note)
{
    try {
        PrivateFile::write(note, identityOf(engine));
    } catch (const Error &error) { // It is checked again next time.
        generalLog().info("a checked model could not be noted: %@", {wholeDescription(error)});
    }
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

std::optional<ModelReport> ModelReport::noted(const QString &modelFolder)
{
    QFile file(reportPath(modelFolder));
    return file.open(QFile::ReadOnly) ? std::optional(fromOutput(QString::fromUtf8(file.readAll()))) : std::nullopt;
}

ModelReport measureApart(const QString &neuralLibrary, const QString &model, ModelTrial trial)
{
    constexpr int timeout = 120000;
    const QString program = QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("talmoctl"));
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    QStringList arguments{QStringLiteral("check-model"), QStringLiteral("--json")};
    if (!neuralLibrary.isEmpty()) {
        arguments += {QStringLiteral("--library"), neuralLibrary};
    }
    if (trial == ModelTrial::Load) {
        arguments += QStringLiteral("--load-only");
    }
    process.start(program, arguments + QStringList{model});
    if (!process.waitForFinished(timeout)) {
        process.kill();
        process.waitForFinished();
        throw DetailedError(
            QStringLiteral(QT_TRANSLATE_NOOP(
                "Talmo", "A speech model could not be tested. Try again when the computer is less busy.")),
            QStringLiteral("%1: %2").arg(model, process.errorString()));
    }
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        const QString output = QString::fromUtf8(process.readAll()).trimmed();
        throw UnusableModel(QStringLiteral("%1: %2").arg(model, output.section(QLatin1Char('\n'), -1)));
    }
    return ModelReport::fromOutput(QString::fromUtf8(process.readAll()));
}

ModelReport checkModelOnce(const SpeechEngine &engine, const QString &neuralLibrary, const QString &modelFolder)
{
    const QString note = QDir(modelFolder).filePath(QStringLiteral(".talmo-checked"));
    const auto noted = ModelReport::noted(modelFolder);
    if (noted && isNoted(engine, note)) {
        return *noted;
    }
    ModelReport report = measureApart(neuralLibrary, modelFolder);
    if (report.shareOfSpeech > largestShareOfSpeech) { // The machine may have been busy for a moment.
        report.shareOfSpeech = std::min(report.shareOfSpeech, measureApart(neuralLibrary, modelFolder).shareOfSpeech);
    }
    try {
        PrivateFile::write(reportPath(modelFolder), report.toLine().toUtf8());
        writeNote(engine, note);
    } catch (const Error &error) { // It is measured again next time.
        generalLog().info("a model's report could not be noted: %@", {wholeDescription(error)});
    }
    return report;
}

void checkEmbeddedOnce(SpeechEngine &engine)
{
    const QString folder =
        QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) + QStringLiteral("/talmo");
    const QString note = folder + QStringLiteral("/embedded-model-checked");
    if (!engine.problem().isEmpty() || isNoted(engine, note)) {
        return;
    }
    try {
        measureApart({}, engine.id(), ModelTrial::Load);
        PrivateFile::makeFolder(folder);
        writeNote(engine, note);
    } catch (const UnusableModel &error) {
        generalLog().error("the embedded engine is not used: %@", {wholeDescription(error)});
        engine.refuse(QStringLiteral(QT_TRANSLATE_NOOP(
            "Talmo", "The built-in speech model is damaged. Reinstall the package pocketsphinx-en-us.")));
    } catch (const Error &error) {
        generalLog().info("the embedded model could not be checked: %@", {wholeDescription(error)});
    }
}

/// A model can load and still fail over the first sound.
ModelReport measure(SpeechEngine &engine, const std::function<double()> &usedMegabytes, ModelTrial trial)
{
    const auto sound = someSound();
    const auto hear = [&engine, &sound] {
        const auto decoder = engine.makeTrialDecoder([](const SpeechResult &) {});
        for (std::size_t at = 0; at < sound.size(); at += blockSize) {
            decoder->process(std::span(sound).subspan(at, std::min(blockSize, sound.size() - at)));
        }
        decoder->finish();
    };
    ModelReport report;
    const double before = usedMegabytes();
    report.secondsToLoad = secondsOf([&engine] { engine.warmUp(); });
    if (trial == ModelTrial::Hear) {
        report.shareOfSpeech = secondsOf(hear) * double(sampleRate) / double(sound.size());
    }
    report.megabytes = usedMegabytes() - before;
    return report;
}

} // namespace talmo
