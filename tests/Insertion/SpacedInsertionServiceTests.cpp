#include "Insertion/SpacedInsertionService.h"

#include "Base/Completion.h"
#include "Base/Error.h"
#include "Base/Task.h"
#include "Support/FakeCursorWatch.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"

#include <gmock/gmock.h>

namespace talmo::test {

using testing::ElementsAre;

TEST(NeedsSpaceBetween, separatesSentences)
{
    EXPECT_TRUE(needsSpaceBetween(u"many years."_s, u"Our neighbours"_s));
    EXPECT_TRUE(needsSpaceBetween(u"the colour"_s, u"of the sea"_s));
    EXPECT_TRUE(needsSpaceBetween(u"(as above)"_s, u"but"_s));
    EXPECT_TRUE(needsSpaceBetween(u"she said “no.”"_s, u"Then"_s));
    EXPECT_TRUE(needsSpaceBetween(u"he said:"_s, u"“Yes.”"_s));
    EXPECT_TRUE(needsSpaceBetween(u"see"_s, u"(below)"_s));
    EXPECT_TRUE(needsSpaceBetween(u"great 🎉"_s, u"🎉 again"_s));
    EXPECT_TRUE(needsSpaceBetween(u"안녕하세요."_s, u"반갑습니다"_s));
}

TEST(NeedsSpaceBetween, nothingBeforeOrAfterNeedsNone)
{
    EXPECT_FALSE(needsSpaceBetween({}, u"Hello"_s));
    EXPECT_FALSE(needsSpaceBetween(u"Hello."_s, {}));
}

TEST(NeedsSpaceBetween, lineBreakOrSpaceIsEnough)
{
    EXPECT_FALSE(needsSpaceBetween(u"Dear Ann,\n"_s, u"Thank you"_s));
    EXPECT_FALSE(needsSpaceBetween(u"Hello."_s, u"\nThank you"_s));
    EXPECT_FALSE(needsSpaceBetween(u"Hello. "_s, u"Thank you"_s));
    EXPECT_FALSE(needsSpaceBetween(u"Hello.\u00a0"_s, u"Thank you"_s));
    EXPECT_FALSE(needsSpaceBetween(u"Hello."_s, u" Thank you"_s));
}

TEST(NeedsSpaceBetween, openingBracketOrQuoteNeedsNoneAfterIt)
{
    for (const auto &opening : {u"see ("_s, u"["_s, u"{"_s, u"“"_s, u"‘"_s, u"«"_s, u"„"_s, u"¿"_s, u"¡"_s}) {
        EXPECT_FALSE(needsSpaceBetween(opening, u"next"_s)) << opening.toStdString();
    }
}

TEST(NeedsSpaceBetween, punctuationNeedsNoneBeforeIt)
{
    for (const auto &mark :
         {u"."_s, u", and"_s, u";"_s, u":"_s, u"!"_s, u"?"_s, u"…"_s, u"%"_s, u")"_s, u"]"_s, u"”"_s}) {
        EXPECT_FALSE(needsSpaceBetween(u"word"_s, mark)) << mark.toStdString();
    }
}

TEST(NeedsSpaceBetween, scriptsWithoutSpacesNeedNone)
{
    EXPECT_FALSE(needsSpaceBetween(u"今日は。"_s, u"明日は"_s));
    EXPECT_FALSE(needsSpaceBetween(u"你好"_s, u"Linux"_s));
    EXPECT_FALSE(needsSpaceBetween(u"Linux"_s, u"カタカナ"_s));
    EXPECT_FALSE(needsSpaceBetween(u"真的！"_s, u"Yes"_s));
    EXPECT_FALSE(needsSpaceBetween(u"𠮷"_s, u"Yes"_s)) << "outside of the first plane";
    EXPECT_FALSE(needsSpaceBetween(u"สวัสดี"_s, u"ครับ"_s));
}

namespace {

class WritingService final : public TextInsertionService {
public:
    std::vector<QString> inserted;
    std::shared_ptr<Completion<void>> outcome;
    QCoro::Task<void> insert(QString text) override
    {
        inserted.push_back(text);
        return await<void>(outcome ? outcome->future() : makeReadyFuture());
    }
};

class SpacedInsertionServiceTest : public testing::Test {
protected:
    std::shared_ptr<WritingService> inner = std::make_shared<WritingService>();
    std::shared_ptr<FakeCursorWatch> cursor = std::make_shared<FakeCursorWatch>();
    bool isOn = true;
    SpacedInsertionService service{inner, cursor, [this] { return isOn; }};
    bool hasFailed = false;

    void insert(const QString &text) { finish(service.insert(text)); }
    void insertExactly(const QString &text) { finish(service.insertExactly(text)); }

private:
    void finish(QCoro::Task<void> task)
    {
        logEscapes(note(std::move(task), this));
        settle();
    }
    static QCoro::Task<void> note(QCoro::Task<void> task, SpacedInsertionServiceTest *self)
    {
        try {
            co_await task;
        } catch (const Error &) {
            self->hasFailed = true;
        }
    }
};

} // namespace

TEST_F(SpacedInsertionServiceTest, separatesDictationsAtTheSamePlace)
{
    insert(u"Hello."_s);
    insert(u"How are you?"_s);
    insert(u"Fine."_s);
    EXPECT_THAT(inner->inserted, ElementsAre(u"Hello."_s, u" How are you?"_s, u" Fine."_s));
}

TEST_F(SpacedInsertionServiceTest, insertsUnchangedOnceUserHasTypedOrClicked)
{
    insert(u"Hello."_s);
    cursor->touch();
    insert(u"How are you?"_s);
    insert(u"Fine."_s);
    EXPECT_THAT(inner->inserted, ElementsAre(u"Hello."_s, u"How are you?"_s, u" Fine."_s));
}

TEST_F(SpacedInsertionServiceTest, noticesInputDuringTheInsertion)
{
    inner->outcome = Completion<void>::make();
    insert(u"Hello."_s);
    cursor->touch();
    inner->outcome->finish();
    settle();
    insert(u"How are you?"_s);
    EXPECT_THAT(inner->inserted, ElementsAre(u"Hello."_s, u"How are you?"_s));
}

TEST_F(SpacedInsertionServiceTest, failedInsertionIsNotContinued)
{
    inner->outcome = Completion<void>::make();
    insert(u"Hello."_s);
    inner->outcome->fail(std::make_exception_ptr(Error(u"no window"_s)));
    settle();
    EXPECT_TRUE(hasFailed);
    inner->outcome.reset();
    insert(u"How are you?"_s);
    EXPECT_THAT(inner->inserted, ElementsAre(u"Hello."_s, u"How are you?"_s));
}

TEST_F(SpacedInsertionServiceTest, otherTextIsExactAndNotContinued)
{
    insert(u"Hello."_s);
    insertExactly(u"exact"_s);
    insert(u"How are you?"_s);
    EXPECT_THAT(inner->inserted, ElementsAre(u"Hello."_s, u"exact"_s, u"How are you?"_s));
}

TEST_F(SpacedInsertionServiceTest, watchesNothingWhileSwitchedOff)
{
    insert(u"Hello."_s);
    isOn = false;
    insert(u"How are you?"_s);
    EXPECT_FALSE(cursor->isMarked);
    isOn = true;
    insert(u"Fine."_s);
    EXPECT_THAT(inner->inserted, ElementsAre(u"Hello."_s, u"How are you?"_s, u"Fine."_s));
}

} // namespace talmo::test
