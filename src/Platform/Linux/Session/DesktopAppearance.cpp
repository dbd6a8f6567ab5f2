#include "Platform/Linux/Session/DesktopAppearance.h"

#include "Base/Log.h"
#include "Platform/Linux/Session/KdeColours.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QStyle>

#include <utility>

namespace talmo {

namespace {

const QString portal = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString portalSettings = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearanceGroup = QStringLiteral("org.freedesktop.appearance");
const QString colourSchemeKey = QStringLiteral("color-scheme");

/// Whether the palette is the style's own, rather than one set by the desktop.
bool isPaletteOfStyle(const QPalette &palette)
{
    const auto standard = QApplication::style()->standardPalette();
    return palette.color(QPalette::Window) == standard.color(QPalette::Window) &&
           palette.color(QPalette::Highlight) == standard.color(QPalette::Highlight);
}

std::optional<ColourScheme> schemeOfWish(const QString &wish)
{
    if (wish == QLatin1String("light")) {
        return ColourScheme::Light;
    }
    return wish == QLatin1String("dark") ? std::optional(ColourScheme::Dark) : std::nullopt;
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

std::optional<ColourScheme> colourSchemeOfTheme(const QString &name)
{
    if (name.isEmpty()) {
        return std::nullopt;
    }
    const bool isDark = name.endsWith(QLatin1String("-dark"), Qt::CaseInsensitive) ||
                        name.contains(QLatin1String("-dark-"), Qt::CaseInsensitive);
    return isDark ? ColourScheme::Dark : ColourScheme::Light;
}

std::optional<QFont> fontOfDescription(const QString &description)
{
    QStringList words = description.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    bool hasSize = false;
    const double size = words.isEmpty() ? 0 : words.takeLast().toDouble(&hasSize);
    if (!hasSize || size <= 0) {
        return std::nullopt;
    }
    // Talmo chooses the weights itself.
    const QStringList styles{QStringLiteral("Regular"), QStringLiteral("Book"),   QStringLiteral("Medium"),
                             QStringLiteral("Bold"),    QStringLiteral("Italic"), QStringLiteral("Light")};
    while (!words.isEmpty() && styles.contains(words.last().remove(QLatin1Char(',')))) {
        words.removeLast();
    }
    QFont font = QApplication::font();
    if (!words.isEmpty()) {
        font.setFamily(words.join(QLatin1Char(' ')).remove(QLatin1Char(',')));
    }
    font.setPointSizeF(size);
    return font;
}

DesktopAppearance::DesktopAppearance(const QString &wish, std::shared_ptr<DesktopTheme> theme,
                                     std::function<void()> onChanged)
    : m_wish(schemeOfWish(wish)),
      m_theme(std::move(theme)),
      m_onChanged(std::move(onChanged)),
      m_ofQt(QApplication::palette()),
      m_isOfStyle(isPaletteOfStyle(m_ofQt)),
      m_isPlasma(qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(QLatin1Char(':')).contains(QLatin1String("KDE")))
{
    if (m_theme && !m_isPlasma) { // Qt knows Plasma's font itself.
        connect(m_theme.get(), &DesktopTheme::changed, this, [this] {
            followFont();
            follow();
        });
        followFont();
    }
    QApplication::setPalette(wantedPalette());
    if (m_wish) {
        return;
    }
    watchPortal();
    if (m_isPlasma) {
        watchPlasma();
    }
}

void DesktopAppearance::followFont()
{
    const auto font = fontOfDescription(m_theme->fontName());
    if (font && *font != QApplication::font()) {
        QApplication::setFont(*font);
    }
}

void DesktopAppearance::watchPortal()
{
    auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        return;
    }
    qRegisterMetaType<QDBusVariant>(); // A slot with an argument of a type that has no name yet cannot be connected.
    if (!bus.connect(portal, portalPath, portalSettings, QStringLiteral("SettingChanged"), this,
                     SLOT(settingChanged(QString, QString, QDBusVariant)))) {
        generalLog().error("changes of the desktop's colour scheme cannot be followed");
    }
    askPortal();
}

void DesktopAppearance::askPortal()
{
    auto question = QDBusMessage::createMethodCall(portal, portalPath, portalSettings, QStringLiteral("Read"));
    question << appearanceGroup << colourSchemeKey;
    auto *answer = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        answer->deleteLater();
        const QDBusPendingReply<QVariant> reply = *answer;
        if (reply.isValid()) {
            m_ofPortal = colourSchemeFromPortal(reply.value());
            follow();
        }
    });
}

void DesktopAppearance::settingChanged(const QString &group, const QString &key, const QDBusVariant &value)
{
    if (group == appearanceGroup && key == colourSchemeKey) {
        m_ofPortal = colourSchemeFromPortal(value.variant());
        follow();
    }
}

/// Plasma notifies all programs when its settings have changed.
void DesktopAppearance::watchPlasma()
{
    if (!QDBusConnection::sessionBus().connect({}, QStringLiteral("/KGlobalSettings"),
                                               QStringLiteral("org.kde.KGlobalSettings"),
                                               QStringLiteral("notifyChange"), this, SLOT(plasmaChanged(int, int)))) {
        generalLog().error("changes of Plasma's colours cannot be followed");
    }
}

void DesktopAppearance::plasmaChanged(int /*what*/, int /*detail*/)
{
    follow();
}

/// A desktop's own palette is kept if it has the scheme that is wanted. Qt does not know Plasma's colours unless the
/// user has chosen a scheme.
QPalette DesktopAppearance::wantedPalette() const
{
    if (m_wish) {
        return Appearance::palette(*m_wish);
    }
    const auto ofPlasma = m_isPlasma ? kdePalette() : std::nullopt;
    if (ofPlasma) {
        return Appearance::legible(*ofPlasma);
    }
    const bool isOfDesktop = !m_isOfStyle && !m_isPlasma;
    const auto ofTheme = m_theme && !isOfDesktop ? colourSchemeOfTheme(m_theme->themeName()) : std::nullopt;
    const auto ofQt = Appearance::scheme(m_ofQt);
    const auto scheme = m_ofPortal.value_or(ofTheme.value_or(ofQt));
    return isOfDesktop && scheme == ofQt ? Appearance::legible(m_ofQt) : Appearance::palette(scheme);
}

void DesktopAppearance::follow()
{
    const QPalette wanted = wantedPalette();
    if (wanted != QApplication::palette()) {
        QApplication::setPalette(wanted);
        m_onChanged();
    }
}

} // namespace talmo
