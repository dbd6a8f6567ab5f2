#include "Platform/Linux/Session/DesktopAppearance.h"

#include <QApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QStyle>

#include <utility>

namespace talmo {

namespace {

const QString portal = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString portalSettings = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearanceGroup = QStringLiteral("org.freedesktop.appearance");
const QString colourSchemeKey = QStringLiteral("color-scheme");

/// Whether the application's palette is the style's own, rather than one set by the desktop.
bool isPaletteOfStyle()
{
    const auto standard = QApplication::style()->standardPalette();
    return QApplication::palette().color(QPalette::Window) == standard.color(QPalette::Window) &&
           QApplication::palette().color(QPalette::Highlight) == standard.color(QPalette::Highlight);
}

} // namespace

std::optional<ColourScheme> colourSchemeFromPortal(const QVariant &value)
{
    constexpr uint prefersDark = 1;
    constexpr uint prefersLight = 2;
    QVariant inner = value;
    while (inner.canConvert<QDBusVariant>()) { // Older portals wrap the value twice.
        inner = inner.value<QDBusVariant>().variant();
    }
    bool isNumber = false;
    const uint number = inner.toUInt(&isNumber);
    if (!isNumber || (number != prefersDark && number != prefersLight)) {
        return std::nullopt;
    }
    return number == prefersDark ? ColourScheme::Dark : ColourScheme::Light;
}

DesktopAppearance::DesktopAppearance(const QString &wish, std::function<void()> onChanged)
    : m_onChanged(std::move(onChanged))
{
    if (wish == QLatin1String("light") || wish == QLatin1String("dark")) {
        QApplication::setPalette(
            Appearance::palette(wish == QLatin1String("dark") ? ColourScheme::Dark : ColourScheme::Light));
        return;
    }
    if (isPaletteOfStyle()) {
        QApplication::setPalette(Appearance::palette(Appearance::scheme(QApplication::palette())));
    }
    askPortal();
}

void DesktopAppearance::askPortal()
{
    auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        return;
    }
    bus.connect(portal, portalPath, portalSettings, QStringLiteral("SettingChanged"), this,
                SLOT(settingChanged(QString, QString, QDBusVariant)));
    auto question = QDBusMessage::createMethodCall(portal, portalPath, portalSettings, QStringLiteral("Read"));
    question << appearanceGroup << colourSchemeKey;
    auto *answer = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        answer->deleteLater();
        const QDBusPendingReply<QVariant> reply = *answer;
        if (reply.isValid()) {
            follow(reply.value());
        }
    });
}

void DesktopAppearance::settingChanged(const QString &group, const QString &key, const QDBusVariant &value)
{
    if (group == appearanceGroup && key == colourSchemeKey) {
        follow(value.variant());
    }
}

/// A desktop theme that already has the requested scheme keeps its own colours.
void DesktopAppearance::follow(const QVariant &portalValue)
{
    const auto scheme = colourSchemeFromPortal(portalValue);
    if (scheme && *scheme != Appearance::scheme(QApplication::palette())) {
        apply(*scheme);
    }
}

void DesktopAppearance::apply(ColourScheme scheme)
{
    QApplication::setPalette(Appearance::palette(scheme));
    m_onChanged();
}

} // namespace talmo
