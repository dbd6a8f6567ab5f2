#pragma once

#include "App/Services/PipelineServices.h"
#include "Base/Clock.h"

#include <functional>
#include <memory>

namespace talmo {

/// Measures how long a language model takes to edit. Main thread.
class TimedCleanupService final : public CleanupService {
public:
    struct Parts {
        std::shared_ptr<CleanupService> service;
        std::shared_ptr<Clock> clock;
        /// The model in use for editing; empty if there is none.
        std::function<QString()> editor;
        /// Called after every edit, successful or not.
        std::function<void(const QString &editor, Duration duration)> onEdited;
    };

    explicit TimedCleanupService(Parts parts);

    QCoro::Task<QString> cleanup(QString transcript, bool aiCleanupEnabled, bool conciseTextEnabled, TextTone textTone,
                                 QStringList dictionaryWords) override;

private:
    static QCoro::Task<QString> timed(Parts parts, QString editor, QCoro::Task<QString> cleaning);

    Parts m_parts;
};

} // namespace talmo
