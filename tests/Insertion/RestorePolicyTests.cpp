#include "Insertion/RestorePolicy.h"

#include <gtest/gtest.h>

namespace talmo::test {

using namespace std::chrono_literals;
using Verdict = RestorePolicy::Verdict;

namespace {

class RestorePolicyTest : public testing::Test {
protected:
    static constexpr quint32 target = 1;
    static constexpr quint32 other = 2;
    const RestorePolicy::Time start{1h};
    RestorePolicy policy;
};

} // namespace

TEST_F(RestorePolicyTest, waitsUntilShortcutIsPosted)
{
    policy.begin();
    EXPECT_EQ(policy.verdict(start + 1h, false), Verdict::Wait);
}

TEST_F(RestorePolicyTest, givesUpExactlyAtReadTimeout)
{
    policy.post(start, target);
    EXPECT_EQ(policy.verdict(start + 1500ms - 1ns, false), Verdict::Wait);
    EXPECT_EQ(policy.verdict(start + 1500ms, false), Verdict::GiveUp);
    EXPECT_EQ(policy.nextLook(start), start + 1500ms);
}

TEST_F(RestorePolicyTest, restoresOnceReaderIsQuiet)
{
    policy.post(start, target);
    policy.noteRequest(start + 10ms, target, true);
    EXPECT_TRUE(policy.isRead());
    EXPECT_EQ(policy.verdict(start + 130ms - 1ns, false), Verdict::Wait);
    EXPECT_EQ(policy.verdict(start + 130ms, false), Verdict::Restore);
    EXPECT_EQ(policy.nextLook(start + 20ms), start + 130ms);
}

TEST_F(RestorePolicyTest, anyReaderRequestExtendsQuietTime)
{
    policy.post(start, target);
    policy.noteRequest(start + 10ms, target, true);
    policy.noteRequest(start + 60ms, target, false);
    EXPECT_EQ(policy.verdict(start + 130ms, false), Verdict::Wait);
    EXPECT_EQ(policy.verdict(start + 180ms, false), Verdict::Restore);
}

TEST_F(RestorePolicyTest, ignoresOtherReadersAndTargetQueries)
{
    policy.post(start, target);
    policy.noteRequest(start, other, true);
    policy.noteRequest(start, target, false);
    EXPECT_FALSE(policy.isRead());
    EXPECT_EQ(policy.verdict(start + 1500ms, false), Verdict::GiveUp);
}

TEST_F(RestorePolicyTest, ignoresReadsBeforeShortcut)
{
    policy.begin();
    policy.noteRequest(start, target, true);
    policy.post(start, target);
    EXPECT_FALSE(policy.isRead());
}

TEST_F(RestorePolicyTest, waitsDuringIncrementalTransfer)
{
    policy.post(start, target);
    policy.noteRequest(start, target, true);
    EXPECT_EQ(policy.verdict(start + 10s, true), Verdict::Wait);
    EXPECT_GT(policy.nextLook(start + 10s), start + 10s);
}

TEST_F(RestorePolicyTest, countsEarlyImporterReadsAndWaitsFullTimeout)
{
    policy.begin();
    policy.noteRequest(start, other, true);
    policy.postToImporter(start);
    EXPECT_TRUE(policy.isRead());
    EXPECT_EQ(policy.verdict(start + 1500ms - 1ns, false), Verdict::Wait);
    EXPECT_EQ(policy.verdict(start + 1500ms, false), Verdict::Restore);
}

TEST_F(RestorePolicyTest, countsAnyReadWhenReaderIsUnknown)
{
    policy.post(start, std::nullopt);
    policy.noteRequest(start, other, true);
    EXPECT_TRUE(policy.isRead());
}

} // namespace talmo::test
