#pragma once

#include "App/Services/PipelineServices.h"

#include <QFuture>

#include <memory>

namespace talmo {

/// Lets several callers insert through a service that can do one insertion at a time: they take turns, in the order in
/// which they came. Main thread.
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
