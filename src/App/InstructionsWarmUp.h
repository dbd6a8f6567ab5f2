#pragma once

#include "App/TalmoCoordinator.h"

#include <QObject>

#include <functional>
#include <optional>

namespace talmo {

/// Gives the language model its instructions as soon as a recording has begun, so that it has read them by the time
/// there is a transcript. On a slow machine they take longer to read than a sentence takes to edit.
///
/// Only observes: a dictation waits for nothing that happens here. Main thread.
class InstructionsWarmUp final : public QObject {
    Q_OBJECT

public:
    struct Parts {
        /// Both return at once. `instructions`: those of a request with the current settings.
        std::function<void(const QString &instructions)> warmUp;
        std::function<void()> cancel;
    };

    /// The coordinator must outlive this object.
    InstructionsWarmUp(const TalmoCoordinator &coordinator, Parts parts);
    ~InstructionsWarmUp() override;

private:
    /// What the instructions depend on. Compared at each change, so that the text is built only when it differs: words
    /// arrive many times a second.
    struct Choices {
        QStringList dictionaryWords;
        bool isConcise = false;
        TextTone tone = TextTone::Standard;
        bool operator==(const Choices &) const = default;
    };

    void update();
    void cancel();

    const TalmoCoordinator &m_coordinator;
    Parts m_parts;
    /// What the model was last given and still has a use for.
    std::optional<Choices> m_given;
};

} // namespace talmo
