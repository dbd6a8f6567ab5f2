#pragma once

#include "Base/AsyncStream.h"
#include "Input/Audio/AudioBuffer.h"

#include <QFuture>
#include <QString>

#include <memory>
#include <optional>
#include <stop_token>

namespace talmo {

/// A buffer for an analyzer, in the analyzer's format or, if it could not be converted, in its own.
struct AnalyzerInput {
    std::shared_ptr<const AudioBuffer> buffer;
};

/// A piece of recognised text; volatile until a final one replaces it.
struct SpeechResult {
    QString text;
    bool isFinal = false;
    bool operator==(const SpeechResult &) const = default;
};

enum class AssetStatus { Unsupported, Supported, Downloading, Installed };

/// What a transcriber is made for: to query and install a model, or to transcribe a recording with volatile results.
enum class TranscriberConfiguration { ProgressiveTranscription, VolatileResults };

/// Recognises the language of one locale. Creating one loads nothing.
class SpeechTranscriber {
public:
    virtual ~SpeechTranscriber() = default;

    /// For one reader. Ends after the last result, or with an error if loading or recognition failed.
    virtual AsyncStream<SpeechResult> results() const = 0;
};

/// Runs a transcriber over one input stream. Call start(), then either finalise or cancel; both end the results.
/// Destroying an analyzer abandons pending work and ends the results.
class SpeechAnalyzer {
public:
    virtual ~SpeechAnalyzer() = default;

    /// Loads the model if necessary and consumes the input. Finishes once the input has ended, or a stop was requested,
    /// and everything before that has been processed.
    virtual QFuture<void> start(AsyncStream<AnalyzerInput> input, std::stop_token stop) = 0;

    /// Call once the input has ended; finishes after the last result. Fails if the engine makes no more progress; the
    /// results then end as well. Does nothing without a start().
    virtual QFuture<void> finalizeAndFinishThroughEndOfInput() = 0;

    /// Stops at once: no further result is published.
    virtual QFuture<void> cancelAndFinishNow() = 0;
};

/// Downloads what a transcriber lacks.
class AssetInstallationRequest {
public:
    virtual ~AssetInstallationRequest() = default;
    virtual QFuture<void> downloadAndInstall() = 0;
};

/// The machine's speech recognition. Called on the transcription service's thread; futures may finish on any thread.
class SpeechPlatform {
public:
    virtual ~SpeechPlatform() = default;

    virtual bool isAvailable() const = 0;
    /// The supported locale that matches `locale`, if any. `locale` may be arbitrary text.
    virtual QFuture<std::optional<QString>> supportedLocale(const QString &locale) = 0;
    virtual std::shared_ptr<SpeechTranscriber> makeTranscriber(const QString &supportedLocale,
                                                               TranscriberConfiguration configuration) = 0;
    virtual QFuture<AssetStatus> assetStatus(const std::shared_ptr<SpeechTranscriber> &transcriber) = 0;
    /// Null if nothing needs installing; may fail.
    virtual QFuture<std::shared_ptr<AssetInstallationRequest>>
    assetInstallationRequest(const std::shared_ptr<SpeechTranscriber> &transcriber) = 0;
    virtual QFuture<std::optional<AudioFormat>>
    bestAvailableAudioFormat(const std::shared_ptr<SpeechTranscriber> &transcriber) = 0;
    virtual std::shared_ptr<SpeechAnalyzer> makeAnalyzer(const std::shared_ptr<SpeechTranscriber> &transcriber) = 0;
};

} // namespace talmo
