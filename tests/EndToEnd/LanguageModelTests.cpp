// Speech edited by a model server in a separate process.

#include "EndToEnd/TalmoFixture.h"

#include "Support/Printing.h"
#include "Support/TestModelServer.h"

#include <QJsonArray>

namespace talmo::test {

namespace {

class LanguageModelEndToEndTest : public TalmoFixture {
protected:
    TestModelServer server;

    void useServer(const QJsonObject &more = {})
    {
        QJsonObject settings = more;
        settings.insert(u"linux.languageModelAddress"_s, server.address());
        desktop.storeSettings(settings);
        openQtWindow();
        startTalmo();
        ASSERT_TRUE(talmo->waitForLine(u"language model: test-model"_s, timeout)); // May come before or after "ready".
    }
    /// Line ends as the demo window prints them.
    static QString shown(QString text) { return text.replace(u"\n"_s, u"\\n"_s); }
};

} // namespace

TEST_F(LanguageModelEndToEndTest, modelEditsDictation)
{
    server.answerWith({{u"answer"_s, u"-> Hello, dear World!"_s}});
    useServer({{u"talmo.textTone"_s, u"friendly"_s}, {u"talmo.dictionaryWords"_s, QJsonArray{u"Talmo"_s}}});
    dictate(u"hello world"_s);
    EXPECT_TRUE(windowShows(u"Hello, dear World!"_s));
    ASSERT_EQ(server.chats().size(), 1U);
    const auto messages = server.chats().front().value(u"messages"_s).toArray();
    EXPECT_EQ(messages.at(1).toObject().value(u"content"_s), u"<transcript>hello world</transcript>"_s);
    const QString instructions = messages.at(0).toObject().value(u"content"_s).toString();
    EXPECT_TRUE(instructions.contains(u"warm, friendly, upbeat tone"_s));
    EXPECT_TRUE(instructions.endsWith(u"whenever they appear: Talmo."_s));
    EXPECT_EQ(quitTalmo(), 0);
}

TEST_F(LanguageModelEndToEndTest, bulletsAndParagraphsArriveInOrder)
{
    server.behave(
        {{u"chat"_s, QJsonArray{QJsonObject{{u"when"_s, u"milk"_s}, {u"answer"_s, u"- Buy milk\n- Buy eggs"_s}},
                                QJsonObject{{u"answer"_s, u"Thanks."_s}}}}});
    useServer();
    dictate(u"so buy milk and eggs as a list. new paragraph. thanks"_s);
    EXPECT_TRUE(windowShows(shown(u"- Buy milk\n- Buy eggs\n\nThanks."_s)));
    ASSERT_EQ(server.chats().size(), 2U);
    for (const auto &chat : server.chats()) {
        const auto messages = chat.value(u"messages"_s).toArray();
        const bool isAboutMilk = messages.at(1).toObject().value(u"content"_s).toString().contains(u"milk"_s);
        const QString instructions = messages.at(0).toObject().value(u"content"_s).toString();
        EXPECT_EQ(instructions.contains(u"formatted as a bullet list"_s), isAboutMilk);
    }
}

TEST_F(LanguageModelEndToEndTest, modelHasReadInstructionsBeforeRelease)
{
    server.answerWith({{u"answer"_s, u"Hello, World!"_s}});
    useServer({{u"talmo.textTone"_s, u"polite"_s}});
    keyboard.press(key);
    ASSERT_TRUE(server.waitForReports(u"answered"_s, 1)) << "while the key is still down";
    EXPECT_TRUE(server.chats().empty());
    speak(u"hello world"_s);
    keyboard.release(key);
    EXPECT_TRUE(windowShows(u"Hello, World!"_s));
    const auto prompts = server.reports(u"prompt"_s);
    ASSERT_EQ(prompts.size(), 2U);
    const auto transcript = u"hello world</transcript>\n"_s;
    EXPECT_EQ(prompts[1].value(u"characters"_s).toInt() - prompts[1].value(u"cached"_s).toInt(), transcript.size());
}

TEST_F(LanguageModelEndToEndTest, serverKilledDuringRequestLosesNoSentence)
{
    server.answerWith({{u"fault"_s, u"hang"_s}});
    useServer();
    dictate(u"hello world"_s);
    ASSERT_TRUE(server.waitForChats(1));
    server.kill();
    EXPECT_TRUE(windowShows(u"Hello world."_s));
    EXPECT_TRUE(talmoSays(u"state: idle"_s));
    // The next dictation does not try it. The pause keeps its press from being a double tap.
    testbed::sleepFor(std::chrono::milliseconds(400));
    dictate(u"hello world"_s);
    EXPECT_TRUE(talmoSays(u"state: idle"_s));
    EXPECT_TRUE(windowShows(u"Hello world. Hello world."_s));
}

TEST_F(LanguageModelEndToEndTest, disabledModelIsNotCalled)
{
    useServer({{u"talmo.aiCleanupEnabled"_s, false}});
    dictate(u"hello world"_s);
    EXPECT_TRUE(windowShows(u"Hello world."_s));
    EXPECT_TRUE(server.chats().empty());
}

TEST_F(LanguageModelEndToEndTest, serverStartedLaterIsFoundOnNextPress)
{
    const int port = server.port();
    server.kill();
    desktop.storeSettings({{u"linux.languageModelAddress"_s, server.address()}});
    openQtWindow();
    startTalmo();
    ASSERT_TRUE(talmo->waitForLine(u"no model server is running"_s, timeout));
    TestModelServer later(port);
    dictate(u"hello world"_s);
    EXPECT_TRUE(windowShows(u"Hello from the model."_s));
}

} // namespace talmo::test
