#pragma once

#include "ChildProcess.h"

#include "Platform/Linux/X11/XConnection.h"

#include <QImage>
#include <QJsonObject>
#include <QList>
#include <QProcessEnvironment>
#include <QRect>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>

namespace talmo::testbed {

/// A private X server with a window manager. While it lives, DISPLAY and the private folders of this process are set to
/// it, so that everything created in this process belongs there too.
class VirtualDesktop {
public:
    enum class WindowManager { Openbox, None };

    /// Throws Error if one of the programs is missing or does not start.
    explicit VirtualDesktop(const QStringList &serverArguments = {},
                            WindowManager windowManager = WindowManager::Openbox);
    ~VirtualDesktop();
    VirtualDesktop(const VirtualDesktop &) = delete;
    VirtualDesktop &operator=(const VirtualDesktop &) = delete;

    /// For programs that run on this desktop.
    QProcessEnvironment environment() const { return m_environment; }
    /// Private to this desktop and deleted with it.
    QString folder() const { return m_folder.path(); }
    /// Replaces the settings of any Talmo started on this desktop. Initially they switch the language model off, since
    /// a server may be running on this machine. No welcome is shown unless these say so.
    void storeSettings(const QJsonObject &settings);

    /// Waits for a window manager that was not started by this class.
    bool waitForWindowManager(Timeout timeout);
    /// Waits until a window whose title contains this text is shown and has the focus.
    bool waitForActiveWindow(const QString &title, Timeout timeout);
    QString activeWindowTitle();
    void minimiseActiveWindow();
    /// How often the window manager moved the focus since the last call.
    int takeActiveWindowChanges();
    /// A window on the screen, without its frame. Windows later in the list are further in front.
    struct Window {
        QByteArray program;
        bool isManaged; ///< By the window manager.
        QRect geometry;
    };
    QList<Window> visibleWindows();
    void killServer() { m_server->kill(); }
    /// The focus then stays where it is put, even if that is nowhere.
    void killWindowManager() { m_windowManager->kill(); }
    /// Until it is sent SIGCONT, nothing that asks the server gets an answer; the members of this class neither.
    void signalServer(int signal);
    /// The current screen content. Plain image data, so no QGuiApplication is needed.
    QImage screenshot();

private:
    xcb_window_t activeWindow();
    void startServer(const QStringList &arguments);
    void followActiveWindow();
    void startWindowManager();

    QTemporaryDir m_folder;
    QProcessEnvironment m_environment;
    QByteArray m_previousDisplay;
    std::unique_ptr<ChildProcess> m_server;
    std::unique_ptr<ChildProcess> m_windowManager;
    std::unique_ptr<XConnection> m_connection;
};

} // namespace talmo::testbed
