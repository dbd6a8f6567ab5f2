#include "Platform/Linux/X11/Clipboard/IncrementalValue.h"

#include <gtest/gtest.h>

namespace talmo::test {

namespace {

using State = IncrementalValue::State;
constexpr xcb_atom_t text = 31;
constexpr xcb_atom_t other = 32;

} // namespace

TEST(IncrementalValue, joinsPiecesUntilAnEmptyOne)
{
    IncrementalValue value;
    EXPECT_EQ(value.append({"abc", text, 8}), State::Incomplete);
    EXPECT_EQ(value.append({"de", text, 8}), State::Incomplete);
    EXPECT_EQ(value.append({"", text, 8}), State::Complete);
    EXPECT_EQ(value.take(), (SelectionValue{"abcde", text, 8}));
}

TEST(IncrementalValue, takesNothingBeforeTheEnd)
{
    IncrementalValue value;
    value.append({"abc", text, 8});
    EXPECT_EQ(value.take(), SelectionValue());
    EXPECT_EQ(value.size(), 3);
}

TEST(IncrementalValue, endMayHaveAnyTypeAndUnit)
{
    IncrementalValue value;
    value.append({"abcd", text, 32});
    EXPECT_EQ(value.append({"", other, 8}), State::Complete);
    EXPECT_EQ(value.take(), (SelectionValue{"abcd", text, 32}));
}

TEST(IncrementalValue, emptyValueTakesTypeOfLastPiece)
{
    IncrementalValue value;
    EXPECT_EQ(value.append({"", other, 16}), State::Complete);
    EXPECT_EQ(value.take(), (SelectionValue{"", other, 16}));
}

TEST(IncrementalValue, changedTypeOrUnitIsMalformed)
{
    IncrementalValue changedType;
    changedType.append({"ab", text, 8});
    EXPECT_EQ(changedType.append({"ab", other, 8}), State::Malformed);
    EXPECT_EQ(changedType.size(), 0);
    IncrementalValue changedUnit;
    changedUnit.append({"ab", text, 8});
    EXPECT_EQ(changedUnit.append({"ab", text, 16}), State::Malformed);
}

TEST(IncrementalValue, partialUnitIsMalformed)
{
    EXPECT_EQ(IncrementalValue().append({"abc", text, 16}), State::Malformed);
    EXPECT_EQ(IncrementalValue().append({"abcdef", text, 32}), State::Malformed);
    EXPECT_EQ(IncrementalValue().append({"abcdef", text, 0}), State::Malformed);
}

TEST(IncrementalValue, limitIsInclusive)
{
    IncrementalValue value(5);
    EXPECT_EQ(value.append({"abc", text, 8}), State::Incomplete);
    EXPECT_EQ(value.append({"de", text, 8}), State::Incomplete);
    EXPECT_EQ(value.append({"f", text, 8}), State::TooLarge);
    EXPECT_EQ(value.size(), 0);
    EXPECT_EQ(value.take(), SelectionValue());
}

TEST(IncrementalValue, piecesAfterEndAreIgnored)
{
    IncrementalValue value;
    value.append({"abc", text, 8});
    value.append({"", text, 8});
    EXPECT_EQ(value.append({"late", text, 8}), State::Complete);
    EXPECT_EQ(value.take().data, "abc");
    IncrementalValue failed(1);
    failed.append({"abc", text, 8});
    EXPECT_EQ(failed.append({"", text, 8}), State::TooLarge);
}

} // namespace talmo::test
