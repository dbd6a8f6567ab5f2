#include "App/TalmoState.h"

#include "Support/Printing.h"

#include <gtest/gtest.h>

namespace talmo::test {

TEST(TalmoState, isEqualForSameCaseAndMessage)
{
    EXPECT_EQ(TalmoState::idle(), TalmoState::idle());
    EXPECT_NE(TalmoState::idle(), TalmoState::recording());
    EXPECT_EQ(TalmoState::error(u"a"_s), TalmoState::error(u"a"_s));
    EXPECT_NE(TalmoState::error(u"a"_s), TalmoState::error(u"b"_s));
}

TEST(TalmoState, comparesMessagesByCanonicalEquivalence)
{
    EXPECT_EQ(TalmoState::error(u"Caf\u00E9"_s), TalmoState::error(u"Cafe\u0301"_s));
    EXPECT_NE(TalmoState::error(u"Cafe"_s), TalmoState::error(u"cafe"_s));
    EXPECT_NE(TalmoState::error({}), TalmoState::idle()) << "an error without a message is still an error";
}

TEST(TalmoState, hasExpectedNames)
{
    EXPECT_EQ(name(TalmoState::idle()), u"idle"_s);
    EXPECT_EQ(name(TalmoState::recording()), u"recording"_s);
    EXPECT_EQ(name(TalmoState::processing()), u"processing"_s);
    EXPECT_EQ(name(TalmoState::inserting()), u"inserting"_s);
    EXPECT_EQ(name(TalmoState::error(u"x"_s)), u"error"_s);
}

} // namespace talmo::test
