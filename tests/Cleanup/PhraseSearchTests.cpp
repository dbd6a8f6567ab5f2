#include "Cleanup/PhraseSearch.h"

#include "Support/Printing.h"

#include <gtest/gtest.h>

#include <random>

namespace talmo::test {

TEST(PhraseSearch, findsPhraseInAnyCaseFromPositionOn)
{
    const PhraseSearch search(u"new line");
    EXPECT_EQ(search.indexIn(u"a New LINE, new line"), 2);
    EXPECT_EQ(search.indexIn(u"a New LINE, new line", 3), 12);
    EXPECT_EQ(search.indexIn(u"a New LINE, new line", 13), -1);
    EXPECT_EQ(search.indexIn(u"new lin"), -1);
    EXPECT_EQ(search.indexIn(u""), -1);
    EXPECT_EQ(search.indexIn(u"new line"), 0);
}

TEST(PhraseSearch, charactersThatFoldIntoAsciiMatch)
{
    EXPECT_EQ(PhraseSearch(u"as a list").indexIn(u"a\u017F a li\u017Ft"), 0);
    EXPECT_EQ(PhraseSearch(u"make this").indexIn(u"ma\u212Ae this"), 0);
    EXPECT_EQ(PhraseSearch(u"list").indexIn(u"lı\u0131st l\u00ECst"), -1);
}

TEST(PhraseSearch, agreesWithQtOnRandomTexts)
{
    std::mt19937 random(1); // NOLINT(cert-msc51-cpp): the same texts in every run.
    const QStringView alphabet = u"abnNew LlIinNeE st\u017F\u212A\u0131é\xd83c\xdf89";
    for (const QStringView phrase :
         {QStringView(u"new line"), QStringView(u"as a list"), QStringView(u"nn"), QStringView(u"ene")}) {
        const PhraseSearch search(phrase);
        for (int round = 0; round < 20000; ++round) {
            QString text;
            const auto length = static_cast<qsizetype>(random() % 24);
            while (text.size() < length) {
                text += alphabet[static_cast<qsizetype>(random() % static_cast<unsigned>(alphabet.size()))];
            }
            if (round % 3 == 0) {
                text.insert(static_cast<qsizetype>(random() % static_cast<unsigned>(text.size() + 1)), phrase);
            }
            ASSERT_EQ(search.indexIn(text), text.indexOf(phrase, 0, Qt::CaseInsensitive)) << qPrintable(text);
        }
    }
}

} // namespace talmo::test
