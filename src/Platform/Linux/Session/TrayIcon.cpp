#include "Platform/Linux/Session/TrayIcon.h"

#include "Base/Log.h"
#include "Platform/Linux/Session/TrayIconColour.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>

#include <utility>

namespace talmo {

namespace {

const QString notifierWatcher = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString notifierWatcherPath = QStringLiteral("/StatusNotifierWatcher");
} // namespace

TrayIcon::TrayIcon(std::shared_ptr<TrayEmbedding> embedding)
    : m_embedding(std::move(embedding))
{
    if (m_embedding) {
        connect(m_embedding.get(), &TrayEmbedding::trayAppeared, this, &TrayIcon::askForEmbedder, Qt::QueuedConnection);
        connect(m_embedding.get(), &TrayEmbedding::exposed, this, &TrayIcon::readBackground);
    }
    watchNotifierHosts();
    askForNotifierHost();
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
    if (m_embedding && m_embedding->hasTray()) {
        create();
    } else if (!m_icon && !std::exchange(m_saidThatThereIsNone, true)) {
        generalLog().info("there is no tray for the icon yet; starting Talmo again opens its settings");
    }
}

/// Called once the icon is in place. Reads on a later turn of the event loop, since the icon is being drawn at this
/// moment.
void TrayIcon::readBackground()
{
    if (!m_isGroundWanted || !m_icon || m_icon->geometry().isEmpty()) {
        return;
    }
    m_isGroundWanted = false;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_ground = m_embedding->background();
            redraw();
        },
        Qt::QueuedConnection);
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

Symbol::Inks TrayIcon::inks() const
{
    const auto colours = m_embedding ? m_embedding->colours() : QList<quint32>();
    const auto scheme = Appearance::scheme(QApplication::palette());
    return trayInks(colours, m_ground, qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(QLatin1Char(':')), scheme);
}

void TrayIcon::redraw()
{
    if (m_icon) {
        m_icon->setIcon(Symbol::icon(m_symbol, inks()));
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
    addNote(contents.briefTitle());
    addNote(contents.subtitle);
    if (contents.details.action != MenuAction::None) {
        addEntry(contents.details);
    }
    m_menu.addSeparator();
    for (const auto &warning : contents.warnings) {
        addNote(warning);
    }
    if (!contents.warnings.isEmpty()) {
        addEntry(contents.grant);
        m_menu.addSeparator();
    }
    if (contents.offer.action != MenuAction::None) {
        addEntry(contents.offer);
        addNote(contents.offerDetail);
        m_menu.addSeparator();
    }
    addEntry(contents.mainRow);
    for (const auto &row : contents.recovery) {
        addEntry(row);
    }
    m_menu.addSeparator();
    if (!contents.pause.title.isEmpty()) {
        addEntry(contents.pause);
    }
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
