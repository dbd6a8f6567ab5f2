#include "Base/Text.h"

#include "Support/Printing.h"

#include <gtest/gtest.h>

namespace talmo::test {

TEST(Text, spacesAreSpaceSeparatorsAndTab)
{
    for (const char32_t space :
         {U' ', U'\t', U'\u00A0', U'\u1680', U'\u2000', U'\u200A', U'\u202F', U'\u205F', U'\u3000'}) {
        EXPECT_TRUE(Text::isSpace(space)) << static_cast<unsigned>(space);
        EXPECT_TRUE(Text::isWhitespaceOrNewline(space)) << static_cast<unsigned>(space);
    }
    for (const char32_t other : {U'\n', U'\r', U'\u0085', U'\u2028', U'\u200B', U'\uFEFF', U'a'}) {
        EXPECT_FALSE(Text::isSpace(other)) << static_cast<unsigned>(other);
    }
}

TEST(Text, newlinesAreAllLineBreaks)
{
    for (const char32_t newline : {U'\n', U'\v', U'\f', U'\r', U'\u0085', U'\u2028', U'\u2029'}) {
        EXPECT_TRUE(Text::isWhitespaceOrNewline(newline)) << static_cast<unsigned>(newline);
    }
    for (const char32_t other : {U'\u200B', U'\u180E', U'\u0008', U'\u000E', U'.'}) {
        EXPECT_FALSE(Text::isWhitespaceOrNewline(other)) << static_cast<unsigned>(other);
    }
}

TEST(Text, trimsBothEndsOnly)
{
    EXPECT_EQ(Text::trimSpaces(u" \t\u00A0a b\u3000 "_s), u"a b"_s);
    EXPECT_EQ(Text::trimSpaces(u"\n a \n"_s), u"\n a \n"_s);
    EXPECT_EQ(Text::trimWhitespaceAndNewlines(u"\r\n\t a\nb \u2029"_s), u"a\nb"_s);
    EXPECT_EQ(Text::trimWhitespaceAndNewlines(u" \n "_s), QString());
    EXPECT_EQ(Text::trimSpaces(QString()), QString());
}

TEST(Text, countsGraphemeClusters)
{
    EXPECT_EQ(Text::characterCount(QString()), 0);
    EXPECT_EQ(Text::characterCount(u"abc"_s), 3);
    EXPECT_EQ(Text::characterCount(u"e\u0301a"_s), 2);
    EXPECT_EQ(Text::characterCount(u"\U0001F1E9\U0001F1EA"_s), 1);
    EXPECT_EQ(Text::characterCount(u"\U0001F600\U0001F600"_s), 2);
}

TEST(Text, findsFirstCharacter)
{
    EXPECT_EQ(Text::firstCharacterLength(QString()), 0);
    EXPECT_EQ(Text::firstCharacterLength(u"abc"_s), 1);
    EXPECT_EQ(Text::firstCharacterLength(u"a"_s), 1);
    EXPECT_EQ(Text::firstCharacterLength(u"\r\n"_s), 2);
    EXPECT_EQ(Text::firstCharacterLength(u"e\u0301a"_s), 2);
    EXPECT_EQ(Text::firstCharacterLength(u"\U0001F600a"_s), 2);
    EXPECT_EQ(Text::firstCharacterLength(QString(QChar(0xD800))), 1);
}

TEST(Text, usesFullUpperCaseMapping)
{
    EXPECT_EQ(Text::uppercased(u"ß"_s), u"SS"_s);
    EXPECT_EQ(Text::uppercased(u"ŉ"_s), u"ʼN"_s);
    EXPECT_EQ(Text::uppercased(u"é"_s), u"É"_s);
}

TEST(Text, composedAndDecomposedAreEqual)
{
    EXPECT_TRUE(Text::equal(u"Caf\u00E9"_s, u"Cafe\u0301"_s));
    EXPECT_FALSE(Text::equal(u"Café"_s, u"café"_s));
    EXPECT_FALSE(Text::equal(u"a"_s, u"a "_s));
}

} // namespace talmo::test
