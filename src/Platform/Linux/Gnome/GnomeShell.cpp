#include "Platform/Linux/Gnome/GnomeShell.h"

#include "Base/Application.h"
#include "Base/Completion.h"
#include "Base/Log.h"

#include <QDBusConnectionInterface>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QThread>

#include <chrono>
#include <utility>

namespace talmo {

namespace {

using namespace std::chrono_literals;
using Outcome = PasteReceipt::Outcome;

const QString shellName = QStringLiteral("org.gnome.Shell");
const QString extensionName = QStringLiteral("io.github.talmo.Shell");
const QString objectPath = QStringLiteral("/io/github/talmo/Shell");
const QString interfaceName = QStringLiteral("io.github.talmo.Shell1");

/// The extension may wait half a second for the user to release a modifier.
constexpr std::chrono::milliseconds answerTime = 1s;

constexpr uint passwordField = 2;

GnomeShell::Focus focusFrom(const QDBusMessage &reply)
{
    constexpr qsizetype size = 6;
    const auto values = reply.arguments();
    if (reply.type() != QDBusMessage::ReplyMessage || values.size() != size) {
        return {};
    }
    QString application = values[1].toString();
    if (application.endsWith(QLatin1String(".desktop"))) {
        application.chop(8);
    }
    return {values[0].toULongLong(), application, values[2].toString(), values[3].toLongLong(),
            values[5].toUInt() == passwordField};
}

Outcome outcomeFrom(const QDBusMessage &reply)
{
    const QString outcome = reply.arguments().value(0).toString();
    if (reply.type() != QDBusMessage::ReplyMessage) {
        return Outcome::CannotType;
    }
    if (outcome == QLatin1String("posted")) {
        return Outcome::Taken;
    }
    return outcome == QLatin1String("window-changed") ? Outcome::WindowChanged : Outcome::KeyboardGrabbed;
}

} // namespace

std::shared_ptr<GnomeShell> GnomeShell::open(NameWait wait)
{
    auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected() || !bus.interface()->isServiceRegistered(shellName)) {
        return nullptr;
    }
    // Work on other threads may be the last to need it.
    return {new GnomeShell(std::move(bus), wait), [](GnomeShell *shell) {
                if (QThread::currentThread() == shell->thread()) {
                    delete shell;
                } else {
                    shell->deleteLater();
                }
            }};
}

GnomeShell::GnomeShell(QDBusConnection bus, NameWait wait)
    : m_bus(std::move(bus))
{
    const QString ownName = bundleIdentifier();
    m_watcher.setConnection(m_bus);
    m_watcher.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    m_watcher.setWatchedServices({extensionName, ownName});
    connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this, [this] { refresh(); });
    // From the shell itself, so that no other program can pretend that the key was pressed.
    m_bus.connect(shellName, objectPath, interfaceName, QStringLiteral("KeyChanged"), this,
                  SLOT(handleKey(QString, bool, qlonglong)));
    const auto queueing =
        wait == NameWait::Queue ? QDBusConnectionInterface::QueueService : QDBusConnectionInterface::DontQueueService;
    const auto isOurs = [this, &ownName] {
        return m_bus.interface()->serviceOwner(ownName).value() == m_bus.baseService();
    };
    if (!isOurs()) {
        m_bus.interface()->registerService(ownName, queueing, QDBusConnectionInterface::DontAllowReplacement);
        m_ownsName = true;
    }
    refresh();
}

GnomeShell::~GnomeShell()
{
    releaseName();
}

void GnomeShell::releaseName()
{
    if (std::exchange(m_ownsName, false)) {
        m_bus.interface()->unregisterService(bundleIdentifier());
    }
}

