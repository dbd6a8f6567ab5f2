#include "Platform/Linux/LinuxPasswordFieldSettings.h"

#include "Platform/Linux/LinuxSettings.h"

#include <utility>

namespace talmo {

LinuxPasswordFieldSettings::LinuxPasswordFieldSettings(std::shared_ptr<UserDefaults> defaults)
    : m_defaults(std::move(defaults))
{
}

bool LinuxPasswordFieldSettings::isGuarded() const
{
    return m_defaults->boolean(LinuxSettings::guardPasswordFieldsKey()).value_or(true);
}

void LinuxPasswordFieldSettings::setGuarded(bool isGuarded)
{
    Q_EMIT objectWillChange();
    m_defaults->set(LinuxSettings::guardPasswordFieldsKey(), isGuarded);
}

} // namespace talmo
