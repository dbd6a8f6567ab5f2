#include "Insertion/CommittingInsertionService.h"

#include "Support/FakeInsertionService.h"
#include "Support/Printing.h"

#include <QCoro/QCoroTask>

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FakeCommitter final : public TextCommitter {
public:
    QFuture<bool> commit(const QString &text) override
    {
        texts.append(text);
        return makeReadyFuture(bool(takesText));
    }
    bool takesText = true;
    QStringList texts;
};

class CommittingInsertionServiceTest : public testing::Test {
protected:
    std::shared_ptr<FakeCommitter> committer = std::make_shared<FakeCommitter>();
    std::shared_ptr<FakeInsertionService> pasting = std::make_shared<FakeInsertionService>();
    CommittingInsertionService service{committer, pasting};
};

} // namespace

TEST_F(CommittingInsertionServiceTest, pastesNothingThatWasCommitted)
{
    QCoro::waitFor(service.insert(u"text"_s));
    EXPECT_THAT(committer->texts, ElementsAre(u"text"_s));
    EXPECT_THAT(pasting->inserted, IsEmpty());
}

TEST_F(CommittingInsertionServiceTest, pastesWhatFieldCannotTake)
{
    committer->takesText = false;
    QCoro::waitFor(service.insert(u"text"_s));
    EXPECT_THAT(pasting->inserted, ElementsAre(u"text"_s));
}

} // namespace talmo::test
