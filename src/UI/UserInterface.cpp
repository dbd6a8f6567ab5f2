#include "UI/UserInterface.h"

#include "Base/Task.h"
#include "UI/Accessibility/AccessibleViews.h"
#include "UI/Menu/MenuPanel.h"
#include "UI/Menu/StatusItemController.h"
#include "UI/Settings/SettingsWindow.h"

#include <utility>

namespace talmo {

UserInterface::UserInterface(ViewContext context, UserInterfaceParts parts)
    : m_context(std::move(context)),
      m_parts(std::move(parts)),
      m_statusItem(std::make_unique<StatusItemController>(m_context, m_parts.statusItem)),
      m_panel(std::make_unique<MenuPanel>(m_context, m_parts.makePanelWindow, m_parts.screens, m_parts.focus,
                                          [this](MenuAction action) { perform(action); }))
{
    describeViewsToScreenReaders();
    m_parts.statusItem->setOnActivated([this](std::optional<QRect> place) { m_panel->toggle(place); });
    m_parts.statusItem->setOnChosen([this](MenuAction action) { perform(action); });
}

UserInterface::~UserInterface()
{
    m_parts.statusItem->setOnActivated({});
    m_parts.statusItem->setOnChosen({});
}

void UserInterface::perform(MenuAction action)
{
    switch (action) {
    case MenuAction::None:
        return;
    case MenuAction::BeginDictation:
        m_context.beginRecording();
        return;
    case MenuAction::EndDictation:
        m_context.endRecording();
        return;
    case MenuAction::GrantPermissions:
        logEscapes(m_context.coordinator->requestPermissions());
        return;
    case MenuAction::GetBetterRecognition:
        m_context.recogniser->acceptOffer();
        openRecogniser(); // That page shows the progress.
        return;
    case MenuAction::ShowRecogniser:
        openRecogniser();
        return;
    case MenuAction::CopyLastDictation:
        m_context.recovery->copyLastText();
        return;
    case MenuAction::PutEarlierClipboardBack:
        m_context.recovery->putEarlierClipboardBack();
        return;
    case MenuAction::Pause:
        m_context.pause->setPaused(true);
        return;
    case MenuAction::Resume:
        m_context.pause->setPaused(false);
        return;
    case MenuAction::ShowDetails:
        m_panel->openWithDetails();
        return;
    case MenuAction::OpenSettings:
        openSettings();
        return;
    case MenuAction::Quit:
        m_parts.shell->terminate();
        return;
    }
}

SettingsWindow &UserInterface::settingsWindow()
{
    if (!m_settings) {
        m_settings = std::make_unique<SettingsWindow>(m_context, m_parts.screens);
    }
    return *m_settings;
}

void UserInterface::openWelcome()
{
    settingsWindow().openWelcome();
    m_parts.shell->activateIgnoringOtherApps();
}

void UserInterface::openSettings()
{
    settingsWindow().open();
    m_parts.shell->activateIgnoringOtherApps();
}

void UserInterface::openRecogniser()
{
    settingsWindow().openRecogniser();
    m_parts.shell->activateIgnoringOtherApps();
}

void UserInterface::toggleMenu()
{
    m_panel->toggle(std::nullopt);
}

QFuture<void> UserInterface::clearTheWay()
{
    m_parts.statusItem->closeMenu();
    return m_panel->close();
}

} // namespace talmo
