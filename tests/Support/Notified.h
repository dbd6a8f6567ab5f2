#pragma once

#include "DesktopParts.h"
#include "Support/NotificationService.h"

#include <algorithm>
#include <memory>

namespace talmo::test {

/// A user of a desktop with a notification service.
class Notified {
public:
    explicit Notified(QProcessEnvironment &environment)
        : m_bus(testbed::startBus(environment))
    {
    }
    bool isTold(const QString &text) const
    {
        return testbed::waitUntil(
            [this, &text] {
                const auto shown = m_service.shown();
                return std::ranges::any_of(shown, [&text](const auto &notice) { return notice.text == text; });
            },
            timeout);
    }
    /// Exactly this is shown, once.
    bool isToldOnly(const QString &text) const { return isTold(text) && m_service.shown().size() == 1; }

private:
    static constexpr testbed::Timeout timeout = std::chrono::seconds(15);

    std::unique_ptr<testbed::ChildProcess> m_bus;
    NotificationService m_service;
};

} // namespace talmo::test
