#pragma once

#include "Settings/PasswordFieldSettings.h"

namespace talmo::test {

class FakePasswordFieldSettings final : public PasswordFieldSettings {
public:
    bool guarded = true;

    bool isGuarded() const override { return guarded; }
    void setGuarded(bool isGuarded) override { publish(guarded, isGuarded); }
};

} // namespace talmo::test
