#include "Recognition/PocketSphinx/UtterancePublisher.h"

#include "Support/Printing.h"

#include <gmock/gmock.h>

namespace talmo::test {

using testing::ElementsAre;

namespace {

class UtterancePublisherTest : public testing::Test {
protected:
    std::vector<SpeechResult> published;
    UtterancePublisher publisher{[this](SpeechResult result) { published.push_back(std::move(result)); }};
};

} // namespace

TEST_F(UtterancePublisherTest, repeatsNoVolatileText)
{
    publisher.publishVolatile(QString());
    publisher.publishVolatile(u"one"_s);
    publisher.publishVolatile(u"one"_s);
    publisher.publishVolatile(u"one two"_s);
    EXPECT_THAT(published, ElementsAre(SpeechResult{u"one"_s, false}, SpeechResult{u"one two"_s, false}));
    EXPECT_FALSE(publisher.hasDecodedWords());
}

TEST_F(UtterancePublisherTest, emptyFinalTextWithdrawsVolatileText)
{
    publisher.publishFinal(QString());
    publisher.publishVolatile(u"one"_s);
    publisher.publishFinal(QString());
    EXPECT_THAT(published, ElementsAre(SpeechResult{u"one"_s, false}, SpeechResult{QString(), false}));
    EXPECT_FALSE(publisher.hasDecodedWords());
}

TEST_F(UtterancePublisherTest, nextUtteranceBeginsAfresh)
{
    publisher.publishVolatile(u"one"_s);
    publisher.publishFinal(u"one"_s);
    publisher.publishVolatile(u"one"_s);
    EXPECT_THAT(published, ElementsAre(SpeechResult{u"one"_s, false}, SpeechResult{u"one"_s, true},
                                       SpeechResult{u"one"_s, false}));
    EXPECT_TRUE(publisher.hasDecodedWords());
}

} // namespace talmo::test
