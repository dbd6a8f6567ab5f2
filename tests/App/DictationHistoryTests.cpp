#include "App/DictationHistory.h"

#include "Base/Completion.h"
#include "Base/Task.h"
#include "Insertion/PasswordFieldGuard.h"
#include "Support/FakeDictationOptions.h"
#include "Support/FakeFocusedField.h"
#include "Support/FakeInsertionService.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"

#include <gmock/gmock.h>

namespace talmo::test {

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class DictationHistoryTest : public testing::Test {
protected:
    DictationHistoryTest() { options->values[DictationOption::KeepHistory] = true; }
    ~DictationHistoryTest() override
    {
        field->answer->finish(true);
        settle();
    }
    void insert(const QString &text)
    {
        logEscapes(note(service.insert(text), this));
        settle();
    }
    static QCoro::Task<void> note(QCoro::Task<void> task, DictationHistoryTest *self)
    {
        try {
            co_await task;
        } catch (const Error &error) {
            self->failure = error.localizedDescription();
        }
    }
    void answer(bool isPassword)
    {
        field->answer->finish(isPassword);
        settle();
    }

    std::shared_ptr<FakeDictationOptions> options = std::make_shared<FakeDictationOptions>();
    std::shared_ptr<DictationHistory> history = std::make_shared<DictationHistory>(options);
    std::shared_ptr<FakeInsertionService> inner = std::make_shared<FakeInsertionService>();
    std::shared_ptr<FakeFocusedField> field = std::make_shared<FakeFocusedField>();
    RememberedInsertionService service{inner, field, history};
    QString failure;
};

} // namespace

TEST_F(DictationHistoryTest, keepsNewestFirstUpToItsLimit)
{
    for (int number = 0; number < DictationHistory::mostTexts + 3; ++number) {
        history->add(QString::number(number));
    }
    ASSERT_EQ(history->texts().size(), DictationHistory::mostTexts);
    EXPECT_EQ(history->texts().first(), u"52"_s);
    EXPECT_EQ(history->texts().last(), u"3"_s);
}

TEST_F(DictationHistoryTest, keepsNothingWhileSwitchedOff)
{
    options->values[DictationOption::KeepHistory] = false;
    history->add(u"hello"_s);
    insert(u"hello"_s);
    EXPECT_THAT(inner->inserted, ElementsAre(u"hello"_s));
    EXPECT_THAT(history->texts(), IsEmpty());
    EXPECT_THAT(field->limits, IsEmpty());
}

TEST_F(DictationHistoryTest, switchingOffEmptiesIt)
{
    history->add(u"hello"_s);
    options->setOn(DictationOption::SpaceBetween, true);
    settle();
    EXPECT_THAT(history->texts(), ElementsAre(u"hello"_s));
    options->setOn(DictationOption::KeepHistory, false);
    settle();
    EXPECT_THAT(history->texts(), IsEmpty());
    options->setOn(DictationOption::KeepHistory, true);
    settle();
    EXPECT_THAT(history->texts(), IsEmpty());
}

TEST_F(DictationHistoryTest, keepsWhatWentIntoAnOrdinaryField)
{
    insert(u"hello"_s);
    EXPECT_THAT(inner->inserted, ElementsAre(u"hello"_s)) << "the insertion does not wait for the field";
    EXPECT_THAT(history->texts(), IsEmpty());
    answer(false);
    EXPECT_THAT(history->texts(), ElementsAre(u"hello"_s));
}

TEST_F(DictationHistoryTest, keepsNothingThatWentIntoAPasswordField)
{
    insert(u"secret"_s);
    answer(true);
    EXPECT_THAT(history->texts(), IsEmpty());
}

TEST_F(DictationHistoryTest, keepsNothingThatThePasswordGuardRefused)
{
    inner->outcome = makeFailedFuture<void>(std::make_exception_ptr(PasswordFieldError()));
    insert(u"secret"_s);
    EXPECT_FALSE(failure.isEmpty());
    answer(false);
    EXPECT_THAT(history->texts(), IsEmpty());
}

TEST_F(DictationHistoryTest, keepsNothingIfTheQueryFails)
{
    insert(u"hello"_s);
    field->answer->fail(std::make_exception_ptr(Cancelled()));
    settle();
    EXPECT_THAT(history->texts(), IsEmpty());
}

TEST_F(DictationHistoryTest, keepsTextThatNoWindowTook)
{
    inner->outcome = makeFailedFuture<void>(std::make_exception_ptr(Error(u"no window"_s)));
    insert(u"hello"_s);
    answer(false);
    EXPECT_EQ(failure, u"no window"_s);
    EXPECT_THAT(history->texts(), ElementsAre(u"hello"_s));
}

} // namespace talmo::test
