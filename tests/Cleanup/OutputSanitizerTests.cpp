#include "Cleanup/OutputSanitizer.h"

#include "Base/Text.h"
#include "Support/Printing.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace talmo::test {

namespace {

struct Row {
    QString answer;
    QString expected;
};

void check(const std::vector<Row> &rows)
{
    for (const auto &row : rows) {
        EXPECT_EQ(sanitize(row.answer), row.expected) << row.answer.toStdString();
    }
}

} // namespace

TEST(OutputSanitizer, trims)
{
    check({{u""_s, u""_s},
           {u" \n\t Hello. \u2028\n"_s, u"Hello."_s},
           {u"Hello."_s, u"Hello."_s},
           {u"\u00A0Hello.\u3000"_s, u"Hello."_s}});
}

TEST(OutputSanitizer, removesLeadingArrow)
{
    check({{u"-> Could you please send me the file?"_s, u"Could you please send me the file?"_s},
           {u"  ->   Hello."_s, u"Hello."_s},
           {u"->Hello."_s, u"->Hello."_s},
           {u"-> -> Hello."_s, u"-> Hello."_s},
           {u"- > Hello."_s, u"- > Hello."_s},
           {u"Hello -> world."_s, u"Hello -> world."_s},
           {u"-> "_s, u"->"_s}}); // Trimmed first, so the arrow has lost its space.
}

TEST(OutputSanitizer, removesPreambleParagraph)
{
    for (const auto &opening : {u"Sure,"_s, u"sure!"_s, u"SURE -"_s, u"Certainly,"_s, u"Certainly!"_s, u"Of course,"_s,
                                u"Of course!"_s, u"Here's"_s, u"Here is"_s, u"Here you go"_s}) {
        EXPECT_EQ(sanitize(opening + u" the edited text:\n\nHello there."_s), u"Hello there."_s)
            << opening.toStdString();
    }
    check({{u"Sure, here's the edited text:\n\nHello there."_s, u"Hello there."_s},
           {u"Sure, hello there."_s, u"Sure, hello there."_s},
           {u"Sure, here it is:\nHello there."_s, u"Sure, here it is:\nHello there."_s},
           {u"Sure,\n\nOf course,\n\nHello."_s, u"Of course,\n\nHello."_s}, // At most one preamble is removed.
           {u"Hello.\n\nSure, why not."_s, u"Hello.\n\nSure, why not."_s},
           {u"Surely not.\n\nHello."_s, u"Surely not.\n\nHello."_s},
           {u"Sure.\n\nHello."_s, u"Sure.\n\nHello."_s},
           {u"Sure,\n\n\n\n Hello."_s, u"Hello."_s},
           {u"Sure, \n \nHello."_s, u"Sure, \n \nHello."_s}, // The line breaks are not adjacent.
           {u"Sure,\r\n\r\nHello."_s, u"Sure,\r\n\r\nHello."_s},
           {u"I'm sure, yes.\n\nHello."_s, u"I'm sure, yes.\n\nHello."_s}});
}

TEST(OutputSanitizer, removesTranscriptTags)
{
    check({{u"<transcript>Hello.</transcript>"_s, u"Hello."_s},
           {u"<transcript>Hello."_s, u"<transcript>Hello."_s},
           {u"Hello.</transcript>"_s, u"Hello.</transcript>"_s},
           {u"<Transcript>Hello.</Transcript>"_s, u"<Transcript>Hello.</Transcript>"_s},
           {u"<transcript></transcript>"_s, u""_s},
           {u"<transcript> Hello. </transcript>"_s, u"Hello."_s}});
}

TEST(OutputSanitizer, removesCodeFence)
{
    check({{u"```\nHello.\n```"_s, u"Hello."_s},
           {u"```text\nHello.\n```"_s, u"text\nHello."_s}, // The language tag stays.
           {u"````Hello.``"_s, u"Hello."_s},
           {u"```Hello `code`"_s, u"Hello `code"_s},
           {u"``Hello.``"_s, u"``Hello.``"_s},
           {u"Hello.```"_s, u"Hello.```"_s},
           {u"```"_s, u""_s}});
}

