#pragma once

#include "ChildProcess.h"

#include "Base/SerialExecutor.h"

#include <QByteArray>
#include <QImage>
#include <QJsonObject>
#include <QProcessEnvironment>
#include <QTemporaryDir>

#include <memory>

namespace talmo {
class VirtualKeyboard;
class WaylandSession;
} // namespace talmo

namespace talmo::testbed {

/// A private Wayland session: sway without a screen, with XWayland. While it lives, WAYLAND_DISPLAY, SWAYSOCK and
/// DISPLAY of this process are set to it.
class WaylandDesktop {
public:
    /// Whether the programs are installed; tests skip themselves otherwise.
    static bool isInstalled();

    enum class KeyboardKey : quint32 { Pause = 119, RightControl = 97, C = 46 };

    /// Throws Error if sway does not start.
    WaylandDesktop();
    ~WaylandDesktop();
    WaylandDesktop(const WaylandDesktop &) = delete;
    WaylandDesktop &operator=(const WaylandDesktop &) = delete;

    /// For programs that run on this desktop, as Wayland clients where they can.
    QProcessEnvironment environment() const { return m_environment; }
    /// Private to this desktop and deleted with it.
    QString folder() const { return m_folder.path(); }
    void storeSettings(QJsonObject settings);

    /// Keys of the hardware, which a desktop without a screen has none of.
    void press(KeyboardKey key) { sendKey(key, true); }
    void release(KeyboardKey key) { sendKey(key, false); }

    /// Waits until a window with this title has the focus.
    bool waitForActiveWindow(const QString &title, Timeout timeout);
    QString activeWindowTitle();
    /// Sends a command to the compositor, as swaymsg does; returns its answer.
    QByteArray ask(const QStringList &arguments);
    QImage screenshot();

    /// Copies this as another program would. `selection`: "clipboard" or "primary".
    void copy(const QByteArray &text, const QString &type = QStringLiteral("text/plain;charset=utf-8"),
              const QString &selection = QStringLiteral("clipboard"));
    /// A selection as another program reads it; empty if there is none.
    QByteArray paste(const QString &type = QStringLiteral("text/plain;charset=utf-8"),
                     const QString &selection = QStringLiteral("clipboard"));
    QList<QByteArray> offeredTypes();

    void freezeCompositor();
    void thawCompositor();

private:
    void startCompositor();
    void sendKey(KeyboardKey key, bool isDown);

    QTemporaryDir m_folder;
    QProcessEnvironment m_environment;
    std::vector<std::pair<QByteArray, QByteArray>> m_previous;
    std::unique_ptr<ChildProcess> m_compositor;
    std::shared_ptr<WaylandSession> m_session;
    std::unique_ptr<VirtualKeyboard> m_keyboard;
};

} // namespace talmo::testbed
