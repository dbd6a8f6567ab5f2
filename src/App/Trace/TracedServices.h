#pragma once

#include "App/ForwardingTranscriptionService.h"
#include "App/Trace/DictationTrace.h"

#include <memory>

namespace talmo {

/// Notes the end of the gesture in a DictationTrace.
class TracedHotkeyService final : public HotkeyService {
public:
    TracedHotkeyService(std::shared_ptr<HotkeyService> service, std::shared_ptr<DictationTrace> trace);

    void setOnHotkeyDown(std::function<void()> callback) override;
    void setOnHotkeyUp(std::function<void()> callback) override;
    void start() override;

private:
    std::shared_ptr<HotkeyService> m_service;
    std::shared_ptr<DictationTrace> m_trace;
};

/// Notes when the last audio has arrived.
class TracedRecorder final : public RecorderService {
public:
    TracedRecorder(std::shared_ptr<RecorderService> recorder, std::shared_ptr<DictationTrace> trace);

    void start(AudioBufferHandler onBuffer) override;
    void stop() override;

private:
    std::shared_ptr<RecorderService> m_recorder;
    std::shared_ptr<DictationTrace> m_trace;
};

/// Notes the beginning of the recording, and its final text.
class TracedTranscriptionService final : public ForwardingTranscriptionService {
public:
    TracedTranscriptionService(std::shared_ptr<TranscriptionService> service, std::shared_ptr<DictationTrace> trace);

    QCoro::Task<void> startTranscription(std::shared_ptr<RecorderService> recorder, QString locale,
                                         UpdateHandler onUpdate, ErrorHandler onError) override;
    QCoro::Task<QString> stopTranscription() override;

private:
    std::shared_ptr<DictationTrace> m_trace;
};

/// Notes the end of the cleanup.
class TracedCleanupService final : public CleanupService {
public:
    TracedCleanupService(std::shared_ptr<CleanupService> service, std::shared_ptr<DictationTrace> trace);

    QCoro::Task<QString> cleanup(QString transcript, bool aiCleanupEnabled, bool conciseTextEnabled, TextTone textTone,
                                 QStringList dictionaryWords) override;

private:
    std::shared_ptr<CleanupService> m_service;
    std::shared_ptr<DictationTrace> m_trace;
};

} // namespace talmo
