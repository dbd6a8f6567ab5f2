#pragma once

#include "EndToEnd/TalmoFixture.h"
#include "Support/Printing.h"

#include <vector>

namespace talmo::test {

/// One row of the table in docs/Reliability.md: the fault and what the user sees.
struct FaultRow {
    const char *area;
    const char *fault;
    const char *seen;
};

/// All rows, in source order.
std::vector<FaultRow> &faultTable();

struct FaultRegistration {
    FaultRegistration(const char *area, const char *fault, const char *seen)
    {
        faultTable().push_back({area, fault, seen});
    }
};

/// A test that is also a row of the table.
#define FAULT(area, name, fault, seen)                                                                                 \
    static const FaultRegistration area##name##Row(#area, fault, seen);                                                \
    TEST_F(FaultTest, area##name)

/// Causes a fault, then checks that the next dictation works.
class FaultTest : public TalmoFixture {
protected:
    /// Dictates into a new window, since the fault may have closed the old one.
    void nextDictationWorks()
    {
        testbed::sleepFor(std::chrono::milliseconds(350)); // Longer than the double-tap window.
        window.reset();
        expectLinesFromHere();
        openWindow(QStringLiteral(TALMO_BIN "/talmo-demo-window"), {u"Target again"_s});
        dictate(u"thank you very much"_s);
        EXPECT_TRUE(windowShows(nextMeant()));
    }
    /// Talmo works once the desktop's language is English again, which takes a login.
    void worksInEnglish()
    {
        EXPECT_EQ(quitTalmo(), 0);
        environment.insert(u"LC_ALL"_s, u"en_US.UTF-8"_s);
        environment.insert(u"LANG"_s, u"en_US.UTF-8"_s);
        startTalmo();
        nextDictationWorks();
    }
    /// Waits for the next text that Talmo is going to insert. Under load, playback may have gaps and be misrecognised.
    QString nextMeant()
    {
        const QString prefix = u"cleaned transcript: "_s;
        const auto line = talmo->waitForLine(prefix, timeout, m_linesSeen);
        while (m_linesSeen < talmo->lines().size() && !talmo->lines()[m_linesSeen++].text.contains(prefix)) {
        }
        EXPECT_TRUE(line);
        return line ? line->text.mid(line->text.indexOf(prefix) + prefix.size()) : QString();
    }
    std::size_t seenLines() const { return m_linesSeen; }
    void expectLinesFromHere() { m_linesSeen = talmo ? talmo->lines().size() : 0; }
    /// Holds the key and speaks; the key stays down.
    void holdAndSpeak(const QString &text = u"hello world"_s)
    {
        keyboard.press(key);
        ASSERT_TRUE(talmoSays(u"state: recording"_s));
        speak(text);
    }
    void signalTalmo(int signal);
    void signalWindow(int signal);
    /// Writes the settings file that Talmo reads on startup.
    void writeSettings(const QByteArray &bytes);
    QString settingsPath() const;

private:
    std::size_t m_linesSeen = 0;
};

} // namespace talmo::test
