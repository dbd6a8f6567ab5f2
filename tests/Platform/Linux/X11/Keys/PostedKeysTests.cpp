#include "Platform/Linux/X11/Keys/PostedKeys.h"

#include <gtest/gtest.h>

namespace talmo::test {

TEST(PostedKeys, eachIsConsumedOnce)
{
    PostedKeys keys;
    keys.expect(55, true);
    keys.expect(55, false);
    EXPECT_FALSE(keys.take(54, true));
    EXPECT_TRUE(keys.take(55, true));
    EXPECT_FALSE(keys.take(55, true));
    EXPECT_TRUE(keys.take(55, false));
    EXPECT_FALSE(keys.take(55, false));
}

} // namespace talmo::test
