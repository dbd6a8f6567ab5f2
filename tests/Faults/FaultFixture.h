#pragma once

#include "EndToEnd/TalmoFixture.h"
#include "Support/Printing.h"

#include <vector>

namespace talmo::test {

/// One line of the table in docs/Reliability.md: what goes wrong, and what people see of it.
struct FaultRow {
    const char *area;
    const char *fault;
    const char *seen;
};

/// All rows, in the order of the source.
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

/// Something goes wrong, and the dictation after it works.
class FaultTest : public TalmoFixture {
protected:
    /// A new window, since the fault may have cost the old one.
    void nextDictationWorks()
    {
        testbed::passTime(std::chrono::milliseconds(350)); // Longer than a double tap's window.
        window.reset();
        expectLinesFromHere();
        openWindow(QStringLiteral(TALMO_BIN "/talmo-demo-window"), {u"Target again"_s});
        dictate(u"thank you very much"_s);
        EXPECT_TRUE(windowShows(nextMeant()));
    }
    /// Waits for what Talmo means to insert next. On a busy machine speech is played with gaps and misheard.
    QString nextMeant()
    {
        const QString prefix = u"cleaned transcript: "_s;
        const auto line = talmo->waitForLine(prefix, patience, m_linesSeen);
        while (m_linesSeen < talmo->lines().size() && !talmo->lines()[m_linesSeen++].text.contains(prefix)) {
        }
        EXPECT_TRUE(line);
        return line ? line->text.mid(line->text.indexOf(prefix) + prefix.size()) : QString();
    }
    std::size_t seenLines() const { return m_linesSeen; }
    void expectLinesFromHere() { m_linesSeen = talmo ? talmo->lines().size() : 0; }
    /// Begins to dictate and says the sentence; the key is still down.
    void holdAndSpeak(const QString &text = u"hello world"_s)
    {
        keyboard.press(key);
        ASSERT_TRUE(talmoSays(u"state: recording"_s));
        speak(text);
    }
    void signalTalmo(int signal);
    void signalWindow(int signal);
    /// The file that Talmo reads at its start.
    void writeSettings(const QByteArray &bytes);
    QString settingsPath() const;

private:
    std::size_t m_linesSeen = 0;
};

} // namespace talmo::test
