#include "Faults/FaultFixture.h"
#include "Support/TestModelServer.h"

#include <QJsonArray>

namespace talmo::test {

namespace {

class ModelServerFault : public FaultTest {
protected:
    void start()
    {
        desktop.storeSettings({{u"linux.languageModelAddress"_s, server.address()}});
        openQtWindow();
        startTalmo();
        ASSERT_TRUE(talmo->waitForLine(u"language model: test-model"_s, timeout));
    }
    /// The server has the request, and never answers.
    void beEditing()
    {
        server.answerWith({{u"fault"_s, u"hang"_s}});
        start();
        dictate(u"hello world"_s);
        ASSERT_TRUE(server.waitForChats(1));
    }
    void dictateWith(const QJsonObject &rule)
    {
        server.answerWith(rule);
        start();
        dictate(u"hello world"_s);
        EXPECT_TRUE(windowShows(nextMeant()));
        EXPECT_TRUE(talmoSays(u"state: idle"_s));
        server.answerWith({{u"fault"_s, u"close"_s}});
        nextDictationWorks();
    }
    TestModelServer server;
};

} // namespace

static const FaultRegistration hangingServerRow("Language", "The model server does not answer",
                                                "The text arrives after ten seconds, formatted by simple rules");
TEST_F(ModelServerFault, thatHangs)
{
    dictateWith({{u"fault"_s, u"hang"_s}});
}

static const FaultRegistration cutServerRow("Language", "The model server breaks off in mid-answer",
                                            "The text arrives at once, formatted by simple rules");
TEST_F(ModelServerFault, thatBreaksOff)
{
    dictateWith({{u"fault"_s, u"reset"_s}});
}

static const FaultRegistration lyingServerRow("Language", "The model server announces more than it sends",
                                              "The text arrives, formatted by simple rules");
TEST_F(ModelServerFault, thatLiesAboutItsLength)
{
    dictateWith({{u"fault"_s, u"truncate"_s}, {u"answer"_s, u"Half an ans"_s}});
}

static const FaultRegistration hugeServerRow("Language", "The model server sends 50 MB",
                                             "The text arrives, formatted by simple rules");
TEST_F(ModelServerFault, thatSendsTooMuch)
{
    dictateWith({{u"fault"_s, u"huge"_s}});
}

static const FaultRegistration slowServerRow("Language",
                                             "The model server needs longer than ten seconds for its answer",
                                             "The edited text, since a part of it comes at least every ten seconds");
TEST_F(ModelServerFault, thatIsSlow)
{
    server.answerWith({{u"answer"_s, u"Hello, slow world."_s}, {u"paced"_s, true}});
    start();
    dictate(u"hello world"_s);
    ASSERT_TRUE(server.waitForChats(1));
    for (int token = 1; token <= 4; ++token) {
        testbed::sleepFor(std::chrono::seconds(3));
        server.behave({{u"tokens"_s, token}});
    }
    EXPECT_TRUE(windowShows(u"Hello, slow world."_s));
    server.answerWith({{u"fault"_s, u"close"_s}});
    nextDictationWorks();
}

static const FaultRegistration killedServerRow("Language", "The model server ends between two dictations",
                                               "The text arrives at once, formatted by simple rules");
TEST_F(ModelServerFault, thatEnds)
{
    start();
    server.kill();
    dictate(u"hello world"_s);
    EXPECT_TRUE(windowShows(nextMeant()));
    nextDictationWorks();
}

static const FaultRegistration quitWhileEditingRow("Language", "Talmo is asked to end while the model edits",
                                                   "The sentence is inserted first, formatted by simple rules");
TEST_F(ModelServerFault, thatHangsWhenTalmoEnds)
{
    beEditing();
    EXPECT_EQ(quitTalmo(), 0);
    EXPECT_TRUE(windowShows(nextMeant()));
    server.answerWith({{u"fault"_s, u"close"_s}});
    startTalmo();
    nextDictationWorks();
}

static const FaultRegistration killedWhileEditingRow("Language", "Talmo is killed while the model edits",
                                                     "The sentence is lost; Talmo starts again and works");
TEST_F(ModelServerFault, thatHangsWhenTalmoIsKilled)
{
    beEditing();
    talmo->kill();
    server.answerWith({{u"fault"_s, u"close"_s}});
    startTalmo();
    nextDictationWorks();
}

FAULT(Language, languageUnsupported, "The desktop's language has no recogniser",
      "“The current language isn't supported for on-device transcription.”")
{
    environment.insert(u"LC_ALL"_s, u"eo.UTF-8"_s); // Esperanto, which no model knows.
    environment.insert(u"LANG"_s, u"eo.UTF-8"_s);
    startTalmo();
    keyboard.press(key);
    EXPECT_TRUE(talmoSays(u"error: The current language isn't supported for on-device transcription."_s));
    keyboard.release(key);
    worksInEnglish();
}

FAULT(Language, neuralLibraryMissing, "The library that the settings name for the language's recogniser is missing",
      "An error that says what to do")
{
    desktop.storeSettings({{u"linux.neuralLibrary"_s, u"/nonexistent/library.so"_s}});
    environment.insert(u"LC_ALL"_s, u"fr_FR.UTF-8"_s);
    environment.insert(u"LANG"_s, u"fr_FR.UTF-8"_s);
    startTalmo();
    keyboard.press(key);
    EXPECT_TRUE(talmoSays(u"error: The neural recogniser's library is not installed. Install the recogniser"_s));
    keyboard.release(key);
    worksInEnglish();
}

} // namespace talmo::test
