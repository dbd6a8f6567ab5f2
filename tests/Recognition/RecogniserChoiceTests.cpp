#include "Recognition/RecogniserChoice.h"

#include "Support/Printing.h"

#include <gtest/gtest.h>

namespace talmo::test {

TEST(RecogniserChoice, storesOneOrTwoEngines)
{
    EXPECT_EQ(RecogniserChoice::of(u"automatic"_s), RecogniserChoice());
    EXPECT_EQ(RecogniserChoice::of(QString()), RecogniserChoice());
    EXPECT_EQ(RecogniserChoice::of(u"parakeet-v2"_s), (RecogniserChoice{u"parakeet-v2"_s, u"automatic"_s}));
    for (const auto &stored : {u"automatic"_s, u"parakeet-v2"_s, u"kroko-en+parakeet-v2"_s, u"none+automatic"_s}) {
        EXPECT_EQ(RecogniserChoice::of(stored).stored(), stored);
    }
    EXPECT_EQ(RecogniserChoice::of(u"kroko-en+parakeet-v2"_s).live, u"kroko-en"_s);
    EXPECT_EQ(RecogniserChoice::of(u"kroko-en+parakeet-v2"_s).final, u"parakeet-v2"_s);
    EXPECT_EQ((RecogniserChoice{u"embedded"_s, u"automatic"_s}).stored(), u"embedded"_s);
}

} // namespace talmo::test
