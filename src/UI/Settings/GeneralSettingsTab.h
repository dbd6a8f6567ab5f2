#pragma once

#include "UI/ChangeWatcher.h"
#include "UI/ViewContext.h"

#include <QWidget>

class QCheckBox;
class QComboBox;
class QVBoxLayout;

namespace talmo {

class EditingServerRow;
class KeyCap;
class TintedLabel;
class WarningRow;

/// The shortcut, the cleanup and launching at login. Every control saves its setting at once.
class GeneralSettingsTab final : public QWidget {
public:
    /// `showRecogniser`: shows the page on which a recogniser requested here is installed.
    explicit GeneralSettingsTab(ViewContext context, std::function<void()> showRecogniser = {});

    /// Refreshes from the settings at once; otherwise that happens after every change.
    void refresh();

private:
    void buildPushToTalk(QVBoxLayout &layout);
    void buildCleanup(QVBoxLayout &layout);
    void buildStartup(QVBoxLayout &layout);

    ViewContext m_context;
    KeyCap *m_shortcut = nullptr;
    TintedLabel *m_shortcutCaption = nullptr;
    QCheckBox *m_aiCleanup = nullptr;
    WarningRow *m_warning = nullptr;
    EditingServerRow *m_server = nullptr;
    QCheckBox *m_conciseText = nullptr;
    QComboBox *m_tone = nullptr;
    QWidget *m_bulletExample = nullptr;
    TintedLabel *m_bulletCaption = nullptr;
    QCheckBox *m_launchAtLogin = nullptr;
    ChangeWatcher m_watcher;
};

} // namespace talmo
