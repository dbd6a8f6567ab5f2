#pragma once

#include "App/Services/PipelineServices.h"
#include "Base/SerialExecutor.h"
#include "Cleanup/LanguageModel.h"

#include <memory>
#include <optional>

namespace talmo {

/// Turns a transcript into the text to insert: splits it at the spoken commands, cleans every segment, and joins them.
/// A segment is edited by the language model if that is enabled and available, otherwise formatted locally. Any failure
/// of the model silently falls back to local formatting: dictated text must never be lost.
class TextCleanupService final : public CleanupService {
public:
    /// `executor` runs the work. `model` must not be null.
    TextCleanupService(std::shared_ptr<SerialExecutor> executor, std::shared_ptr<LanguageModel> model);

    /// Why the language model cannot be used, as a sentence for the user; nullopt if it can. Any thread; never blocks.
    std::optional<QString> unavailabilityMessage() const;

    QCoro::Task<QString> cleanup(QString transcript, bool aiCleanupEnabled, bool conciseTextEnabled, TextTone textTone,
                                 QStringList dictionaryWords) override;

    /// Cleans one segment on the calling thread, which needs an event loop. Never throws; the result may be empty.
    QCoro::Task<QString> cleanSegment(QString text, bool aiCleanupEnabled, bool conciseTextEnabled, TextTone textTone,
                                      QStringList dictionaryWords) const;

private:
    std::shared_ptr<SerialExecutor> m_executor;
    std::shared_ptr<LanguageModel> m_model;
};

/// The token limit for the answer to a text of this many characters.
qsizetype responseLimit(qsizetype characterCount);

} // namespace talmo
