#pragma once

#include "App/Services/PipelineServices.h"

#include <QFuture>

#include <functional>
#include <memory>

namespace talmo {

/// Closes Talmo's own menus before each insertion, so that no text ends up in them. Main thread.
class UnobstructedInsertionService final : public TextInsertionService {
public:
    /// Finishes, never fails, once the window for the text has the keyboard focus.
    using ClearTheWay = std::function<QFuture<void>()>;

    UnobstructedInsertionService(std::shared_ptr<TextInsertionService> service, ClearTheWay clearTheWay);

    QCoro::Task<void> insert(QString text) override;

private:
    static QCoro::Task<void> insertAfter(QFuture<void> cleared, std::shared_ptr<TextInsertionService> service,
                                         QString text);

    std::shared_ptr<TextInsertionService> m_service;
    ClearTheWay m_clearTheWay;
};

} // namespace talmo
