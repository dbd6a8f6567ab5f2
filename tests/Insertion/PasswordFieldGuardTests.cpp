#include "Insertion/PasswordFieldGuard.h"

#include "Base/Completion.h"
#include "Base/Task.h"
#include "Support/FakeFocusedField.h"
#include "Support/FakeInsertionService.h"
#include "Support/ManualClock.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"

#include <gmock/gmock.h>

namespace talmo::test {

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class PasswordFieldGuardTest : public testing::Test {
protected:
    std::shared_ptr<FakeInsertionService> inner = std::make_shared<FakeInsertionService>();
    std::shared_ptr<FakeFocusedField> field = std::make_shared<FakeFocusedField>();
    std::shared_ptr<ManualClock> clock = std::make_shared<ManualClock>();
    bool isOn = true;
    PasswordFieldGuard guard{inner, field, clock, [this] { return isOn; }};
    QString error;
    bool isDone = false;

    void insert(const QString &text)
    {
        record(guard.insert(text), this);
        settle();
    }

private:
    static QCoro::Task<void> record(QCoro::Task<void> task, PasswordFieldGuardTest *self)
    {
        try {
            co_await task;
        } catch (const Error &thrown) {
            self->error = thrown.localizedDescription();
        }
        self->isDone = true;
    }
};

} // namespace

TEST_F(PasswordFieldGuardTest, passwordFieldGetsNothingAndUserIsTold)
{
    insert(u"hello"_s);
    EXPECT_FALSE(isDone);
    field->answer->finish(true);
    settle();
    EXPECT_TRUE(isDone);
    EXPECT_THAT(inner->inserted, IsEmpty());
    EXPECT_EQ(error, u"The cursor is in a password field, so nothing was pasted. Choose “Copy Last Dictation” from the "
                     u"icon's menu."_s);
}

TEST_F(PasswordFieldGuardTest, insertsIntoOtherFieldAfterItsAnswer)
{
    insert(u"hello"_s);
    EXPECT_THAT(inner->inserted, IsEmpty());
    field->answer->finish(false);
    settle();
    EXPECT_TRUE(isDone);
    EXPECT_EQ(error, QString());
    EXPECT_THAT(inner->inserted, ElementsAre(u"hello"_s));
}

TEST_F(PasswordFieldGuardTest, waitsNoLongerThanTheTimeout)
{
    insert(u"hello"_s);
    clock->advance(PasswordFieldGuard::answerTime - std::chrono::milliseconds(1));
    EXPECT_THAT(inner->inserted, IsEmpty());
    clock->advance(std::chrono::milliseconds(1));
    EXPECT_THAT(inner->inserted, ElementsAre(u"hello"_s));
    EXPECT_THAT(field->limits, ElementsAre(PasswordFieldGuard::answerTime));
}

TEST_F(PasswordFieldGuardTest, answerAfterTimeoutChangesNothing)
{
    insert(u"hello"_s);
    clock->advance(PasswordFieldGuard::answerTime);
    field->answer->finish(true);
    settle();
    EXPECT_EQ(error, QString());
    EXPECT_THAT(inner->inserted, ElementsAre(u"hello"_s));
}

TEST_F(PasswordFieldGuardTest, answerEndsTheWait)
{
    insert(u"hello"_s);
    field->answer->finish(false);
    settle();
    EXPECT_EQ(clock->sleeperCount(), 0U);
}

TEST_F(PasswordFieldGuardTest, failedQueryCountsAsUnknown)
{
    insert(u"hello"_s);
    field->answer->fail(std::make_exception_ptr(Cancelled()));
    settle();
    EXPECT_EQ(error, QString());
    EXPECT_THAT(inner->inserted, ElementsAre(u"hello"_s));
}

TEST_F(PasswordFieldGuardTest, disabledGuardInsertsWithoutAsking)
{
    isOn = false;
    insert(u"hello"_s);
    EXPECT_THAT(inner->inserted, ElementsAre(u"hello"_s));
    EXPECT_THAT(field->limits, IsEmpty());
}

TEST_F(PasswordFieldGuardTest, readsSettingBeforeEachInsertion)
{
    field->answer->finish(true);
    isOn = false;
    insert(u"first"_s);
    isOn = true;
    insert(u"second"_s);
    EXPECT_THAT(inner->inserted, ElementsAre(u"first"_s));
}

TEST_F(PasswordFieldGuardTest, propagatesInsertionError)
{
    inner->outcome = makeFailedFuture<void>(std::make_exception_ptr(Error(u"no window"_s)));
    field->answer->finish(false);
    insert(u"hello"_s);
    EXPECT_EQ(error, u"no window"_s);
}

} // namespace talmo::test
