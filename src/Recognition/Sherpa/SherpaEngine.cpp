#include "Recognition/Sherpa/SherpaEngine.h"

#include "Base/Error.h"
#include "Base/Log.h"
#include "Recognition/Models/ModelCatalogue.h"
#include "Recognition/Text/RecognisedText.h"

#include <QDir>

#include <atomic>
#include <functional>
#include <mutex>
#include <utility>
#include <vector>

namespace talmo {

namespace {

class SherpaRecording final : public RecordingDecoder {
public:
    /// `giveUp`: called when the library fails.
    SherpaRecording(std::shared_ptr<SherpaLibrary::Recogniser> recogniser, PersonalSpelling spelling, Publish publish,
                    std::function<void()> giveUp)
        : m_spelling(std::move(spelling)),
          m_stream(std::move(recogniser), m_spelling.spokenForms()),
          m_publish(std::move(publish)),
          m_giveUp(std::move(giveUp))
    {
    }

    void process(std::span<const std::int16_t> samples) override
    {
        guarded([this, samples] { listen(samples); });
    }

    void finish() override
    {
        guarded([this] {
            // The model holds back the last sound until enough audio follows.
            constexpr std::size_t tail = std::size_t(sampleRate) * 6 / 10;
            m_stream.accept(std::vector<float>(tail));
            m_stream.inputFinished();
            publishFinal(readable());
        });
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

    void listen(std::span<const std::int16_t> samples)
    {
        constexpr float loudest = 32768;
        std::vector<float> scaled(samples.begin(), samples.end());
        for (float &sample : scaled) {
            sample /= loudest;
        }
        m_stream.accept(scaled);
        const QString text = readable();
        if (m_stream.isEndpoint()) {
            publishFinal(text);
            m_stream.reset();
        } else if (!text.isEmpty() && text != m_volatileText) {
            m_volatileText = text;
            m_publish({text, false});
        }
    }

    QString readable()
    {
        if (const QString raw = m_stream.text(); raw != m_rawText) {
            m_rawText = raw;
            m_readableText = m_spelling.applied(tidied(raw));
        }
        return m_readableText;
    }

    void publishFinal(const QString &text)
    {
        if (!text.isEmpty()) {
            m_publish({text, true});
        } else if (!m_volatileText.isEmpty()) {
            m_publish({QString(), false});
        }
        m_volatileText.clear();
    }

    PersonalSpelling m_spelling;
    SherpaLibrary::Stream m_stream;
    Publish m_publish;
    std::function<void()> m_giveUp;
    QString m_rawText;
    QString m_readableText;
    QString m_volatileText;
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
    std::shared_ptr<SherpaLibrary::Recogniser> get()
    {
        if (!m_recogniser) {
            const bool wasUsable = m_isUsable.exchange(false);
            if (!wasUsable) {
                throw Error(QStringLiteral("The model in %1 is not used.").arg(m_model.folder));
            }
            m_recogniser = SherpaLibrary::Recogniser::load(m_library, SherpaModel::examine(m_model.folder));
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
    void setWords(const QStringList &words)
    {
        const std::scoped_lock lock(m_mutex);
        m_words = words;
    }
    QStringList words() const
    {
        const std::scoped_lock lock(m_mutex);
        return m_words;
    }

private:
    std::shared_ptr<SherpaLibrary> m_library;
    SherpaModel m_model;
    std::shared_ptr<SherpaLibrary::Recogniser> m_recogniser;
    std::atomic<bool> m_isUsable = true;
    mutable std::mutex m_mutex;
    QStringList m_words;
};

SherpaEngine::SherpaEngine(QString name, const QString &libraryPath, const QString &modelFolder)
    : m_name(std::move(name)),
      m_model(SherpaModel::examine(modelFolder)),
      m_loaded(std::make_shared<LoadedModel>(SherpaLibrary::open(libraryPath), m_model))
{
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
    return m_loaded->isUsable() && m_model.isComplete()
               ? QString()
               : QStringLiteral(
                     QT_TRANSLATE_NOOP("Talmo", "This speech model can no longer be used. Install it again."));
}

/// One sentence serves for every reason; the log has the reason.
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
    return paths;
}

void SherpaEngine::setVocabulary(const PersonalVocabulary &vocabulary)
{
    m_loaded->setWords(vocabulary.words);
}

std::unique_ptr<RecordingDecoder> SherpaEngine::makeDecoder(RecordingDecoder::Publish publish)
{
    return std::make_unique<SherpaRecording>(m_loaded->get(), PersonalSpelling(m_loaded->words()), std::move(publish),
                                             [loaded = m_loaded] { loaded->giveUp(); });
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
