#include "Recognition/Sherpa/SherpaEngine.h"

#include "Base/Error.h"
#include "Base/Log.h"
#include "Recognition/Models/ModelCatalogue.h"
#include "Recognition/Sherpa/SherpaFunctions.h"
#include "Recognition/Sherpa/SherpaRecogniser.h"
#include "Recognition/Sherpa/SileroVoiceActivity.h"
#include "Recognition/Text/OrdinaryWords.h"
#include "Recognition/UnusableModel.h"

#include <QDir>

#include <atomic>
#include <functional>
#include <mutex>
#include <utility>

namespace talmo {

namespace {

/// The language whose words can be compared by their sound.
QString english()
{
    return QStringLiteral("en");
}

/// Reports that the library failed on a recording.
class GuardedDecoder final : public RecordingDecoder {
public:
    GuardedDecoder(std::unique_ptr<RecordingDecoder> decoder, std::function<void()> giveUp)
        : m_decoder(std::move(decoder)),
          m_giveUp(std::move(giveUp))
    {
    }

    void process(std::span<const std::int16_t> samples) override
    {
        guarded([this, samples] { m_decoder->process(samples); });
    }

    void finish() override
    {
        guarded([this] { m_decoder->finish(); });
    }

private:
    template <typename Work>
    void guarded(Work work)
    {
        try {
            work();
        } catch (const Error &) {
            m_giveUp();
            throw;
        }
    }

    std::unique_ptr<RecordingDecoder> m_decoder;
    std::function<void()> m_giveUp;
};

} // namespace

/// The model and, while it is in memory, its recogniser. On the decoder thread, unless a comment says otherwise.
class SherpaEngine::LoadedModel {
public:
    LoadedModel(std::shared_ptr<SherpaLibrary> library, SherpaModel model)
        : m_library(std::move(library)),
          m_model(std::move(model))
    {
    }

    /// Throws Error; the model is then not tried again. Re-examines the files, which may have changed on disk.
    std::shared_ptr<SherpaRecogniser> get()
    {
        if (!m_recogniser) {
            const bool wasUsable = m_isUsable.exchange(false);
            if (!wasUsable) {
                throw UnusableModel(QStringLiteral("The model in %1 failed before.").arg(m_model.folder));
            }
            try {
                m_recogniser = SherpaRecogniser::load(m_library, SherpaModel::examine(m_model.folder));
            } catch (const Error &error) {
                generalLog().error("a speech model failed: %@", {wholeDescription(error)});
                throw;
            }
            m_isUsable = true;
        }
        return m_recogniser;
    }
    void unload() { m_recogniser.reset(); }
    /// The library failed in the middle of a recording, and may do so again.
    void giveUp()
    {
        m_isUsable = false;
        unload();
        generalLog().error("the neural recogniser with the model in %@ failed; it is not used any more",
                           {m_model.folder});
    }

    /// Any thread.
    bool isUsable() const { return m_isUsable; }
    const SherpaLibrary &library() const { return *m_library; }
    void setVocabulary(const PersonalVocabulary &vocabulary)
    {
        const std::scoped_lock lock(m_mutex);
        if (m_vocabulary != vocabulary) {
            m_vocabulary = vocabulary;
            m_correction.reset();
        }
    }
    /// For a recording in that language.
    SherpaRecogniser::Recording recording(const QString &language, RecordingDecoder::Publish publish)
    {
        const std::scoped_lock lock(m_mutex);
        const PersonalSpelling spelling(m_vocabulary.words);
        const auto letters = m_model.isAllCapitals ? ReadableText::Letters::Lower : ReadableText::Letters::AsWritten;
        const bool isCorrected = !m_model.takesHotWords() && !m_vocabulary.words.isEmpty() && language == english();
        if (isCorrected && !m_correction) {
            m_correction = std::make_shared<SoundCorrection>(m_vocabulary, &isOrdinaryWord);
        }
        return {language, spelling.spokenForms(), ReadableText(letters, spelling, isCorrected ? m_correction : nullptr),
                std::move(publish)};
    }

private:
    std::shared_ptr<SherpaLibrary> m_library;
    SherpaModel m_model;
    std::shared_ptr<SherpaRecogniser> m_recogniser;
    std::atomic<bool> m_isUsable = true;
    std::mutex m_mutex;
    PersonalVocabulary m_vocabulary;
    /// Null until it is needed.
    std::shared_ptr<const SoundCorrection> m_correction;
};

SherpaEngine::SherpaEngine(QString name, std::shared_ptr<SherpaLibrary> library, const QString &modelFolder)
    : m_name(std::move(name)),
      m_model(SherpaModel::examine(modelFolder)),
      m_loaded(std::make_shared<LoadedModel>(std::move(library), m_model))
{
    if (!isStreaming()) {
        m_loaded->library().functions().requireOffline();
    }
}

bool SherpaEngine::speaks(const QString &locale) const
{
    return m_model.languages.contains(languageOf(locale));
}

QString SherpaEngine::description() const
{
    return QStringLiteral("sherpa-onnx %1 (%2), model %3, language %4")
        .arg(m_loaded->library().version(), m_loaded->library().path(), m_model.folder,
             m_model.languages.join(QStringLiteral(", ")));
}

/// A model may have been deleted since it was found.
QString SherpaEngine::problem() const
{
    if (!isStreaming() && SileroVoiceActivity::find(m_model.folder).isEmpty()) {
        return QStringLiteral(QT_TRANSLATE_NOOP(
            "Talmo",
            "The speech-detection model that this speech model needs is missing. Reinstall this model to get both."));
    }
    return m_loaded->isUsable() && m_model.isComplete()
               ? QString()
               : QStringLiteral(
                     QT_TRANSLATE_NOOP("Talmo", "This speech model can no longer be used. Install it again."));
}

/// One message covers every reason; the log has the details.
void SherpaEngine::refuse(const QString & /*problem*/)
{
    m_loaded->giveUp();
}

QStringList SherpaEngine::files() const
{
    QStringList paths{m_loaded->library().path()};
    for (const auto &file : QDir(m_model.folder).entryInfoList(QDir::Files, QDir::Name)) {
        paths.append(file.filePath());
    }
    if (!isStreaming()) {
        paths.append(SileroVoiceActivity::find(m_model.folder));
    }
    return paths;
}

void SherpaEngine::setVocabulary(const PersonalVocabulary &vocabulary)
{
    m_loaded->setVocabulary(vocabulary);
}

std::unique_ptr<RecordingDecoder> SherpaEngine::makeDecoder(RecordingDecoder::Publish publish)
{
    return makeDecoderFor(m_model.languages.first(), std::move(publish));
}

std::unique_ptr<RecordingDecoder> SherpaEngine::makeDecoderFor(const QString &locale, RecordingDecoder::Publish publish)
{
    auto recording = m_loaded->recording(languageOf(locale), std::move(publish));
    return std::make_unique<GuardedDecoder>(m_loaded->get()->makeDecoder(std::move(recording)),
                                            [loaded = m_loaded] { loaded->giveUp(); });
}

std::unique_ptr<RecordingDecoder> SherpaEngine::makeTrialDecoder(RecordingDecoder::Publish publish)
{
    return m_loaded->get()->makeTrialDecoder(m_loaded->recording(m_model.languages.first(), std::move(publish)));
}

void SherpaEngine::warmUp()
{
    m_loaded->get();
}

void SherpaEngine::unload()
{
    m_loaded->unload();
}

} // namespace talmo
