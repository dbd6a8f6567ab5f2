#include "Platform/Linux/Session/DesktopAppearance.h"

#include "Support/Printing.h"

#include <gtest/gtest.h>

#include <QDBusVariant>

namespace talmo::test {

TEST(DesktopAppearance, readsColourSchemeFromPortal)
{
    EXPECT_EQ(colourSchemeFromPortal(QVariant(1U)), ColourScheme::Dark);
    EXPECT_EQ(colourSchemeFromPortal(QVariant(2U)), ColourScheme::Light);
    EXPECT_EQ(colourSchemeFromPortal(QVariant(0U)), std::nullopt);
    EXPECT_EQ(colourSchemeFromPortal(QVariant(17U)), std::nullopt);
    EXPECT_EQ(colourSchemeFromPortal(QVariant(u"dark"_s)), std::nullopt);
    const auto wrapped = QVariant::fromValue(QDBusVariant(QVariant::fromValue(QDBusVariant(QVariant(1U)))));
    EXPECT_EQ(colourSchemeFromPortal(wrapped), ColourScheme::Dark);
}

} // namespace talmo::test
