#pragma once

#include "Settings/DictationOptions.h"

#include <map>

namespace talmo::test {

class FakeDictationOptions final : public DictationOptions {
public:
    std::map<DictationOption, bool> values;

    bool isOn(DictationOption option) const override
    {
        const auto value = values.find(option);
        return value != values.end() && value->second;
    }
    void setOn(DictationOption option, bool isOn) override
    {
        Q_EMIT objectWillChange();
        values[option] = isOn;
    }
};

} // namespace talmo::test
