#pragma once

#include "Platform/Linux/Session/DesktopTheme.h"
#include "UI/Style/Appearance.h"

#include <QDBusVariant>
#include <QFont>
#include <QObject>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace talmo {

/// Gives Talmo's windows the desktop's colours and font size, and follows their changes: Plasma's settings, the desktop
/// portal's colour scheme, and the theme that the desktop announces to other toolkits. D-Bus calls are asynchronous.
/// Main thread.
class DesktopAppearance final : public QObject {
    Q_OBJECT

public:
    /// `wish`: "light" or "dark" overrides the desktop; any other value follows it. `theme`: null if the desktop
    /// announces none. `onChanged` is called after the palette has changed.
    DesktopAppearance(const QString &wish, std::shared_ptr<DesktopTheme> theme, std::function<void()> onChanged);

private:
    Q_SLOT void settingChanged(const QString &group, const QString &key, const QDBusVariant &value);
    Q_SLOT void plasmaChanged(int what, int detail);
    void watchPortal();
    void askPortal();
    void watchPlasma();
    void followFont();
    void follow();
    QPalette wantedPalette() const;

    std::optional<ColourScheme> m_wish;
    std::shared_ptr<DesktopTheme> m_theme;
    std::function<void()> m_onChanged;
    /// What Qt has found out itself.
    QPalette m_ofQt;
    bool m_isOfStyle;
    bool m_isPlasma;
    std::optional<ColourScheme> m_ofPortal;
};

/// The colour scheme for the portal's value; none if it has no preference.
std::optional<ColourScheme> colourSchemeFromPortal(const QVariant &value);
/// The colour scheme that a theme's name implies, such as "Adwaita-dark"; none for an empty name.
std::optional<ColourScheme> colourSchemeOfTheme(const QString &name);
/// The font with that description, such as "Noto Sans Bold 11"; none without a size.
std::optional<QFont> fontOfDescription(const QString &description);

} // namespace talmo
