#pragma once

#include "EndToEnd/TalmoRun.h"
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
    TEST_F(FaultRun, area##name)

/// Something goes wrong, and the dictation after it works.
class FaultRun : public TalmoRun {
protected:
    /// A new window, since the fault may have cost the old one.
    void nextDictationWorks()
    {
        rig::passTime(std::chrono::milliseconds(350)); // Longer than a double tap's window.
        window.reset();
        openWindow(QStringLiteral(TALMO_BIN "/talmo-demo-window"), {u"Target again"_s});
        dictate(u"thank you very much"_s);
        EXPECT_TRUE(windowShows(u"Thank you very much."_s));
    }
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
};

} // namespace talmo::test
