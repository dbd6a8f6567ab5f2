#pragma once

#include <QFuture>
#include <QString>

#include <memory>
#include <optional>

namespace talmo {

/// Why there is no language model to ask.
enum class UnavailableReason { DeviceNotEligible, AppleIntelligenceNotEnabled, ModelNotReady, Other };

enum class SamplingMode { Greedy };

struct GenerationOptions {
    SamplingMode sampling = SamplingMode::Greedy;
    /// None stands for the model's own.
    std::optional<double> temperature;
    std::optional<qsizetype> maximumResponseTokens;
};

/// One conversation, with the instructions it was made with. Used for a single request.
class LanguageModelSession {
public:
    virtual ~LanguageModelSession() = default;

    /// The model's whole answer to one prompt. Fails, within ten seconds of sending, when there is none: also when it
    /// was cut off at the limit, since half a sentence is no answer. May be finished on any thread.
    virtual QFuture<QString> respond(const QString &prompt, const GenerationOptions &options) = 0;
};

/// The machine's own language model; what is said to it does not leave the machine.
class LanguageModel {
public:
    virtual ~LanguageModel() = default;

    /// None when it is available. As last known: never waits. Any thread.
    virtual std::optional<UnavailableReason> unavailableReason() const = 0;

    /// A fresh conversation without tools. Any thread with an event loop; the session is used on that one.
    virtual std::shared_ptr<LanguageModelSession> makeSession(const QString &instructions) = 0;
};

} // namespace talmo
