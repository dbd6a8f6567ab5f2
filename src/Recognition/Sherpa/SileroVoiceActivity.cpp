#include "Recognition/Sherpa/SileroVoiceActivity.h"

#include "Base/Error.h"
#include "Recognition/Sherpa/OnnxFile.h"
#include "Recognition/Sherpa/SherpaFunctions.h"
#include "Recognition/Sherpa/SherpaRecogniser.h"
#include "Recognition/UnusableModel.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QStringList>

#include <utility>

namespace talmo {

namespace {

QString modelIn(const QString &folder)
{
    const QDir place(folder);
    const auto found = place.entryList({QStringLiteral("*vad*.onnx")}, QDir::Files, QDir::Name);
    return found.isEmpty() ? QString() : place.absoluteFilePath(found.first());
}

/// The library ends the process over a model with other inputs.
void requireSilero(const QString &path)
{
    const OnnxFile file = OnnxFile::read(path);
    const bool isFourth = file.inputs.size() == 4 && file.outputs.size() == 3 && file.inputs.contains("h");
    const bool isLater = file.inputs.size() == 3 && file.outputs.size() == 2 && file.inputs.contains("state");
    if (!file.inputs.contains("input") || (!isFourth && !isLater)) {
        throw UnusableModel(QStringLiteral("%1 is no model for voice activity.").arg(path));
    }
}

} // namespace

QString SileroVoiceActivity::find(const QString &modelFolder)
{
    const QString name = QStringLiteral("/silero-vad");
    QStringList folders;
    if (!modelFolder.isEmpty()) {
        folders = {modelFolder, QDir(modelFolder).absoluteFilePath(QStringLiteral("..")) + name};
    }
    for (const auto &data : QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation)) {
        folders += {data + QStringLiteral("/talmo/engines") + name, data + QStringLiteral("/talmo/models") + name};
    }
    for (const auto &folder : folders) {
        if (const QString found = modelIn(folder); !found.isEmpty()) {
            return found;
        }
    }
    return {};
}

SileroVoiceActivity::SileroVoiceActivity(std::shared_ptr<SherpaLibrary> library, const QString &modelPath)
    : m_library(std::move(library)),
      m_handle(nullptr)
{
    m_library->functions().requireOffline();
    requireSilero(modelPath);
    const QByteArray path = QFile::encodeName(modelPath);
    VoiceActivityConfig config;
    config.silero.model = path.constData();
    constexpr float secondsKept = 30;
    m_handle = sherpaGuarded([&] { return m_library->functions().createVoiceActivity(&config, secondsKept); });
    if (m_handle == nullptr) {
        throw UnusableModel(QStringLiteral("The model in %1 could not be loaded.").arg(modelPath));
    }
}

SileroVoiceActivity::~SileroVoiceActivity()
{
    m_library->functions().destroyVoiceActivity(m_handle);
}

bool SileroVoiceActivity::isSpeech(std::span<const float> samples)
{
    const auto &functions = m_library->functions();
    return sherpaGuarded([&] {
        functions.acceptVoice(m_handle, samples.data(), static_cast<std::int32_t>(samples.size()));
        functions.clearVoice(m_handle); // The segments that it collects; the sound is kept elsewhere.
        return functions.isVoiceDetected(m_handle) != 0;
    });
}

void SileroVoiceActivity::reset()
{
    sherpaGuarded([this] { m_library->functions().resetVoice(m_handle); });
}

} // namespace talmo
