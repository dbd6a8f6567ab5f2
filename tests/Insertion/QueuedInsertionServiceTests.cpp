#include "Insertion/QueuedInsertionService.h"

#include "Base/Completion.h"
#include "Base/Task.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

using testing::ElementsAre;

/// Completes an insertion when the test says so.
class SlowInsertion final : public TextInsertionService {
public:
    QStringList begun;
    std::vector<std::shared_ptr<Completion<void>>> pending;
    QCoro::Task<void> insert(QString text) override
    {
        begun.append(text);
        pending.push_back(Completion<void>::make());
        return await<void>(pending.back()->future());
    }
};

} // namespace

TEST(QueuedInsertionService, insertsOneAtATime)
{
    const auto slow = std::make_shared<SlowInsertion>();
    QueuedInsertionService queue(slow);
    QStringList done;
    auto first = queue.insert(u"a"_s).then([&done] { done.append(u"a"_s); });
    auto second = queue.insert(u"b"_s).then([&done] { done.append(u"b"_s); });
    settle();
    EXPECT_THAT(slow->begun, ElementsAre(u"a"_s));
    slow->pending[0]->finish();
    settle();
    EXPECT_THAT(done, ElementsAre(u"a"_s));
    EXPECT_THAT(slow->begun, ElementsAre(u"a"_s, u"b"_s));
    slow->pending[1]->finish();
    settle();
    EXPECT_THAT(done, ElementsAre(u"a"_s, u"b"_s));
}

TEST(QueuedInsertionService, failureReachesItsCallerAndDoesNotBlockQueue)
{
    const auto slow = std::make_shared<SlowInsertion>();
    QueuedInsertionService queue(slow);
    QString problem;
    auto first = queue.insert(u"a"_s).then(
        [] {}, [&problem](const std::exception &error) { problem = QString::fromUtf8(error.what()); });
    auto second = queue.insert(u"b"_s);
    settle();
    slow->pending[0]->fail(std::make_exception_ptr(Error(u"broken"_s)));
    settle();
    EXPECT_EQ(problem, u"broken"_s);
    EXPECT_THAT(slow->begun, ElementsAre(u"a"_s, u"b"_s));
    slow->pending[1]->finish();
    settle();
}

} // namespace talmo::test
