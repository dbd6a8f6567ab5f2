#include "Platform/Linux/Wayland/Portal/MutterKeyboard.h"

#include "Base/Log.h"

#include <QDBusConnectionInterface>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>

#include <chrono>
#include <utility>

namespace talmo {

namespace {

using namespace std::chrono_literals;

const QString serviceName = QStringLiteral("org.gnome.Mutter.RemoteDesktop");
const QString sessionInterface = serviceName + QStringLiteral(".Session");
constexpr std::chrono::milliseconds answerTime = 700ms; // Twice makes the longest press.

} // namespace

bool MutterKeyboard::isOffered(const QDBusConnection &bus)
{
    return bus.isConnected() && bus.interface()->isServiceRegistered(serviceName);
}

MutterKeyboard::MutterKeyboard(QDBusConnection bus)
    : m_bus(std::move(bus))
{
}

void MutterKeyboard::press(const std::vector<quint32> &keys, Handler handler)
{
    ask(QStringLiteral("/org/gnome/Mutter/RemoteDesktop"), serviceName, QStringLiteral("CreateSession"),
        [this, keys, handler = std::move(handler)](const QDBusMessage &created) {
            const QString session = created.arguments().value(0).value<QDBusObjectPath>().path();
            if (session.isEmpty()) {
                handler(false);
                return;
            }
            ask(session, sessionInterface, QStringLiteral("Start"),
                [this, session, keys, handler](const QDBusMessage &started) {
                    const bool wasLent = started.type() == QDBusMessage::ReplyMessage;
                    if (wasLent) {
                        type(session, keys);
                    }
                    m_bus.send(
                        QDBusMessage::createMethodCall(serviceName, session, sessionInterface, QStringLiteral("Stop")));
                    handler(wasLent);
                });
        });
}

void MutterKeyboard::type(const QString &session, const std::vector<quint32> &keys)
{
    const auto notify = [this, &session](quint32 key, bool isDown) {
        auto message = QDBusMessage::createMethodCall(serviceName, session, sessionInterface,
                                                      QStringLiteral("NotifyKeyboardKeycode"));
        message.setArguments({key, isDown});
        m_bus.send(message);
    };
    for (const auto key : keys) {
        notify(key, true);
    }
    for (auto key = keys.rbegin(); key != keys.rend(); ++key) {
        notify(*key, false);
    }
}

void MutterKeyboard::ask(const QString &path, const QString &interface, const QString &method,
                         std::function<void(const QDBusMessage &reply)> handle)
{
    const auto message = QDBusMessage::createMethodCall(serviceName, path, interface, method);
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(message, static_cast<int>(answerTime.count())), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, method, handle = std::move(handle)] {
        const auto reply = watcher->reply();
        watcher->deleteLater();
        if (reply.type() != QDBusMessage::ReplyMessage) {
            generalLog().error("GNOME's remote desktop: %s failed: %@", {method, reply.errorMessage()});
        }
        handle(reply);
    });
}

} // namespace talmo
