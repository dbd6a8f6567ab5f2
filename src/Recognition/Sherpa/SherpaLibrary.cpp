#include "Recognition/Sherpa/SherpaLibrary.h"

#include "Base/Error.h"
#include "Recognition/Sherpa/HotWordVocabulary.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>
#include <QThread>
#include <QVersionNumber>

#include <algorithm>
#include <dlfcn.h>
#include <optional>
#include <utility>

namespace talmo {

namespace {

// The arguments of the library's functions, as its documentation describes them. Declared here, since the library is
// installed without headers; the layout has not changed since the oldest supported version.
struct OnlineModelConfig {
    const char *transducerEncoder = "";
    const char *transducerDecoder = "";
    const char *transducerJoiner = "";
    const char *paraformerEncoder = "";
    const char *paraformerDecoder = "";
    const char *zipformerCtcModel = "";
    const char *tokens = "";
    std::int32_t threadCount = 1;
    const char *provider = "cpu";
    std::int32_t isDebug = 0;
    const char *modelType = "";
    const char *modelingUnit = "";
    const char *bpeVocabulary = "";
    const char *tokensText = "";
    std::int32_t tokensTextSize = 0;
    const char *nemoCtcModel = "";
    const char *toneCtcModel = "";
};

struct OnlineRecogniserConfig {
    std::int32_t sampleRate = 16000;
    std::int32_t featureDimension = 80;
    OnlineModelConfig model;
    const char *decodingMethod = "greedy_search";
    std::int32_t maxActivePaths = 4;
    std::int32_t detectsEndpoints = 1;
    float silenceWithoutSpeech = 2.4F; ///< Seconds.
    float silenceAfterSpeech = 0.8F;
    float longestUtterance = 30;
    const char *hotwordsFile = "";
    float hotwordsScore = 1.5F;
    const char *fstGraph = "";
    std::int32_t fstMaxActive = 0;
    const char *ruleFsts = "";
    const char *ruleFars = "";
    float blankPenalty = 0;
    const char *hotwordsText = "";
    std::int32_t hotwordsTextSize = 0;
    const char *homophoneFolder = "";
    const char *homophoneLexicon = "";
    const char *homophoneRules = "";
};
static_assert(sizeof(OnlineRecogniserConfig) == 272, "the layout that the library expects");

/// The bonus for hypotheses that contain a hot word, in the model's log probability.
constexpr float hotWordScore = 2.0F;

constexpr char libraryName[] = "libsherpa-onnx-c-api.so";

} // namespace

struct SherpaLibrary::Functions {
    const char *(*version)() = nullptr;
    const void *(*createRecogniser)(const OnlineRecogniserConfig *) = nullptr;
    void (*destroyRecogniser)(const void *) = nullptr;
    const void *(*createStream)(const void *) = nullptr;
    const void *(*createStreamWithHotwords)(const void *, const char *) = nullptr;
    void (*destroyStream)(const void *) = nullptr;
    void (*accept)(const void *, std::int32_t, const float *, std::int32_t) = nullptr;
    std::int32_t (*isReady)(const void *, const void *) = nullptr;
    void (*decode)(const void *, const void *) = nullptr;
    const char *(*resultAsJson)(const void *, const void *) = nullptr;
    void (*destroyJson)(const char *) = nullptr;
    void (*inputFinished)(const void *) = nullptr;
    std::int32_t (*isEndpoint)(const void *, const void *) = nullptr;
    void (*reset)(const void *, const void *) = nullptr;
};

namespace {

template <typename Function>
void resolve(void *handle, const char *name, Function &function)
{
    function = reinterpret_cast<Function>(dlsym(handle, name)); // NOLINT: what dlsym is for.
    if (function == nullptr) {
        throw Error(QStringLiteral("The neural recogniser's library lacks %1.").arg(QLatin1String(name)));
    }
}

void resolveAll(void *handle, SherpaLibrary::Functions &functions)
{
    resolve(handle, "SherpaOnnxCreateOnlineRecognizer", functions.createRecogniser);
    resolve(handle, "SherpaOnnxDestroyOnlineRecognizer", functions.destroyRecogniser);
    resolve(handle, "SherpaOnnxCreateOnlineStream", functions.createStream);
    resolve(handle, "SherpaOnnxCreateOnlineStreamWithHotwords", functions.createStreamWithHotwords);
    resolve(handle, "SherpaOnnxDestroyOnlineStream", functions.destroyStream);
    resolve(handle, "SherpaOnnxOnlineStreamAcceptWaveform", functions.accept);
    resolve(handle, "SherpaOnnxIsOnlineStreamReady", functions.isReady);
    resolve(handle, "SherpaOnnxDecodeOnlineStream", functions.decode);
    resolve(handle, "SherpaOnnxGetOnlineStreamResultAsJson", functions.resultAsJson);
    resolve(handle, "SherpaOnnxDestroyOnlineStreamResultJson", functions.destroyJson);
    resolve(handle, "SherpaOnnxOnlineStreamInputFinished", functions.inputFinished);
    resolve(handle, "SherpaOnnxOnlineStreamIsEndpoint", functions.isEndpoint);
    resolve(handle, "SherpaOnnxOnlineStreamReset", functions.reset);
}

/// Of a folder such as "sherpa-onnx-1.13.8".
QVersionNumber versionOf(const QString &folder)
{
    return QVersionNumber::fromString(folder.section(QLatin1Char('-'), -1));
}

QVersionNumber number(const int (&parts)[3])
{
    return {parts[0], parts[1], parts[2]};
}

/// The structures of other versions may differ, and the library does not check them.
void requireKnownVersion(const QString &version)
{
    const auto found = QVersionNumber::fromString(version);
    const auto oldest = number(SherpaLibrary::oldestVersion);
    const auto unknown = number(SherpaLibrary::firstUnknownVersion);
    if (found < oldest) {
        throw Error(QStringLiteral("The neural recogniser's library is version %1; Talmo needs %2 or later.")
                        .arg(version, oldest.toString()));
    }
    if (found >= unknown) {
        throw Error(QStringLiteral("The neural recogniser's library is version %1; Talmo needs one before %2.")
                        .arg(version, unknown.toString()));
    }
}

} // namespace

QString SherpaLibrary::placeIn(const QString &folder)
{
    const QString name = QLatin1Char('/') + QString::fromLatin1(libraryName);
    const QString direct = folder + name;
    return QFile::exists(direct) ? direct : folder + QStringLiteral("/lib") + name;
}

QStringList SherpaLibrary::usualPlaces()
{
    const QString name = QString::fromLatin1(libraryName);
    QStringList places;
    for (const auto &data : QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation)) {
        const QDir engines(data + QStringLiteral("/talmo/engines"));
        // Downloaded libraries, the newest first.
        QStringList versions = engines.entryList({QStringLiteral("sherpa-onnx-*")}, QDir::Dirs);
        std::sort(versions.begin(), versions.end(),
                  [](const QString &left, const QString &right) { return versionOf(left) > versionOf(right); });
        for (const auto &version : versions) {
            places.append(placeIn(engines.filePath(version)));
        }
        places.append(engines.filePath(name));
    }
    places.append(QStringLiteral("/usr/local/lib/") + name);
    places.append(name); // The dynamic loader's own search path.
    return places;
}

