#pragma once

#include "App/ForwardingTranscriptionService.h"

#include <memory>
#include <optional>

namespace talmo {

/// Keeps the last dictation, so that no sentence is lost with a window, a clipboard or an error. In memory only, until
/// something else is recognised. Main thread.
class LastDictation {
public:
    /// The text to insert, or the raw transcript if the cleanup did not finish. Nullopt before the first dictation.
    std::optional<QString> text() const;
    /// The transcript as recognised.
    std::optional<QString> rawText() const;

    /// A recording begins; the previous dictation is kept until something is recognised.
    void begin() { m_isNew = true; }
    void noteHeard(const QString &transcript);
    void noteCleaned(const QString &text);

private:
    bool m_isNew = true;
    QString m_raw;
    QString m_cleaned;
};

/// Records transcripts in a LastDictation: live ones and the final one.
class RememberedTranscriptionService final : public ForwardingTranscriptionService {
public:
    RememberedTranscriptionService(std::shared_ptr<TranscriptionService> service, std::shared_ptr<LastDictation> last);

    QCoro::Task<void> startTranscription(std::shared_ptr<RecorderService> recorder, QString locale,
                                         UpdateHandler onUpdate, ErrorHandler onError) override;
    QCoro::Task<QString> stopTranscription() override;

private:
    static QCoro::Task<QString> stop(std::shared_ptr<TranscriptionService> service,
                                     std::shared_ptr<LastDictation> last);

    std::shared_ptr<LastDictation> m_last;
};

/// Records the cleaned text in a LastDictation.
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
