#pragma once

#include "App/Services/PipelineServices.h"

#include <QFuture>

#include <memory>

namespace talmo {

/// Serialises insertions by several callers, in call order, for a service that can do only one at a time. Main thread.
class QueuedInsertionService final : public TextInsertionService {
public:
    explicit QueuedInsertionService(std::shared_ptr<TextInsertionService> service);

    QCoro::Task<void> insert(QString text) override;

private:
    struct Queue;
    static QCoro::Task<void> insertInTurn(std::shared_ptr<Queue> queue, QString text);

    std::shared_ptr<Queue> m_queue;
};

} // namespace talmo
