#pragma once

#include <cstddef>
#include <cstdint>

namespace talmo {

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

// The same for models that recognise an utterance as a whole. Omitted members are zero, which is the library's default,
// and so are the bytes behind them, where later versions have further members.
struct OfflineTransducerConfig {
    const char *encoder = nullptr;
    const char *decoder = nullptr;
    const char *joiner = nullptr;
};

struct OfflineWhisperConfig {
    const char *encoder = nullptr;
    const char *decoder = nullptr;
    const char *language = nullptr;
    const char *task = nullptr;
    std::int32_t tailPaddings = 0;
    std::int32_t hasTokenTimes = 0;
    std::int32_t hasSegmentTimes = 0;
};

struct OfflineSenseVoiceConfig {
    const char *model = nullptr;
    const char *language = nullptr;
    std::int32_t writesNumbers = 0;
};

struct OfflineMoonshineConfig {
    const char *preprocessor = nullptr;
    const char *encoder = nullptr;
    const char *uncachedDecoder = nullptr;
    const char *cachedDecoder = nullptr;
    const char *mergedDecoder = nullptr;
};

struct OfflineCanaryConfig {
    const char *encoder = nullptr;
    const char *decoder = nullptr;
    const char *spokenLanguage = nullptr;
    const char *writtenLanguage = nullptr;
    std::int32_t punctuates = 0;
};

struct OfflineModelConfig {
    OfflineTransducerConfig transducer;
    const char *paraformerModel = nullptr;
    const char *nemoCtcModel = nullptr;
    OfflineWhisperConfig whisper;
    const char *tdnnModel = nullptr;
    const char *tokens = nullptr;
    std::int32_t threadCount = 1;
    std::int32_t isDebug = 0;
    const char *provider = "cpu";
    const char *modelType = nullptr;
    const char *modelingUnit = nullptr;
    const char *bpeVocabulary = nullptr;
    const char *telespeechCtcModel = nullptr;
    OfflineSenseVoiceConfig senseVoice;
    OfflineMoonshineConfig moonshine;
    const char *fireRedEncoder = nullptr;
    const char *fireRedDecoder = nullptr;
    const char *dolphinModel = nullptr;
    const char *zipformerCtcModel = nullptr;
    OfflineCanaryConfig canary;
    std::byte others[216] = {};
};
static_assert(offsetof(OfflineModelConfig, tokens) == 96 && offsetof(OfflineModelConfig, canary) == 248);
static_assert(sizeof(OfflineModelConfig) == 504);

struct OfflineRecogniserConfig {
    std::int32_t sampleRate = 16000;
    std::int32_t featureDimension = 80;
    OfflineModelConfig model;
    const char *languageModel = nullptr;
    float languageModelScale = 0;
    const char *decodingMethod = "greedy_search";
    std::byte others[488] = {};
};
static_assert(offsetof(OfflineRecogniserConfig, decodingMethod) == 528);
static_assert(sizeof(OfflineRecogniserConfig) == 1024);

struct OfflineResult {
    const char *text;
};

struct SileroConfig {
    const char *model = nullptr;
    float threshold = 0.5F;
    float shortestSilence = 0; ///< Seconds; each window is judged alone.
    float shortestSpeech = 0;
    std::int32_t window = 512; ///< Samples; the only size that all versions of the model take.
    float longestSpeech = 3600;
};

struct VoiceActivityConfig {
    SileroConfig silero;
    std::int32_t sampleRate = 16000;
    std::int32_t threadCount = 1;
    const char *provider = "cpu";
    std::int32_t isDebug = 0;
    std::byte others[1024] = {};
};
static_assert(offsetof(VoiceActivityConfig, provider) == 40);

} // namespace talmo
