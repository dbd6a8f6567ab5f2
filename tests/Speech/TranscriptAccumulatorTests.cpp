#include "Speech/TranscriptAccumulator.h"

#include "Support/Printing.h"

#include <gtest/gtest.h>

namespace talmo::test {

namespace {

TranscriptAccumulator folded(std::initializer_list<std::pair<QString, bool>> results)
{
    TranscriptAccumulator accumulator;
    for (const auto &[text, isFinal] : results) {
        accumulator.apply(text, isFinal);
    }
    return accumulator;
}

} // namespace

TEST(TranscriptAccumulator, noResultsYieldEmptyText)
{
    EXPECT_EQ(folded({}).combinedText(), QString());
}

TEST(TranscriptAccumulator, volatileResultReplacesPreviousOne)
{
    const auto text = folded({{u"hello"_s, false}, {u"hello world"_s, false}});
    EXPECT_EQ(text.volatileText(), u"hello world"_s);
    EXPECT_EQ(text.combinedText(), u"hello world"_s);
}

TEST(TranscriptAccumulator, finalResultReplacesVolatileOne)
{
    const auto text = folded({{u"hello wor"_s, false}, {u"hello world"_s, true}});
    EXPECT_EQ(text.finalizedText(), u"hello world"_s);
    EXPECT_EQ(text.volatileText(), QString());
    EXPECT_EQ(text.combinedText(), u"hello world"_s);
}

TEST(TranscriptAccumulator, joinsFinalsAndTailWithSpaces)
{
    EXPECT_EQ(folded({{u"one"_s, true}, {u"two"_s, true}, {u"thr"_s, false}}).combinedText(), u"one two thr"_s);
}

TEST(TranscriptAccumulator, emptyFinalLeavesTrailingSpace)
{
    const auto text = folded({{u"one"_s, true}, {QString(), true}});
    EXPECT_EQ(text.finalizedText(), u"one "_s);
    EXPECT_EQ(text.combinedText(), u"one "_s);
}

TEST(TranscriptAccumulator, emptyFirstFinalAddsNoSeparator)
{
    EXPECT_EQ(folded({{QString(), true}}).finalizedText(), QString());
    EXPECT_EQ(folded({{QString(), true}, {u"one"_s, true}}).finalizedText(), u"one"_s);
}

TEST(TranscriptAccumulator, singleSpaceIsNotEmpty)
{
    EXPECT_EQ(folded({{u" "_s, false}}).combinedText(), u" "_s);
}

TEST(TranscriptAccumulator, keepsSpacesBetweenResults)
{
    EXPECT_EQ(folded({{u"one"_s, true}, {u" two"_s, true}}).combinedText(), u"one  two"_s);
}

} // namespace talmo::test
