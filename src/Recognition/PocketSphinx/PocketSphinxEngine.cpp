#include "Recognition/PocketSphinx/PocketSphinxEngine.h"

#include "Base/Error.h"

#include <QDirIterator>
#include <QRegularExpression>

#include <utility>

namespace talmo {

std::optional<QString> englishModelLocale(const QString &locale)
{
    static const QRegularExpression english(
        QRegularExpression::anchoredPattern(QStringLiteral("en([_-][A-Za-z0-9]{2,8})*(\\.[A-Za-z0-9-]+)?(@[a-z]+)?")));
    // A system without a language counts as English, the language of its messages.
    static const QRegularExpression unnamed(
        QRegularExpression::anchoredPattern(QStringLiteral("(C|POSIX)(\\.[A-Za-z0-9-]+)?")));
    if (english.match(locale).hasMatch() || unnamed.match(locale).hasMatch()) {
        return QStringLiteral("en_US");
    }
    return std::nullopt;
}

QString PocketSphinxEngine::debianModelFolder()
{
    return QStringLiteral(TALMO_POCKETSPHINX_MODEL_DIR);
}

PocketSphinxEngine::PocketSphinxEngine(const QString &modelFolder, MicrophoneKnowledge microphone,
                                       InstalledVoiceActivity activity)
    : m_pool(std::make_shared<PocketSphinxDecoderPool>(modelFolder.isEmpty() ? debianModelFolder() : modelFolder)),
      m_microphone(std::move(microphone)),
      m_activity(std::move(activity))
{
    if (!m_microphone.memory) {
        m_microphone.memory = std::make_shared<MicrophoneCalibrationStore>();
    }
}

QString PocketSphinxEngine::description() const
{
    return QStringLiteral("PocketSphinx, English, model in %1").arg(m_pool->modelFolder());
}

bool PocketSphinxEngine::speaks(const QString &locale) const
{
    return englishModelLocale(locale).has_value();
}

QString PocketSphinxEngine::problem() const
{
    if (!PocketSphinxDecoder::isModelInstalled(m_pool->modelFolder())) {
        return QStringLiteral(
            QT_TRANSLATE_NOOP("Talmo", "The speech model isn't installed. Install the package pocketsphinx-en-us."));
    }
    const std::scoped_lock lock(m_mutex);
    return m_refusal;
}

void PocketSphinxEngine::refuse(const QString &problem)
{
    const std::scoped_lock lock(m_mutex);
    m_refusal = problem;
}

QStringList PocketSphinxEngine::files() const
{
    QStringList paths;
    QDirIterator iterator(m_pool->modelFolder(), QDir::Files, QDirIterator::Subdirectories);
    while (iterator.hasNext()) {
        paths.append(iterator.next());
    }
    paths.sort();
    return paths;
}

std::unique_ptr<RecordingDecoder> PocketSphinxEngine::makeDecoder(RecordingDecoder::Publish publish)
{
    requireUsable();
    return std::make_unique<PocketSphinxRecording>(m_pool, m_microphone, m_activity.forRecording(), std::move(publish));
}

void PocketSphinxEngine::warmUp()
{
    requireUsable();
    m_pool->warmUp();
    m_activity.forRecording();
}

void PocketSphinxEngine::unload()
{
    m_pool->unload();
    m_activity.unload();
}

/// A refused model would end the process, and the caller may have asked before it was refused.
void PocketSphinxEngine::requireUsable() const
{
    if (const QString reason = problem(); !reason.isEmpty()) {
        throw Error(reason);
    }
}

} // namespace talmo
