#include "Platform/Linux/Wayland/Portal/PortalKeyboard.h"

#include "Base/CancellableWait.h"
#include "Base/Log.h"
#include "Base/Task.h"

#include <QDBusObjectPath>

#include <utility>

namespace talmo {

namespace {

const QString interfaceName = QStringLiteral("RemoteDesktop");

constexpr uint versionWithTokens = 2;
constexpr uint keyboard = 1;
/// Until the user takes it back.
constexpr uint persists = 2;

} // namespace

bool PortalKeyboard::isOffered(const QDBusConnection &bus)
{
    return PortalRequest::versionOf(bus, interfaceName) >= versionWithTokens;
}

PortalKeyboard::PortalKeyboard(QDBusConnection bus, TokenStore tokens, std::shared_ptr<Clock> clock)
    : m_bus(std::move(bus)),
      m_tokens(std::move(tokens)),
      m_clock(std::move(clock))
{
}

bool PortalKeyboard::isGranted() const
{
    return !m_tokens.load().isEmpty();
}

void PortalKeyboard::request(Handler handler)
{
    m_tokens.store({});
    const auto use = std::make_shared<Use>();
    // Without a token, every paste would need the dialog.
    use->handler = [this, handler = std::move(handler)](bool wasLent) { handler(wasLent && isGranted()); };
    start(use);
}

void PortalKeyboard::press(const std::vector<quint32> &keys, Handler handler)
{
    if (!isGranted()) {
        handler(false);
        return;
    }
    const auto use = std::make_shared<Use>();
    use->keys = keys;
    use->handler = std::move(handler);
    logEscapes(endAfter(this, use, m_clock->sleep(longestPress, use->deadline.get_token())));
    start(use);
}

QCoro::Task<void> PortalKeyboard::endAfter(QPointer<PortalKeyboard> self, std::weak_ptr<Use> use, QFuture<void> limit)
{
    const bool isOver = co_await isTimeUp(limit);
    const auto late = use.lock();
    if (isOver && self && late && !late->isOver) {
        generalLog().error("the desktop portal asks again whether Talmo may paste");
        self->m_tokens.store({}); // The user has taken the permission back.
        self->finish(late, false);
    }
}

void PortalKeyboard::ask(const std::shared_ptr<Use> &use, const QString &method, const QVariantList &arguments,
                         const QVariantMap &options, Answered next)
{
    PortalRequest::send(
        m_bus, interfaceName, method, arguments, options, this,
        [this, use, next = std::move(next)](PortalRequest::Outcome outcome, const QVariantMap &results) {
            if (outcome != PortalRequest::Outcome::Done) {
                finish(use, false);
            } else if (!use->isOver) {
                next(results);
            }
        });
}

void PortalKeyboard::start(const std::shared_ptr<Use> &use)
{
    PortalRequest::send(m_bus, interfaceName, QStringLiteral("CreateSession"), {},
                        {{QStringLiteral("session_handle_token"), PortalRequest::newToken()}}, this,
                        [this, use](PortalRequest::Outcome outcome, const QVariantMap &results) {
                            use->session = PortalRequest::sessionIn(results);
                            if (use->isOver) {
                                closeSession(*use);
                            } else if (outcome == PortalRequest::Outcome::Done) {
                                selectKeyboard(use);
                            } else {
                                finish(use, false);
                            }
                        });
}

void PortalKeyboard::selectKeyboard(const std::shared_ptr<Use> &use)
{
    QVariantMap options{{QStringLiteral("types"), keyboard}, {QStringLiteral("persist_mode"), persists}};
    const QString token = m_tokens.load();
    if (!token.isEmpty()) {
        options.insert(QStringLiteral("restore_token"), token);
    }
    ask(use, QStringLiteral("SelectDevices"), {QVariant::fromValue(QDBusObjectPath(use->session))}, options,
        [this, use](const QVariantMap & /*results*/) { begin(use); });
}

void PortalKeyboard::begin(const std::shared_ptr<Use> &use)
{
    const QString noParentWindow;
    ask(use, QStringLiteral("Start"), {QVariant::fromValue(QDBusObjectPath(use->session)), noParentWindow}, {},
        [this, use](const QVariantMap &results) {
            m_tokens.store(results.value(QStringLiteral("restore_token")).toString());
            const bool hasKeyboard = (results.value(QStringLiteral("devices")).toUInt() & keyboard) != 0;
            if (hasKeyboard) {
                type(*use);
            }
            finish(use, hasKeyboard);
        });
}

void PortalKeyboard::type(const Use &use)
{
    const auto notify = [this, &use](quint32 key, uint state) {
        PortalRequest::call(
            m_bus, PortalRequest::path(), interfaceName, QStringLiteral("NotifyKeyboardKeycode"),
            {QVariant::fromValue(QDBusObjectPath(use.session)), QVariantMap(), static_cast<int>(key), state});
    };
    constexpr uint released = 0;
    constexpr uint pressed = 1;
    for (const auto key : use.keys) {
        notify(key, pressed);
    }
    for (auto key = use.keys.rbegin(); key != use.keys.rend(); ++key) {
        notify(*key, released);
    }
}

void PortalKeyboard::closeSession(const Use &use)
{
    if (!use.session.isEmpty()) {
        PortalRequest::call(m_bus, use.session, QStringLiteral("Session"), QStringLiteral("Close"), {});
    }
}

void PortalKeyboard::finish(const std::shared_ptr<Use> &use, bool wasLent)
{
    if (std::exchange(use->isOver, true)) {
        return;
    }
    use->deadline.request_stop();
    closeSession(*use);
    use->handler(wasLent);
}

} // namespace talmo
