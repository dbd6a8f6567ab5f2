#include "Recognition/PocketSphinx/MicrophoneCalibrationStore.h"

#include "Base/Error.h"
#include "Base/Log.h"
#include "Files/PrivateFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

namespace talmo {

namespace {

/// More than any microphone's, and far below what would break the decoder.
constexpr double largestValue = 1000;
constexpr qsizetype longestMean = 64;

MicrophoneCalibrationStore::Mean meanFromJson(const QJsonValue &value)
{
    MicrophoneCalibrationStore::Mean mean;
    for (const auto &number : value.toArray()) {
        const double coefficient = number.toDouble(largestValue + 1);
        if (!(std::abs(coefficient) <= largestValue) || mean.size() == longestMean) {
            return {};
        }
        mean.append(static_cast<float>(coefficient));
    }
    return mean;
}

QJsonArray meanToJson(const MicrophoneCalibrationStore::Mean &mean)
{
    QJsonArray array;
    for (const float coefficient : mean) {
        array.append(static_cast<double>(coefficient));
    }
    return array;
}

bool isAudiblyDifferent(const MicrophoneCalibrationStore::Mean &one, const MicrophoneCalibrationStore::Mean &other)
{
    constexpr float hardlyAudible = 1.5;
    if (one.size() != other.size()) {
        return true;
    }
    for (qsizetype index = 0; index < one.size(); ++index) {
        if (std::abs(one.at(index) - other.at(index)) > hardlyAudible) {
            return true;
        }
    }
    return false;
}

} // namespace

MicrophoneCalibrationStore::MicrophoneCalibrationStore(const QString &path)
    : m_path(path)
{
    QFile file(m_path);
    if (m_path.isEmpty() || !file.open(QFile::ReadOnly)) {
        return;
    }
    const auto stored = QJsonDocument::fromJson(file.readAll()).object();
    for (auto entry = stored.begin(); entry != stored.end(); ++entry) {
        if (const auto mean = meanFromJson(entry.value()); !mean.isEmpty()) {
            m_means.insert(entry.key(), mean);
        }
    }
    m_written = m_means;
}

QString MicrophoneCalibrationStore::standardPath()
{
    const QString state = qEnvironmentVariable("XDG_STATE_HOME", QDir::homePath() + QStringLiteral("/.local/state"));
    return state + QStringLiteral("/talmo/microphones.json");
}

MicrophoneCalibrationStore::Mean MicrophoneCalibrationStore::recall(const QString &microphone) const
{
    const std::lock_guard lock(m_mutex);
    return m_means.value(microphone);
}

void MicrophoneCalibrationStore::remember(const QString &microphone, const Mean &mean)
{
    const std::lock_guard lock(m_mutex);
    m_means.insert(microphone, mean);
    if (!m_path.isEmpty() && isAudiblyDifferent(m_written.value(microphone), mean)) {
        write();
    }
}

/// A failure costs the next run a second of calibration, unless a later attempt succeeds.
void MicrophoneCalibrationStore::write()
{
    QJsonObject object;
    for (auto entry = m_means.begin(); entry != m_means.end(); ++entry) {
        object.insert(entry.key(), meanToJson(entry.value()));
    }
    try {
        PrivateFile::makeFolder(QFileInfo(m_path).absolutePath());
        PrivateFile::write(m_path, QJsonDocument(object).toJson());
        m_written = m_means;
    } catch (const Error &error) {
        generalLog().error("what was learnt about the microphone could not be written: %@",
                           {error.localizedDescription()});
    }
}

} // namespace talmo
