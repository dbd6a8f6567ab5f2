#pragma once

#include "App/Services/PipelineServices.h"

#include <memory>
#include <utility>

namespace talmo {

/// Passes every call on, for decorators that change only some. A task must not outlive the service that it is of, so a
/// decorator's coroutine takes a reference to it along.
class ForwardingTranscriptionService : public TranscriptionService {
public:
    explicit ForwardingTranscriptionService(std::shared_ptr<TranscriptionService> service)
        : m_service(std::move(service))
    {
    }

    QCoro::Task<ModelStatus> modelStatus(QString locale) override { return m_service->modelStatus(std::move(locale)); }
    QCoro::Task<void> installModel(QString locale) override { return m_service->installModel(std::move(locale)); }
    QCoro::Task<void> startTranscription(std::shared_ptr<RecorderService> recorder, QString locale,
                                         UpdateHandler onUpdate, ErrorHandler onError) override
    {
        return m_service->startTranscription(std::move(recorder), std::move(locale), std::move(onUpdate),
                                             std::move(onError));
    }
    QCoro::Task<QString> stopTranscription() override { return m_service->stopTranscription(); }
    QCoro::Task<void> cancelTranscription() override { return m_service->cancelTranscription(); }

protected:
    const std::shared_ptr<TranscriptionService> &service() const { return m_service; }

private:
    std::shared_ptr<TranscriptionService> m_service;
};

} // namespace talmo
