#include "App/TimedCleanupService.h"

#include "Base/Task.h"
#include "Support/ManualClock.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"

#include <gmock/gmock.h>

namespace talmo::test {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

namespace {

class Service final : public CleanupService {
public:
    std::shared_ptr<Completion<QString>> text = Completion<QString>::make();
    QCoro::Task<QString> cleanup(QString, bool, bool, TextTone, QStringList) override
    {
        return await<QString>(text->future());
    }
};

QCoro::Task<void> note(QCoro::Task<QString> task, QString *text)
{
    *text = co_await task;
}

class TimedCleanupServiceTest : public testing::Test {
protected:
    std::shared_ptr<ManualClock> clock = std::make_shared<ManualClock>();
    std::shared_ptr<Service> service = std::make_shared<Service>();
    QString editor = u"qwen"_s;
    std::vector<std::pair<QString, Duration>> edits;
    TimedCleanupService timed{{service, clock, [this] { return editor; },
                               [this](const QString &by, Duration duration) { edits.emplace_back(by, duration); }}};

    QString textAfter(bool ai, Duration duration)
    {
        QString text;
        logEscapes(note(timed.cleanup(u"hello"_s, ai, false, TextTone::Standard, {}), &text));
        clock->advance(duration);
        service->text->finish(u"Hello."_s);
        settle();
        return text;
    }
};

} // namespace

TEST_F(TimedCleanupServiceTest, reportsHowLongModelTook)
{
    EXPECT_EQ(textAfter(true, 6s), u"Hello."_s);
    EXPECT_THAT(edits, ElementsAre(Pair(u"qwen"_s, Duration(6s))));
}

TEST_F(TimedCleanupServiceTest, reportsNothingWithoutModel)
{
    EXPECT_EQ(textAfter(false, 6s), u"Hello."_s);
    editor.clear();
    EXPECT_EQ(textAfter(true, 6s), u"Hello."_s);
    EXPECT_THAT(edits, IsEmpty());
}

} // namespace talmo::test
