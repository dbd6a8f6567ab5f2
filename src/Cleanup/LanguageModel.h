#pragma once

#include <QFuture>
#include <QString>

#include <memory>
#include <optional>

namespace talmo {

/// Why no language model is available.
enum class UnavailableReason { DeviceNotEligible, AppleIntelligenceNotEnabled, ModelNotReady, Other };

enum class SamplingMode { Greedy };

struct GenerationOptions {
    SamplingMode sampling = SamplingMode::Greedy;
    /// Nullopt selects the model's default.
    std::optional<double> temperature;
    std::optional<qsizetype> maximumResponseTokens;
};

/// One conversation with its instructions. Used for a single request.
class LanguageModelSession {
public:
    virtual ~LanguageModelSession() = default;

    /// The model's complete answer to one prompt. Fails after ten seconds without progress, and after two minutes in
    /// any case; also if the answer was cut off at the limit, since half a sentence is no answer. May finish on any
    /// thread.
    virtual QFuture<QString> respond(const QString &prompt, const GenerationOptions &options) = 0;
};

/// The machine's own language model; text sent to it does not leave the machine.
class LanguageModel {
public:
    virtual ~LanguageModel() = default;

    /// Nullopt if it is available. The last known state: never blocks. Any thread.
    virtual std::optional<UnavailableReason> unavailableReason() const = 0;

    /// A new conversation without tools. Any thread with an event loop; the session must be used on the same one.
    virtual std::shared_ptr<LanguageModelSession> makeSession(const QString &instructions) = 0;
};

} // namespace talmo
