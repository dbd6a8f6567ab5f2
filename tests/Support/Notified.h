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
    /// How often this has been shown.
    qsizetype count(const QString &text) const
    {
        return std::ranges::count_if(m_service.shown(), [&text](const auto &notice) { return notice.text == text; });
    }
    bool isTold(const QString &text, testbed::Timeout timeout = std::chrono::seconds(15)) const
    {
        return testbed::waitUntil([this, &text] { return count(text) > 0; }, timeout);
    }
    bool isToldAnything() const { return !m_service.shown().isEmpty(); }
    /// Exactly this is shown, once.
    bool isToldOnly(const QString &text) const { return isTold(text) && m_service.shown().size() == 1; }

private:
    std::unique_ptr<testbed::ChildProcess> m_bus;
    NotificationService m_service;
};

} // namespace talmo::test
