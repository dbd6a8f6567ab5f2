#pragma once

#include "App/ApplicationShell.h"
#include "UI/Menu/FrontmostFocus.h"
#include "UI/Menu/StatusItem.h"
#include "UI/Overlay/PanelWindow.h"
#include "UI/Overlay/ScreenSource.h"
#include "UI/ViewContext.h"

#include <QFuture>

#include <memory>

namespace talmo {

class MenuPanel;
class SettingsWindow;
class StatusItemController;

/// What the views need from the platform.
struct UserInterfaceParts {
    std::shared_ptr<StatusItem> statusItem;
    PanelWindowFactory makePanelWindow;
    std::shared_ptr<ScreenSource> screens;
    std::shared_ptr<FrontmostFocus> focus;
    std::shared_ptr<ApplicationShell> shell;
};

/// The menu bar icon, the panel that drops from it and the settings window. The overlay belongs to the coordinator.
/// Main thread.
class UserInterface {
public:
    UserInterface(ViewContext context, UserInterfaceParts parts);
    ~UserInterface();

    /// Like openSettings(), with the welcome.
    void openWelcome();
    /// Opens the settings window and brings it to the front.
    void openSettings();
    /// Opens or closes the menu in the corner nearest to the pointer, for users without an icon to click.
    void toggleMenu();
    /// Closes whatever is in the way of an insertion; finishes when the frontmost window has the keyboard focus again.
    QFuture<void> clearTheWay();

private:
    void perform(MenuAction action);
    SettingsWindow &settingsWindow();
    void openRecogniser();

    ViewContext m_context;
    UserInterfaceParts m_parts;
    std::unique_ptr<StatusItemController> m_statusItem;
    std::unique_ptr<MenuPanel> m_panel;
    std::unique_ptr<SettingsWindow> m_settings;
};

} // namespace talmo
