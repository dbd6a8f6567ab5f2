#include "Insertion/UnobstructedInsertionService.h"

#include <QCoro/QCoroFuture>

#include <utility>

namespace talmo {

UnobstructedInsertionService::UnobstructedInsertionService(std::shared_ptr<TextInsertionService> service,
                                                           ClearTheWay clearTheWay)
    : m_service(std::move(service)),
      m_clearTheWay(std::move(clearTheWay))
{
}

QCoro::Task<void> UnobstructedInsertionService::insert(QString text)
{
    return insertAfter(m_clearTheWay(), m_service, text);
}

QCoro::Task<void> UnobstructedInsertionService::insertAfter(QFuture<void> cleared,
                                                            std::shared_ptr<TextInsertionService> service, QString text)
{
    co_await cleared;
    co_await service->insert(text);
}

} // namespace talmo
