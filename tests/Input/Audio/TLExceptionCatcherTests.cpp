#include "Input/Audio/TLExceptionCatcher.h"

#include "Base/Application.h"
#include "Base/Error.h"
#include "Support/Printing.h"

#include <gtest/gtest.h>

namespace talmo::test {

TEST(TLExceptionCatcher, leavesErrorUntouchedOnSuccess)
{
    std::optional<CaughtAudioException> error;
    EXPECT_TRUE(TLExceptionCatcher::run([] {}, &error));
    EXPECT_FALSE(error);
}

TEST(TLExceptionCatcher, convertsCaughtExceptionToError)
{
    std::optional<CaughtAudioException> error;
    EXPECT_FALSE(TLExceptionCatcher::run([] { throw PlatformException(u"Name"_s, u"because"_s); }, &error));
    ASSERT_TRUE(error);
    EXPECT_EQ(error->domain, bundleIdentifier() + u".audio.exception"_s);
    EXPECT_EQ(error->code, -1);
    EXPECT_EQ(error->userInfo.size(), 2);
    EXPECT_EQ(error->userInfo.value(u"NSLocalizedDescriptionKey"_s), u"because"_s);
    EXPECT_EQ(error->userInfo.value(u"TLExceptionName"_s), u"Name"_s);
}

TEST(TLExceptionCatcher, describesExceptionWithoutNameOrReason)
{
    std::optional<CaughtAudioException> error;
    EXPECT_FALSE(TLExceptionCatcher::run([] { throw PlatformException({}, {}); }, &error));
    EXPECT_EQ(error->localizedDescription(), u"Unknown audio engine exception"_s);
    EXPECT_EQ(error->userInfo.value(u"TLExceptionName"_s), u"unknown"_s);
}

TEST(TLExceptionCatcher, returnsFalseWithoutErrorOutput)
{
    EXPECT_FALSE(TLExceptionCatcher::run([] { throw PlatformException({}, {}); }, nullptr));
}

TEST(TLExceptionCatcher, letsOtherExceptionsThrough)
{
    EXPECT_THROW(TLExceptionCatcher::run([] { throw Error(u"other"_s); }, nullptr), Error);
}

} // namespace talmo::test
