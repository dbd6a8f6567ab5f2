#include "App/InterruptibleCleanupService.h"

#include "Base/Task.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"

#include <gmock/gmock.h>

namespace talmo::test {

using testing::ElementsAre;

namespace {

class Service final : public CleanupService {
public:
    std::vector<bool> edits;
    std::shared_ptr<Completion<QString>> edit = Completion<QString>::make();
    QFuture<QString> local = makeReadyFuture(u"Local."_s);
    QCoro::Task<QString> cleanup(QString, bool ai, bool, TextTone, QStringList) override
    {
        edits.push_back(ai);
        return await<QString>(ai ? edit->future() : local);
    }
};

QCoro::Task<void> note(QCoro::Task<QString> task, QStringList *outcomes)
{
    try {
        outcomes->append(co_await task);
    } catch (const Error &error) {
        outcomes->append(u"error: "_s + error.localizedDescription());
    }
}

class InterruptibleCleanupServiceTest : public testing::Test {
protected:
    void clean(bool ai)
    {
        logEscapes(note(cleanup.cleanup(u"hello"_s, ai, false, TextTone::Standard, {}), &outcomes));
        settle();
    }
    void fail()
    {
        service->edit->fail(std::make_exception_ptr(Error(u"broken"_s)));
        settle();
    }
    std::shared_ptr<Service> service = std::make_shared<Service>();
    int givenUp = 0;
    InterruptibleCleanupService cleanup{service, [this] { ++givenUp; }};
    QStringList outcomes;
};

} // namespace

TEST_F(InterruptibleCleanupServiceTest, waitsForModelUnlessHurried)
{
    clean(true);
    EXPECT_THAT(outcomes, ElementsAre());
    service->edit->finish(u"Edited."_s);
    settle();
    EXPECT_THAT(outcomes, ElementsAre(u"Edited."_s));
    EXPECT_THAT(service->edits, ElementsAre(true));
}

TEST_F(InterruptibleCleanupServiceTest, hurryingDuringEditReturnsLocalText)
{
    clean(true);
    cleanup.setHurried(true);
    settle();
    EXPECT_THAT(outcomes, ElementsAre(u"Local."_s));
    EXPECT_EQ(givenUp, 1);
    service->edit->finish(u"Edited."_s);
    settle();
    EXPECT_THAT(outcomes, ElementsAre(u"Local."_s));
}

TEST_F(InterruptibleCleanupServiceTest, hurryingAfterEditAbandonsNothing)
{
    clean(true);
    service->edit->finish(u"Edited."_s);
    settle();
    cleanup.setHurried(true);
    EXPECT_EQ(givenUp, 0);
}

TEST_F(InterruptibleCleanupServiceTest, hurryingBeforeEditSkipsTheModel)
{
    cleanup.setHurried(true);
    clean(true);
    EXPECT_THAT(outcomes, ElementsAre(u"Local."_s));
    EXPECT_THAT(service->edits, ElementsAre(false));
}

TEST_F(InterruptibleCleanupServiceTest, hurryingLocalCleanupFormatsOnce)
{
    const auto slow = Completion<QString>::make();
    service->local = slow->future();
    clean(false);
    cleanup.setHurried(true);
    slow->finish(u"Local."_s);
    settle();
    EXPECT_THAT(service->edits, ElementsAre(false));
    EXPECT_THAT(outcomes, ElementsAre(u"Local."_s));
}

TEST_F(InterruptibleCleanupServiceTest, failedEditFallsBackToLocalText)
{
    clean(true);
    fail();
    EXPECT_THAT(outcomes, ElementsAre(u"Local."_s));
}

TEST_F(InterruptibleCleanupServiceTest, failedLocalCleanupFails)
{
    service->local = makeFailedFuture<QString>(std::make_exception_ptr(Error(u"broken"_s)));
    clean(false);
    EXPECT_THAT(outcomes, ElementsAre(u"error: broken"_s));
}

} // namespace talmo::test
