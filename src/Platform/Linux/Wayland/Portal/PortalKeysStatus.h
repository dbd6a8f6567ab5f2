#pragma once

#include "Platform/Linux/Wayland/Portal/PortalKeys.h"
#include "Settings/DesktopExtension.h"

#include <memory>

namespace talmo {

/// What the settings window shows of the desktop's global shortcuts, and a notice if the desktop refuses the key.
class PortalKeysStatus final : public DesktopExtension {
    Q_OBJECT
public:
    explicit PortalKeysStatus(std::shared_ptr<PortalKeys> keys);
    ~PortalKeysStatus() override;
    PortalKeysStatus(const PortalKeysStatus &) = delete;
    PortalKeysStatus &operator=(const PortalKeysStatus &) = delete;

    Status status() const override;
    void refresh() override {}
    void enable() override;

private:
    void follow();

    std::shared_ptr<PortalKeys> m_keys;
};

} // namespace talmo
