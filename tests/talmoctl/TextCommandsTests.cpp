#include "Cleanup/CleanupInstructions.h"
#include "Support/Printing.h"
#include "Support/TestModelServer.h"
#include "talmoctl/TalmoctlFixture.h"

#include <QFile>
#include <QJsonArray>

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

using testing::AllOf;
using testing::HasSubstr;

class TextCommandsTest : public TalmoctlFixture {};

} // namespace

TEST_F(TextCommandsTest, formatUsesRulesOnly)
{
    expectOutput(talmoctl({u"format"_s}, "um so buy milk and eggs as a list new paragraph thanks\n"),
                 "Um so buy milk and eggs.\n\nThanks.\n");
    expectOutput(talmoctl({u"format"_s, u"--raw"_s}, "hello"), "Hello.");
    expectOutput(talmoctl({u"format"_s}, "\xc3\xbc"
                                         "ber uns"),
                 "\xc3\x9c"
                 "ber uns.\n");
    expectOutput(talmoctl({u"format"_s}, "new line"), "new line\n");
    expectOutput(talmoctl({u"format"_s}, " \n\t"), "");
    expectOutput(talmoctl({u"format"_s}, ""), "");
}

TEST_F(TextCommandsTest, nonTextInputIsAnError)
{
    const auto result = talmoctl({u"format"_s}, "hello \xff world");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.errors, HasSubstr("not valid UTF-8"));
}

TEST_F(TextCommandsTest, cleanUsesSettingsAndModel)
{
    TestModelServer server;
    server.behave(
        {{u"chat"_s, QJsonArray{QJsonObject{{u"when"_s, u"milk"_s}, {u"answer"_s, u"- Buy milk\n- Buy eggs"_s}},
                                QJsonObject{{u"answer"_s, u"Thanks!"_s}}}}});
    storeSettings({{u"linux.languageModelAddress"_s, server.address()}, {u"talmo.textTone"_s, u"polite"_s}});
    const auto result = talmoctl({u"clean"_s}, "um so buy milk and eggs as a list new paragraph thanks");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "- Buy milk\n- Buy eggs\n\nThanks!\n");
    EXPECT_EQ(result.errors,
              "talmoctl: edited by the language model test-model at " + server.address().toStdString() + "\n");
    ASSERT_EQ(server.chats().size(), 2U);
    EXPECT_THAT(server.chats()
                    .front()
                    .value(u"messages"_s)
                    .toArray()
                    .at(0)
                    .toObject()
                    .value(u"content"_s)
                    .toString()
                    .toStdString(),
                HasSubstr("courteous and polite"));
}

TEST_F(TextCommandsTest, cleanReportsMissingModelAndFormatsLocally)
{
    TestModelServer server;
    server.kill();
    storeSettings({{u"linux.languageModelAddress"_s, server.address()}});
    const auto result = talmoctl({u"clean"_s}, "hello");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "Hello.\n");
    EXPECT_EQ(result.errors, "talmoctl: formatted by simple rules, not by a language model: "
                             "no model server is running on this machine\n");
}

TEST_F(TextCommandsTest, cleanReportsSegmentsThatModelDidNotEdit)
{
    TestModelServer server;
    storeSettings({{u"linux.languageModelAddress"_s, server.address()}});
    const auto errorsFor = [&](const QJsonArray &rules, const QByteArray &transcript) {
        server.behave({{u"chat"_s, rules}});
        const auto result = talmoctl({u"clean"_s}, transcript);
        EXPECT_EQ(result.status, 0);
        return result.errors;
    };
    const std::string rules = "talmoctl: formatted by simple rules, not by a language model: ";
    EXPECT_EQ(errorsFor({QJsonObject{{u"answer"_s, u"\"\""_s}}}, "hello"), rules + "The model's answer was empty.\n");
    EXPECT_EQ(errorsFor({QJsonObject{{u"status"_s, 500}}}, "hello"), rules + "The model server returned status 500.\n");
    EXPECT_EQ(errorsFor({QJsonObject{{u"answer"_s, u"Half a"_s}, {u"finish_reason"_s, u"length"_s}}}, "hello"),
              rules + "The model's answer was cut off.\n");
    EXPECT_EQ(errorsFor({QJsonObject{{u"when"_s, u"milk"_s}, {u"answer"_s, u"Milk."_s}},
                         QJsonObject{{u"fault"_s, u"close"_s}}},
                        "milk new line eggs"),
              "talmoctl: the language model edited 1 of 2 paragraphs; the others were formatted by simple rules: "
              "The model server closed the connection before its response was complete.\n");
    EXPECT_EQ(errorsFor({QJsonObject{{u"answer"_s, u"Hi."_s}}}, "new line"), rules + "there is no sentence to edit\n");
    EXPECT_EQ(errorsFor({QJsonObject{{u"answer"_s, u"Hi."_s}}}, " \n"), "");
}

