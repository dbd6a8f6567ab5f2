#pragma once

#include "ChildProcess.h"

#include "Platform/Linux/X11/XConnection.h"

#include <QImage>
#include <QJsonObject>
#include <QList>
#include <QProcessEnvironment>
#include <QRect>
#include <QTemporaryDir>

#include <memory>

namespace talmo::testbed {

/// A private X server with a window manager. Sets DISPLAY and the private folders of this process, for as long as it
/// lives, so that what is made in this process lands there too.
class VirtualDesktop {
public:
    /// Throws Error when one of the programs is missing or does not start.
    VirtualDesktop();
    ~VirtualDesktop();
    VirtualDesktop(const VirtualDesktop &) = delete;
    VirtualDesktop &operator=(const VirtualDesktop &) = delete;

    /// For programs that run on this desktop.
    QProcessEnvironment environment() const { return m_environment; }
    /// Private to this desktop, gone with it.
    QString folder() const { return m_folder.path(); }
    /// What a Talmo that starts on this desktop finds in its settings. Unless told otherwise it finds that it is to ask
    /// no language model, since one may happen to run on this machine.
    void storeSettings(const QJsonObject &settings);

    /// Waits until the window whose title contains this text is there and has the keyboard.
    bool waitForActiveWindow(const QString &title, Patience patience);
    QString activeWindowTitle();
    void minimiseActiveWindow();
    /// How often the window manager gave another window the keyboard since the last time this was asked.
    int takeActiveWindowChanges();
    /// A window on the screen, not its frame. The later in the list, the further in front.
    struct Window {
        QByteArray program;
        bool isManaged; ///< By the window manager.
        QRect geometry;
    };
    QList<Window> visibleWindows();
    void killServer() { m_server->kill(); }
    /// What is on the screen now. Needs a QGuiApplication for nothing: it is plain image data.
    QImage screenshot();

private:
    xcb_window_t activeWindow();
    void startServer();
    void startWindowManager();

    QTemporaryDir m_folder;
    QProcessEnvironment m_environment;
    QByteArray m_previousDisplay;
    std::unique_ptr<ChildProcess> m_server;
    std::unique_ptr<ChildProcess> m_windowManager;
    std::unique_ptr<XConnection> m_connection;
};

} // namespace talmo::testbed
