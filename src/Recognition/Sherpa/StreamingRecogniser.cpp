#include "Recognition/Sherpa/StreamingRecogniser.h"

#include "Base/Error.h"
#include "Recognition/RecognitionFailure.h"
#include "Recognition/Sherpa/HotWordVocabulary.h"
#include "Recognition/Sherpa/SherpaFunctions.h"
#include "Recognition/Sherpa/StreamingDecoder.h"
#include "Recognition/UnusableModel.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <utility>
#include <vector>

namespace talmo {

namespace {

/// The bonus for hypotheses that contain a hot word, in the model's log probability.
constexpr float hotWordScore = 2.0F;

constexpr std::size_t sampleRate = RecordingDecoder::sampleRate;
constexpr std::size_t step = sampleRate / 100;
/// A model emits a word up to so long after its last sound, even if it takes sound in small portions.
constexpr std::size_t shortestTail = sampleRate * 3 / 10;
/// No model waits for more.
constexpr std::size_t longestTail = sampleRate * 10;

} // namespace

StreamingRecogniser::StreamingRecogniser(std::shared_ptr<SherpaLibrary> library, const SherpaModel &model)
    : m_library(std::move(library)),
      m_wantsCapitals(model.isAllCapitals),
      m_takesLanguage(model.isNemo && model.languages.size() > 1),
      m_handle(create(model)),
      m_lead(model.isNemo ? sampleRate / 2 : 0)
{
    try {
        m_tail = measureTail();
    } catch (...) {
        m_library->functions().destroyRecogniser(m_handle);
        throw;
    }
}

StreamingRecogniser::~StreamingRecogniser()
{
    m_library->functions().destroyRecogniser(m_handle);
}

const void *StreamingRecogniser::create(const SherpaModel &model)
{
    const auto file = [&model](const QString &name) {
        return name.isEmpty() ? QByteArray() : QFile::encodeName(model.folder + QLatin1Char('/') + name);
    };
    const QByteArray encoder = file(model.encoder);
    const QByteArray decoder = file(model.decoder);
    const QByteArray joiner = file(model.joiner);
    const QByteArray single = file(model.model);
    const QByteArray tokens = file(model.tokens);
    OnlineRecogniserConfig config;
    config.model.tokens = tokens.constData();
    config.model.threadCount = sherpaThreadCount();
    // A NeMo model loses half a second of speech after each reset.
    config.detectsEndpoints = model.isNemo ? 0 : 1;
    if (model.kind == SherpaModel::Kind::Transducer) {
        config.model.transducerEncoder = encoder.constData();
        config.model.transducerDecoder = decoder.constData();
        config.model.transducerJoiner = joiner.constData();
    } else if (model.kind == SherpaModel::Kind::ZipformerCtc) {
        config.model.zipformerCtcModel = single.constData();
    } else {
        config.model.nemoCtcModel = single.constData();
    }
    const HotWordVocabulary vocabulary(model);
    const QByteArray unit = model.hotWordUnit.toLatin1();
    const QByteArray pieces = QFile::encodeName(vocabulary.path());
    m_takesHotWords = vocabulary.isUsable();
    if (m_takesHotWords) {
        // Hot words require a decoding method that keeps several hypotheses.
        config.decodingMethod = "modified_beam_search";
        config.hotwordsScore = hotWordScore;
        config.model.modelingUnit = unit.constData();
        config.model.bpeVocabulary = pieces.constData();
    }
    const void *handle = nullptr;
    try {
        handle = m_library->functions().createRecogniser(&config);
    } catch (...) { // NOLINT(bugprone-empty-catch): exceptions of unknown types mean the same as null.
    }
    if (handle == nullptr) {
        throw UnusableModel(QStringLiteral("The model in %1 could not be loaded.").arg(model.folder));
    }
    return handle;
}

/// A model takes sound in portions, and never recognises an incomplete one. The silence that begins the first portion
/// is long enough to complete any; nothing is decoded until then.
std::size_t StreamingRecogniser::measureTail()
{
    Stream stream(*this);
    const std::vector<float> silence(step);
    std::size_t given = 0;
    while (!stream.isReady() && given < longestTail) {
        stream.accept(silence);
        given += step;
    }
    return std::max(given + step, shortestTail);
}

std::unique_ptr<RecordingDecoder> StreamingRecogniser::makeDecoder(Recording recording)
{
    return std::make_unique<StreamingDecoder>(shared_from_this(), std::move(recording));
}

const void *StreamingRecogniser::Stream::create(const QStringList &hotWords) const
{
    const auto &functions = m_recogniser.m_library->functions();
    const QByteArray words = HotWordVocabulary::listOf(hotWords);
    const QByteArray list = m_recogniser.m_wantsCapitals ? QString::fromUtf8(words).toUpper().toUtf8() : words;
    return list.isEmpty() || !m_recogniser.m_takesHotWords
               ? functions.createStream(m_recogniser.m_handle)
               : functions.createStreamWithHotwords(m_recogniser.m_handle, list.constData());
}

StreamingRecogniser::Stream::Stream(const StreamingRecogniser &recogniser, const QStringList &hotWords,
                                    const QString &language)
    : m_recogniser(recogniser),
      m_handle(sherpaGuarded([&] { return create(hotWords); }))
{
    if (m_handle == nullptr) {
        throw RecognitionFailure(QStringLiteral("the library made no stream"));
    }
    const auto setOption = m_recogniser.m_library->functions().setStreamOption;
    if (m_recogniser.m_takesLanguage && setOption != nullptr && !language.isEmpty()) {
        // Before any sound. A language that the model does not know counts as unknown.
        setOption(m_handle, "language", language.toUtf8().constData());
    }
}

StreamingRecogniser::Stream::~Stream()
{
    m_recogniser.m_library->functions().destroyStream(m_handle);
}

void StreamingRecogniser::Stream::accept(std::span<const float> samples)
{
    sherpaGuarded([&] {
        m_recogniser.m_library->functions().accept(m_handle, RecordingDecoder::sampleRate, samples.data(),
                                                   static_cast<std::int32_t>(samples.size()));
    });
}

bool StreamingRecogniser::Stream::isReady() const
{
    return sherpaGuarded(
        [this] { return m_recogniser.m_library->functions().isReady(m_recogniser.m_handle, m_handle) != 0; });
}

void StreamingRecogniser::Stream::decode()
{
    while (isReady()) {
        sherpaGuarded([this] { m_recogniser.m_library->functions().decode(m_recogniser.m_handle, m_handle); });
    }
}

void StreamingRecogniser::Stream::inputFinished()
{
    sherpaGuarded([this] { m_recogniser.m_library->functions().inputFinished(m_handle); });
}

QString StreamingRecogniser::Stream::text() const
{
    const auto &functions = m_recogniser.m_library->functions();
    const char *json = sherpaGuarded([&] { return functions.resultAsJson(m_recogniser.m_handle, m_handle); });
    if (json == nullptr) {
        return {};
    }
    const QString text = QJsonDocument::fromJson(json).object().value(QStringLiteral("text")).toString();
    functions.destroyJson(json);
    return text.trimmed();
}

bool StreamingRecogniser::Stream::isEndpoint() const
{
    return sherpaGuarded(
        [this] { return m_recogniser.m_library->functions().isEndpoint(m_recogniser.m_handle, m_handle) != 0; });
}

void StreamingRecogniser::Stream::reset()
{
    sherpaGuarded([this] { m_recogniser.m_library->functions().reset(m_recogniser.m_handle, m_handle); });
}

} // namespace talmo
