#pragma once

#include "Recognition/Sherpa/SherpaConfigs.h"

#include <QString>

namespace talmo {

/// The library's functions, found at run time. Only what SherpaLibrary::functions() returns has all of them.
struct SherpaFunctions {
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
    /// Null in libraries older than 1.12.30.
    void (*setStreamOption)(const void *, const char *, const char *) = nullptr;

    const void *(*createOfflineRecogniser)(const OfflineRecogniserConfig *) = nullptr;
    void (*configureOfflineRecogniser)(const void *, const OfflineRecogniserConfig *) = nullptr;
    void (*destroyOfflineRecogniser)(const void *) = nullptr;
    const void *(*createOfflineStream)(const void *) = nullptr;
    void (*destroyOfflineStream)(const void *) = nullptr;
    void (*acceptOffline)(const void *, std::int32_t, const float *, std::int32_t) = nullptr;
    void (*decodeOffline)(const void *, const void *) = nullptr;
    const OfflineResult *(*offlineResult)(const void *) = nullptr;
    void (*destroyOfflineResult)(const OfflineResult *) = nullptr;

    const void *(*createVoiceActivity)(const VoiceActivityConfig *, float) = nullptr;
    void (*destroyVoiceActivity)(const void *) = nullptr;
    void (*acceptVoice)(const void *, const float *, std::int32_t) = nullptr;
    std::int32_t (*isVoiceDetected)(const void *) = nullptr;
    void (*clearVoice)(const void *) = nullptr;
    void (*resetVoice)(const void *) = nullptr;

    /// The versions whose structures for the last two groups are those of SherpaConfigs.h: from the first one on, and
    /// before the second.
    static constexpr int oldestOffline[] = {1, 12, 35};
    static constexpr int firstUnknownOffline[] = {1, 14, 0};
    /// Throws Error, with what to do, unless the library is one of those and has their functions.
    void requireOffline() const;

    /// Throws Error if the library lacks the function.
    template <typename Function>
    static void resolve(void *library, const char *name, Function &function)
    {
        function = reinterpret_cast<Function>(find(library, name)); // NOLINT: what dlsym is for.
    }
    /// All but the version. Throws Error if one is missing that streaming models need.
    void resolveAll(void *library);

private:
    void resolveOffline(void *library);

    static void *find(void *library, const char *name);

    /// What requireOffline() throws; empty if nothing is missing.
    std::exception_ptr m_offlineProblem;
};

} // namespace talmo