bool SherpaLibrary::isInstalled(const QString &path)
{
    if (!path.isEmpty()) {
        return QFile::exists(path);
    }
    QStringList places = usualPlaces();
    for (const auto *folder :
         {"/usr/lib/", "/usr/lib64/", "/usr/lib/x86_64-linux-gnu/", "/usr/lib/aarch64-linux-gnu/"}) {
        places.append(QString::fromLatin1(folder) + QString::fromLatin1(libraryName));
    }
    return std::any_of(places.begin(), places.end(),
                       [](const QString &place) { return place.contains(QLatin1Char('/')) && QFile::exists(place); });
}

std::shared_ptr<SherpaLibrary> SherpaLibrary::open(const QString &path)
{
    const QStringList places = path.isEmpty() ? usualPlaces() : QStringList{path};
    std::optional<Error> unusable;
    for (const auto &place : places) {
        try {
            if (auto library = openAt(place)) {
                return library;
            }
        } catch (const Error &error) {
            unusable = unusable ? unusable : error;
        }
    }
    if (unusable) {
        throw *unusable;
    }
    throw Error(QStringLiteral("The neural recogniser's library is not installed; it was looked for in %1.")
                    .arg(places.join(QStringLiteral(", "))));
}

/// Null if there is none. Throws Error if it cannot be used.
std::shared_ptr<SherpaLibrary> SherpaLibrary::openAt(const QString &place)
{
    const bool isFile = place.contains(QLatin1Char('/'));
    if (isFile && !QFile::exists(place)) {
        return nullptr;
    }
    // NODELETE, because exceptions thrown by the library are destroyed by its own code, possibly after its last use
    // here. NOW, because an unresolved symbol would otherwise end the process when it is first called.
    void *handle = dlopen(QFile::encodeName(place).constData(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    if (handle != nullptr) {
        return std::shared_ptr<SherpaLibrary>(new SherpaLibrary(handle, place));
    }
    if (isFile) {
        throw Error(QStringLiteral("The neural recogniser's library cannot be loaded: %1")
                        .arg(QString::fromLocal8Bit(dlerror())));
    }
    return nullptr;
}

SherpaLibrary::SherpaLibrary(void *handle, const QString &path)
    : m_handle(handle),
      m_path(path),
      m_functions(std::make_unique<Functions>())
{
    try {
        resolve(handle, "SherpaOnnxGetVersionStr", m_functions->version);
        requireKnownVersion(version());
        resolveAll(handle, *m_functions);
    } catch (...) {
        dlclose(m_handle);
        throw;
    }
}

void SherpaLibrary::requireVersion(const QString &oldest) const
{
    if (!oldest.isEmpty() && QVersionNumber::fromString(version()) < QVersionNumber::fromString(oldest)) {
        throw Error(QStringLiteral(QT_TRANSLATE_NOOP(
                        "Talmo", "This model needs a newer library than the installed one. Install the model again, "
                                 "and the library comes with it: ")) +
                    QStringLiteral("%1, not %2").arg(oldest, version()));
    }
}

SherpaLibrary::~SherpaLibrary()
{
    dlclose(m_handle);
}

QString SherpaLibrary::version() const
{
    return QString::fromUtf8(m_functions->version());
}

std::shared_ptr<SherpaLibrary::Recogniser> SherpaLibrary::Recogniser::load(std::shared_ptr<SherpaLibrary> library,
                                                                           const SherpaModel &model)
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
    constexpr int mostThreads = 4; // More hardly help a model that runs in real time.
    config.model.threadCount = std::clamp(QThread::idealThreadCount() / 2, 1, mostThreads);
    switch (model.kind) {
    case SherpaModel::Kind::Transducer:
        config.model.transducerEncoder = encoder.constData();
        config.model.transducerDecoder = decoder.constData();
        config.model.transducerJoiner = joiner.constData();
        break;
    case SherpaModel::Kind::ZipformerCtc:
        config.model.zipformerCtcModel = single.constData();
        break;
    case SherpaModel::Kind::NemoCtc:
        config.model.nemoCtcModel = single.constData();
        break;
    }
    const HotWordVocabulary vocabulary(model);
    const QByteArray unit = model.hotWordUnit.toLatin1();
    const QByteArray pieces = QFile::encodeName(vocabulary.path());
    if (vocabulary.isUsable()) {
        // Hot words require a decoding method that keeps several hypotheses.
        config.decodingMethod = "modified_beam_search";
        config.hotwordsScore = hotWordScore;
        config.model.modelingUnit = unit.constData();
        config.model.bpeVocabulary = pieces.constData();
    }
    const void *handle = nullptr;
    try {
        handle = library->m_functions->createRecogniser(&config);
    } catch (...) { // NOLINT(bugprone-empty-catch): exceptions of unknown types mean the same as null.
    }
    if (handle == nullptr) {
        throw Error(QStringLiteral("The model in %1 could not be loaded.").arg(model.folder));
    }
    return std::shared_ptr<Recogniser>(
        new Recogniser(std::move(library), handle, vocabulary.isUsable(), vocabulary.hasCapitals()));
}

SherpaLibrary::Recogniser::Recogniser(std::shared_ptr<SherpaLibrary> library, const void *handle, bool takesHotWords,
                                      bool wantsCapitals)
    : m_library(std::move(library)),
      m_handle(handle),
      m_takesHotWords(takesHotWords),
      m_wantsCapitals(wantsCapitals)
{
}

SherpaLibrary::Recogniser::~Recogniser()
{
    m_library->m_functions->destroyRecogniser(m_handle);
}

namespace {

/// The library throws exceptions of unknown types, for example if a model does not fit its tokens.
template <typename Call>
auto guarded(Call call)
{
    try {
        return call();
    } catch (...) {
        throw Error(QStringLiteral("The neural recogniser failed."));
    }
}

} // namespace

const void *SherpaLibrary::Stream::create(const Recogniser &recogniser, const QStringList &hotWords)
{
    const auto &functions = *recogniser.m_library->m_functions;
    if (!recogniser.m_takesHotWords || hotWords.isEmpty()) {
        return functions.createStream(recogniser.m_handle);
    }
    QStringList words = hotWords;
    words.replaceInStrings(QStringLiteral("/"), QStringLiteral(" ")); // It separates the hot words.
    const QString joined = words.join(QLatin1Char('/'));
    return functions.createStreamWithHotwords(
        recogniser.m_handle, (recogniser.m_wantsCapitals ? joined.toUpper() : joined).toUtf8().constData());
}

SherpaLibrary::Stream::Stream(std::shared_ptr<Recogniser> recogniser, const QStringList &hotWords)
    : m_recogniser(std::move(recogniser)),
      m_handle(guarded([&] { return create(*m_recogniser, hotWords); }))
{
    if (m_handle == nullptr) {
        throw Error(QStringLiteral("The neural recogniser could not begin a recording."));
    }
}

SherpaLibrary::Stream::~Stream()
{
    m_recogniser->m_library->m_functions->destroyStream(m_handle);
}

void SherpaLibrary::Stream::accept(std::span<const float> samples)
{
    constexpr std::int32_t sampleRate = 16000;
    guarded([&] {
        m_recogniser->m_library->m_functions->accept(m_handle, sampleRate, samples.data(),
                                                     static_cast<std::int32_t>(samples.size()));
    });
    decode();
}

void SherpaLibrary::Stream::inputFinished()
{
    guarded([this] { m_recogniser->m_library->m_functions->inputFinished(m_handle); });
    decode();
}

void SherpaLibrary::Stream::decode()
{
    const auto &functions = *m_recogniser->m_library->m_functions;
    guarded([&] {
        while (functions.isReady(m_recogniser->m_handle, m_handle) != 0) {
            functions.decode(m_recogniser->m_handle, m_handle);
        }
    });
}

QString SherpaLibrary::Stream::text() const
{
    const auto &functions = *m_recogniser->m_library->m_functions;
    const char *json = guarded([&] { return functions.resultAsJson(m_recogniser->m_handle, m_handle); });
    if (json == nullptr) {
        return {};
    }
    const QString text = QJsonDocument::fromJson(json).object().value(QStringLiteral("text")).toString();
    functions.destroyJson(json);
    return text.trimmed();
}

bool SherpaLibrary::Stream::isEndpoint() const
{
    return guarded(
        [this] { return m_recogniser->m_library->m_functions->isEndpoint(m_recogniser->m_handle, m_handle) != 0; });
}

void SherpaLibrary::Stream::reset()
{
    guarded([this] { m_recogniser->m_library->m_functions->reset(m_recogniser->m_handle, m_handle); });
}

} // namespace talmo
