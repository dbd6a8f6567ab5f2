#include "Platform/Linux/Session/TrayIcon.h"

#include "Base/Log.h"
#include "Platform/Linux/Session/TrayInk.h"
#include "Platform/Linux/X11/XConnection.h"
#include "Platform/Linux/X11/XProperty.h"
#include "UI/Style/Symbol.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>

#include <cstring>
#include <utility>

namespace talmo {

namespace {

const QString notifierWatcher = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString notifierWatcherPath = QStringLiteral("/StatusNotifierWatcher");
const char *const trayAtom = "_NET_SYSTEM_TRAY_S0";

/// The tray window that icons are embedded into; XCB_NONE if there is none.
xcb_window_t embedder()
{
    auto *connection = applicationConnection();
    const auto cookie = xcb_get_selection_owner(connection, applicationAtom(trayAtom));
    const XcbPtr<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(connection, cookie, nullptr));
    return reply ? reply->owner : XCB_NONE;
}

/// The window that Qt draws an embedded icon into; XCB_NONE while the icon is not embedded.
xcb_window_t embeddedIcon()
{
    for (const auto *widget : QApplication::topLevelWidgets()) {
        if (widget->inherits("QSystemTrayIconSys") && widget->isVisible()) {
            return static_cast<xcb_window_t>(widget->winId());
        }
    }
    return XCB_NONE;
}

/// The tray's background, sampled at a corner of the icon where nothing is drawn. It is read from the tray's own
/// window, since another window may cover it on the screen. None if the tray is translucent.
std::optional<QColor> groundOfEmbeddedIcon()
{
    auto *connection = applicationConnection();
    const auto icon = embeddedIcon();
    const XcbPtr<xcb_query_tree_reply_t> tree(
        icon != XCB_NONE ? xcb_query_tree_reply(connection, xcb_query_tree(connection, icon), nullptr) : nullptr);
    if (!tree || tree->parent == tree->root) {
        return std::nullopt;
    }
    constexpr quint32 allPlanes = ~quint32(0);
    const auto cookie = xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, tree->parent, 0, 0, 1, 1, allPlanes);
    const XcbPtr<xcb_get_image_reply_t> image(xcb_get_image_reply(connection, cookie, nullptr));
    QRgb pixel = 0;
    if (!image || xcb_get_image_data_length(image.get()) < int(sizeof(pixel))) {
        return std::nullopt;
    }
    std::memcpy(&pixel, xcb_get_image_data(image.get()), sizeof(pixel));
    constexpr int translucentDepth = 32;
    constexpr int halfOpaque = 128;
    const bool isSeenThrough = image->depth == translucentDepth && qAlpha(pixel) < halfOpaque;
    return isSeenThrough ? std::nullopt : std::optional(QColor(pixel));
}

} // namespace

TrayIcon::TrayIcon()
{
    QCoreApplication::instance()->installNativeEventFilter(this);
    watchNotifierHosts();
    askForNotifierHost();
}

TrayIcon::~TrayIcon()
{
    QCoreApplication::instance()->removeNativeEventFilter(this);
}

void TrayIcon::watchNotifierHosts()
{
    auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        return;
    }
    auto *watcher = new QDBusServiceWatcher(notifierWatcher, bus, QDBusServiceWatcher::WatchForRegistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, [this] { askForNotifierHost(); });
}

/// Asks asynchronously. Create QSystemTrayIcon only once a host exists: Qt picks its backend at first use and never
/// re-checks.
void TrayIcon::askForNotifierHost()
{
    auto question = QDBusMessage::createMethodCall(
        notifierWatcher, notifierWatcherPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    question << notifierWatcher << QStringLiteral("IsStatusNotifierHostRegistered");
    question.setAutoStartService(false);
    auto *answer = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        answer->deleteLater();
        const QDBusPendingReply<QVariant> reply = *answer;
        if (reply.isValid() && reply.value().toBool()) {
            create();
        } else {
            askForEmbedder();
        }
    });
    if (answer->isFinished()) { // Without a bus, the call finishes at once and emits no signal.
        answer->deleteLater();
        askForEmbedder();
    }
}

void TrayIcon::askForEmbedder()
{
    if (embedder() != XCB_NONE) {
        create();
    } else if (!m_icon && !std::exchange(m_saidThatThereIsNone, true)) {
        generalLog().info("there is no tray for the icon yet; starting Talmo again opens its settings");
    }
}

