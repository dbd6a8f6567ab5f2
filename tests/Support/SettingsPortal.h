#pragma once

#include "Support/BusService.h"

namespace talmo::test {

/// The settings of the desktop portal, on the session bus that the environment names.
class SettingsPortal final : public BusService {
public:
    enum class Preference : uint { None = 0, Dark = 1, Light = 2 };

    explicit SettingsPortal(Preference preference);

    /// How often the preference was asked for.
    int readings() const { return m_readings; }
    /// Changes the preference and announces it, as portals do.
    void prefer(Preference preference);

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

private:
    Preference m_preference;
    int m_readings = 0;
};

} // namespace talmo::test
