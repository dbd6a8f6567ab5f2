#pragma once

#include <gtest/gtest.h>

#include <optional>

namespace talmo::test {

/// A test of one adapter, the subject, which is made anew for each. A subject that needs programs has a static
/// isPossible().
template <typename Subject>
class ContractTest : public testing::Test {
protected:
    void SetUp() override
    {
        if constexpr (requires { Subject::isPossible(); }) {
            if (!Subject::isPossible()) {
                GTEST_SKIP() << "what it needs is not installed";
            }
        }
        m_subject.emplace();
    }
    /// Before the fixture's own members, which must get along without it.
    void TearDown() override { m_subject.reset(); }
    Subject &subject() { return *m_subject; }

private:
    std::optional<Subject> m_subject;
};

} // namespace talmo::test