/// A new tray announces itself to all clients. An icon that has just been embedded gets an expose event.
bool TrayIcon::nativeEventFilter(const QByteArray & /*eventType*/, void *message, qintptr * /*result*/)
{
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    constexpr quint8 sentBySomebody = 0x80;
    const int type = event->response_type & ~sentBySomebody;
    if (type == XCB_EXPOSE && m_isGroundWanted && !m_icon->geometry().isEmpty()) {
        m_isGroundWanted = false;
        QMetaObject::invokeMethod(this, [this] { lookAtTheGround(); }, Qt::QueuedConnection);
    }
    if (type == XCB_CLIENT_MESSAGE) {
        const auto *announcement = static_cast<const xcb_client_message_event_t *>(message);
        if (announcement->type == applicationAtom("MANAGER") &&
            announcement->data.data32[1] == applicationAtom(trayAtom)) {
            QMetaObject::invokeMethod(this, [this] { askForEmbedder(); }, Qt::QueuedConnection);
        }
    }
    return false;
}

void TrayIcon::create()
{
    m_isGroundWanted = true; // Another tray may have other colours.
    m_ground.reset();
    if (m_icon) {
        redraw();
        return;
    }
    m_icon = std::make_unique<QSystemTrayIcon>();
    m_icon->setContextMenu(&m_menu);
    m_icon->setToolTip(m_toolTip);
    connect(m_icon.get(), &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        // Treats a double click as two clicks: the first may have closed the menu that the second opens.
        const bool isClick = reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick;
        if (isClick && m_onActivated) {
            const QRect place = m_icon->geometry();
            m_onActivated(place.isEmpty() ? std::nullopt : std::optional(place));
        }
    });
    redraw();
    m_icon->show();
}

void TrayIcon::lookAtTheGround()
{
    m_ground = groundOfEmbeddedIcon();
    redraw();
}

QColor TrayIcon::ink() const
{
    const auto tray = embedder();
    const auto colours =
        tray != XCB_NONE
            ? xNumbers(xProperty(applicationConnection(), tray, applicationAtom("_NET_SYSTEM_TRAY_COLORS")))
            : QList<quint32>();
    const auto scheme = Appearance::scheme(QApplication::palette());
    return trayInk(colours, m_ground, qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(QLatin1Char(':')), scheme);
}

void TrayIcon::redraw()
{
    if (m_icon) {
        m_icon->setIcon(Symbol::icon(m_symbol, ink()));
    }
}

void TrayIcon::setSymbol(const QString &symbol)
{
    m_symbol = symbol;
    redraw();
}

void TrayIcon::setMenu(const MenuContents &contents)
{
    m_toolTip = contents.toolTip();
    if (m_icon) {
        m_icon->setToolTip(m_toolTip);
    }
    m_menu.clear();
    addNote(contents.title);
    addNote(contents.subtitle);
    m_menu.addSeparator();
    for (const auto &warning : contents.warnings) {
        addNote(warning);
    }
    if (!contents.warnings.isEmpty()) {
        addEntry(contents.grant);
        m_menu.addSeparator();
    }
    addEntry(contents.mainRow);
    for (const auto &row : contents.recovery) {
        addEntry(row);
    }
    m_menu.addSeparator();
    addEntry(contents.settings);
    addEntry(contents.quit);
}

void TrayIcon::addNote(const QString &text)
{
    if (!text.isEmpty()) {
        m_menu.addAction(QString(text).replace(QLatin1Char('&'), QLatin1String("&&")))->setEnabled(false);
    }
}

void TrayIcon::addEntry(const MenuEntry &entry)
{
    auto *action = m_menu.addAction(entry.title);
    action->setEnabled(entry.action != MenuAction::None);
    // On a later turn of the event loop, when the menu has closed.
    connect(
        action, &QAction::triggered, this,
        [this, chosen = entry.action] {
            if (m_onChosen) {
                m_onChosen(chosen);
            }
        },
        Qt::QueuedConnection);
}

void TrayIcon::setOnActivated(std::function<void(std::optional<QRect>)> callback)
{
    m_onActivated = std::move(callback);
}

void TrayIcon::setOnChosen(std::function<void(MenuAction)> callback)
{
    m_onChosen = std::move(callback);
}

void TrayIcon::closeMenu()
{
    m_menu.close();
}

} // namespace talmo
