#pragma once

#include "UI/Style/Appearance.h"

#include <QObject>
#include <QString>

#include <functional>
#include <optional>

class QDBusVariant;

namespace talmo {

/// Has Talmo's windows look light or dark as the desktop wants it. Asks the desktop's portal, without waiting for it,
/// and follows what it says later. Main thread.
class DesktopAppearance final : public QObject {
    Q_OBJECT

public:
    /// `wish`: "light" or "dark" to be that whatever the desktop says; anything else to follow it. `onChanged` is
    /// called after the palette was changed.
    DesktopAppearance(const QString &wish, std::function<void()> onChanged);

private:
    Q_SLOT void settingChanged(const QString &group, const QString &key, const QDBusVariant &value);
    void askPortal();
    void follow(const QVariant &portalValue);
    void apply(ColourScheme scheme);

    std::function<void()> m_onChanged;
};

/// What the portal's number stands for; none when it has no preference.
std::optional<ColourScheme> colourSchemeFromPortal(const QVariant &value);

} // namespace talmo
