#pragma once

#include "Settings/UserDefaults.h"
#include "UI/PasswordFieldSettings.h"

#include <memory>

namespace talmo {

/// Kept under a key of this platform's, beside the preferences.
class LinuxPasswordFieldSettings final : public PasswordFieldSettings {
public:
    explicit LinuxPasswordFieldSettings(std::shared_ptr<UserDefaults> defaults);

    bool isGuarded() const override;
    void setGuarded(bool isGuarded) override;

private:
    std::shared_ptr<UserDefaults> m_defaults;
};

} // namespace talmo
