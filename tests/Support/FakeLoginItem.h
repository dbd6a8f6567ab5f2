#pragma once

#include "Base/Error.h"
#include "Settings/LoginItem.h"
#include "Support/Printing.h"

#include <string>
#include <vector>

namespace talmo::test {

class FakeLoginItem final : public LoginItem {
public:
    LoginItemStatus answer = LoginItemStatus::NotRegistered;
    bool isBroken = false;
    std::vector<std::string> calls;

    LoginItemStatus status() const override { return answer; }
    void registerItem() override
    {
        calls.emplace_back("register");
        fail();
    }
    void unregisterItem() override
    {
        calls.emplace_back("unregister");
        fail();
    }

private:
    void fail() const
    {
        if (isBroken) {
            throw Error(u"no room"_s);
        }
    }
};

} // namespace talmo::test
