#include "Base/Error.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace talmo::test {

TEST(Error, describesOwnAndForeignExceptions)
{
    EXPECT_EQ(localizedDescription(std::make_exception_ptr(Error(QStringLiteral("Schön.")))), QStringLiteral("Schön."));
    EXPECT_EQ(localizedDescription(std::make_exception_ptr(std::runtime_error("plain"))), QStringLiteral("plain"));
    EXPECT_FALSE(localizedDescription(std::make_exception_ptr(7)).isEmpty());
    EXPECT_STREQ(Error(QStringLiteral("é")).what(), "\xc3\xa9");
}

} // namespace talmo::test
