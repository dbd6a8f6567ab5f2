#include "App/TidyEndCleanupService.h"

#include "Support/Printing.h"

#include <gtest/gtest.h>

namespace talmo::test {

namespace {

class Service final : public CleanupService {
public:
    QString given;
    QCoro::Task<QString> cleanup(QString transcript, bool, bool, TextTone, QStringList) override
    {
        given = transcript;
        co_return transcript;
    }
};

QString givenFor(const QString &transcript)
{
    const auto service = std::make_shared<Service>();
    TidyEndCleanupService tidy(service);
    QCoro::waitFor(tidy.cleanup(transcript, true, false, TextTone::Standard, {}));
    return service->given;
}

} // namespace

TEST(TidyEndCleanupService, marksThatPromiseMoreGoFromEnd)
{
    EXPECT_EQ(givenFor(u"We have seen how quietly,"_s), u"We have seen how quietly"_s);
    EXPECT_EQ(givenFor(u"as follows :"_s), u"as follows"_s);
    EXPECT_EQ(givenFor(u"and then \u2014\u2026"_s), u"and then"_s);
}

TEST(TidyEndCleanupService, everythingElseStays)
{
    for (const auto &text : {u"One, two."_s, u"Really?"_s, u"wait..."_s, u"Yes!"_s, u"50 %"_s, u"\u2014"_s, u",;"_s}) {
        EXPECT_EQ(givenFor(text), text);
    }
}

} // namespace talmo::test