TEST_F(TextCommandsTest, cleanRefusesRemoteAddress)
{
    storeSettings({{u"linux.languageModelAddress"_s, u"http://192.168.1.2:8080"_s}});
    const auto result = talmoctl({u"clean"_s}, "hello");
    EXPECT_EQ(result.output, "Hello.\n");
    EXPECT_THAT(result.errors, AllOf(HasSubstr("192.168.1.2"), HasSubstr("refused")));
}

TEST_F(TextCommandsTest, cleanDoesNotContactServerWhenDisabled)
{
    TestModelServer server;
    storeSettings({{u"linux.languageModelAddress"_s, server.address()}, {u"talmo.aiCleanupEnabled"_s, false}});
    const auto result = talmoctl({u"clean"_s}, "hello");
    EXPECT_EQ(result.output, "Hello.\n");
    EXPECT_EQ(result.errors,
              "talmoctl: formatted by simple rules, not by a language model: AI cleanup is off in the settings\n");
    EXPECT_TRUE(server.requests().empty());
}

TEST_F(TextCommandsTest, instructionsAreExact)
{
    storeSettings({{u"talmo.textTone"_s, u"friendly"_s},
                   {u"talmo.conciseTextEnabled"_s, true},
                   {u"talmo.dictionaryWords"_s, QJsonArray{u"Caf\u00E9"_s}}});
    const auto expected = [](const QStringList &words, bool bullets, bool concise, TextTone tone) {
        return buildInstructions(words, bullets, concise, tone).toStdString();
    };
    const QStringList words{u"Caf\u00E9"_s};
    expectOutput(talmoctl({u"instructions"_s}), expected(words, false, true, TextTone::Friendly) + "\n");
    expectOutput(talmoctl({u"instructions"_s, u"--raw"_s}), expected(words, false, true, TextTone::Friendly));
    expectOutput(
        talmoctl({u"instructions"_s, u"--raw"_s, u"--tone"_s, u"standard"_s, u"--no-concise"_s, u"--no-words"_s}),
        expected({}, false, false, TextTone::Standard));
    expectOutput(talmoctl({u"instructions"_s, u"--raw"_s, u"--tone=polite"_s, u"--concise"_s, u"--bullets"_s,
                           u"--word"_s, u"a, b"_s, u"--word"_s, u"c"_s}),
                 expected({u"a, b"_s, u"c"_s}, true, true, TextTone::Polite));
}

TEST_F(TextCommandsTest, cleanSendsNothingWithDamagedSettings)
{
    const TestModelServer server;
    QFile file(folder.filePath(u"talmo/settings.json"_s));
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    file.write("{\"talmo.aiCleanupEnabled\": false, \"linux.lang");
    file.close();
    EXPECT_EQ(talmoctl({u"clean"_s}, "hello").output, "Hello.\n");
    const auto next = talmoctl({u"clean"_s}, "hello");
    EXPECT_EQ(next.output, "Hello.\n");
    EXPECT_THAT(next.errors, HasSubstr("AI cleanup is off in the settings")) << "nor does the next call probe a server";
}

} // namespace talmo::test
