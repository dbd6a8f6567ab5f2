#include "Main/PasswordFieldSettingsModel.h"

#include "Platform/Linux/System/LinuxSettings.h"

#include <utility>

namespace talmo {

PasswordFieldSettingsModel::PasswordFieldSettingsModel(std::shared_ptr<UserDefaults> defaults)
    : m_defaults(std::move(defaults))
{
}

bool PasswordFieldSettingsModel::isGuarded() const
{
    return m_defaults->boolean(LinuxSettings::guardPasswordFieldsKey()).value_or(true);
}

void PasswordFieldSettingsModel::setGuarded(bool isGuarded)
{
    Q_EMIT objectWillChange();
    m_defaults->set(LinuxSettings::guardPasswordFieldsKey(), isGuarded);
}

} // namespace talmo
