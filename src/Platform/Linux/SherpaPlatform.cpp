#include "Platform/Linux/SherpaPlatform.h"

#include "Base/Error.h"
#include "Base/Log.h"
#include "Platform/Linux/EngineAnalyzer.h"

#include <atomic>
#include <utility>
#include <vector>

namespace talmo {

namespace {

/// Some models know capitals only; shouted text is nobody's wish.
QString readable(const QString &text)
{
    return text == text.toUpper() ? text.toLower() : text;
}

class SherpaRecording final : public RecordingDecoder {
public:
    SherpaRecording(std::shared_ptr<SherpaLibrary::Recogniser> recogniser, Publish publish)
        : m_stream(std::move(recogniser)),
          m_publish(std::move(publish))
    {
    }

    void process(std::span<const std::int16_t> samples) override
    {
        constexpr float loudest = 32768;
        std::vector<float> scaled(samples.begin(), samples.end());
        for (float &sample : scaled) {
            sample /= loudest;
        }
        m_stream.accept(scaled);
        const QString text = readable(m_stream.text());
        if (m_stream.isEndpoint()) {
            publishFinal(text);
            m_stream.reset();
        } else if (!text.isEmpty() && text != m_volatileText) {
            m_volatileText = text;
            m_publish({text, false});
        }
    }

    void finish() override
    {
        // The last sound is held back until enough comes behind it.
        constexpr std::size_t tail = std::size_t(sampleRate) * 6 / 10;
        m_stream.accept(std::vector<float>(tail));
        m_stream.inputFinished();
        publishFinal(readable(m_stream.text()));
    }

private:
    void publishFinal(const QString &text)
    {
        if (!text.isEmpty()) {
            m_publish({text, true});
        } else if (!m_volatileText.isEmpty()) {
            m_publish({QString(), false});
        }
        m_volatileText.clear();
    }

    SherpaLibrary::Stream m_stream;
    Publish m_publish;
    QString m_volatileText;
};

} // namespace

/// The recogniser while it is in memory. On the recogniser's thread.
class SherpaPlatform::LoadedModel {
public:
    LoadedModel(std::shared_ptr<SherpaLibrary> library, SherpaModel model, Check check)
        : m_library(std::move(library)),
          m_model(std::move(model)),
          m_check(std::move(check))
    {
    }

    /// Any thread; may take as long as loading does. Throws Error.
    void check()
    {
        m_check(m_library->path(), m_model.folder);
        m_isUsable = true;
    }

    /// Throws Error; then it is not tried again. What has changed on the disk since it was looked at is noticed here.
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
    /// Any thread.
    bool isUsable() const { return m_isUsable; }
    const SherpaLibrary &library() const { return *m_library; }

private:
    std::shared_ptr<SherpaLibrary> m_library;
    SherpaModel m_model;
    Check m_check;
    std::shared_ptr<SherpaLibrary::Recogniser> m_recogniser;
    std::atomic<bool> m_isUsable = false;
};

SherpaPlatform::SherpaPlatform(std::shared_ptr<SerialExecutor> executor, const QString &libraryPath,
                               const QString &modelFolder, Check check)
    : m_executor(std::move(executor)),
      m_model(SherpaModel::examine(modelFolder)),
      m_loaded(std::make_shared<LoadedModel>(SherpaLibrary::open(libraryPath), m_model, std::move(check)))
{
}

/// Its model is let go of on the thread that uses it.
SherpaPlatform::~SherpaPlatform()
{
    m_executor->post([loaded = std::move(m_loaded)] { loaded->unload(); });
}

bool SherpaPlatform::speaks(const QString &locale) const
{
    const auto end =
        locale.indexOf(QLatin1Char('_')) >= 0 ? locale.indexOf(QLatin1Char('_')) : locale.indexOf(QLatin1Char('-'));
    return locale.left(end).compare(m_model.language, Qt::CaseInsensitive) == 0;
}

bool SherpaPlatform::isUsable() const
{
    return m_loaded->isUsable();
}

QString SherpaPlatform::description() const
{
    return QStringLiteral("sherpa-onnx %1 (%2), model %3, language %4")
        .arg(m_loaded->library().version(), m_loaded->library().path(), m_model.folder, m_model.language);
}

QFuture<std::optional<QString>> SherpaPlatform::supportedLocale(const QString &locale)
{
    return ready(speaks(locale) ? std::optional(m_model.language) : std::nullopt);
}

std::shared_ptr<SpeechTranscriber> SherpaPlatform::makeTranscriber(const QString & /*supportedLocale*/,
                                                                   TranscriberConfiguration /*configuration*/)
{
    return std::make_shared<EngineTranscriber>();
}

QFuture<AssetStatus> SherpaPlatform::assetStatus(const std::shared_ptr<SpeechTranscriber> & /*transcriber*/)
{
    if (!m_loaded->isUsable()) {
        return ready(AssetStatus::Supported);
    }
    try {
        SherpaModel::examine(m_model.folder);
        return ready(AssetStatus::Installed);
    } catch (const Error &) {
        return ready(AssetStatus::Supported); // Deleted since.
    }
}

QFuture<std::shared_ptr<AssetInstallationRequest>>
SherpaPlatform::assetInstallationRequest(const std::shared_ptr<SpeechTranscriber> & /*transcriber*/)
{
    return ready(std::shared_ptr<AssetInstallationRequest>());
}

QFuture<std::optional<AudioFormat>>
SherpaPlatform::bestAvailableAudioFormat(const std::shared_ptr<SpeechTranscriber> & /*transcriber*/)
{
    return ready(std::optional(AudioFormat{RecordingDecoder::sampleRate, 1, SampleType::Int16}));
}

std::shared_ptr<SpeechAnalyzer> SherpaPlatform::makeAnalyzer(const std::shared_ptr<SpeechTranscriber> &transcriber)
{
    return std::make_shared<EngineAnalyzer>(
        std::dynamic_pointer_cast<EngineTranscriber>(transcriber),
        [loaded = m_loaded](RecordingDecoder::Publish publish) {
            return std::make_unique<SherpaRecording>(loaded->get(), std::move(publish));
        },
        m_executor);
}

void SherpaPlatform::check(SerialExecutor &executor)
{
    executor.post([loaded = m_loaded, description = description()] {
        try {
            loaded->check();
            generalLog().info("neural recogniser: %@", {description});
        } catch (const Error &error) {
            generalLog().error("a speech model is not used: %@", {error.localizedDescription()});
        }
    });
}

void SherpaPlatform::warmUp()
{
    m_executor->post([loaded = m_loaded] {
        try {
            loaded->get();
        } catch (const Error &error) {
            generalLog().error("neural recogniser: %@", {error.localizedDescription()});
        }
    });
}

void SherpaPlatform::unload()
{
    m_executor->post([loaded = m_loaded] { loaded->unload(); });
}

} // namespace talmo
