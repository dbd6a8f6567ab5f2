#pragma once

#include "Base/Clock.h"
#include "Platform/Desktop.h"
#include "Settings/UserDefaults.h"

#include <QCoro/QCoroTask>

#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>
#include <memory>

namespace talmo {

/// Tells each user once what they could not know: that Talmo runs, and what their desktop does not allow. Main thread.
class FirstTimeNotices final : public QObject {
public:
    struct Parts {
        std::shared_ptr<UserDefaults> defaults;
        std::shared_ptr<Clock> clock;
        std::shared_ptr<const Desktop> desktop;
        /// Opens the welcome.
        std::function<void()> welcome;
        /// Shows a notification.
        std::function<void(const QString &)> notify;
    };

    /// How long a panel may take to start with the session. Only after that is a missing icon reported.
    static constexpr Duration panelStartTime = std::chrono::seconds(10);

    explicit FirstTimeNotices(Parts parts);

    /// Shows what this user has not seen yet.
    void show();

    /// In the user's language, with the remedy.
    static QString describe(const DesktopLimit &limit);

private:
    /// Remembers that it was asked.
    bool isFirstTime(const QString &key);
    void tellLimits();
    static QCoro::Task<void> tellThatIconIsMissing(QPointer<FirstTimeNotices> self);

    Parts m_parts;
};

} // namespace talmo
