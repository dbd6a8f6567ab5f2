#include "Faults/FaultFixture.h"

namespace talmo::test {

FAULT(Sound, serverAbsentAtStart, "No sound server runs when Talmo starts",
      "An error at the press; the next press works once it runs")
{
    sound->killServer();
    openQtWindow();
    startTalmo();
    keyboard.press(key);
    EXPECT_TRUE(talmoSays(u"error: "_s));
    keyboard.release(key);
    sound->restartServer();
    nextDictationWorks();
}

FAULT(Sound, serverKilledInMidSentence, "The sound server ends while somebody speaks",
      "What was heard until then is inserted")
{
    openQtWindow();
    startTalmo();
    holdAndSpeak();
    sound->killServer();
    keyboard.release(key);
    EXPECT_TRUE(windowShows(nextMeant()));
    sound->restartServer();
    nextDictationWorks();
}

FAULT(Sound, serverHangsInMidSentence, "The sound server hangs while somebody speaks",
      "The dictation ends with what was heard; the next one works when the server goes on")
{
    openQtWindow();
    startTalmo();
    holdAndSpeak();
    sound->freeze();
    keyboard.release(key);
    EXPECT_TRUE(talmoSays(u"state: processing"_s));
    EXPECT_TRUE(talmo->waitForLine(u"state: idle"_s, timeout) || talmo->waitForLine(u"state: error"_s, timeout));
    sound->thaw();
    nextDictationWorks();
}

FAULT(Sound, serverRestartedBetweenDictations, "The sound server is restarted between two dictations", "Nothing")
{
    openQtWindow();
    startTalmo();
    dictate(u"hello world"_s);
    EXPECT_TRUE(windowShows(nextMeant()));
    EXPECT_TRUE(talmoSays(u"state: idle"_s));
    sound->killServer();
    sound->restartServer();
    nextDictationWorks();
}

FAULT(Sound, microphoneMissing, "There is no microphone", "“No microphone input is available.”")
{
    openQtWindow();
    startTalmo();
    sound->removeMicrophone();
    keyboard.press(key);
    EXPECT_TRUE(talmoSays(u"error: No microphone input is available."_s));
    keyboard.release(key);
    sound->addMicrophone();
    nextDictationWorks();
}

FAULT(Sound, microphoneUnpluggedInMidSentence, "The microphone is unplugged while somebody speaks",
      "What was heard until then is inserted")
{
    openQtWindow();
    startTalmo();
    holdAndSpeak();
    sound->removeMicrophone();
    keyboard.release(key);
    EXPECT_TRUE(windowShows(nextMeant()));
    sound->addMicrophone();
    nextDictationWorks();
}

FAULT(Sound, microphoneSwitchedInMidSentence, "Another microphone becomes the default one while somebody speaks",
      "Nothing")
{
    openQtWindow();
    startTalmo();
    keyboard.press(key);
    ASSERT_TRUE(talmoSays(u"state: recording"_s));
    sound->switchMicrophone();
    speak(u"hello world"_s);
    keyboard.release(key);
    EXPECT_TRUE(windowShows(nextMeant()));
    nextDictationWorks();
}

FAULT(Sound, microphoneMuted, "The microphone is muted", "“The microphone … gives only silence. Is it muted?”")
{
    openQtWindow();
    startTalmo();
    sound->muteMicrophone(true);
    holdAndSpeak();
    keyboard.release(key);
    EXPECT_TRUE(talmoSays(u"gives only silence. Is it muted?"_s));
    sound->muteMicrophone(false);
    nextDictationWorks();
}

namespace {

class OddMicrophone : public FaultTest {
protected:
    void dictateThrough(const QStringList &options)
    {
        sound->removeMicrophone();
        sound->addMicrophone(options);
        openQtWindow();
        startTalmo();
        holdAndSpeak();
        keyboard.release(key);
        EXPECT_TRUE(talmoSays(u"raw transcript: "_s)); // The words depend on the rate.
        EXPECT_TRUE(talmoSays(u"state: idle"_s));
        sound->removeMicrophone();
        sound->addMicrophone();
        nextDictationWorks();
    }
};

} // namespace

static const FaultRegistration narrowRow("Sound", "The microphone gives 8 kHz", "Nothing, but more words are misheard");
TEST_F(OddMicrophone, at8kHzIsHeard)
{
    dictateThrough({u"rate=8000"_s});
}

static const FaultRegistration wideRow("Sound", "The microphone gives 192 kHz", "Nothing");
TEST_F(OddMicrophone, at192kHzIsHeard)
{
    dictateThrough({u"rate=192000"_s});
}

static const FaultRegistration channelsRow("Sound", "The microphone gives 8 channels", "Nothing");
TEST_F(OddMicrophone, with8ChannelsIsHeard)
{
    dictateThrough(
        {u"channels=8"_s, u"channel_map=aux0,aux1,aux2,aux3,aux4,aux5,aux6,aux7"_s,
         u"master_channel_map=front-left,front-right,front-left,front-right,front-left,front-right,front-left,front-right"_s});
}

} // namespace talmo::test
