#include "LanguageModel/EditingPace.h"

#include "Support/Printing.h"

#include <gtest/gtest.h>

namespace talmo::test {

using namespace std::chrono_literals;

namespace {

const QString model = QStringLiteral("qwen2.5:7b");

EditingPace paceAfter(std::initializer_list<Duration> durations)
{
    EditingPace pace;
    for (const auto duration : durations) {
        pace.note(model, duration);
    }
    return pace;
}

} // namespace

TEST(EditingPace, thirdSlowEditMakesModelSlow)
{
    EXPECT_FALSE(EditingPace().isSlow(model));
    EXPECT_FALSE(paceAfter({6s, 6s}).isSlow(model));
    EXPECT_TRUE(paceAfter({6s, 6s, 6s}).isSlow(model));
    EXPECT_TRUE(paceAfter({6s, 1s, 6s, 1s, 1s, 6s}).isSlow(model)) << "fast ones in between change nothing";
}

TEST(EditingPace, editOfExactlyTheLimitIsFast)
{
    EXPECT_FALSE(paceAfter({5s, 5s, 5s}).isSlow(model));
    EXPECT_TRUE(paceAfter({5s + 1ns, 5s + 1ns, 5s + 1ns}).isSlow(model));
}

TEST(EditingPace, forgetsAllButLastTenEdits)
{
    EXPECT_TRUE(paceAfter({6s, 6s, 6s, 1s, 1s, 1s, 1s, 1s, 1s, 1s}).isSlow(model));
    EXPECT_FALSE(paceAfter({6s, 6s, 6s, 1s, 1s, 1s, 1s, 1s, 1s, 1s, 1s}).isSlow(model));
}

TEST(EditingPace, otherModelStartsFromNothing)
{
    auto pace = paceAfter({6s, 6s, 6s});
    EXPECT_FALSE(pace.isSlow(u"qwen2.5:0.5b"_s));
    pace.note(u"qwen2.5:0.5b"_s, 1s);
    EXPECT_FALSE(pace.isSlow(model));
    pace.note(model, 6s);
    EXPECT_FALSE(pace.isSlow(model));
}

} // namespace talmo::test
