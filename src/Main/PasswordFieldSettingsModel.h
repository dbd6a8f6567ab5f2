#pragma once

#include "Settings/PasswordFieldSettings.h"
#include "Settings/UserDefaults.h"

#include <memory>

namespace talmo {

/// Kept under a key of this platform's, beside the preferences.
class PasswordFieldSettingsModel final : public PasswordFieldSettings {
public:
    explicit PasswordFieldSettingsModel(std::shared_ptr<UserDefaults> defaults);

    bool isGuarded() const override;
    void setGuarded(bool isGuarded) override;

private:
    std::shared_ptr<UserDefaults> m_defaults;
};

} // namespace talmo
