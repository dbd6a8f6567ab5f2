#include "Insertion/CommittingInsertionService.h"

#include <QCoro/QCoroFuture>

#include <utility>

namespace talmo {

CommittingInsertionService::CommittingInsertionService(std::shared_ptr<TextCommitter> committer,
                                                       std::shared_ptr<TextInsertionService> otherwise)
    : m_committer(std::move(committer)),
      m_otherwise(std::move(otherwise))
{
}

QCoro::Task<void> CommittingInsertionService::insert(QString text)
{
    return commitOrInsert(m_committer, m_otherwise, text);
}

QCoro::Task<void> CommittingInsertionService::commitOrInsert(std::shared_ptr<TextCommitter> committer,
                                                             std::shared_ptr<TextInsertionService> otherwise,
                                                             QString text)
{
    const auto committing = committer->commit(text);
    const bool wasCommitted = co_await committing;
    if (!wasCommitted) {
        co_await otherwise->insert(text);
    }
}

} // namespace talmo
