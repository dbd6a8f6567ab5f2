#pragma once

#include "App/Services/PipelineServices.h"

#include <memory>
#include <optional>

namespace talmo {

/// What was dictated last, so that no sentence is lost with a window, a clipboard or an error. In memory alone, until
/// something else is heard. Main thread.
class LastDictation {
public:
    /// The text as it was to be inserted; what was heard where it did not come to that. None before the first one.
    std::optional<QString> text() const;
    /// The words as they were heard.
    std::optional<QString> rawText() const;

    /// A recording begins; what is kept stays until it has heard something.
    void begin() { m_isNew = true; }
    void noteHeard(const QString &transcript);
    void noteCleaned(const QString &text);

private:
    bool m_isNew = true;
    QString m_raw;
    QString m_cleaned;
};

/// Keeps what is heard in a LastDictation: live, and at the end.
class RememberedTranscriptionService final : public TranscriptionService {
public:
    RememberedTranscriptionService(std::shared_ptr<TranscriptionService> service, std::shared_ptr<LastDictation> last);

    QCoro::Task<ModelStatus> modelStatus(QString locale) override;
    QCoro::Task<void> installModel(QString locale) override;
    QCoro::Task<void> startTranscription(std::shared_ptr<RecorderService> recorder, QString locale,
                                         UpdateHandler onUpdate, ErrorHandler onError) override;
    QCoro::Task<QString> stopTranscription() override;
    QCoro::Task<void> cancelTranscription() override;

private:
    static QCoro::Task<QString> stop(std::shared_ptr<TranscriptionService> service,
                                     std::shared_ptr<LastDictation> last);

    std::shared_ptr<TranscriptionService> m_service;
    std::shared_ptr<LastDictation> m_last;
};

/// Keeps the cleaned text in a LastDictation.
class RememberedCleanupService final : public CleanupService {
public:
    RememberedCleanupService(std::shared_ptr<CleanupService> service, std::shared_ptr<LastDictation> last);

    QCoro::Task<QString> cleanup(QString transcript, bool aiCleanupEnabled, bool conciseTextEnabled, TextTone textTone,
                                 QStringList dictionaryWords) override;

private:
    static QCoro::Task<QString> remember(QCoro::Task<QString> cleaning, std::shared_ptr<CleanupService> service,
                                         std::shared_ptr<LastDictation> last);

    std::shared_ptr<CleanupService> m_service;
    std::shared_ptr<LastDictation> m_last;
};

} // namespace talmo
