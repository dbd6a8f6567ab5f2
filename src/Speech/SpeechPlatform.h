#pragma once

#include "Base/AsyncStream.h"
#include "Input/Audio/AudioBuffer.h"

#include <QFuture>
#include <QString>

#include <memory>
#include <optional>
#include <stop_token>

namespace talmo {

/// A buffer on its way into an analyzer, in the analyzer's format or, when it could not be converted, in its own.
struct AnalyzerInput {
    std::shared_ptr<const AudioBuffer> buffer;
};

/// A stretch of recognised text: volatile until a final one replaces it.
struct SpeechResult {
    QString text;
    bool isFinal = false;
    bool operator==(const SpeechResult &) const = default;
};

enum class AssetStatus { Unsupported, Supported, Downloading, Installed };

/// The two ways in which transcribers are made: to ask about and install a model, and to transcribe a recording with
/// volatile results.
enum class TranscriberConfiguration { ProgressiveTranscription, VolatileResults };

/// Recognises one locale's language. Making one loads nothing.
class SpeechTranscriber {
public:
    virtual ~SpeechTranscriber() = default;

    /// One reader. Ends after the last result, or with an error when loading or recognising failed.
    virtual AsyncStream<SpeechResult> results() const = 0;
};

/// Runs a transcriber over one stream of input. The calls come in the order start(), then either finalise or cancel;
/// both end the results. Destroying an analyzer abandons what it still has to do and ends the results.
class SpeechAnalyzer {
public:
    virtual ~SpeechAnalyzer() = default;

    /// Loads the model if need be and consumes the input; finishes when the input has ended, or a stop is requested,
    /// and everything before was processed.
    virtual QFuture<void> start(AsyncStream<AnalyzerInput> input, std::stop_token stop) = 0;

    /// To be called once the input is ended: finishes when the last result is out. Fails when the recogniser gets no
    /// further; the results end then as well. Without a start() there is nothing to finish.
    virtual QFuture<void> finalizeAndFinishThroughEndOfInput() = 0;

    /// Gives up at once: the results end without another one.
    virtual QFuture<void> cancelAndFinishNow() = 0;
};

/// The download of what a transcriber lacks.
class AssetInstallationRequest {
public:
    virtual ~AssetInstallationRequest() = default;
    virtual QFuture<void> downloadAndInstall() = 0;
};

/// The recogniser of the machine. Called on the transcription service's thread; futures may be finished on any.
class SpeechPlatform {
public:
    virtual ~SpeechPlatform() = default;

    virtual bool isAvailable() const = 0;
    /// The supported locale that stands for `locale`, if there is one. Any text may come in.
    virtual QFuture<std::optional<QString>> supportedLocale(const QString &locale) = 0;
    virtual std::shared_ptr<SpeechTranscriber> makeTranscriber(const QString &supportedLocale,
                                                               TranscriberConfiguration configuration) = 0;
    virtual QFuture<AssetStatus> assetStatus(const std::shared_ptr<SpeechTranscriber> &transcriber) = 0;
    /// Null when nothing needs installing; may fail.
    virtual QFuture<std::shared_ptr<AssetInstallationRequest>>
    assetInstallationRequest(const std::shared_ptr<SpeechTranscriber> &transcriber) = 0;
    virtual QFuture<std::optional<AudioFormat>>
    bestAvailableAudioFormat(const std::shared_ptr<SpeechTranscriber> &transcriber) = 0;
    virtual std::shared_ptr<SpeechAnalyzer> makeAnalyzer(const std::shared_ptr<SpeechTranscriber> &transcriber) = 0;
};

} // namespace talmo
