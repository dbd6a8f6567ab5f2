#include "Platform/Linux/System/SystemLocaleSource.h"

#include "Support/Printing.h"

#include <gtest/gtest.h>

namespace talmo::test {

TEST(SystemLocaleSource, prefersUsersLanguageOverDesktops)
{
    EXPECT_EQ(SystemLocaleSource(u"en_GB"_s).currentIdentifier(), u"en_GB"_s);
}

} // namespace talmo::test
