#pragma once

#include "Settings/DictationOptions.h"
#include "Settings/UserDefaults.h"

#include <memory>

namespace talmo {

/// Kept under keys of this platform's, beside the preferences.
class DictationOptionsModel final : public DictationOptions {
public:
    explicit DictationOptionsModel(std::shared_ptr<UserDefaults> defaults);

    bool isOn(DictationOption option) const override;
    void setOn(DictationOption option, bool isOn) override;

private:
    std::shared_ptr<UserDefaults> m_defaults;
};

} // namespace talmo
