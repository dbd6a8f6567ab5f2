#pragma once

#include "App/Services/PipelineServices.h"

#include <memory>

namespace talmo {

/// Removes marks from the end of the transcript that promise more, such as a comma: recognisers that punctuate write
/// them where the speaker only paused, and the full stop would be added after them. A text of nothing but such marks is
/// kept.
QString withoutOpenEnd(const QString &transcript);

/// Removes such marks before the cleanup.
class TidyEndCleanupService final : public CleanupService {
public:
    explicit TidyEndCleanupService(std::shared_ptr<CleanupService> service);

    QCoro::Task<QString> cleanup(QString transcript, bool aiCleanupEnabled, bool conciseTextEnabled, TextTone textTone,
                                 QStringList dictionaryWords) override;

private:
    std::shared_ptr<CleanupService> m_service;
};

} // namespace talmo