void GnomeShell::refresh()
{
    auto *names = m_bus.interface();
    const QString shell = names->serviceOwner(shellName).value();
    const bool isAvailable = !shell.isEmpty() && names->serviceOwner(extensionName).value() == shell &&
                             names->serviceOwner(bundleIdentifier()).value() == m_bus.baseService();
    if (m_isAvailable.exchange(isAvailable) == isAvailable) {
        return;
    }
    generalLog().info("Talmo's extension of GNOME Shell is %s",
                      {isAvailable ? QStringLiteral("available") : QStringLiteral("gone")});
    if (isAvailable) {
        sendKeys();
    }
    if (m_onAvailabilityChanged) {
        m_onAvailabilityChanged();
    }
}

void GnomeShell::watchKeys(const QStringList &keys)
{
    m_keys = keys;
    if (isAvailable()) {
        sendKeys();
    }
}

void GnomeShell::sendKeys()
{
    ask(QStringLiteral("WatchKeys"), {m_keys}, [this, keys = m_keys](const QDBusMessage &reply) {
        const auto watched = reply.arguments().value(0).toStringList();
        if (reply.type() != QDBusMessage::ReplyMessage) {
            generalLog().error("GNOME Shell watches no keys: %@", {reply.errorMessage()});
        }
        for (const auto &key : keys) {
            if (!watched.contains(key) && !m_unreported.contains(key)) {
                m_unreported.append(key);
                generalLog().info("GNOME Shell does not report the key %@", {key});
            }
        }
    });
}

void GnomeShell::handleKey(const QString &key, bool isDown, qlonglong /*time*/)
{
    if (m_onKey) {
        m_onKey(key, isDown);
    }
}

QFuture<GnomeShell::Focus> GnomeShell::focus()
{
    const auto answer = Completion<Focus>::make();
    ask(QStringLiteral("Focus"), {}, [answer](const QDBusMessage &reply) { answer->finish(focusFrom(reply)); });
    return answer->future();
}

QFuture<ShellPaster::Front> GnomeShell::front()
{
    const auto answer = Completion<Front>::make();
    ask(QStringLiteral("Focus"), {}, [answer](const QDBusMessage &reply) {
        const auto focus = focusFrom(reply);
        answer->finish(Front{focus.window, pasteStyleFor(focus.application, focus.windowClass),
                             importsClipboard(focus.application, focus.windowClass)});
    });
    return answer->future();
}

QFuture<Outcome> GnomeShell::press(quint64 window, PasteStyle style)
{
    if (style != PasteStyle::ControlV && style != PasteStyle::ControlShiftV) {
        return makeReadyFuture(Outcome::CannotType); // The extension presses no other shortcut.
    }
    const auto answer = Completion<Outcome>::make();
    ask(QStringLiteral("Paste"), {window, shortcutName(style)},
        [answer](const QDBusMessage &reply) { answer->finish(outcomeFrom(reply)); });
    return answer->future();
}

QFuture<bool> GnomeShell::commit(const QString &text)
{
    const auto answer = Completion<bool>::make();
    ask(QStringLiteral("Focus"), {}, [this, answer, text](const QDBusMessage &focused) {
        const auto window = focusFrom(focused).window;
        ask(QStringLiteral("Commit"), {window, text}, [answer](const QDBusMessage &reply) {
            const QString outcome = reply.arguments().value(0).toString();
            generalLog().debug("GNOME Shell: text for the field: %s", {outcome});
            answer->finish(outcome == QLatin1String("committed"));
        });
    });
    return answer->future();
}

/// The watcher of a call needs a thread that outlives it.
void GnomeShell::ask(const QString &method, const QVariantList &arguments, Handler handle)
{
    auto message = QDBusMessage::createMethodCall(shellName, objectPath, interfaceName, method);
    message.setArguments(arguments);
    message.setAutoStartService(false);
    QMetaObject::invokeMethod(this, [this, message, handle = std::move(handle)] {
        auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(message, int(answerTime.count())), this);
        connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, handle] {
            handle(watcher->reply());
            watcher->deleteLater();
        });
    });
}

} // namespace talmo
