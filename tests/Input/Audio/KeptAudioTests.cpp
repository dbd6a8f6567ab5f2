#include "Input/Audio/KeptAudio.h"

#include <gtest/gtest.h>

namespace talmo::test {

namespace {

QByteArray all(KeptAudio &kept)
{
    QByteArray bytes;
    for (const auto &piece : kept.take()) {
        bytes += piece;
    }
    return bytes;
}

} // namespace

TEST(KeptAudio, returnsKeptAudioOnce)
{
    KeptAudio kept(100);
    kept.append("ab", 2);
    kept.append(nullptr, 2);
    kept.append("cd", 2);
    EXPECT_EQ(kept.byteCount(), 6);
    EXPECT_EQ(all(kept), QByteArray("ab\0\0cd", 6));
    EXPECT_EQ(all(kept), QByteArray());
    EXPECT_EQ(kept.byteCount(), 0);
}

TEST(KeptAudio, keepsTheNewestWhenFull)
{
    KeptAudio kept(5);
    kept.append("abc", 3);
    kept.append("defg", 4);
    EXPECT_EQ(kept.byteCount(), 5);
    EXPECT_EQ(all(kept), "cdefg");
    kept.append("abcdefgh", 8);
    EXPECT_EQ(all(kept), "defgh");
}

TEST(KeptAudio, isEmptyAfterClear)
{
    KeptAudio kept(5);
    kept.append("abc", 3);
    kept.clear();
    EXPECT_EQ(kept.byteCount(), 0);
    EXPECT_EQ(all(kept), QByteArray());
}

} // namespace talmo::test
