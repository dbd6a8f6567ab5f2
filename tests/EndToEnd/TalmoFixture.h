#pragma once

#include "ChildProcess.h"
#include "SoundServer.h"
#include "VirtualDesktop.h"
#include "VirtualKeyboard.h"

#include <gtest/gtest.h>

#include <memory>

namespace talmo::test {

/// Talmo itself, running on a desktop of its own, with a window in front that can be dictated into.
class TalmoFixture : public testing::Test {
protected:
    static constexpr testbed::Patience patience = std::chrono::seconds(15);
    static constexpr quint32 key = testbed::VirtualKeyboard::controlRight;

    TalmoFixture();
    ~TalmoFixture() override;

    void startTalmo();
    /// Starts it through a shell, which runs these commands first.
    void startTalmoAfter(const QString &shellCommands);
    /// A window whose title is "Target" and which says its text in lines "text: …".
    void openWindow(const QString &program, const QStringList &arguments = {});
    void openQtWindow(const QString &delay = QStringLiteral("0"));

    /// Waits for a line of Talmo's log that has not been waited for before.
    bool talmoSays(const QString &text);
    bool windowShows(const QString &text);

    /// Speaks this into the microphone to its end.
    void speak(const QString &text);
    /// The whole of a dictation: hold, speak, let go.
    void dictate(const QString &text);

    /// Two taps at a person's pace.
    void doubleTap();

    /// What an independent reader gets; empty when there is nothing.
    QByteArray clipboard(const QString &target = QStringLiteral("UTF8_STRING"));
    QByteArray selection(const QString &name, const QString &target = QStringLiteral("UTF8_STRING"));
    bool isClipboardEmpty();
    /// Puts a text on the clipboard as another program would.
    void copy(const QString &text, const QString &selectionName = QStringLiteral("clipboard"));

    /// Ends Talmo as the desktop would; gives back its exit status.
    int quitTalmo();

    testbed::VirtualDesktop desktop;
    QProcessEnvironment environment = desktop.environment();
    std::unique_ptr<testbed::SoundServer> sound;
    testbed::VirtualKeyboard keyboard;
    std::unique_ptr<testbed::ChildProcess> talmo;
    std::unique_ptr<testbed::ChildProcess> window;

private:
    std::size_t m_talmoLines = 0;
    std::vector<std::unique_ptr<testbed::ChildProcess>> m_copiers;
};

} // namespace talmo::test
