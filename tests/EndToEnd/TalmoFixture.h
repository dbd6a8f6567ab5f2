#pragma once

#include "ChildProcess.h"
#include "SoundServer.h"
#include "VirtualDesktop.h"
#include "VirtualKeyboard.h"

#include <gtest/gtest.h>

#include <memory>

namespace talmo::test {

/// Talmo on its own virtual desktop, with an active window to dictate into.
class TalmoFixture : public testing::Test {
protected:
    static constexpr testbed::Timeout timeout = std::chrono::seconds(15);
    static constexpr quint32 key = testbed::VirtualKeyboard::controlRight;

    TalmoFixture();
    ~TalmoFixture() override;

    void startTalmo();
    /// Starts it from a shell that runs these commands first.
    void startTalmoAfter(const QString &shellCommands);
    /// Starts a program that becomes Talmo.
    void startTalmoThrough(const QString &program, const QStringList &arguments);
    /// Opens a window titled "Target" that prints its text in lines "text: …".
    void openWindow(const QString &program, const QStringList &arguments = {});
    void openQtWindow(const QString &delay = QStringLiteral("0"));

    /// Waits for a log line after the last one waited for.
    bool talmoSays(const QString &text);
    bool windowShows(const QString &text);

    /// Speaks this into the microphone; returns at the end.
    void speak(const QString &text);
    /// A whole dictation: hold, speak, release.
    void dictate(const QString &text);

    /// Two taps at human speed.
    void doubleTap();

    /// The clipboard as another program reads it; empty if there is none.
    QByteArray clipboard(const QString &target = QStringLiteral("UTF8_STRING"));
    QByteArray selection(const QString &name, const QString &target = QStringLiteral("UTF8_STRING"));
    bool isClipboardEmpty();
    /// Copies a text as another program would.
    void copy(const QString &text, const QString &selectionName = QStringLiteral("clipboard"));

    /// Quits Talmo as the desktop does; returns its exit status.
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
