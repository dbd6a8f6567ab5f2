#pragma once

#include "UI/Style/Appearance.h"

#include <QObject>
#include <QString>

#include <functional>
#include <optional>

class QDBusVariant;

namespace talmo {

/// Gives Talmo's windows the desktop's light or dark colour scheme. Asks the desktop portal asynchronously and follows
/// its later changes. Main thread.
class DesktopAppearance final : public QObject {
    Q_OBJECT

public:
    /// `wish`: "light" or "dark" overrides the desktop; any other value follows it. `onChanged` is called after the
    /// palette has changed.
    DesktopAppearance(const QString &wish, std::function<void()> onChanged);

private:
    Q_SLOT void settingChanged(const QString &group, const QString &key, const QDBusVariant &value);
    void askPortal();
    void follow(const QVariant &portalValue);
    void apply(ColourScheme scheme);

    std::function<void()> m_onChanged;
};

/// The colour scheme for the portal's value; none if it has no preference.
std::optional<ColourScheme> colourSchemeFromPortal(const QVariant &value);

} // namespace talmo
