#pragma once

#include "Base/Clock.h"
#include "Platform/Linux/Wayland/Portal/LentKeyboard.h"
#include "Platform/Linux/Wayland/Portal/PortalRequest.h"

#include <QCoro/QCoroTask>
#include <QDBusConnection>
#include <QPointer>
#include <QString>

#include <functional>
#include <memory>
#include <stop_token>

namespace talmo {

/// The keyboard of the portal's remote desktop. The user allows it once, in a dialog; from then on a token stands for
/// that, and each session replaces it.
class PortalKeyboard final : public LentKeyboard {
    Q_OBJECT
public:
    /// Where the token is kept. An empty one: none.
    struct TokenStore {
        std::function<QString()> load;
        std::function<void(const QString &)> store;
    };

    /// Whether the portal has remote desktops that need no dialog the second time. Waits for a second at most.
    static bool isOffered(const QDBusConnection &bus);

    /// A dialog that waits for the user takes longer than this.
    static constexpr std::chrono::milliseconds longestPress{1500};

    PortalKeyboard(QDBusConnection bus, TokenStore tokens, std::shared_ptr<Clock> clock);

    bool isGranted() const override;
    void request(Handler handler) override;
    void press(const std::vector<quint32> &keys, Handler handler) override;

private:
    /// One session; all that is under way for it holds it.
    struct Use {
        Use() = default;
        ~Use() { deadline.request_stop(); }
        Use(const Use &) = delete;
        Use &operator=(const Use &) = delete;

        std::vector<quint32> keys;
        Handler handler;
        QString session;
        std::stop_source deadline;
        bool isOver = false;
    };
    using Answered = std::function<void(const QVariantMap &results)>;

    void start(const std::shared_ptr<Use> &use);
    void selectKeyboard(const std::shared_ptr<Use> &use);
    void begin(const std::shared_ptr<Use> &use);
    void type(const Use &use);
    static QCoro::Task<void> endAfter(QPointer<PortalKeyboard> self, std::weak_ptr<Use> use, QFuture<void> limit);
    void closeSession(const Use &use);
    void finish(const std::shared_ptr<Use> &use, bool wasLent);
    void ask(const std::shared_ptr<Use> &use, const QString &method, const QVariantList &arguments,
             const QVariantMap &options, Answered next);

    QDBusConnection m_bus;
    TokenStore m_tokens;
    std::shared_ptr<Clock> m_clock;
};

} // namespace talmo
