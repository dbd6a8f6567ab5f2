#include "Insertion/QueuedInsertionService.h"

#include "Base/Completion.h"

#include <QCoro/QCoroFuture>

#include <utility>

namespace talmo {

struct QueuedInsertionService::Queue {
    std::shared_ptr<TextInsertionService> service;
    /// Finishes when all earlier insertions have succeeded or failed.
    QFuture<void> end = makeReadyFuture();
};

QueuedInsertionService::QueuedInsertionService(std::shared_ptr<TextInsertionService> service)
    : m_queue(std::make_shared<Queue>())
{
    m_queue->service = std::move(service);
}

QCoro::Task<void> QueuedInsertionService::insert(QString text)
{
    return insertInTurn(m_queue, text);
}

QCoro::Task<void> QueuedInsertionService::insertInTurn(std::shared_ptr<Queue> queue, QString text)
{
    const auto done = Completion<void>::make();
    const auto turn = std::exchange(queue->end, done->future());
    co_await turn;
    try {
        co_await queue->service->insert(text);
    } catch (...) {
        done->finish(); // A failure must not block the queue.
        throw;
    }
    done->finish();
}

} // namespace talmo
