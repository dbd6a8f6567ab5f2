#pragma once

#include "App/Services/PipelineServices.h"
#include "Base/SerialExecutor.h"
#include "Cleanup/LanguageModel.h"

#include <memory>
#include <optional>

namespace talmo {

/// Makes the text to insert from a transcript: split at the spoken commands, clean every segment, join. A segment is
/// edited by the language model if the user wants that and there is one, else formatted locally. Whatever goes wrong
/// with the model ends in local formatting, without a word: the sentence was spoken and has to arrive.
class TextCleanupService final : public CleanupService {
public:
    /// `executor`: the thread on which the work is done. The model is never null.
    TextCleanupService(std::shared_ptr<SerialExecutor> executor, std::shared_ptr<LanguageModel> model);

    /// Why the language model cannot be used, as a sentence for the user; none when it can. Any thread, never waits.
    std::optional<QString> unavailabilityMessage() const;

    QCoro::Task<QString> cleanup(QString transcript, bool aiCleanupEnabled, bool conciseTextEnabled, TextTone textTone,
                                 QStringList dictionaryWords) override;

    /// One segment, on the calling thread, which has an event loop. Never throws; possibly empty.
    QCoro::Task<QString> cleanSegment(QString text, bool aiCleanupEnabled, bool conciseTextEnabled, TextTone textTone,
                                      QStringList dictionaryWords) const;

private:
    std::shared_ptr<SerialExecutor> m_executor;
    std::shared_ptr<LanguageModel> m_model;
};

/// The most tokens that an answer to a text of this many characters may take.
qsizetype responseLimit(qsizetype characterCount);

} // namespace talmo