TEST(OutputSanitizer, removesEnclosingQuotationMarks)
{
    check({{u"\"Hello.\""_s, u"Hello."_s},
           {u"\""_s, u"\""_s},
           {u"\"\""_s, u""_s},
           {u"\"Hello."_s, u"\"Hello."_s},
           {u"\"\"Hello.\"\""_s, u"\"Hello.\""_s},
           {u"\u201CHello.\u201D"_s, u"\u201CHello.\u201D"_s},
           {u"'Hello.'"_s, u"'Hello.'"_s},
           {u"She said \"no\""_s, u"She said \"no\""_s},   // Only one, at the end.
           {u"\"No\" she said"_s, u"\"No\" she said"_s},   // Only one, at the start.
           {u"\"Yes\" and \"no\""_s, u"Yes\" and \"no"_s}, // Any pair, whether or not they match each other.
           {u"\u00ABHello.\u00BB"_s, u"\u00ABHello.\u00BB"_s},
           {u"\u201EHello.\u201C"_s, u"\u201EHello.\u201C"_s},
           {u"\u2018Hello.\u2019"_s, u"\u2018Hello.\u2019"_s},
           {u"\uFF02Hello.\uFF02"_s, u"\uFF02Hello.\uFF02"_s},
           {u"\"Hello.\u201D"_s, u"\"Hello.\u201D"_s},
           {u"\"\"\""_s, u"\""_s},
           {u"\"\u2028Hello.\u2029\""_s, u"Hello."_s},
           {u"\" Hello. \""_s, u"Hello."_s}});
}

TEST(OutputSanitizer, appliesStepsInOrder)
{
    check({{u"-> Sure, here you go:\n\n<transcript>```\"Hello.\"```</transcript>"_s, u"Hello."_s},
           // Fences are removed before quotation marks: quotes inside are removed, quotes outside hide the fence.
           {u"```\"Hello.\"```"_s, u"Hello."_s},
           {u"\"```Hello.```\""_s, u"```Hello.```"_s},
           // White space inside the fence hides the quotation marks, since nothing is trimmed in between.
           {u"```\n\"Hello.\"\n```"_s, u"\"Hello.\""_s},
           // Tags are removed before fences.
           {u"```<transcript>Hello.</transcript>```"_s, u"<transcript>Hello.</transcript>"_s},
           {u"<transcript>-> Hello.</transcript>"_s, u"-> Hello."_s},
           {u"Sure,\n\n-> Hello."_s, u"-> Hello."_s}});
}

TEST(OutputSanitizer, leavesPlainTextUnchanged)
{
    check({{u"- milk\n- eggs"_s, u"- milk\n- eggs"_s},
           {u"Hello.\n\nWorld."_s, u"Hello.\n\nWorld."_s},
           {u"Use `ls` and \"quotes\" here."_s, u"Use `ls` and \"quotes\" here."_s}});
}

/// Without marks, a second pass changes nothing. With marks it may remove more, since each kind is removed once and in
/// order: see the rows above.
TEST(OutputSanitizer, isIdempotentOnUnmarkedText)
{
    std::mt19937 random(4711); // NOLINT(cert-msc51-cpp): a fixed seed, for reproducible texts.
    const std::vector<QString> pieces{u"hello"_s,  u" "_s,  u"\n"_s, u"\n\n"_s,   u"- "_s, u"."_s,
                                      u"you're"_s, u"\t"_s, u">"_s,  u"\u00E4"_s, u"<"_s,  u"`code` x"_s};
    for (int round = 0; round < 2000; ++round) {
        QString text = u"x"_s; // So that no mark is at the front.
        for (auto count = random() % 12; count > 0; --count) {
            text += pieces[random() % pieces.size()];
        }
        const QString once = sanitize(text);
        EXPECT_EQ(once, Text::trimWhitespaceAndNewlines(text));
        EXPECT_EQ(sanitize(once), once);
    }
}

/// Text is only removed from the ends, and at most one preamble paragraph; the rest is a substring of the answer.
TEST(OutputSanitizer, resultIsTrimmedSubstringOfAnswer)
{
    std::mt19937 random(815); // NOLINT(cert-msc51-cpp)
    const std::vector<QString> pieces{
        u"-> "_s,  u"Sure,"_s, u"\n\n"_s, u"<transcript>"_s, u"</transcript>"_s, u"```"_s, u"\""_s,
        u"word"_s, u" "_s,     u"\n"_s};
    for (int round = 0; round < 5000; ++round) {
        QString text;
        for (auto count = random() % 9; count > 0; --count) {
            text += pieces[random() % pieces.size()];
        }
        const QString result = sanitize(text);
        EXPECT_TRUE(text.contains(result)) << text.toStdString();
        EXPECT_EQ(result, Text::trimWhitespaceAndNewlines(result));
    }
}

} // namespace talmo::test
