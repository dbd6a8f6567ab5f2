#pragma once

#include "App/PipelineServices.h"
#include "Base/SerialExecutor.h"

#include <memory>

namespace talmo {

/// Makes the text to insert from a transcript: split at the spoken commands, clean every segment, join. Segments are
/// formatted locally; there is no language model behind it yet, so the settings that speak to one change nothing.
class TextCleanupService final : public CleanupService {
public:
    /// `executor`: the thread on which the work is done.
    explicit TextCleanupService(std::shared_ptr<SerialExecutor> executor);

    QCoro::Task<QString> cleanup(QString transcript, bool aiCleanupEnabled, bool conciseTextEnabled, TextTone textTone,
                                 QStringList dictionaryWords) override;

    /// One segment, on the calling thread.
    static QString cleanSegment(const QString &text);

private:
    static QString cleanTranscript(const QString &transcript);

    std::shared_ptr<SerialExecutor> m_executor;
};

} // namespace talmo
