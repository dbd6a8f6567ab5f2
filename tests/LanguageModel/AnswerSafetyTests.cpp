#include "LanguageModel/AnswerSafety.h"

#include "Base/Error.h"
#include "Support/Printing.h"

#include <gtest/gtest.h>

namespace talmo::test {

TEST(WithoutControls, keepsTextTabsAndLineFeeds)
{
    for (const auto &text : {u"Grüße,\n\t你好 👩‍👩‍👧‍👦 — “ok”."_s, u"می‌خواهم"_s,
                             u"שלום‎ 1‏"_s, QString()}) {
        EXPECT_EQ(withoutControls(text), text);
    }
}

TEST(WithoutControls, normalisesLineEndsToLineFeed)
{
    EXPECT_EQ(withoutControls(u"a\r\nb\rc\vd\fe\u0085f\u2028g\u2029h\r\r\n\n"_s), u"a\nb\nc\nd\ne\nf\ng\nh\n\n\n"_s);
}

TEST(WithoutControls, stripsControlAndInvisibleCharacters)
{
    EXPECT_EQ(withoutControls(u"a\u0007b\u001b[2Jc\u007f\u009bd"_s + QChar(u'\0') + u"e"_s), u"ab[2Jcde"_s);
    EXPECT_EQ(withoutControls(u"\u202ereversed\u202c \u2066isolated\u2069"_s), u"reversed isolated"_s);
    EXPECT_EQ(withoutControls(u"\ufeffa\u200bb\u2060c\ufff9d\uffff"_s), u"abcd"_s);
    EXPECT_EQ(withoutControls(u"a\U000e0041\U000e007fb"_s), u"ab"_s);
    EXPECT_EQ(withoutControls(u"a"_s + QChar(0xD800) + u"b"_s + QChar(0xDC00)), u"ab"_s);
}

TEST(RequireProportion, rejectsTextMuchLongerThanOriginal)
{
    const QString prompt = u"x"_s.repeated(1000);
    EXPECT_NO_THROW(requireProportion(u"x"_s.repeated(600), {}));
    EXPECT_THROW(requireProportion(u"x"_s.repeated(601), {}), Error);
    EXPECT_NO_THROW(requireProportion(u"x"_s.repeated(3600), prompt));
    EXPECT_THROW(requireProportion(u"x"_s.repeated(3601), prompt), Error);
}

} // namespace talmo::test
