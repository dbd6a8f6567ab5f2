#include "Settings/DictionaryText.h"

#include "Support/Printing.h"

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

using Entries = QList<DictionaryEntry>;

} // namespace

TEST(DictionaryText, readsWhatItWrites)
{
    const Entries entries{{u"Talmo"_s, {}},           {u"Nguyen"_s, u"win"_s},         {u"New York"_s, {}},
                          {u"a = b"_s, {}},           {u"c = d"_s, u"see equals d"_s}, {u"#hashtag"_s, {}},
                          {u"Straße"_s, u"strasse"_s}};
    EXPECT_EQ(readDictionaryText(dictionaryText(entries)), entries);
    EXPECT_EQ(dictionaryText({{u"Talmo"_s, {}}, {u"Nguyen"_s, u"win"_s}}), u"Talmo\nNguyen = win\n"_s);
}

TEST(DictionaryText, skipsBlankLinesAndComments)
{
    EXPECT_EQ(readDictionaryText(u"# names\r\n\r\n  Nguyen = win \r\n   \r\nTalmo\r\n"_s),
              (Entries{{u"Nguyen"_s, u"win"_s}, {u"Talmo"_s, {}}}));
    EXPECT_EQ(readDictionaryText({}), Entries());
    EXPECT_EQ(readDictionaryText(u" = win"_s), Entries()) << "a sound without a word";
}

TEST(DictionaryText, decodesUtf8AndMarkedUtf16Only)
{
    EXPECT_EQ(decodeText("Stra\xc3\x9f"
                         "e"),
              u"Straße"_s);
    EXPECT_EQ(decodeText("\xef\xbb\xbfword"), u"word"_s);
    EXPECT_EQ(decodeText(QByteArray("\xff\xfew\0o\0", 6)), u"wo"_s);
    EXPECT_EQ(decodeText("Stra\xdf"
                         "e"),
              std::nullopt);
    EXPECT_EQ(decodeText(QByteArray("PK\0\0", 4)), std::nullopt);
    EXPECT_EQ(decodeText({}), QString());
}

TEST(DictionaryText, addsOnlyNewWordsInOrder)
{
    EXPECT_EQ(withWordsOf({{u"two"_s, {}}, {u"One"_s, {}}, {u"three"_s, {}}, {u"three"_s, {}}}, {u"one"_s, u"two"_s}),
              (QStringList{u"one"_s, u"two"_s, u"One"_s, u"three"_s}));
}

TEST(DictionaryText, pronunciationReplacesItsLineAndLeavesTheOthers)
{
    const QString file = u"# mine\nNguyen = new yen\n\nSiobhan=shiv awn\n"_s;
    EXPECT_EQ(withPronunciation(file, {u"nguyen"_s, u"win"_s}), u"# mine\nnguyen = win\n\nSiobhan=shiv awn\n"_s);
    EXPECT_EQ(withPronunciation(file, {u"Siobhan"_s, {}}), u"# mine\nNguyen = new yen\n\n"_s);
    EXPECT_EQ(withPronunciation(file, {u"Xu"_s, u"shoe"_s}), file + u"Xu = shoe\n"_s);
    EXPECT_EQ(withPronunciation(u"Nguyen = win"_s, {u"Xu"_s, u"shoe"_s}), u"Nguyen = win\nXu = shoe\n"_s);
    EXPECT_EQ(withPronunciation({}, {u"Xu"_s, u"shoe"_s}), u"Xu = shoe\n"_s);
    EXPECT_EQ(withPronunciation(file, {u"Xu"_s, {}}), file);
    EXPECT_EQ(withPronunciation(u"Xu = one\nXu = two\n"_s, {u"Xu"_s, u"shoe"_s}), u"Xu = shoe\n"_s);
}

} // namespace talmo::test
