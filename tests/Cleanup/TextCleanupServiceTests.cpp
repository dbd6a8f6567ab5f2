#include "Cleanup/TextCleanupService.h"

#include "Support/Printing.h"
#include "Support/TestLoop.h"

#include <QThread>

#include <gtest/gtest.h>

namespace talmo::test {

namespace {

QString cleaned(const QString &transcript)
{
    TextCleanupService service(SerialExecutor::onNewThread(u"cleanup"_s));
    std::optional<QString> result;
    QThread *thread = nullptr;
    auto task = service.cleanup(transcript, false, false, TextTone::Standard, {}).then([&](const QString &text) {
        result = text;
        thread = QThread::currentThread();
    });
    EXPECT_TRUE(waitFor([&result] { return result.has_value(); }));
    EXPECT_EQ(thread, QThread::currentThread());
    return result.value_or(QString());
}

} // namespace

TEST(TextCleanupService, removesTheTriggerAndFormatsLocally)
{
    EXPECT_EQ(cleaned(u"send the file as a list"_s), u"Send the file."_s);
}

TEST(TextCleanupService, aTranscriptOfOnlyCommandsComesBackAsItIs)
{
    EXPECT_EQ(cleaned(u"new line"_s), u"new line"_s);
}

TEST(TextCleanupService, formatsEverySegmentAndKeepsTheOrder)
{
    EXPECT_EQ(cleaned(u"hello new paragraph world"_s), u"Hello.\n\nWorld."_s);
    EXPECT_EQ(cleaned(u"one new line two new line three"_s), u"One.\nTwo.\nThree."_s);
}

TEST(TextCleanupService, aSegmentThatIsOnlyATriggerIsEmpty)
{
    EXPECT_EQ(TextCleanupService::cleanSegment(u"as a list"_s), QString());
    EXPECT_EQ(TextCleanupService::cleanSegment(u"   "_s), QString());
    EXPECT_EQ(cleaned(u"one new line as a list new line two"_s), u"One.\n\nTwo."_s);
}

} // namespace talmo::test
