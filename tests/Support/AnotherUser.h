#pragma once

#include <gtest/gtest.h>

#include <cstdlib>

#include <unistd.h>

namespace talmo::test {

/// While it lives, this process acts as another, unprivileged user. Needs root.
class AnotherUser {
public:
    static constexpr uid_t id = 12345;
    /// One that has a name, without which some programs admit nobody.
    static constexpr uid_t nobody = 65534;

    static bool isPossible() { return geteuid() == 0; }

    explicit AnotherUser(uid_t user = id)
    {
        if (seteuid(user) != 0) {
            ADD_FAILURE() << "cannot act as another user";
        }
    }
    ~AnotherUser()
    {
        if (seteuid(0) != 0) {
            std::abort();
        }
    }
    AnotherUser(const AnotherUser &) = delete;
    AnotherUser &operator=(const AnotherUser &) = delete;
};

} // namespace talmo::test
