#pragma once

#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdlib>

namespace talmo::test {

/// Drops root while it lives, because root ignores file permissions.
class WithoutRoot {
public:
    WithoutRoot()
    {
        if (m_isRoot && seteuid(nobody) != 0) {
            ADD_FAILURE() << "cannot act as another user";
        }
    }
    ~WithoutRoot()
    {
        if (m_isRoot && seteuid(0) != 0) {
            std::abort();
        }
    }
    WithoutRoot(const WithoutRoot &) = delete;
    WithoutRoot &operator=(const WithoutRoot &) = delete;

private:
    static constexpr uid_t nobody = 65534;
    bool m_isRoot = geteuid() == 0;
};

} // namespace talmo::test
